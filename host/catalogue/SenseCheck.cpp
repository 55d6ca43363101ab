// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/SenseCheck.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/IncludedFiles.h"

#include "norvo/BaseDevice.h"
#include "norvo/Param.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>

#include <algorithm>
#include <cmath>
#include <optional>

namespace norvo {

namespace {

constexpr int kManyCurves = 4; ///< More than can be told apart without names.

std::optional<double> numberIn(const QString& text)
{
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    return isNumber && !std::isnan(number) ? std::optional<double>(number) : std::nullopt;
}

/// What is wrong with a number, or nothing.
QString numberError(const QString& text, const ParamWords& words)
{
    const auto number = numberIn(text);
    if (text == words.also && !text.isEmpty()) {
        return {};
    }
    if (!number) {
        Param param({}, "0", {}, true, {});
        param.setValue(text);
        const QString fault = param.fault(); // None of "nan", which converts.
        return fault.isEmpty() ? inQuotes(text) + " is not a number" : fault;
    }
    if (!words.isInRange(*number)) {
        return QString("%1 is out of range; it must be %2").arg(text.trimmed(), words.range());
    }
    if (words.kind == ParamKind::WholeNumber && std::trunc(*number) != *number) {
        return QString("%1 is not a whole number").arg(text.trimmed());
    }
    return {};
}

QString colourError(const QString& text)
{
    return QColor::isValidColor(text)
               ? QString()
               : QString("%1 is not a colour; write a name such as \"orange\", or red, green and "
                         "blue as in \"#ff8800\"")
                     .arg(inQuotes(text));
}

/// A format is made of runs of a letter each, that stand for parts of a time; what is in single
/// quotes, and all that is no letter, stands for itself.
QStringList partsOfTimeFormat(const QString& text)
{
    const auto isLetter = [](QChar character) {
        return character.isLetter() && character.unicode() < 128;
    };
    QStringList parts;
    for (int i = 0; i < text.size();) {
        int end = i + 1;
        if (text.at(i) == '\'') {
            end = qMax(end, text.indexOf('\'', end) + 1);
        } else if (isLetter(text.at(i))) {
            while (end < text.size() && text.at(end) == text.at(i)) {
                ++end;
            }
            parts.append(text.mid(i, end - i));
        }
        i = end;
    }
    return parts;
}

QString timeFormatError(const QString& text)
{
    static const QSet<QString> known{"h",    "hh", "H",  "HH",  "m",    "mm", "s",   "ss", "z",
                                     "zzz",  "A",  "a",  "P",   "p",    "t",  "d",   "dd", "ddd",
                                     "dddd", "M",  "MM", "MMM", "MMMM", "yy", "yyyy"};
    const QStringList parts = partsOfTimeFormat(text);
    for (const QString& part : parts) {
        if (!known.contains(part)) {
            return QString("%1 is not a time format, because of its %2; write one of hh, mm, ss, "
                           "zzz, dd, MM, yyyy for each part, as in \"hh:mm:ss\"")
                .arg(inQuotes(text), inQuotes(part));
        }
    }
    return !parts.isEmpty()
               ? QString()
               : QString("%1 is not a time format, because it shows nothing of a time; write, "
                         "for example, \"hh:mm:ss\"")
                     .arg(inQuotes(text));
}

QString fileError(const QString& name, ParamKind kind)
{
    const QFileInfo file(name);
    if (!file.exists()) {
        return QString("there is no file %1%2")
            .arg(inQuotes(name), file.isRelative() ? " in " + QDir::currentPath() : QString());
    }
    if (!file.isFile() || !file.isReadable()) {
        return QString("the file %1 cannot be read").arg(inQuotes(name));
    }
    QImageReader reader(name);
    reader.setDecideFormatFromContent(true);
    if (kind == ParamKind::PictureFile && !reader.canRead()) {
        return QString("the file %1 is not a picture that can be shown").arg(inQuotes(name));
    }
    return {};
}

/// What is wrong with the text of a parameter, or nothing.
QString valueError(const QString& text, const ParamWords& words)
{
    if (words.isNumber()) {
        return numberError(text, words);
    }
    if (text.isEmpty()) {
        return {};
    }
    switch (words.kind) {
    case ParamKind::Colour:
        return colourError(text);
    case ParamKind::TimeFormat:
        return timeFormatError(text);
    case ParamKind::File:
    case ParamKind::PictureFile:
        return fileError(text, words.kind);
    default: // A device reports by itself that a document or a program is missing.
        return {};
    }
}

/// Looks at one device of the panel file.
class DeviceCheck
{
public:
    DeviceCheck(const DeviceSetting& setting, const BaseDevice& device, const TypeWords& words,
                Diagnostics& diagnostics)
        : m_setting(setting), m_device(device), m_words(words), m_diagnostics(diagnostics)
    {}

    void checkValues() const
    {
        for (const ParamSetting& param : m_setting.params) {
            const ParamWords* const words = m_words.param(param.name.text);
            // What does not convert, and where a widget stands, the plan has judged.
            if (words && !words->isOfEveryType && paramOf(words->name).fault().isEmpty()) {
                report(param.value.place, words->name, words->isErrorOutside,
                       valueError(param.value.text, *words));
            }
        }
    }

    void checkRelations() const
    {
        for (const Relation& relation : m_words.relations) {
            const auto smaller = numberIn(paramOf(relation.smaller).value());
            const auto larger = numberIn(paramOf(relation.larger).value());
            if (smaller && larger && !relation.holds(*smaller, *larger)) {
                reportBreach(relation);
            }
        }
    }

private:
    Param paramOf(const QString& name) const { return m_device.params().value(name); }

    /// Null where the panel file leaves the parameter at its default.
    const ParamSetting* settingOf(const QString& name) const
    {
        const auto found = std::find_if(
            m_setting.params.cbegin(), m_setting.params.cend(), [&name](const auto& param) {
                return param.name.text.compare(name, Qt::CaseInsensitive) == 0;
            });
        return found == m_setting.params.cend() ? nullptr : &*found;
    }

    /// At the larger one where the file gives it, else at the smaller one.
    void reportBreach(const Relation& relation) const
    {
        const ParamSetting* const larger = settingOf(relation.larger);
        const ParamSetting* const setting = larger ? larger : settingOf(relation.smaller);
        if (!setting) {
            return;
        }
        const QString other = larger ? relation.smaller : relation.larger;
        const QString strictly = larger ? "be greater" : "be less";
        const QString loosely = larger ? "not be less" : "not be greater";
        report(setting->value.place, larger ? relation.larger : relation.smaller, relation.isError,
               QString("%1 must %2 than %3, which is %4%5")
                   .arg(setting->value.text, relation.mayBeEqual ? loosely : strictly,
                        inQuotes(other), paramOf(other).value(),
                        settingOf(other) ? "" : " by default"));
    }

    void report(const Place& place, const QString& param, bool isError, const QString& what) const
    {
        if (what.isEmpty()) {
            return;
        }
        const QString text = QString("parameter %1: %2").arg(inQuotes(param), what);
        if (isError) {
            m_diagnostics.errorOfDevice(place, text);
        } else {
            m_diagnostics.warning(place, text);
        }
    }

    const DeviceSetting& m_setting;
    const BaseDevice& m_device;
    const TypeWords& m_words;
    Diagnostics& m_diagnostics;
};

void checkAccess(const DeviceSetting& setting, Control control, Diagnostics& diagnostics)
{
    const DeviceAccess& access = setting.access;
    if (!access.role && !access.isConfirmed) {
        return;
    }
    const QString id = inQuotes(setting.id.text);
    if (access.role && *access.role != Role::View && control == Control::None) {
        diagnostics.warning(
            access.rolePlace,
            QString("access has no effect, because %1 takes nothing from a hand").arg(id));
    }
    if (access.isConfirmed && control == Control::None) {
        diagnostics.warning(
            access.confirmPlace,
            QString("confirm has no effect, because %1 takes nothing from a hand").arg(id));
    } else if (access.isConfirmed && control != Control::Asks) {
        diagnostics.error(access.confirmPlace,
                          QString("%1 acts while a hand is on it, and cannot ask before; remove "
                                  "confirm")
                              .arg(id));
    }
}

} // namespace

bool SenseCheck::breaksCycles(const QString& type) const
{
    const TypeWords* const words = m_catalogue.wordsForCheck(type);
    return words && words->breaksCycles;
}

bool SenseCheck::startsNothing(const QString& type) const
{
    const TypeWords* const words = m_catalogue.wordsForCheck(type);
    return words && words->startsNothing;
}

std::optional<KeptMethods> SenseCheck::keptMethods(const QString& type) const
{
    const TypeWords* const words = m_catalogue.wordsForCheck(type);
    return words ? words->kept : std::nullopt;
}

std::optional<ShownSignal> SenseCheck::shownSignal(const QString& type) const
{
    const TypeWords* const words = m_catalogue.wordsForCheck(type);
    return words ? words->shown : std::nullopt;
}

/// A type without words may be anything.
Control SenseCheck::control(const QString& type) const
{
    const TypeWords* const words = m_catalogue.wordsForCheck(type);
    return words && !words->purpose.isEmpty() ? words->control : Control::Asks;
}

void SenseCheck::rebaseFiles(PanelDescription& description) const
{
    rebaseIncludedFiles(description, m_catalogue);
}

void SenseCheck::checkSense(const DeviceSetting& setting, const BaseDevice& device,
                            Diagnostics& diagnostics) const
{
    if (const TypeWords* const words = m_catalogue.wordsForCheck(setting.type.text, &device)) {
        const DeviceCheck deviceCheck(setting, device, *words, diagnostics);
        deviceCheck.checkValues();
        deviceCheck.checkRelations();
        checkAccess(setting, control(setting.type.text), diagnostics);
    }
}

void SenseCheck::checkCurves(const PanelDescription& description, Diagnostics& diagnostics) const
{
    QHash<QString, QHash<QString, QStringList>> senders; // to each input of each device
    for (const ConnectionSetting& connection : description.connections) {
        const QString input = connection.to.method.text.section('(', 0, 0).trimmed();
        QStringList& known = senders[connection.to.device.text][input];
        if (known.size() < kManyCurves && !known.contains(connection.from.device.text)) {
            known.append(connection.from.device.text);
        }
    }
    for (const DeviceSetting& device : description.devices) {
        const TypeWords* const words = m_catalogue.wordsForCheck(device.type.text);
        const auto inputs = senders.value(device.id.text);
        if (words && !words->curveInput.isEmpty() &&
            inputs.value(words->curveInput).size() == kManyCurves &&
            inputs.value(words->curveNameInput).isEmpty()) {
            diagnostics.warning(device.id.place,
                                QString("%1 has %2 curves or more and none has a name; %3")
                                    .arg(inQuotes(device.id.text), QString::number(kManyCurves),
                                         words->curveAdvice));
        }
    }
}

} // namespace norvo
