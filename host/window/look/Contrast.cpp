// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/Contrast.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMetaEnum>

#include <cmath>

namespace norvo {

namespace {

constexpr int kMaxSheets = 200; // A stranger's type may make a new one for each value.

double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

bool endsAName(QChar character)
{
    return character.isSpace() || character == ';' || character == '{';
}

/// What a style sheet sets for a property, however the rule is written; empty where nothing.
QString valueOf(const QStringList& names, const QString& styleSheet)
{
    for (int colon = styleSheet.indexOf(':'); colon >= 0;
         colon = styleSheet.indexOf(':', colon + 1)) {
        int end = colon;
        while (end > 0 && styleSheet.at(end - 1).isSpace()) {
            --end;
        }
        int begin = end;
        while (begin > 0 && !endsAName(styleSheet.at(begin - 1))) {
            --begin;
        }
        if (names.contains(styleSheet.mid(begin, end - begin))) {
            const QString behind = styleSheet.mid(colon + 1);
            return behind.left(behind.indexOf(';')).section('}', 0, 0).trimmed();
        }
    }
    return {};
}

const QStringList kGround{"background", "background-color"};
const QStringList kText{"color"};

/// Invalid where the style sheet names no plain colour. Qt does not tell what it made of one.
QColor groundOf(const QString& styleSheet)
{
    const QString value = valueOf(kGround, styleSheet);
    if (!value.startsWith("palette(") || !value.endsWith(')')) {
        return value.isEmpty() ? QColor() : QColor(value);
    }
    const QString role = value.mid(8).chopped(1).remove('-').trimmed();
    const QMetaEnum roles = QMetaEnum::fromType<QPalette::ColorRole>();
    for (int i = 0; i < roles.keyCount(); ++i) {
        if (role.compare(QLatin1String(roles.key(i)), Qt::CaseInsensitive) == 0) {
            return QApplication::palette().color(QPalette::ColorRole(roles.value(i)));
        }
    }
    return {};
}

/// The panel's own text where it reads, otherwise white or black.
QColor readableOn(const QColor& ground)
{
    QColor usual = QApplication::palette().color(QPalette::WindowText);
    if (contrast(usual, ground) >= kReadable) {
        return usual;
    }
    return contrast(Qt::white, ground) > contrast(Qt::black, ground) ? Qt::white : Qt::black;
}

/// Invalid where the style sheet sets no ground, or a text of its own.
QColor textFor(const QString& styleSheet)
{
    const QColor ground = groundOf(styleSheet);
    const bool needsText = ground.isValid() && valueOf(kText, styleSheet).isEmpty();
    return needsText ? readableOn(ground) : QColor();
}

} // namespace

double contrast(const QColor& a, const QColor& b)
{
    const double high = qMax(luminance(a), luminance(b));
    const double low = qMin(luminance(a), luminance(b));
    return (high + 0.05) / (low + 0.05);
}

/// The palette is the label's own: what its parents have is hidden by its style sheet. A type has
/// few style sheets and sets them often.
void ContrastGuard::makeReadable(QLabel& label)
{
    if (m_texts.size() >= kMaxSheets) {
        m_texts.clear();
    }
    auto text = m_texts.constFind(label.styleSheet());
    if (text == m_texts.constEnd()) {
        text = m_texts.insert(label.styleSheet(), textFor(label.styleSheet()));
    }
    if (!text->isValid() || label.palette().color(QPalette::WindowText) == *text) {
        return;
    }
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, *text);
    label.setPalette(palette);
}

void ContrastGuard::watch(QLabel& label)
{
    makeReadable(label);
    label.installEventFilter(this);
}

bool ContrastGuard::eventFilter(QObject* watched, QEvent* event)
{
    auto* const label =
        event->type() == QEvent::StyleChange ? qobject_cast<QLabel*>(watched) : nullptr;
    if (label) {
        makeReadable(*label);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace norvo
