// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/texts/Language.h"

#include <QDir>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QStringList>
#include <QTranslator>

// A static library's resource is left out of a program that does not ask for it.
static void initResource()
{
    Q_INIT_RESOURCE(texts);
}

namespace norvo {

namespace {

const QString kFolder = QStringLiteral(":/norvo/texts");
const QString kInstalled = QStringLiteral("norvoLanguage");

void install(QGuiApplication& application, const QLocale& locale, const QString& name,
             const QString& folder)
{
    auto* const texts = new QTranslator(&application);
    texts->setObjectName(kInstalled);
    if (texts->load(locale, name, "_", folder)) {
        QCoreApplication::installTranslator(texts);
    } else {
        delete texts;
    }
}

} // namespace

void Language::use(QGuiApplication& application, const QString& name)
{
    initResource();
    qDeleteAll(application.findChildren<QTranslator*>(kInstalled));
    const QLocale locale = name.isEmpty() ? QLocale::system() : QLocale(name);
    install(application, locale, "qtbase", QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(application, locale, "norvo", kFolder);
    application.setProperty("norvoLanguage", locale.name());
    if (!name.isEmpty()) {
        QGuiApplication::setLayoutDirection(locale.textDirection());
    }
}

QStringList Language::all()
{
    initResource();
    QStringList names{"en"}; // That the texts are written in.
    const QStringList files = QDir(kFolder).entryList({"norvo_*.qm"});
    for (const QString& file : files) {
        names.append(file.section('_', 1).section('.', 0, 0));
    }
    names.sort();
    return names;
}

} // namespace norvo
