// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/look/LookReader.h"

#include "host/panel/file/EditDistance.h"

#include <QRegularExpression>

namespace norvo {

namespace {

const QSize kMinDesign(64, 64);
const QSize kMaxDesign(16384, 16384);
constexpr int kMaxLines = 1000; // Rows or columns with a weight, as many as have a place; pages.

const QMap<QString, PanelLook::Touch> kTouches{{"fingers", PanelLook::Touch::Fingers},
                                               {"gloves", PanelLook::Touch::Gloves}};
const QMap<QString, PanelLook::Fit> kFits{{"grow", PanelLook::Fit::Grow},
                                          {"scale", PanelLook::Fit::Scale}};

/// Takes the value whose name stands there.
template <typename Value>
void readName(const YamlEntry& entry, const ReadContext& context,
              const QMap<QString, Value>& values, Value& value)
{
    const QStringList names(values.keys());
    const QString& text = entry.value->text;
    const auto found = values.constFind(text);
    if (entry.value->isText() && found != values.constEnd()) {
        value = *found;
    } else {
        context.refuse(entry.place,
                       QString("%1 must be one of %2%3")
                           .arg(entry.key->text, names.join(", "),
                                entry.value->isText() ? ", not " + inQuotes(text) : QString()));
    }
}

void readDesign(const YamlEntry& entry, const ReadContext& context, QSize& design)
{
    static const QRegularExpression pattern("^(\\d{1,5})x(\\d{1,5})$");
    const auto match = pattern.match(entry.value->text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (entry.value->isText() && match.hasMatch() && size.expandedTo(kMinDesign) == size &&
        size.boundedTo(kMaxDesign) == size) {
        design = size;
    } else {
        context.refuse(entry.place, "design must be a width and a height in pixels from 64 to "
                                    "16384, such as 1024x600");
    }
}

void readLanguage(const YamlEntry& entry, const ReadContext& context, QString& language)
{
    static const QRegularExpression pattern("^[a-z]{2,3}([_-][A-Z][a-z]{3})?([_-][A-Z]{2})?$");
    if (entry.value->isText() && pattern.match(entry.value->text).hasMatch()) {
        language = QString(entry.value->text).replace('-', '_');
    } else {
        context.refuse(entry.place, "language must be a code such as de or pt_BR");
    }
}

void readPages(const YamlEntry& entry, const ReadContext& context, QStringList& pages)
{
    for (const YamlEntry& one :
         context.entriesOf(entry, YamlNode::Kind::List,
                           "pages must be a list of the names of tabs, such as [Main, Details]")) {
        const QString& name = one.value->text;
        if (!one.value->isText() || name.isEmpty()) {
            context.refuse(one.place, "the name of a page must be a text, and not empty");
        } else if (pages.contains(name)) {
            context.refuse(one.place, QString("the page %1 is given twice").arg(inQuotes(name)));
        } else if (pages.size() == kMaxLines) {
            return context.refuse(one.place, "more than 1,000 pages");
        } else {
            pages.append(name);
        }
    }
}

QVector<int> readWeights(const YamlEntry& entry, const QString& key, const ReadContext& context)
{
    const QString error = key + " must be a list of whole numbers from 0 to 100, such as [0, 3, 1]";
    QVector<int> weights;
    if (entry.value->kind != YamlNode::Kind::List || entry.value->entries.size() > kMaxLines) {
        context.refuse(entry.place, error);
        return weights;
    }
    for (const YamlEntry& one : entry.value->entries) {
        bool isNumber = false;
        const int weight = one.value->text.toInt(&isNumber);
        if (!one.value->isText() || !isNumber || weight < 0 || weight > PanelLook::kMaxWeight) {
            context.refuse(one.place, error);
            return {};
        }
        weights.append(weight);
    }
    return weights;
}

/// A list for all tabs, or a map with a list for each.
void readTabs(const YamlEntry& entry, const ReadContext& context, PanelLook::Weights& weights)
{
    const QString& key = entry.key->text;
    if (entry.value->kind != YamlNode::Kind::Map) {
        weights.insert(QString(), readWeights(entry, key, context));
        return;
    }
    for (const YamlEntry& tab : entry.value->entries) {
        if (isUsable(tab)) {
            weights.insert(tab.key->text, readWeights(tab, key, context));
        }
    }
}

} // namespace

const QStringList& lookKeys()
{
    static const QStringList keys{"theme",    "touch", "design", "fit",
                                  "language", "pages", "rows",   "columns"};
    return keys;
}

QStringList lookNames(const QString& key)
{
    return key == "theme"   ? QStringList(themeNames().keys())
           : key == "touch" ? QStringList(kTouches.keys())
           : key == "fit"   ? QStringList(kFits.keys())
                            : QStringList();
}

QString lookDefault(const QString& key)
{
    const PanelLook look;
    return key == "theme"   ? themeNames().key(look.theme)
           : key == "touch" ? kTouches.key(look.touch)
           : key == "fit"   ? kFits.key(look.fit)
                            : QString();
}

const QMap<QString, PanelLook::Theme>& themeNames()
{
    static const QMap<QString, PanelLook::Theme> names{{"light", PanelLook::Theme::Light},
                                                       {"dark", PanelLook::Theme::Dark},
                                                       {"system", PanelLook::Theme::System}};
    return names;
}

void readLook(const YamlEntry& entry, const ReadContext& context, PanelLook& look)
{
    const QString& key = entry.key->text;
    if (key == "theme") {
        readName(entry, context, themeNames(), look.theme);
    } else if (key == "touch") {
        readName(entry, context, kTouches, look.touch);
    } else if (key == "fit") {
        readName(entry, context, kFits, look.fit);
    } else if (key == "design") {
        readDesign(entry, context, look.design);
    } else if (key == "language") {
        readLanguage(entry, context, look.language);
    } else if (key == "pages") {
        readPages(entry, context, look.pages);
    } else {
        readTabs(entry, context, key == "rows" ? look.rows : look.columns);
    }
}

void checkLook(const PanelLook& look, const Place& fitPlace, const ReadContext& context)
{
    if (look.fit == PanelLook::Fit::Scale && look.design.isEmpty()) {
        context.refuse(fitPlace, "fit: scale needs the size that the panel was laid out for, such "
                                 "as \"design: 1024x600\"");
    }
}

} // namespace norvo
