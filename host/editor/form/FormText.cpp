// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/FormText.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>

namespace norvo {

namespace {

constexpr int kSmaller = 3; ///< Points.

QLabel* makeLabel(const QString& text, int smaller, bool isBold)
{
    auto* const label = new QLabel(text);
    QFont font = QApplication::font();
    font.setPointSize(qMax(8, font.pointSize() - smaller));
    font.setBold(isBold);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(1); // A long word does not widen the form.
    return label;
}

} // namespace

QLabel* FormText::name(const QString& text)
{
    return makeLabel(text, 1, true);
}

QLabel* FormText::small(const QString& text)
{
    QLabel* const label = makeLabel(text, kSmaller, false);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QLabel* FormText::fault(const QString& text)
{
    return makeLabel(text, kSmaller - 1, true);
}

void FormText::prepare(QLineEdit& line)
{
    constexpr int margin = 6; // pixels, on both sides of the text
    line.setTextMargins(margin, 0, margin, 0);
}

} // namespace norvo
