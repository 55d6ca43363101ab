// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/frame/EditorBar.h"

#include "host/window/look/TouchSize.h"

#include <QAccessible>
#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>
#include <memory>

namespace norvo {

namespace {

constexpr std::chrono::seconds kProblemTime(15);
constexpr int kMargin = 4;   // pixels
constexpr int kSpacing = 4;  // between two keys
constexpr int kPadding = 10; // at both sides of a key's text
constexpr int kMark = 26;    // of a key that latches
constexpr int kTextPixels = 15;

} // namespace

EditorBar::EditorBar(QWidget* parent) : QWidget(parent), m_keys(new QHBoxLayout), m_text(new QLabel)
{
    setObjectName("editorBar");
    setAutoFillBackground(true);
    m_keys->setSpacing(kSpacing);
    m_text->setObjectName("editorText");
    m_text->setTextFormat(Qt::PlainText);
    QFont small = m_text->font();
    small.setPixelSize(kTextPixels);
    m_text->setFont(small);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin);
    layout->addLayout(m_keys);
    layout->addWidget(m_text);
}

QPushButton* EditorBar::addKey(QAction& action, const QString& text)
{
    auto* const key = new QPushButton(text);
    key->setObjectName(action.objectName());
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
    const int mark = action.isCheckable() ? kMark : 0;
    const int width = key->fontMetrics().horizontalAdvance(text) + mark + 2 * kPadding;
    key->setFixedSize(std::max(target, width), target);
    key->setFocusPolicy(Qt::TabFocus);
    const auto follow = [key, &action] {
        key->setEnabled(action.isEnabled());
        key->setCheckable(action.isCheckable());
        key->setChecked(action.isChecked());
        key->setAccessibleName(action.text());
        key->setToolTip(action.text());
    };
    connect(&action, &QAction::changed, key, follow);
    connect(key, &QPushButton::clicked, &action, &QAction::trigger);
    connect(key, &QPushButton::clicked, key, follow); // An exclusive action stays checked.
    follow();
    m_keys->addWidget(key);
    key->show(); // At once, so that it counts.
    showSpareKeys();
    return key;
}

void EditorBar::addSpareKey(QAction& action, const QString& text)
{
    m_spare.append(addKey(action, text));
    showSpareKeys();
}

/// As many as fit beside the others.
void EditorBar::showSpareKeys()
{
    int room = width() - minimumSizeHint().width();
    for (QPushButton* const key : qAsConst(m_spare)) {
        room -= key->minimumWidth() + kSpacing;
        key->setVisible(room >= 0);
    }
}

QSize EditorBar::minimumSizeHint() const
{
    int width = 2 * kMargin - kSpacing;
    for (int i = 0; i < m_keys->count(); ++i) {
        auto* const key = qobject_cast<QPushButton*>(m_keys->itemAt(i)->widget());
        if (key && !m_spare.contains(key)) {
            width += key->minimumWidth() + kSpacing;
        }
    }
    return {width, QWidget::minimumSizeHint().height()};
}

void EditorBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    showSpareKeys();
}

void EditorBar::addGap()
{
    m_keys->addStretch(1);
}

void EditorBar::removeKeys()
{
    m_spare.clear();
    while (const std::unique_ptr<QLayoutItem> item{m_keys->takeAt(0)}) {
        delete item->widget();
    }
}

void EditorBar::setHint(const QString& text)
{
    m_hint = text;
    showText();
}

void EditorBar::tellProblem(const QString& text)
{
    m_problem = text.simplified();
    showText();
    if (!m_problem.isEmpty()) {
        QAccessibleEvent alert(m_text, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
        QTimer::singleShot(kProblemTime, this, [this, told = m_problem] {
            if (m_problem == told) {
                tellProblem({});
            }
        });
    }
}

void EditorBar::showText()
{
    const bool isProblem = !m_problem.isEmpty();
    QFont font = m_text->font();
    font.setBold(isProblem);
    m_text->setFont(font);
    m_text->setText(isProblem ? "! " + m_problem : m_hint);
    m_text->setToolTip(m_text->text());
}

} // namespace norvo
