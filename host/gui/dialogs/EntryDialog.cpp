// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/EntryDialog.h"

#include "host/gui/dialogs/TouchKey.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QWindow>

namespace norvo {
namespace {

constexpr int kTextPixels = 17;
constexpr int kDisplayPixels = 32;
constexpr int kDisplayHeight = 60;

QFont sized(QFont font, int pixels)
{
    font.setPixelSize(pixels);
    return font;
}

} // namespace

EntryDialog::EntryDialog(QWidget* parent, Qt::WindowFlags flags, const QString& title)
    : QDialog(parent, flags),
      m_display(new QLineEdit),
      m_reason(new QLabel),
      m_ok(new TouchKey("ok", tr("OK"))),
      m_cancel(new TouchKey("cancel", tr("Cancel")))
{
    setWindowTitle(title);
    setModal(true);
    m_reason->setObjectName("reason");
    setFont(sized(font(), kTextPixels));
    m_reason->setFont(font());
    m_reason->setMinimumHeight(m_reason->fontMetrics().height());
    m_display->setObjectName("display");
    m_display->setFont(sized(m_display->font(), kDisplayPixels));
    m_display->setMinimumHeight(kDisplayHeight);
    m_display->setAccessibleName(title);
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
}

bool EntryDialog::runModal(EntryDialog* dialog, bool* ok)
{
    const QPointer<EntryDialog> guard(dialog);
    const bool isAccepted = dialog->exec() == QDialog::Accepted && guard;
    if (ok) {
        *ok = isAccepted;
    }
    return isAccepted;
}

void EntryDialog::showError(const QString& reason)
{
    QPalette colours;
    if (!reason.isEmpty()) {
        colours.setColor(QPalette::Base, QColor("#c62828"));
        colours.setColor(QPalette::Text, Qt::white);
        colours.setColor(QPalette::PlaceholderText, QColor("#ffd0d0"));
    }
    m_display->setPalette(colours);
    m_reason->setText(reason);
    m_ok->setEnabled(reason.isEmpty());
}

void EntryDialog::fitIntoScreen(const QSize& preferred)
{
    resize(preferred.boundedTo(screen()->availableSize()));
}

void EntryDialog::setVisible(bool visible)
{
    QDialog::setVisible(visible);
    m_display->end(false); // Qt has selected the text, and the first key would replace it
}

void EntryDialog::showEvent(QShowEvent* event)
{
    // Without a parent it would get lost behind a panel that fills the screen.
    QWindow* const behind = QGuiApplication::focusWindow();
    if (!parentWidget() && behind && behind != windowHandle()) {
        windowHandle()->setTransientParent(behind);
    }
    QDialog::showEvent(event);
}

} // namespace norvo
