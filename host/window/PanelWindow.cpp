// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/PanelWindow.h"

#include "host/window/ErrorList.h"
#include "host/window/fit/ScaledPage.h"
#include "host/window/layout/FingerScrollArea.h"
#include "host/window/look/TouchSize.h"
#include "host/window/strip/PanelStrip.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include <memory>

namespace norvo {

namespace {

constexpr int kTitlePoints = 18;
constexpr int kTextPoints = 12;

QFont sized(QFont font, int points)
{
    font.setPointSize(points);
    return font;
}

QPushButton* makeKey(PanelWindow& window)
{
    auto* const key = new QPushButton(PanelWindow::tr("Read again"));
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *window.screen());
    key->setFont(sized(key->font(), kTextPoints));
    key->setMinimumSize(key->sizeHint().expandedTo({2 * target, target}));
    key->setShortcut(Qt::Key_F5);
    QObject::connect(key, &QPushButton::clicked, &window, &PanelWindow::readAgainRequested);
    return key;
}

/// What a panel that cannot start shows instead of itself: every error with its place, as text that
/// can be selected and copied.
QWidget* makeErrorPage(const Diagnostics& diagnostics)
{
    auto* const title = new QLabel(PanelWindow::tr("This panel cannot start"));
    title->setFont(sized(title->font(), kTitlePoints));
    title->setWordWrap(true);
    auto* const summary = new QLabel(diagnostics.summary());
    summary->setFont(sized(summary->font(), kTextPoints));
    summary->setWordWrap(true);
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(title);
    layout->addWidget(summary);
    layout->addWidget(new ErrorList(diagnostics.sorted()), 1);
    return page;
}

} // namespace

PanelWindow::PanelWindow(const QString& title)
    : m_page(new QWidget),
      m_scroll(new FingerScrollArea(m_page)),
      m_row(new QHBoxLayout),
      m_strip(new PanelStrip(this))
{
    setWindowTitle(title);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setMinimumSize(1, 1); // However large its scroll bars are.
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_row->setSpacing(0);
    m_row->addWidget(m_scroll, 1);
    layout->addLayout(m_row, 1);
    layout->addWidget(m_strip);
}

void PanelWindow::addBar(QWidget* bar)
{
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, bar);
    bar->show();
}

void PanelWindow::addSide(QWidget* pane)
{
    m_row->addWidget(pane);
}

QWidget* PanelWindow::page() const
{
    return m_page;
}

void PanelWindow::showErrors(const Diagnostics& diagnostics)
{
    m_page = makeErrorPage(diagnostics);
    if (isSignalConnected(QMetaMethod::fromSignal(&PanelWindow::readAgainRequested))) {
        static_cast<QVBoxLayout*>(m_page->layout())->addWidget(makeKey(*this), 0, Qt::AlignRight);
    }
    m_scroll->setWidget(m_page);
}

void PanelWindow::scalePage(const QSize& design)
{
    m_scroll->takeWidget();
    m_scroll->setWidget(new ScaledPage(m_page, design));
}

void PanelWindow::unscalePage()
{
    if (m_scroll->widget() != m_page) {
        const std::unique_ptr<QWidget> scaled(m_scroll->takeWidget());
        static_cast<ScaledPage&>(*scaled).givePageBack();
        m_scroll->setWidget(m_page);
    }
}

void PanelWindow::fit(const QSize& limit)
{
    QSize around(0, m_strip->isHidden() ? 0 : m_strip->height());
    for (int i = 0; i < layout()->count(); ++i) {
        const QWidget* const bar = layout()->itemAt(i)->widget();
        around.rheight() += bar && bar != m_strip ? bar->sizeHint().height() : 0;
    }
    for (int i = 0; i < m_row->count(); ++i) {
        const QWidget* const side = m_row->itemAt(i)->widget();
        const bool isSeen = side && side != m_scroll && !side->isHidden();
        around.rwidth() += isSeen ? side->sizeHint().width() : 0;
    }
    const QSize page = m_scroll->widget()->sizeHint().expandedTo(kMinSize);
    resize((page + around).boundedTo(limit));
}

void PanelWindow::closeEvent(QCloseEvent* event)
{
    const bool isClosed = !m_isKept && (!m_mayClose || m_mayClose());
    event->setAccepted(isClosed);
    if (isClosed) {
        emit closed();
    }
}

void PanelWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isFull = isFullScreen();
    if (!m_isKept && event->key() == Qt::Key_F11 && !isFull) {
        coverScreen();
    } else if (!m_isKept && (event->key() == Qt::Key_F11 || event->key() == Qt::Key_Escape) &&
               isFull) {
        leaveScreen();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void PanelWindow::coverScreen()
{
    m_windowGeometry = geometry();
    m_screenChange = connect(screen(), &QScreen::geometryChanged, this, &PanelWindow::fillScreen);
    fillScreen();
}

/// Without a window manager only the window itself changes its size, and a new size ends the state.
void PanelWindow::fillScreen()
{
    setGeometry(screen()->geometry());
    showFullScreen();
}

void PanelWindow::keepScreen()
{
    m_isKept = true;
    coverScreen();
}

void PanelWindow::leaveScreen()
{
    disconnect(m_screenChange);
    showNormal();
    if (m_windowGeometry.isValid()) {
        setGeometry(m_windowGeometry);
    }
}

} // namespace norvo
