// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/TemplateLibrary.h"

#include "host/panel/file/EditDistance.h"
#include "host/panel/file/Placeholders.h"

#include "norvo/Ids.h"

#include <QDir>
#include <QFileInfo>

#include <utility>
#include <variant>

namespace norvo {

namespace {

int valuesIn(const YamlNode& node)
{
    int values = 1;
    for (const YamlEntry& entry : node.entries) {
        values += valuesIn(*entry.value);
    }
    return values;
}

/// One name for each file, whatever links lead to it.
QString pathOf(const QString& fileName)
{
    const QFileInfo info(fileName);
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? info.absoluteFilePath() : canonical;
}

/// The name of a file that another one includes: relative to its folder.
QString nameBeside(const QString& includer, const QString& name)
{
    const QString folder = QFileInfo(includer).path();
    return QDir::isAbsolutePath(name) || folder == "." ? name : folder + '/' + name;
}

ReadContext contextOf(const SourceFile& file, Diagnostics& diagnostics)
{
    const auto origin = std::make_shared<const PlaceOrigin>(PlaceOrigin{file.name, {}, {}});
    return ReadContext(file.source, file.isPanel ? nullptr : origin, diagnostics);
}

} // namespace

QString Template::unknownPlaceholder(const QString& wanted) const
{
    const QString nearest = didYouMean(wanted, placeholders.keys());
    return QString("the template %1 has no placeholder %2%3")
        .arg(inQuotes(name.text), inQuotes(wanted),
             nearest.isEmpty() ? QString("; \"with\" in the template declares them") : nearest);
}

void TemplateLibrary::addPanel(const SourceFile& panel)
{
    m_open.append(pathOf(panel.name));
    m_names.append(panel.name);
    m_known = m_open;
    const ReadContext context = contextOf(panel, m_diagnostics);
    for (const YamlEntry& entry : panel.root->entries) {
        if (!isUsable(entry)) {
            continue;
        }
        if (entry.key->text == "templates") {
            readTemplates(entry, panel, context);
        } else if (entry.key->text == "include") {
            readIncludes(entry, panel, context);
        }
    }
}

const Template* TemplateLibrary::find(const QString& name) const
{
    const auto found = m_templates.constFind(name);
    return found == m_templates.constEnd() ? nullptr : &*found;
}

QString TemplateLibrary::suggestion(const QString& wanted) const
{
    if (m_templates.isEmpty()) {
        return "; \"templates\" and \"include\" bring them";
    }
    return didYouMeanOneOf(wanted, m_templates.keys());
}

void TemplateLibrary::readTemplates(const YamlEntry& entry, const SourceFile& file,
                                    const ReadContext& context)
{
    for (const YamlEntry& one : context.entriesOf(
             entry, YamlNode::Kind::Map,
             "templates must be a map: the name of each template, and what it holds")) {
        if (isUsable(one)) {
            readTemplate(one, file, context);
        }
    }
}

void TemplateLibrary::readTemplate(const YamlEntry& entry, const SourceFile& file,
                                   const ReadContext& context)
{
    Template made;
    made.name = {entry.key->text, context.at(entry.key->place)};
    made.file = &file;
    made.devices.value = made.connections.value = made.alarms.value =
        std::make_shared<const YamlNode>();
    for (const YamlEntry& part : context.entriesOf(
             entry, YamlNode::Kind::Map,
             "a template must be a map with the keys with, devices, connections and alarms")) {
        if (!isUsable(part)) {
            continue;
        }
        const QString& key = part.key->text;
        if (key == "with") {
            readPlaceholders(part, context, made);
        } else if (key == "devices") {
            made.devices = part;
        } else if (key == "connections") {
            made.connections = part;
        } else if (key == "alarms") {
            made.alarms = part;
        } else {
            context.refuseKey(*part.key, " of the template " + inQuotes(made.name.text),
                              {"with", "devices", "connections", "alarms"},
                              "a template has with, devices, connections and alarms");
        }
    }
    for (const YamlNodePtr& part :
         {made.devices.value, made.connections.value, made.alarms.value}) {
        made.values += valuesIn(*part);
        checkTexts(*part, context, made);
    }
    warnOfUnused(context, made);
    if (const Template* const earlier = find(made.name.text)) {
        context.refuse(made.name.place,
                       QString("the template %1 is given twice; it is already in %2, line %3")
                           .arg(inQuotes(made.name.text), earlier->file->name,
                                QString::number(earlier->name.place.line)));
    } else {
        m_templates.insert(made.name.text, made);
    }
}

void TemplateLibrary::readPlaceholders(const YamlEntry& with, const ReadContext& context,
                                       Template& made)
{
    for (const YamlEntry& entry :
         context.entriesOf(with, YamlNode::Kind::Map,
                           "with must be a map: the name of each placeholder, and the text that "
                           "stands for it where a use gives none")) {
        if (!isUsable(entry)) {
            continue;
        }
        const QString& name = entry.key->text;
        if (!isId(name)) {
            context.refuse(entry.key->place,
                           QString("the placeholder %1 may hold letters, digits, \"_\" "
                                   "and \"-\" only")
                               .arg(inQuotes(name)));
        }
        Template::Placeholder placeholder;
        placeholder.place = entry.key->place;
        if (entry.value->kind == YamlNode::Kind::Text) {
            placeholder.byDefault = entry.value->text;
        } else if (!entry.value->isText()) {
            context.refuse(
                entry.place,
                QString("the default of the placeholder %1 must be a text").arg(inQuotes(name)));
            placeholder.byDefault = QString();
        }
        made.placeholders.insert(name, placeholder);
    }
}

/// Whether the placeholders in this value, and in all below it, are the template's.
void TemplateLibrary::checkTexts(const YamlNode& node, const ReadContext& context, Template& made)
{
    checkText(node, context, made);
    for (const YamlEntry& entry : node.entries) {
        if (entry.key) {
            checkText(*entry.key, context, made);
        }
        checkTexts(*entry.value, context, made);
    }
}

void TemplateLibrary::checkText(const YamlNode& node, const ReadContext& context, Template& made)
{
    for (const TextPiece& piece : piecesOf(node.text)) {
        if (piece.kind == TextPiece::Kind::Literal) {
            continue;
        }
        const auto known = made.placeholders.find(piece.text);
        if (known != made.placeholders.end()) {
            known->isUsed = true;
        } else {
            const bool isOpen = piece.kind == TextPiece::Kind::Unclosed;
            const QString error = isOpen ? QString("\")\" is missing after \"$(\"")
                                         : made.unknownPlaceholder(piece.text);
            context.refuse(context.placeOf(node, piece.begin),
                           error + (error.endsWith('?') ? " " : "; ") +
                               "\"$$(\" stands for the text \"$(\"");
        }
    }
}

void TemplateLibrary::warnOfUnused(const ReadContext& context, const Template& made)
{
    for (auto one = made.placeholders.cbegin(); one != made.placeholders.cend(); ++one) {
        if (!one->isUsed) {
            context.warn(one->place, QString("the template %1 does not use its placeholder %2")
                                         .arg(inQuotes(made.name.text), inQuotes(one.key())));
        }
    }
}

void TemplateLibrary::readIncludes(const YamlEntry& entry, const SourceFile& file,
                                   const ReadContext& context)
{
    for (const YamlEntry& one :
         context.entriesOf(entry, YamlNode::Kind::List,
                           "include must be a list of files, such as [pumps.yaml]")) {
        if (one.value->isText() && !one.value->text.trimmed().isEmpty()) {
            include(one, file, context);
        } else {
            context.refuse(one.place, "the name of a file must be a text");
        }
    }
}

void TemplateLibrary::include(const YamlEntry& entry, const SourceFile& file,
                              const ReadContext& context)
{
    const QString name = nameBeside(file.name, entry.value->text);
    const QString path = pathOf(name);
    const int open = m_open.indexOf(path);
    if (open >= 0) {
        context.refuse(
            entry.place,
            QString("this file includes itself: %1").arg((m_names.mid(open) << name).join(" -> ")));
    } else if (!m_known.contains(path)) {
        m_known.append(path);
        if (auto loaded = load(name, entry, context)) {
            m_files.push_back(std::move(loaded));
            m_open.append(path);
            m_names.append(name);
            readIncluded(*m_files.back());
            m_open.removeLast();
            m_names.removeLast();
        }
    }
}

std::unique_ptr<SourceFile> TemplateLibrary::load(const QString& name, const YamlEntry& entry,
                                                  const ReadContext& context)
{
    const auto refuse = [&](const QString& text) {
        context.refuse(entry.place, text);
        return nullptr;
    };
    if (m_known.size() - 1 > kMaxFiles) {
        return refuse(QString("a panel includes %1 files at most").arg(kMaxFiles));
    }
    QString reason;
    const auto text = readTextFile(name, reason);
    if (!text) {
        return refuse(QString("%1 cannot be included: %2").arg(inQuotes(name), reason));
    }
    m_bytes += text->size();
    if (m_bytes > kMaxTextSize) {
        m_bytes -= text->size();
        return refuse("the included files are larger than 4 MiB");
    }
    auto file = std::make_unique<SourceFile>(SourceFile{name, SourceText(*text), nullptr});
    const auto tree = YamlTree::read(file->source);
    if (const auto* const error = std::get_if<TextError>(&tree)) {
        contextOf(*file, m_diagnostics).refuse(error->place, error->text);
        return nullptr;
    }
    file->root = std::get<YamlNodePtr>(tree);
    const int values = valuesIn(*file->root);
    if (m_values + values > YamlTree::kMaxValues) {
        return refuse("the included files hold more than 100,000 values");
    }
    m_values += values;
    return file;
}

void TemplateLibrary::readIncluded(const SourceFile& file)
{
    const ReadContext context = contextOf(file, m_diagnostics);
    if (file.root->kind != YamlNode::Kind::Map) {
        const bool isEmpty = file.root->kind == YamlNode::Kind::Absent;
        return context.refuse(isEmpty ? Place{1, 1} : file.root->place,
                              "an included file is a map with the keys templates and include");
    }
    context.checkKeys(*file.root, ReadContext::Keys::Any);
    for (const YamlEntry& entry : file.root->entries) {
        if (!isUsable(entry)) {
            continue;
        }
        if (entry.key->text == "templates") {
            readTemplates(entry, file, context);
        } else if (entry.key->text == "include") {
            readIncludes(entry, file, context);
        } else {
            context.refuseKey(*entry.key, " of an included file", {"templates", "include"},
                              "an included file has templates and include");
        }
    }
}

} // namespace norvo
