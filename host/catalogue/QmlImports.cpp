// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/QmlImports.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

namespace norvo {

namespace {

constexpr int kMaxFiles = 200; // A document that imports more is not followed beyond them.
constexpr qint64 kMaxSize = 1024LL * 1024;

QString textOf(const QString& file)
{
    QFile in(file);
    return QFileInfo(file).isFile() && in.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(in.read(kMaxSize))
               : QString();
}

/// What the first group takes, wherever the expression fits.
QStringList captured(const QString& text, const QRegularExpression& expression)
{
    QStringList found;
    for (auto match = expression.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured(1));
    }
    found.removeDuplicates();
    return found;
}

/// Follows a document from file to file.
class Imports
{
public:
    void follow(const QString& file)
    {
        const QString text = textOf(file);
        const QDir folder = QFileInfo(file).absoluteDir();
        static const QRegularExpression quoted(R"re(["']([^"'\n]+\.(?:qml|m?js))["'])re");
        for (const QString& name : captured(text, quoted)) {
            add(folder, name);
        }
        if (!file.endsWith(".qml")) {
            return;
        }
        addTypes(text, folder);
        static const QRegularExpression imported(R"re(^\s*import\s+["']([^"'\n]+)["'])re",
                                                 QRegularExpression::MultilineOption);
        for (const QString& name : captured(text, imported)) {
            const QDir other(folder.absoluteFilePath(name));
            if (!name.contains(':') && other.exists()) {
                addTypes(text, other);
            }
        }
    }

    const QStringList& files() const { return m_files; }

private:
    void addTypes(const QString& text, const QDir& folder)
    {
        static const QRegularExpression named(R"re(\b([A-Z]\w*))re");
        static const QRegularExpression made(R"re(\b([A-Z]\w*)\s*\{)re");
        for (const QString& type : captured(text, named)) {
            if (folder.exists(type + ".qml")) {
                add(folder, type + ".qml");
            }
        }
        for (const QString& type : captured(text, made)) {
            add(folder, type + ".qml");
        }
        if (folder.exists("qmldir")) {
            add(folder, "qmldir");
            static const QRegularExpression listed(R"re((\S+\.(?:qml|m?js))\s)re");
            for (const QString& name : captured(textOf(folder.filePath("qmldir")) + '\n', listed)) {
                add(folder, name);
            }
        }
    }

    void add(const QDir& folder, const QString& name)
    {
        const QString file = QDir::cleanPath(folder.absoluteFilePath(name));
        if (name.contains(':') || m_files.size() >= kMaxFiles || m_known.contains(file)) {
            return;
        }
        m_known.insert(file);
        m_files.append(file);
        follow(file);
    }

    QSet<QString> m_known;
    QStringList m_files;
};

} // namespace

QStringList qmlImports(const QString& document)
{
    Imports imports;
    imports.follow(QFileInfo(document).absoluteFilePath());
    QStringList files = imports.files();
    files.removeAll(QDir::cleanPath(QFileInfo(document).absoluteFilePath()));
    return files;
}

} // namespace norvo
