// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/DynamicPorts.h"

#include "host/core/Methods.h"

#include <QSet>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace {

// The layout of a meta-object's data, as Qt's own compiler of meta-objects writes it in revision 8.
constexpr uint kRevision = 8;
constexpr uint kHeaderSize = 14;
constexpr uint kMethodSize = 5;  ///< Name, number of arguments, where these begin, tag, flags.
constexpr int kMaxCount = 60000; ///< Qt counts the methods of an object in 16 bits.
constexpr uint kIsNamedType = 0x80000000; ///< The rest is the number of the string with the name.
constexpr uint kPublicSignal = 0x06;
constexpr uint kPublicSlot = 0x0a;

/// The strings of a meta-object: a row of headers, each with the distance to its characters.
class Strings
{
public:
    uint add(const QByteArray& text)
    {
        m_texts.append(text);
        return uint(m_texts.size() - 1);
    }

    /// Valid until the next add().
    const QByteArrayData* headers()
    {
        m_headers = std::make_unique<QByteArrayData[]>(std::size_t(m_texts.size()));
        for (int i = 0; i < m_texts.size(); ++i) {
            QByteArrayData& header = m_headers[std::size_t(i)];
            header.ref.atomic.storeRelaxed(-1); // never counted, never freed
            header.size = m_texts[i].size();
            header.offset = qptrdiff(quintptr(m_texts[i].constData()) - quintptr(&header));
        }
        return m_headers.get();
    }

private:
    QVector<QByteArray> m_texts;
    std::unique_ptr<QByteArrayData[]> m_headers;
};

struct Port
{
    QByteArray name;
    QVector<int> types;
    DynamicPorts::Slot slot; ///< Of a slot only.
};

} // namespace

struct DynamicPorts::Table
{
    std::vector<Port> signalPorts; ///< Come first in the meta-object, as Qt asks for.
    std::vector<Port> slotPorts;
    QSet<QByteArray> known; ///< Name and types of each.
    Strings strings;
    std::vector<uint> data;
    QMetaObject meta = {};
    int calls = 0; ///< Of slots that have not returned yet.
    bool isOrphan = false;

    bool isBuilt() const { return meta.d.data != nullptr; }
    int signalCount() const { return int(signalPorts.size()); }
    int count() const { return signalCount() + int(slotPorts.size()); }

    /// Enters the port among those that there are, unless there may be no such one.
    bool accept(const QByteArray& name, const QVector<int>& types)
    {
        const auto isKnown = [](int type) { return QMetaType::isRegistered(type); };
        if (isBuilt() || count() >= kMaxCount ||
            !std::all_of(types.begin(), types.end(), isKnown)) {
            return false;
        }
        const QByteArray key = name + '(' +
                               QByteArray(reinterpret_cast<const char*>(types.constData()),
                                          types.size() * int(sizeof(int)));
        const int before = known.size();
        known.insert(key);
        return known.size() > before;
    }

    void build()
    {
        data.assign(kHeaderSize, 0);
        data[0] = kRevision;
        data[1] = strings.add("DynamicPorts");
        data[4] = uint(count());
        data[5] = kHeaderSize; // where the methods begin
        data[13] = uint(signalCount());
        const uint noText = strings.add("");
        uint arguments = kHeaderSize + kMethodSize * uint(count());
        addMethods(signalPorts, kPublicSignal, noText, arguments);
        addMethods(slotPorts, kPublicSlot, noText, arguments);
        addTypes(signalPorts, noText);
        addTypes(slotPorts, noText);
        data.push_back(0); // the end
        known.clear();
        meta.d.superdata = &QObject::staticMetaObject;
        meta.d.stringdata = strings.headers();
        meta.d.data = data.data();
    }

private:
    void addMethods(const std::vector<Port>& ports, uint flags, uint noText, uint& arguments)
    {
        for (const Port& port : ports) {
            const uint argumentCount = uint(port.types.size());
            data.insert(data.end(),
                        {strings.add(port.name), argumentCount, arguments, noText, flags});
            arguments += 1 + 2 * argumentCount;
        }
    }

    /// For each method the type that it returns, those of its arguments, and their names.
    void addTypes(const std::vector<Port>& ports, uint noText)
    {
        for (const Port& port : ports) {
            data.push_back(QMetaType::Void);
            for (int type : port.types) {
                data.push_back(type < QMetaType::User
                                   ? uint(type)
                                   : kIsNamedType | strings.add(QMetaType::typeName(type)));
            }
            data.insert(data.end(), std::size_t(port.types.size()), noText);
        }
    }
};

DynamicPorts::DynamicPorts() : m_table(new Table) {}

DynamicPorts::~DynamicPorts()
{
    m_table->isOrphan = true;
    if (m_table->calls == 0) {
        delete m_table;
    }
}

int DynamicPorts::addSignal(const QByteArray& name, const QVector<int>& types)
{
    if (!m_table->accept(name, types)) {
        return -1;
    }
    m_table->signalPorts.push_back({name, types, {}});
    return m_table->signalCount() - 1;
}

bool DynamicPorts::addSlot(const QByteArray& name, const QVector<int>& types, Slot slot)
{
    if (!m_table->accept(name, types)) {
        return false;
    }
    m_table->slotPorts.push_back({name, types, std::move(slot)});
    return true;
}

void DynamicPorts::build()
{
    Q_ASSERT(!m_table->isBuilt());
    m_table->build();
}

void DynamicPorts::activate(int signal, void** arguments)
{
    Q_ASSERT(m_table->isBuilt() && signal >= 0 && signal < m_table->signalCount());
    QMetaObject::activate(this, &m_table->meta, signal, arguments);
}

bool DynamicPorts::isHeard(int signal) const
{
    return isSignalConnected(m_table->meta.method(m_table->meta.methodOffset() + signal));
}

bool DynamicPorts::carries(int signal, const QVector<int>& types) const
{
    return m_table->signalPorts.at(std::size_t(signal)).types == types;
}

QStringList DynamicPorts::signatures(const QString& name, QMetaMethod::MethodType type) const
{
    return norvo::signatures(*metaObject(), QObject::staticMetaObject, name, type);
}

QString DynamicPorts::signatureOf(const QString& name, QMetaMethod::MethodType type) const
{
    return norvo::signatureOf(*metaObject(), QObject::staticMetaObject, name, type);
}

const QMetaObject* DynamicPorts::metaObject() const
{
    return m_table->isBuilt() ? &m_table->meta : QObject::metaObject();
}

int DynamicPorts::qt_metacall(QMetaObject::Call call, int id, void** arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    const bool isCall = call == QMetaObject::InvokeMetaMethod;
    if (id < 0 || (!isCall && call != QMetaObject::RegisterMethodArgumentMetaType)) {
        return id;
    }
    const int count = m_table->count();
    if (!isCall) {
        *static_cast<int*>(arguments[0]) = -1; // Qt knows all types already.
    } else if (id < m_table->signalCount()) {
        activate(id, arguments);
    } else if (id < count) {
        Table* const table = m_table; // The slot may delete this object.
        ++table->calls;
        table->slotPorts[std::size_t(id - table->signalCount())].slot(arguments);
        if (--table->calls == 0 && table->isOrphan) {
            delete table;
        }
    }
    return id - count;
}
