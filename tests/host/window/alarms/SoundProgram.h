// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QTemporaryDir>

/// A program in the place of that which plays tones: a shell script that keeps what it was asked
/// for.
class SoundProgram : public QTemporaryDir
{
public:
    /// What it does with each line, which it has in $tone.
    static constexpr char kPlays[] = "echo $tone >>heard; echo";

    explicit SoundProgram(const QByteArray& perLine = kPlays)
    {
        QFile script(program());
        if (!script.open(QIODevice::WriteOnly)) {
            qFatal("cannot write %s", qPrintable(script.fileName()));
        }
        script.write(
            "#!/bin/sh\ncd \"$(dirname \"$0\")\"\necho $$ >>started\nwhile read tone; do\n" +
            perLine + "\ndone\n");
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString program() const { return filePath("sound"); }
    QByteArray heard() const { return content("heard"); }
    int starts() const { return content("started").count('\n'); }
    QByteArray lastProcess() const { return content("started").trimmed().split('\n').last(); }

private:
    QByteArray content(const QString& name) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};
