// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/PanelWindow.h"

#include "host/window/ErrorPage.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace norvo {

PanelWindow::PanelWindow(const QString& title) : m_scroll(new QScrollArea)
{
    setWindowTitle(title);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setWidget(new QWidget);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scroll);
}

QWidget* PanelWindow::page() const
{
    return m_scroll->widget();
}

void PanelWindow::showErrors(const Diagnostics& diagnostics)
{
    m_scroll->setWidget(new ErrorPage(diagnostics));
}

void PanelWindow::fit(const QSize& limit)
{
    resize(page()->sizeHint().expandedTo(kMinSize).boundedTo(limit));
}

void PanelWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    emit closed();
}

void PanelWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isFull = isFullScreen();
    if (event->key() == Qt::Key_F11) {
        isFull ? leaveScreen() : coverScreen();
    } else if (event->key() == Qt::Key_Escape && isFull) {
        leaveScreen();
    } else {
        QWidget::keyPressEvent(event);
    }
}

/// Without a window manager nobody but the window itself changes its size.
void PanelWindow::coverScreen()
{
    m_windowGeometry = geometry();
    setGeometry(screen()->geometry());
    showFullScreen();
}

void PanelWindow::leaveScreen()
{
    showNormal();
    if (m_windowGeometry.isValid()) {
        setGeometry(m_windowGeometry);
    }
}

} // namespace norvo
