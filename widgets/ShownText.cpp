// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ShownText.h"

#include "norvo/BaseWidget.h"
#include "widgets/Looks.h"

#include <QDebug>
#include <QLabel>
#include <QRegularExpression>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMaxMarkedLength = 4'000; // nested marks cost more than in proportion
constexpr int kMaxLabelLength = 10'000;
constexpr QChar kEllipsis(0x2026);

/// One harmless mark, whose name is the first capture. No attribute may hold what could be read in
/// two ways: brackets, entities and backslashes.
const QRegularExpression& harmlessMark()
{
    static const QRegularExpression mark(
        QStringLiteral(
            R"RX(</?(a|address|b|big|blockquote|body|br|center|cite|code|dd|dfn|div|dl|dt|em|font|)RX"
            R"RX(h[1-6]|hr|html|i|kbd|li|nobr|ol|p|pre|qt|s|samp|small|span|strike|strong|sub|sup|)RX"
            R"RX(table|tbody|td|tfoot|th|thead|tr|tt|u|ul|var)(?:\s+(?:)RX"
            R"RX((?:align|bgcolor|class|color|dir|face|href|name|size|title|type|valign)\s*=\s*)RX"
            R"RX((?:"[^"<>&\\]*"|'[^'<>&\\]*'|[^\s"'<>&\\/=]+)|)RX"
            R"RX(style\s*=\s*(["'])(?:\s*(?:color|background-color|font-(?:family|style|weight)|)RX"
            R"RX(text-(?:align|decoration))\s*:[-\w\s#,.%()]*+;?|)RX"
            R"RX(\s*font-size\s*:\s*(?:\d{1,2}p[tx]|[-a-z]+)\s*;?)*+\s*\2))*+\s*/?>)RX"),
        QRegularExpression::CaseInsensitiveOption);
    return mark;
}

bool isContainer(const QString& mark)
{
    return mark == "table" || mark == "ul" || mark == "ol" || mark == "dl";
}

QString nameOf(const QWidget& part)
{
    const auto* const widget = qobject_cast<const BaseWidget*>(part.parentWidget());
    return widget ? widget->getObjectName() : part.objectName();
}

void setText(QLabel& label, Qt::TextFormat format, const QString& text)
{
    if (label.textFormat() != format) {
        label.clear(); // the text before must not be shown in this format
        label.setTextFormat(format);
    }
    label.setText(text);
}

/// Whether a mark in `text` is harmful, or not known to be harmless.
bool isVerbatim(const QString& text)
{
    int at = text.indexOf('<');
    if (at < 0) {
        return false;
    }
    if (text.size() > kMaxMarkedLength) {
        return true;
    }
    QString container; // the one that is open
    for (; at >= 0; at = text.indexOf('<', at + 1)) {
        const auto mark = harmlessMark().match(text, at, QRegularExpression::NormalMatch,
                                               QRegularExpression::AnchoredMatchOption);
        if (!mark.hasMatch()) {
            return true;
        }
        const QString name = mark.captured(1).toLower();
        if (text.at(at + 1) == '/') {
            if (name == container) {
                container.clear();
            }
        } else if (isContainer(name)) {
            if (!container.isEmpty()) {
                return true;
            }
            container = name;
        }
    }
    return false;
}

} // namespace

bool isMarked(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c == '<' || c == '&'; }) &&
           !isVerbatim(text);
}

QString shortened(const QString& text, int length, QWidget& shownBy)
{
    if (text.size() <= length) {
        return text;
    }
    constexpr char kReported[] = "reportedALongText";
    if (!shownBy.property(kReported).toBool()) {
        shownBy.setProperty(kReported, true);
        qWarning().noquote().nospace()
            << nameOf(shownBy) << ": a text of " << text.size() << " characters was cut to "
            << length << ", which is as much as is shown; further ones are not reported";
    }
    const bool partsAPair = text.at(length - 1).isHighSurrogate();
    return text.left(partsAPair ? length - 1 : length) + kEllipsis;
}

void showText(QLabel& label, const QString& text)
{
    const QString shown = shortened(text, kMaxLabelLength, label);
    // To say that a text is plain costs less than to have the label find it out.
    setText(label, isMarked(shown) ? Qt::AutoText : Qt::PlainText, shown);
}

void showWarning(QLabel& label, const QString& text)
{
    const QString shown = shortened(text, kMaxLabelLength, label);
    setText(label, Qt::AutoText,
            Looks::kWarningText.arg(isVerbatim(shown) ? shown.toHtmlEscaped() : shown));
}

} // namespace norvo
