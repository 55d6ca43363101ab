#include "host/panel/file/StateFile.h"

#include "host/panel/file/Diagnostics.h"
#include "host/panel/file/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

#include <yaml-cpp/yaml.h>

#include <cstdio>

namespace norvo {

namespace {

constexpr int kLongestPlainKey = 1000; // YAML takes a key without "?" up to 1024 characters.

/// True for what an editor may show as nothing or as a new line, and what YAML does not take raw.
bool needsEscape(uint c)
{
    return c < 0x20 || (c >= 0x7f && c <= 0xa0) || c == 0x2028 || c == 0x2029 || c == 0xfeff ||
           (c & 0xfffe) == 0xfffe;
}

QString escape(uint c)
{
    return c <= 0xffff ? QString("\\u%1").arg(c, 4, 16, QChar('0'))
                       : QString("\\U%1").arg(c, 8, 16, QChar('0'));
}

QString quoted(const QString& text)
{
    QString result = "\"";
    const QVector<uint> characters = text.toUcs4();
    for (uint c : characters) {
        if (QChar::isSurrogate(c)) { // Half of a pair: there is no way to write it down.
            c = QChar::ReplacementCharacter;
        }
        if (c == '"' || c == '\\') {
            result += '\\';
            result += QChar(c);
        } else if (c == '\n') {
            result += "\\n";
        } else if (needsEscape(c)) {
            result += escape(c);
        } else {
            result += QString::fromUcs4(&c, 1);
        }
    }
    return result + '"';
}

QString keyed(const QString& key, const QString& indent)
{
    const QString text = quoted(key);
    return text.size() <= kLongestPlainKey ? indent + text + ':'
                                           : indent + "? " + text + '\n' + indent + ':';
}

QByteArray toYaml(const PanelState& state)
{
    QString text = "# What this panel's devices have stored; written by norvo-panel.\n";
    for (auto device = state.cbegin(); device != state.cend(); ++device) {
        if (device->isEmpty()) {
            continue;
        }
        text += keyed(device.key(), {}) + '\n';
        for (auto param = device->cbegin(); param != device->cend(); ++param) {
            text += keyed(param.key(), "  ") + ' ' + quoted(param.value()) + '\n';
        }
    }
    return text.toUtf8();
}

QString textOf(const YAML::Node& node)
{
    if (!node.IsScalar()) {
        throw YAML::RepresentationException(node.Mark(), "a text is expected here");
    }
    return QString::fromStdString(node.Scalar());
}

void requireMap(const YAML::Node& node)
{
    if (!node.IsMap()) {
        throw YAML::RepresentationException(node.Mark(), "a map is expected here");
    }
}

PanelState fromYaml(const QByteArray& text)
{
    const YAML::Node root = YAML::Load(std::string(text.constData(), size_t(text.size())));
    if (!root.IsDefined() || root.IsNull()) {
        throw YAML::RepresentationException(YAML::Mark::null_mark(), "it is empty");
    }
    requireMap(root);
    PanelState state;
    for (const auto& device : root) {
        requireMap(device.second);
        auto& params = state[textOf(device.first)];
        for (const auto& param : device.second) {
            params.insert(textOf(param.first), textOf(param.second));
        }
    }
    return state;
}

bool isUtf8(const QByteArray& text)
{
    QTextCodec::ConverterState converter;
    QTextCodec::codecForName("UTF-8")->toUnicode(text.constData(), text.size(), &converter);
    return converter.invalidChars == 0 && converter.remainingChars == 0;
}

QString describe(const YAML::Exception& exception)
{
    const QString text = QString::fromStdString(exception.msg);
    return exception.mark.is_null() ? text
                                    : text + QString(" (line %1)").arg(exception.mark.line + 1);
}

/// The state that the file holds; what is wrong with the file otherwise goes into `reason`.
PanelState readState(const QString& fileName, QString& reason)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile()) { // Opening a pipe would wait for its other end.
        reason = "it is no regular file";
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        reason = file.errorString();
        return {};
    }
    const QByteArray text = file.read(StateFile::kSizeLimit + 1);
    if (text.size() > StateFile::kSizeLimit) {
        reason = "it is larger than 4 MiB";
        return {};
    }
    if (!isUtf8(text)) {
        reason = "it is not UTF-8 text";
        return {};
    }
    try {
        return fromYaml(text);
    } catch (const YAML::Exception& exception) {
        reason = describe(exception);
    } catch (const std::exception& exception) {
        reason = QString::fromLocal8Bit(exception.what());
    }
    return {};
}

} // namespace

StateFile::StateFile(const QString& fileName, Mode mode, QObject* parent)
    : QObject(parent), m_fileName(fileName), m_mode(mode)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(kWriteDelayMs);
    connect(&m_delay, &QTimer::timeout, this, &StateFile::save);
}

QString StateFile::besidePanel(const QString& panelFile)
{
    QString base = panelFile;
    for (const char* ending : {".yaml", ".yml"}) {
        if (base.endsWith(QLatin1String(ending), Qt::CaseInsensitive)) {
            base.chop(int(qstrlen(ending)));
            break;
        }
    }
    return base + ".state.yaml";
}

void StateFile::read()
{
    m_state.clear();
    if (!QFileInfo::exists(m_fileName)) {
        return;
    }
    QString reason;
    m_state = readState(m_fileName, reason);
    if (!reason.isEmpty()) {
        m_state.clear();
        putAside(reason);
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
    QString reason;
    if (writeFileAtomically(m_fileName, toYaml(m_state), reason)) {
        m_unsaved = false;
        m_failureTold = false;
        return;
    }
    if (!m_failureTold) {
        m_failureTold = true;
        tell(
            QString("the state cannot be saved: %1; tried again with the next change").arg(reason));
    }
}

void StateFile::putAside(const QString& reason)
{
    const QString start = QString("the saved state does not read: %1; ").arg(reason);
    const QString bad = m_fileName + ".bad";
    if (m_mode == Mode::ReadOnly || !QFileInfo(m_fileName).isFile()) {
        tell(start + "the panel starts without it");
    } else if (std::rename(QFile::encodeName(m_fileName), QFile::encodeName(bad)) == 0) {
        tell(start + QString("it is kept as %1 and the panel starts without it").arg(bad));
    } else {
        tell(start + QString("the panel starts without it; it cannot be kept as %1").arg(bad));
    }
}

void StateFile::tell(const QString& text)
{
    emit problem(Diagnostic{Diagnostic::Severity::Warning, m_fileName, {}, text}.toString());
}

} // namespace norvo
