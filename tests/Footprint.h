// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractEventDispatcher>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QInputMethod>
#include <QMap>
#include <QMetaMethod>
#include <QObject>
#include <QScreen>
#include <QSet>
#include <QStringList>
#include <QStyleHints>

#include <malloc.h>

/// How much of everything a program has, to be compared with how much it has later: objects, who
/// listens to them, timers, open handles, threads and memory.
class Footprint
{
public:
    /// Of what stands below `roots`, and of the objects that a whole application shares.
    static Footprint of(const QObjectList& roots)
    {
        QSet<QObject*> all{QGuiApplication::styleHints(), QGuiApplication::clipboard(),
                           QGuiApplication::inputMethod(), QGuiApplication::primaryScreen()};
        const QObjectList withShared = roots + QObjectList{qApp};
        for (QObject* const root : withShared) {
            all.insert(root);
            const QObjectList below = root->findChildren<QObject*>();
            for (QObject* const one : below) {
                all.insert(one);
            }
        }
        Footprint footprint;
        const auto* const dispatcher = QAbstractEventDispatcher::instance();
        for (QObject* const one : qAsConst(all)) {
            const QString type = one->metaObject()->className();
            ++footprint.m_counts["objects " + type];
            footprint.m_counts["timers of " + type] += dispatcher->registeredTimers(one).size();
            footprint.m_counts["receivers of " + type] += receiversOf(*one);
        }
        footprint.m_counts["handles"] = entriesIn("/proc/self/fd");
        footprint.m_counts["threads"] = entriesIn("/proc/self/task");
        footprint.m_bytes = allocated();
        return footprint;
    }

    int count(const QString& what) const { return m_counts.value(what); }
    int total(const QString& kind) const ///< Of "objects" or "receivers", whatever their types.
    {
        int sum = 0;
        for (auto one = m_counts.cbegin(); one != m_counts.cend(); ++one) {
            sum += one.key().startsWith(kind + ' ') ? one.value() : 0;
        }
        return sum;
    }
    size_t bytes() const { return m_bytes; } ///< That are allocated; 0 under a sanitizer.

    /// What there is more or less of, memory left aside; empty: nothing.
    static QString difference(const Footprint& before, const Footprint& after)
    {
        QStringList whats = before.m_counts.keys() + after.m_counts.keys();
        whats.removeDuplicates();
        QStringList lines;
        for (const QString& what : qAsConst(whats)) {
            if (before.count(what) != after.count(what)) {
                lines.append(QString("%1: %2, then %3")
                                 .arg(what)
                                 .arg(before.count(what))
                                 .arg(after.count(what)));
            }
        }
        return lines.join('\n');
    }

private:
    static int receiversOf(const QObject& object)
    {
        struct Open : QObject
        {
            using QObject::receivers;
        };
        const QMetaObject& type = *object.metaObject();
        int count = 0;
        for (int i = 0; i < type.methodCount(); ++i) {
            const QMetaMethod method = type.method(i);
            if (method.methodType() == QMetaMethod::Signal) {
                count += (object.*&Open::receivers)('2' + method.methodSignature());
            }
        }
        return count;
    }
    static int entriesIn(const char* folder)
    {
        return QDir(folder)
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System)
            .size();
    }
    static size_t allocated()
    {
        const auto info = mallinfo2();
        return info.uordblks + info.hblkhd;
    }

    QMap<QString, int> m_counts;
    size_t m_bytes = 0;
};
