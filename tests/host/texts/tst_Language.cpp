// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/texts/Language.h"

#include "host/window/PanelWindow.h"
#include "norvo/NumpadDialog.h"
#include "TestMain.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>

using norvo::Language::use;

namespace {

/// Source text to translation.
QMap<QString, QString> translations(const QString& language)
{
    QFile file(QString(NORVO_SOURCE_DIR "/host/texts/norvo_%1.ts").arg(language));
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&file);
    QMap<QString, QString> texts;
    QString source;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == QLatin1String("source")) {
            source = reader.readElementText();
        } else if (reader.isStartElement() && reader.name() == QLatin1String("translation")) {
            const bool isDone = reader.attributes().isEmpty();
            texts.insert(source, isDone ? reader.readElementText() : QString());
        }
    }
    return texts;
}

/// What the host's sources hold between the quotes of tr("...").
QStringList textsOfTheHost()
{
    static const QRegularExpression pattern(R"x(\btr\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+))x");
    QStringList texts;
    QDirIterator sources(NORVO_SOURCE_DIR "/host", {"*.cpp", "*.h"}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        QFile file(sources.next());
        file.open(QIODevice::ReadOnly);
        auto found = pattern.globalMatch(QString::fromUtf8(file.readAll()));
        while (found.hasNext()) {
            QString literal = found.next().captured(1).trimmed();
            literal.remove(QRegularExpression("\"\\s*\""));
            texts.append(literal.mid(1, literal.size() - 2).replace("\\\"", "\""));
        }
    }
    return texts;
}

} // namespace

class tst_Language : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void everyTextOfTheHostIsTranslated_data() { languages(); }
    void everyTextOfTheHostIsTranslated();
    void placeholdersOfATextAreKept_data() { languages(); }
    void placeholdersOfATextAreKept();
    void windowsAndDialogsSpeakIt();
    void unknownLanguageLeavesTheTextsInEnglish();
    void panelIsMirroredForAScriptFromTheRight();
    void keyboardIsToldTheLanguage();

private:
    static void languages()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("German") << "de";
        QTest::newRow("Russian") << "ru";
    }
};

void tst_Language::cleanup()
{
    for (auto* translator : qApp->findChildren<QTranslator*>()) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

void tst_Language::everyTextOfTheHostIsTranslated()
{
    QFETCH(QString, language);
    const QMap<QString, QString> known = translations(language);
    const QStringList texts = textsOfTheHost();
    QVERIFY(texts.contains("This panel cannot start") && texts.contains("Old value: %1"));
    for (const QString& text : texts) {
        QVERIFY2(!known.value(text).isEmpty(), qPrintable(text));
    }
}

void tst_Language::placeholdersOfATextAreKept()
{
    QFETCH(QString, language);
    const QMap<QString, QString> known = translations(language);
    for (auto text = known.cbegin(); text != known.cend(); ++text) {
        for (const char* placeholder : {"%1", "%2"}) {
            QVERIFY2(text.key().contains(placeholder) == text.value().contains(placeholder),
                     qPrintable(text.value()));
        }
    }
}

void tst_Language::windowsAndDialogsSpeakIt()
{
    use(*qGuiApp, "de");
    QCOMPARE(norvo::PanelWindow::tr("This panel cannot start"),
             QString("Diese Tafel kann nicht starten"));
    QString range;
    QTimer::singleShot(0, qApp, [&range] {
        auto* const dialog = QApplication::activeModalWidget();
        range = dialog->findChild<QLabel*>("range")->text();
        dialog->close();
    });
    NumpadDialog::getInt(nullptr, "Speed", "", 5, 0, 10);
    QCOMPARE(range, QString("Erlaubt: 0 bis 10"));
    use(*qGuiApp, "ru");
    QCOMPARE(norvo::PanelWindow::tr("This panel cannot start"),
             QString::fromUtf8("Эта панель не может быть запущена"));
}

void tst_Language::unknownLanguageLeavesTheTextsInEnglish()
{
    use(*qGuiApp, "fi");
    QCOMPARE(norvo::PanelWindow::tr("This panel cannot start"), QString("This panel cannot start"));
}

void tst_Language::panelIsMirroredForAScriptFromTheRight()
{
    use(*qGuiApp, "ar");
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::RightToLeft);
    use(*qGuiApp, "de");
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}

void tst_Language::keyboardIsToldTheLanguage()
{
    use(*qGuiApp, "pt_BR");
    QCOMPARE(qApp->property("norvoLanguage").toString(), QString("pt_BR"));
}

NORVO_TEST(tst_Language)
#include "tst_Language.moc"
