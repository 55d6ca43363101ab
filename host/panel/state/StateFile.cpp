// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/state/StateFile.h"

#include "host/panel/file/Diagnostics.h"
#include "host/panel/state/AtomicFile.h"
#include "host/panel/state/FileLock.h"
#include "host/yaml/SourceText.h"
#include "host/yaml/YamlText.h"
#include "host/yaml/YamlTree.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <variant>

namespace norvo {

namespace {

constexpr char kHeader[] = "# What this panel's devices have stored; written by norvo-panel.\n";
constexpr char kNothingSaved[] = "the panel starts without it and saves nothing";
constexpr int kMaxPlainKeyLength = 1000; // YAML takes a key without "?" up to 1024 characters.

QString keyed(const QString& key, const QString& indent)
{
    const QString text = YamlText::doubleQuoted(key);
    return text.size() <= kMaxPlainKeyLength ? indent + text + ':'
                                             : indent + "? " + text + '\n' + indent + ':';
}

/// Why a file of this state would be refused at the next start; empty when it would not.
QString limitPassed(const PanelState& state, const QByteArray& text)
{
    int values = 1;
    int longest = 0;
    for (auto device = state.cbegin(); device != state.cend(); ++device) {
        values += 1 + device->size();
        longest = std::max(longest, device.key().size());
        for (auto param = device->cbegin(); param != device->cend(); ++param) {
            longest = std::max(longest, param.key().size());
        }
    }
    return text.size() > kMaxTextSize          ? "it is larger than 4 MiB"
           : values > YamlTree::kMaxValues     ? "it has more than 100,000 values"
           : longest > YamlTree::kMaxKeyLength ? "it has a name of more than 1000 characters"
                                               : "";
}

QByteArray toYaml(const PanelState& state)
{
    QString text = kHeader;
    for (auto device = state.cbegin(); device != state.cend(); ++device) {
        if (device->isEmpty()) {
            continue;
        }
        text += keyed(device.key(), {}) + '\n';
        for (auto param = device->cbegin(); param != device->cend(); ++param) {
            text += keyed(param.key(), "  ") + ' ' + YamlText::doubleQuoted(param.value()) + '\n';
        }
    }
    return text.toUtf8();
}

struct ParsedState
{
    PanelState state;
    StatePlaces places;
};

bool isMap(const YamlNode& node)
{
    return node.kind == YamlNode::Kind::Map;
}

/// What keeps the entry from being part of a state; `isDevice`: it is to hold a device's
/// parameters.
std::optional<TextError> errorOf(const YamlEntry& entry, bool isDevice)
{
    if (!entry.key->isText()) {
        return TextError{entry.key->place, "a key must be a text"};
    }
    if (entry.earlier.line > 0) {
        return TextError{entry.key->place,
                         QString("the key %1 is given twice; it is already in %2")
                             .arg(inQuotes(entry.key->text), toString(entry.earlier))};
    }
    if (isDevice != isMap(*entry.value) || (!isDevice && !entry.value->isText())) {
        return TextError{entry.place,
                         isDevice ? "a map is expected here" : "a text is expected here"};
    }
    return std::nullopt;
}

/// The state that the file holds, or the first error in it.
std::variant<ParsedState, TextError> parse(const QByteArray& text)
{
    const auto tree = YamlTree::read(SourceText(text));
    if (const auto* error = std::get_if<TextError>(&tree)) {
        return *error;
    }
    const YamlNode& root = *std::get<YamlNodePtr>(tree);
    if (!isMap(root)) {
        return TextError{root.place, root.kind == YamlNode::Kind::Absent
                                         ? "it is empty"
                                         : "a map is expected here"};
    }
    ParsedState saved;
    for (const YamlEntry& device : root.entries) {
        if (const auto error = errorOf(device, true)) {
            return *error;
        }
        const QString& id = device.key->text;
        auto& params = saved.state[id];
        auto& places = saved.places[id];
        places.insert({}, device.key->place);
        for (const YamlEntry& param : device.value->entries) {
            if (const auto error = errorOf(param, false)) {
                return *error;
            }
            params.insert(param.key->text, param.value->text);
            places.insert(param.key->text, param.key->place);
        }
    }
    return saved;
}

/// Whether the text, which need not be sound, is that of a panel and not of a state.
bool isPanel(const QByteArray& text)
{
    static const QRegularExpression keys("^[{ \t]*[\"']?(title|devices|connections)[\"']?[ \t]*:",
                                         QRegularExpression::MultilineOption);
    return !text.startsWith(kHeader) && keys.match(QString::fromUtf8(text)).hasMatch();
}

} // namespace

StateFile::StateFile(const QString& fileName, Mode mode, QObject* parent)
    : QObject(parent),
      m_fileName(fileName),
      m_path(QFileInfo(fileName).absoluteFilePath()),
      m_mode(mode)
{
    m_delay.setInterval(kWriteDelayMs);
    connect(&m_delay, &QTimer::timeout, this, &StateFile::save);
}

StateFile::~StateFile() = default;

QString StateFile::besidePanel(const QString& panelFile)
{
    const QString ending = ".yaml";
    const QString base = panelFile.endsWith(ending) ? panelFile.chopped(ending.size()) : panelFile;
    return base + ".state.yaml";
}

void StateFile::read()
{
    m_state.clear();
    m_places.clear();
    if (m_mode == Mode::ReadWrite) {
        lock();
    }
    if (!QFileInfo::exists(m_path)) {
        return;
    }
    QString reason;
    const auto text = readTextFile(m_path, reason);
    if (!text) {
        m_mode = Mode::ReadOnly;
        warn({}, QString("the saved state cannot be read: %1; %2").arg(reason, kNothingSaved));
        return;
    }
    if (isPanel(*text)) {
        m_mode = Mode::ReadOnly;
        warn({}, QString("this is a panel and not a saved state; %1").arg(kNothingSaved));
        return;
    }
    const auto saved = parse(*text);
    if (const auto* error = std::get_if<TextError>(&saved)) {
        quarantine(*error);
    } else {
        m_state = std::get<ParsedState>(saved).state;
        m_places = std::get<ParsedState>(saved).places;
    }
}

void StateFile::lock()
{
    // Links to one file have one lock.
    const QString target = QFileInfo(m_path).canonicalFilePath();
    const QString name = target.isEmpty() ? m_path : target;
    m_lock = std::make_unique<FileLock>(name + ".lock");
    const FileLock::Result result = m_lock->lock();
    if (result == FileLock::Result::Busy) {
        m_mode = Mode::ReadOnly;
        warn({}, "another panel that runs saves its state here, so this one saves none; --state "
                 "FILE gives it a file of its own");
    } else if (result == FileLock::Result::Locked) {
        removeLeftovers(name);
    }
}

void StateFile::set(const QString& device, const QString& param, const QString& value)
{
    auto& params = m_state[device];
    const auto known = params.constFind(param);
    if (known != params.constEnd() && *known == value) {
        return;
    }
    params.insert(param, value);
    m_unsaved = true;
    if (m_mode == Mode::ReadWrite && !m_delay.isActive()) {
        m_delay.start();
    }
}

void StateFile::save()
{
    m_delay.stop();
    if (!m_unsaved || m_mode == Mode::ReadOnly) {
        return;
    }
    const QByteArray text = toYaml(m_state);
    QString reason = limitPassed(m_state, text);
    if (reason.isEmpty() && writeFileAtomically(m_path, text, reason)) {
        m_unsaved = false;
        m_isFailureReported = false;
    } else if (!m_isFailureReported) {
        m_isFailureReported = true;
        warn(
            {},
            QString("the state cannot be saved: %1; tried again with the next change").arg(reason));
    }
}

/// Puts a file that cannot be parsed out of the way, so that the next state takes nothing from it.
void StateFile::quarantine(const TextError& error)
{
    const QString start = QString("the saved state cannot be parsed: %1; ").arg(error.text);
    const QString ending = ".bad";
    const QString bad = m_fileName + ending;
    if (m_mode == Mode::ReadOnly) {
        warn(error.place, start + "the panel starts without it");
    } else if (std::rename(QFile::encodeName(m_path), QFile::encodeName(m_path + ending)) == 0) {
        warn(error.place,
             start + QString("it is kept as %1 and the panel starts without it").arg(bad));
    } else {
        m_mode = Mode::ReadOnly;
        warn(error.place,
             start + QString("it cannot be kept as %1, so %2").arg(bad, kNothingSaved));
    }
}

void StateFile::warn(const Place& place, const QString& text)
{
    emit problem(Diagnostic{Diagnostic::Severity::Warning, m_fileName, place, text}.toString());
}

} // namespace norvo
