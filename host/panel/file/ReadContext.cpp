// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/ReadContext.h"

#include "host/panel/file/EditDistance.h"
#include "host/panel/file/TemplateUse.h"
#include "host/yaml/YamlScan.h"

#include <utility>

namespace norvo {

bool isUsable(const YamlEntry& entry)
{
    return entry.key->isText() && entry.earlier.line == 0 &&
           !(entry.key->isPlain && entry.key->text == "<<");
}

ReadContext::ReadContext(const SourceText& source, std::shared_ptr<const PlaceOrigin> origin,
                         Diagnostics& diagnostics, const TemplateUse* use)
    : m_source(source), m_origin(std::move(origin)), m_diagnostics(diagnostics), m_use(use)
{}

QString ReadContext::filled(const QString& text) const
{
    return m_use ? m_use->filled(text) : text;
}

Place ReadContext::at(const Place& place) const
{
    return place.origin ? place : Place{place.line, place.column, m_origin};
}

Place ReadContext::placeOf(const YamlNode& node, int index) const
{
    return at(node.placeOf(index, m_source));
}

const std::vector<YamlEntry>& ReadContext::entriesOf(const YamlEntry& entry, YamlNode::Kind kind,
                                                     const QString& error) const
{
    static const std::vector<YamlEntry> none;
    const bool isOfKind = entry.value->kind == kind;
    if (!isOfKind && entry.value->kind != YamlNode::Kind::Absent) {
        refuse(entry.place, error);
    }
    return isOfKind ? entry.value->entries : none;
}

void ReadContext::checkKeys(const YamlNode& node, Keys keys) const
{
    for (const YamlEntry& entry : node.entries) {
        const bool isDevices = keys == Keys::Panel && entry.key->isText() &&
                               entry.key->text == "devices" && !entry.isAlias;
        if (entry.key) {
            const YamlNode& key = *entry.key;
            if (!key.isText()) {
                refuse(key.place, "a key must be a text");
            } else if (key.isPlain && key.text == "<<") {
                refuse(key.place, "\"<<\" merges nothing here; give the alias as the value itself");
            } else if (entry.earlier.line > 0) {
                refuse(key.place, QString("the %1 %2 is given twice; it is already in %3")
                                      .arg(keys == Keys::Devices ? "device" : "key",
                                           inQuotes(key.text), toString(entry.earlier)));
            }
        }
        if (!entry.isAlias) {
            checkKeys(*entry.value, isDevices ? Keys::Devices : Keys::Any);
        }
    }
}

void ReadContext::refuse(const Place& place, const QString& text) const
{
    m_diagnostics.error(at(place), text);
}

void ReadContext::refuseKey(const YamlNode& key, const QString& where, const QStringList& known,
                            const QString& all) const
{
    m_diagnostics.error(at(key.place), [&] {
        const QString name = key.text.section(':', 0, 0);
        const bool lacksSpace = name != key.text && known.contains(name);
        const QString nearest = lacksSpace ? QString("; a space is missing after \"%1:\"").arg(name)
                                           : didYouMean(key.text, known);
        return QString("unknown key %1%2%3")
            .arg(inQuotes(key.text), where, nearest.isEmpty() ? "; " + all : nearest);
    });
}

QString ReadContext::reasonOfAbsence(const YamlEntry& entry) const
{
    const QString& key = entry.key->text;
    const QString rest = QString::fromUtf8(
        m_source.bytes().mid(entry.keyMark, m_source.lineEnd(entry.keyMark) - entry.keyMark));
    const bool isBare = rest.startsWith(key) && !rest.mid(key.size()).trimmed().startsWith(':');
    if (isBare && !key.isEmpty() && key.at(0).isDigit()) {
        return "; a comma separates entries here, so write a number with a point, and put a text "
               "that holds a comma in quotes";
    }
    const QString colour =
        YamlScan::colourInComment(m_source, entry.keyMark, m_source.lineEnd(entry.keyMark));
    return colour.isEmpty() ? QString()
                            : QString(", because \" #\" begins a comment; put %1 in quotes")
                                  .arg(inQuotes(colour));
}

void ReadContext::warn(const Place& place, const QString& text) const
{
    m_diagnostics.warning(at(place), text);
}

} // namespace norvo
