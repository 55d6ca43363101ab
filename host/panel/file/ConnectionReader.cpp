// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/ConnectionReader.h"

#include "host/panel/file/TemplateUse.h"

namespace norvo {

namespace {

constexpr int kMaxConnectionLength = 1000; // In characters.
const QString kSign = QStringLiteral("->");

/// Reads one connection.
class ConnectionReader
{
public:
    ConnectionReader(const YamlEntry& entry, const ReadContext& context)
        : m_entry(entry), m_node(*entry.value), m_context(context)
    {}

    std::optional<ConnectionSetting> read() const
    {
        if (!m_node.isText()) {
            return refuse(QString("a connection is a text such as %1").arg(kConnectionExample));
        }
        const QString& text = m_node.text;
        if (text.trimmed().isEmpty()) {
            return refuse(
                QString("the connection is empty; write one such as %1").arg(kConnectionExample));
        }
        if (text.size() > kMaxConnectionLength) {
            return refuse(tooLong());
        }
        const int sign = text.indexOf(kSign);
        if (sign < 0) {
            return refuse(QString("%1 holds no \"->\"; write a connection such as %2")
                              .arg(inQuotes(text), kConnectionExample));
        }
        const int second = text.indexOf(kSign, sign + kSign.size());
        if (second >= 0) {
            m_context.refuse(m_context.placeOf(m_node, second), kOneSign);
            return std::nullopt;
        }
        const auto from = readEndpoint(0, sign, true);
        const auto to = readEndpoint(sign + kSign.size(), text.size(), false);
        if (!from || !to) {
            return std::nullopt;
        }
        return ConnectionSetting{*from, *to, {wholeText(*from, *to), m_context.at(m_node.place)}};
    }

    std::optional<Endpoint> readSource() const
    {
        if (!m_node.isText() || m_node.text.trimmed().isEmpty()) {
            m_context.refuse(m_entry.place, "a signal is a text such as \"device.signal\"");
            return std::nullopt;
        }
        if (m_node.text.size() > kMaxConnectionLength || m_node.text.contains(kSign)) {
            m_context.refuse(m_entry.place, "a signal is one device's, \"device.signal\"");
            return std::nullopt;
        }
        return readEndpoint(0, m_node.text.size(), true);
    }

private:
    static constexpr char kOneSign[] =
        "a connection holds one \"->\"; write one connection for each";

    QString wholeText(const Endpoint& from, const Endpoint& to) const
    {
        return m_context.use()
                   ? QString("%1.%2 -> %3.%4")
                         .arg(from.device.text, from.method.text, to.device.text, to.method.text)
                   : m_node.text;
    }

    /// Reads one side of the connection, which reaches from `begin` up to `end` of the node's text.
    std::optional<Endpoint> readEndpoint(int begin, int end, bool isSource) const
    {
        const QString kind = isSource ? "signal" : "slot";
        const QString written = m_node.text.mid(begin, end - begin);
        const QString side = m_context.filled(written);
        const QString trimmed = side.trimmed();
        // What is filled in has no place of its own.
        const int writtenAt = begin + written.indexOf(written.trimmed());
        const auto placeOf = [&](int index) {
            return m_context.placeOf(m_node, side == written ? index : writtenAt);
        };
        if (trimmed.isEmpty()) {
            m_context.refuse(m_context.placeOf(m_node, isSource ? end : begin - kSign.size()),
                             QString("missing %1 \"->\"; write a device's id and its %2, \"id.%2\"")
                                 .arg(isSource ? "source before" : "target after", kind));
            return std::nullopt;
        }
        const int first = begin + side.indexOf(trimmed);
        const int point = trimmed.indexOf('.');
        const QString device = trimmed.left(point).trimmed();
        const QString method = point < 0 ? QString() : trimmed.mid(point + 1).trimmed();
        const QString error = errorOf(trimmed, device, method, kind);
        if (!error.isEmpty()) {
            m_context.refuse(placeOf(first), error);
            return std::nullopt;
        }
        const int methodAt = first + trimmed.indexOf(method, point + 1);
        const QString prefix = m_context.use() ? m_context.use()->prefixOf(written) : QString();
        return Endpoint{{prefix + device, placeOf(first)}, {method, placeOf(methodAt)}};
    }

    static QString errorOf(const QString& side, const QString& device, const QString& method,
                           const QString& kind)
    {
        if (side.contains(kSign)) {
            return kOneSign;
        }
        if (side.size() > kMaxConnectionLength) {
            return tooLong();
        }
        if (device.isEmpty()) {
            return QString("the id of a device is missing before %1").arg(inQuotes(side));
        }
        return method.isEmpty()
                   ? QString("%1 names no %2; write \"%3.%2\"").arg(inQuotes(side), kind, device)
                   : QString();
    }

    static QString tooLong()
    {
        return QString("a connection has %1 characters at most").arg(kMaxConnectionLength);
    }

    std::optional<ConnectionSetting> refuse(const QString& text) const
    {
        m_context.refuse(m_entry.place, text);
        return std::nullopt;
    }

    const YamlEntry& m_entry;
    const YamlNode& m_node;
    const ReadContext& m_context;
};

} // namespace

std::optional<ConnectionSetting> readConnection(const YamlEntry& entry, const ReadContext& context)
{
    return ConnectionReader(entry, context).read();
}

std::optional<Endpoint> readSource(const YamlEntry& entry, const ReadContext& context)
{
    return ConnectionReader(entry, context).readSource();
}

} // namespace norvo
