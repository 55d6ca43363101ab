// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/EntryDialog.h"

#include "host/gui/dialogs/Scrim.h"
#include "host/gui/dialogs/TouchKey.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QVBoxLayout>
#include <QWindow>

namespace norvo {
namespace {

constexpr int kTextPixels = 17;
constexpr int kLabelPixels = 22;
constexpr int kDisplayPixels = 32;
constexpr int kDisplayHeight = 60;
constexpr int kGap = 4;
constexpr int kMargin = 2 * kGap;

QFont sized(QFont font, int pixels)
{
    font.setPixelSize(pixels);
    return font;
}

} // namespace

EntryDialog::EntryDialog(QWidget* parent, Qt::WindowFlags flags, const QString& title,
                         const QString& label)
    : QDialog(parent, flags | Qt::Dialog | Qt::FramelessWindowHint),
      m_label(new QLabel),
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
    m_label->setObjectName("label");
    m_label->setFont(sized(m_label->font(), kLabelPixels));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setWordWrap(true);
    m_display->setObjectName("display");
    m_display->setFont(sized(m_display->font(), kDisplayPixels));
    m_display->setFixedHeight(kDisplayHeight);
    m_label->setText(label.isEmpty() ? m_field.caption() : label);
    if (m_label->text().isEmpty()) {
        m_label->hide();
    }
    m_display->setAccessibleName(m_label->text().isEmpty() ? title : m_label->text());
    m_ok->setDefault(true);
    QFont bold = m_ok->font();
    bold.setBold(true);
    m_ok->setFont(bold);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
}

EntryDialog::~EntryDialog()
{
    delete m_scrim;
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

QVBoxLayout* EntryDialog::placeHead(const QSize& keys, QLayout* aside)
{
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    whole->setSpacing(kGap);
    auto* const head = new QGridLayout;
    head->setHorizontalSpacing(kMargin);
    whole->addLayout(head);
    m_room = roomBelow(m_label->sizeHint().height() + kGap + kDisplayHeight + kGap +
                       m_reason->minimumHeight());
    if (m_room.width() < keys.width() || m_room.height() < keys.height()) {
        m_room = roomBelow(kDisplayHeight);
        fillLowHead(*head, aside);
    } else {
        fillHead(*head, aside);
    }
    return whole;
}

void EntryDialog::fillHead(QGridLayout& head, QLayout* aside)
{
    const int columns = aside ? 2 : 1;
    head.addWidget(m_label, 0, 0, 1, columns);
    head.addWidget(m_display, 1, 0);
    head.addWidget(m_reason, 2, 0, 1, columns);
    head.setColumnStretch(0, 3);
    if (aside) {
        head.addLayout(aside, 1, 1);
        head.setColumnStretch(1, 2);
    }
}

/// Nothing asks for a second line here: it would take the keys' room.
void EntryDialog::fillLowHead(QGridLayout& head, QLayout* aside)
{
    head.addWidget(m_label, 0, 0);
    head.addWidget(m_reason, 1, 0);
    head.addWidget(m_display, 0, 1, 2, 1);
    head.setColumnStretch(0, m_label->text().isEmpty() ? 1 : 2);
    head.setColumnStretch(1, 3);
    if (aside) {
        head.addLayout(aside, 0, 2, 2, 1);
        head.setColumnStretch(2, 3);
    }
    for (auto* const text : findChildren<QLabel*>()) {
        text->setFont(font());
        text->setWordWrap(false);
        text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
}

QSize EntryDialog::roomBelow(int head) const
{
    const int key = m_ok->touchSize() + kGap;
    const QSize screen = m_field.screenArea().size();
    return {(screen.width() - 2 * kMargin + kGap) / key,
            (screen.height() - 2 * kMargin - head) / key};
}

int EntryDialog::leastKeyWidth(int inRow) const
{
    const int sides = layout()->contentsMargins().left() + layout()->contentsMargins().right();
    const int gap = layout()->spacing();
    return qMin(m_ok->wantedSize(), (m_field.screenArea().width() - sides + gap) / inRow - gap);
}

void EntryDialog::fitIntoScreen(const QSize& preferred, int rows)
{
    const QList<TouchKey*> keys = findChildren<TouchKey*>();
    const auto setLeastHeight = [this, &keys](int height) {
        for (TouchKey* key : keys) {
            key->setMinimumHeight(height);
        }
        for (QLayout* const inside : findChildren<QLayout*>()) { // they remember what they needed
            inside->invalidate();
            inside->parentWidget()->updateGeometry();
        }
    };
    setLeastHeight(TouchKey::kSize);
    const int spare = m_field.screenArea().height() - minimumSizeHint().height();
    setLeastHeight(qBound(TouchKey::kSize, TouchKey::kSize + spare / rows, m_ok->wantedSize()));
    setGeometry(m_field.placeBeside(preferred, minimumSizeHint()));
}

void EntryDialog::setVisible(bool visible)
{
    delete m_scrim;
    QWidget* const panel = m_field.window();
    if (visible && panel) {
        dim(panel);
    }
    QDialog::setVisible(visible);
    if (!visible && panel) {
        panel->activateWindow(); // nobody else does it where there is no window manager
    }
    m_display->end(false); // Qt has selected the text, and the first key would replace it
}

/// Without its field, on a panel that has stopped, the window is not dimmed.
void EntryDialog::dim(QWidget* window)
{
    m_scrim = new Scrim(*window);
    connect(m_field.owner(), &QObject::destroyed, m_scrim, &QObject::deleteLater);
}

void EntryDialog::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    constexpr int width = 2;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Disabled, QPalette::WindowText), width));
    painter.drawRect(QRectF(rect()).adjusted(width / 2., width / 2., -width / 2., -width / 2.));
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
