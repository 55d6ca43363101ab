// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/accessible/ShownValue.h"

#include "host/plots/PlotLibrary.h"
#include "host/window/accessible/AccessibleDevice.h"
#include "host/window/accessible/LastValue.h"
#include "norvo/BaseWidget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSlider>
#include <QSpinBox>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextEdit>

namespace norvo {

namespace {

using Kind = ShownPart::Kind;

struct Meaning
{
    const char* className;
    Kind kind;
    QAccessible::Role role;
};

/// The more special before the more general; a progress bar stands beside its digits.
constexpr Meaning kMeanings[] = {
    {"QComboBox", Kind::List, QAccessible::ComboBox},
    {"QSlider", Kind::Slider, QAccessible::Slider},
    {"QAbstractSpinBox", Kind::Spin, QAccessible::SpinBox},
    {"QLineEdit", Kind::Line, QAccessible::EditableText},
    {"QCheckBox", Kind::CheckBox, QAccessible::CheckBox},
    {"QAbstractButton", Kind::Button, QAccessible::Button},
    {"QProgressBar", Kind::Progress, QAccessible::ProgressBar},
    {"QTextEdit", Kind::Log, QAccessible::Document},
    {"QCustomPlot", Kind::Plot, QAccessible::Chart},
    {"QQuickWidget", Kind::Scene, QAccessible::Graphic},
};

QString stateText(bool isOn)
{
    return isOn ? AccessibleDevice::tr("on") : AccessibleDevice::tr("off");
}

QString plainText(const QString& shown)
{
    return Qt::mightBeRichText(shown) ? QTextDocumentFragment::fromHtml(shown).toPlainText()
                                      : shown;
}

QString withUnit(const QString& number, const BaseWidget& widget)
{
    for (const char* name : {"units", "widget/units"}) {
        const QString unit = widget.params().value(name).value();
        if (!number.isEmpty() && !unit.isEmpty()) {
            return number + ' ' + unit;
        }
    }
    return number;
}

/// The largest text but the caption: the digits of a readout, the text of a label.
QString largestText(const BaseWidget& widget)
{
    const QString caption = AccessibleDevice::nameOf(widget);
    QString largest;
    int largestPixels = 0;
    const auto labels = widget.findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        const QString text = plainText(label->text()).simplified();
        const int pixels = QFontInfo(label->font()).pixelSize();
        if (text != caption && !text.isEmpty() && pixels > largestPixels) {
            largest = text;
            largestPixels = pixels;
        }
    }
    return largest;
}

QString curveValues(const QWidget& plot)
{
    const PlotLibrary* const plots = plotLibrary();
    return plots ? plots->newestValues(plot) : QString();
}

QString lastLine(const QTextEdit& log)
{
    const QTextBlock last = log.document()->lastBlock();
    return last.text().isEmpty() && last.previous().isValid() ? last.previous().text()
                                                              : last.text();
}

QString paintedValue(const BaseWidget& widget)
{
    const LastValue* const last = LastValue::of(widget);
    if (!last) {
        return withUnit(largestText(widget), widget);
    }
    const std::optional<double> value = last->value();
    if (!value) {
        return {};
    }
    return last->isState() ? stateText(*value != 0) : withUnit(QString::number(*value), widget);
}

} // namespace

ShownPart::Kind ShownPart::kindOf(const QWidget& part)
{
    for (const Meaning& meaning : kMeanings) {
        if (part.inherits(meaning.className)) {
            return meaning.kind;
        }
    }
    const auto* const label = qobject_cast<const QLabel*>(&part);
    return label && label->pixmap(Qt::ReturnByValue).isNull() == false ? Kind::Picture : Kind::None;
}

ShownPart ShownPart::of(const BaseWidget& widget)
{
    ShownPart found;
    for (QWidget* part : widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const Kind kind = kindOf(*part);
        if (kind != Kind::None) {
            found = {part, kind};
        }
    }
    return found;
}

QAccessible::Role ShownPart::role() const
{
    for (const Meaning& meaning : kMeanings) {
        if (meaning.kind == kind) {
            return meaning.role;
        }
    }
    return QAccessible::Graphic;
}

QString shownValue(const BaseWidget& widget)
{
    const ShownPart part = ShownPart::of(widget);
    switch (part.kind) {
    case Kind::List:
        return static_cast<const QComboBox*>(part.widget)->currentText();
    case Kind::Slider:
        return QString::number(static_cast<const QSlider*>(part.widget)->value());
    case Kind::Spin:
        return withUnit(static_cast<const QAbstractSpinBox*>(part.widget)->text(), widget);
    case Kind::Line:
        return withUnit(static_cast<const QLineEdit*>(part.widget)->text(), widget);
    case Kind::CheckBox:
        return stateText(static_cast<const QCheckBox*>(part.widget)->isChecked());
    case Kind::Button: {
        const auto& button = *static_cast<const QAbstractButton*>(part.widget);
        return button.isCheckable() ? stateText(button.isChecked()) : QString();
    }
    case Kind::Log:
        return lastLine(*static_cast<const QTextEdit*>(part.widget));
    case Kind::Plot:
        return curveValues(*part.widget);
    case Kind::Scene:
    case Kind::Picture:
        return {};
    case Kind::Progress:
    case Kind::None:
        break;
    }
    return paintedValue(widget);
}

} // namespace norvo
