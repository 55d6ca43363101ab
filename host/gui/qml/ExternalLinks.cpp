// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/ExternalLinks.h"

#include "host/gui/qml/QmlSandbox.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>
#include <QVector>

namespace norvo {

namespace {

QVector<QmlSandbox*> s_sandboxes;

/// The usual ones, and those of which the desktop knows a program.
QSet<QString> schemes()
{
    QSet<QString> found{"",       "file", "http", "https", "ftp",    "ftps", "sftp",
                        "mailto", "tel",  "sms",  "ssh",   "telnet", "smb",  "dav",
                        "davs",   "vnc",  "rdp",  "irc",   "news",   "data", "sip",
                        "xmpp",   "geo",  "help", "man",   "info",   "trash"};
    const QByteArray prefix = "x-scheme-handler/";
    const QStringList lists =
        QStandardPaths::locateAll(QStandardPaths::ApplicationsLocation, "mimeinfo.cache");
    for (const QString& list : lists) {
        QFile file(list);
        file.open(QIODevice::ReadOnly);
        const QByteArrayList lines = file.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (line.startsWith(prefix)) {
                found.insert(line.mid(prefix.size(), line.indexOf('=') - prefix.size()));
            }
        }
    }
    return found;
}

} // namespace

ExternalLinks::ExternalLinks() : QObject(QCoreApplication::instance())
{
    const QSet<QString> all = schemes();
    for (const QString& scheme : all) {
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }
}

void ExternalLinks::add(QmlSandbox& sandbox)
{
    static QPointer<ExternalLinks> s_instance;
    if (!s_instance) {
        s_instance = new ExternalLinks;
    }
    s_sandboxes.append(&sandbox);
}

void ExternalLinks::remove(QmlSandbox& sandbox)
{
    s_sandboxes.removeAll(&sandbox);
}

void ExternalLinks::open(const QUrl& url)
{
    bool isRefused = false;
    for (QmlSandbox* const sandbox : qAsConst(s_sandboxes)) {
        if (!sandbox->isAllowed() && sandbox->isRunning()) {
            sandbox->refuse("opening " + url.toString());
            isRefused = true;
        }
    }
    if (!isRefused) {
        QDesktopServices::openUrl(url); // Qt does not come back to this function from here.
    }
}

} // namespace norvo
