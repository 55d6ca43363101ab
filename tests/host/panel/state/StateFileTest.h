// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/state/StateFile.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// A test in a folder of its own with a state file in it, new for each test function.
class StateFileTest : public QObject
{
    Q_OBJECT

protected:
    QString filePath(const QString& name) const { return m_folder->filePath(name); }
    QString folder() const { return m_folder->path(); }
    QString file() const { return filePath("panel.state.yaml"); }

    QByteArray content() const
    {
        QFile state(file());
        return state.open(QIODevice::ReadOnly) ? state.readAll() : QByteArray();
    }

    void fill(const QByteArray& text) const
    {
        QFile state(file());
        QVERIFY(state.open(QIODevice::WriteOnly));
        QCOMPARE(state.write(text), qint64(text.size()));
    }

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};
