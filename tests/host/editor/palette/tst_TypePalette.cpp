// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/palette/TypeDelegate.h"
#include "host/editor/palette/TypeList.h"
#include "host/editor/palette/TypePalette.h"
#include "host/editor/templates/TemplateSet.h"

#include <QMimeData>
#include <QtTest>

using norvo::EditSession;
using norvo::TypeList;
using norvo::TypePalette;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button}\n";

} // namespace

/// A panel with the palette beside it.
class tst_TypePalette : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    // The key that clears a line of text fades by an animation that nobody owns.
    void cleanupTestCase() { QTest::qWait(400); }

    void everyTypeIsThere();
    void aTapChoosesAndASecondOneTakesBack();
    void escapeTakesBack();
    void aTypeWithoutWidgetIsAddedAtOnce();
    void typesAreFoundByTyping_data();
    void typesAreFoundByTyping();
    void theNearestNameIsOffered();
    void theKeyboardAloneSuffices();
    void aDragCarriesTheTypeKey();
    void templatesAreFoundByTyping();
    void aTemplateWithoutWidgetsIsPutAtOnce();
    void aTemplateWithAFaultSaysIt();
    void whatWasChosenStaysWhenTemplatesCome();
    void anOwnTemplateIsRemovedByItsKey();
    void theKeyboardRemovesAnOwnTemplate();

private:
    QStringList keys() const;
    QListWidgetItem* item(const QString& key) const;
    /// Of the user's own, in the palette; gives its key.
    QString addTemplate(const QByteArray& text) const;
    void tap(const QString& typeKey) const;
    EditSession& session() const { return *m_panel->session; }

    QTemporaryDir m_data;
    std::unique_ptr<EditedPanel> m_panel;
    std::unique_ptr<TypePalette> m_palette;
    TypeList* m_list = nullptr;
    QLineEdit* m_search = nullptr;
};

void tst_TypePalette::initTestCase()
{
    qputenv("XDG_DATA_HOME", m_data.path().toUtf8());
}

void tst_TypePalette::init()
{
    m_panel = std::make_unique<EditedPanel>(kPanel);
    m_palette = std::make_unique<TypePalette>(session());
    m_palette->resize(320, 440);
    m_palette->show();
    m_palette->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_palette.get()));
    m_list = m_palette->findChild<TypeList*>();
    m_search = m_palette->findChild<QLineEdit*>("typeSearch");
}

void tst_TypePalette::cleanup()
{
    m_palette.reset();
    m_panel.reset();
}

QStringList tst_TypePalette::keys() const
{
    QStringList keys;
    for (int i = 0; i < m_list->count(); ++i) {
        const QString key = m_list->item(i)->data(Qt::UserRole).toString();
        if (!key.isEmpty()) {
            keys.append(key);
        }
    }
    return keys;
}

QListWidgetItem* tst_TypePalette::item(const QString& typeKey) const
{
    for (int i = 0; i < m_list->count(); ++i) {
        if (m_list->item(i)->data(Qt::UserRole).toString() == typeKey) {
            return m_list->item(i);
        }
    }
    qFatal("%s is not listed", qPrintable(typeKey));
}

void tst_TypePalette::tap(const QString& typeKey) const
{
    QListWidgetItem* const at = item(typeKey);
    m_list->scrollToItem(at);
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, m_list->visualItemRect(at).center());
}

void tst_TypePalette::everyTypeIsThere()
{
    QStringList listed = keys();
    for (const norvo::PanelTemplate& one : session().templates().all()) {
        QCOMPARE(listed.removeAll(one.file), 1);
    }
    listed.sort();
    QStringList known = EditedPanel::types().keys();
    known.sort();
    QCOMPARE(listed, known);
    QVERIFY(!item("process")->data(Qt::DecorationRole).value<QImage>().isNull());
}

void tst_TypePalette::aTapChoosesAndASecondOneTakesBack()
{
    auto* const message = m_palette->findChild<QLabel*>("paletteMessage");
    QVERIFY(!message->isVisible());
    tap("indicator");
    QCOMPARE(session().toPlace(), QString("indicator"));
    QVERIFY(message->isVisible());
    QTest::qWait(QApplication::doubleClickInterval() + 50); // Else it is one double click.
    tap("indicator");
    QCOMPARE(session().toPlace(), QString());
    QVERIFY(!message->isVisible());
    QCOMPARE(session().document().text(), kPanel);
}

void tst_TypePalette::escapeTakesBack()
{
    tap("indicator");
    QTest::keyClick(m_list, Qt::Key_Escape);
    QCOMPARE(session().toPlace(), QString());
}

void tst_TypePalette::aTypeWithoutWidgetIsAddedAtOnce()
{
    tap("generator");
    QCOMPARE(session().toPlace(), QString());
    QVERIFY(m_panel->panel().device("generator"));
    QCOMPARE(session().selection(), QStringList("generator"));
}

void tst_TypePalette::typesAreFoundByTyping_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("key");
    QTest::newRow("key") << "output_gr"
                         << "output_graph";
    QTest::newRow("words of the purpose") << "lamp CAPTION"
                                          << "indicator";
    QTest::newRow("a source") << "sine"
                              << "generator";
}

void tst_TypePalette::typesAreFoundByTyping()
{
    QFETCH(QString, text);
    QFETCH(QString, key);
    QTest::keyClicks(m_search, text);
    QVERIFY2(keys().contains(key), qPrintable(keys().join(' ')));
    QVERIFY(keys().size() < 4);
}

void tst_TypePalette::theNearestNameIsOffered()
{
    QTest::keyClicks(m_search, "indcator");
    QCOMPARE(keys(), QStringList("indicator"));
    auto* const message = m_palette->findChild<QLabel*>("paletteMessage");
    QVERIFY(message->isVisible());
    QVERIFY(message->text().contains("indcator"));
    QTest::keyClicks(m_search, "qqqqqqq");
    QCOMPARE(keys(), QStringList());
    QVERIFY(message->isVisible());
}

void tst_TypePalette::theKeyboardAloneSuffices()
{
    m_search->setFocus();
    QTest::keyClicks(m_search, "slider");
    QTest::keyClick(m_search, Qt::Key_Return);
    QCOMPARE(session().toPlace(), QString("slider"));
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(session().toPlace(), QString());
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(m_search->text(), QString());
    QTest::keyClick(m_search, Qt::Key_Down);
    QVERIFY(m_list->hasFocus());
    m_list->setCurrentItem(item("button"));
    QTest::keyClick(m_list, Qt::Key_Down);
    QTest::keyClick(m_list, Qt::Key_Return);
    QCOMPARE(session().toPlace(), m_list->currentKey());
    QVERIFY(!session().toPlace().isEmpty() && session().toPlace() != "button");
}

void tst_TypePalette::aDragCarriesTheTypeKey()
{
    const QModelIndex index = m_list->model()->index(m_list->row(item("slider")), 0);
    QVERIFY(m_list->dragEnabled());
    QVERIFY(index.flags() & Qt::ItemIsDragEnabled);
    const std::unique_ptr<QMimeData> data(m_list->model()->mimeData({index}));
    QCOMPARE(data->data("application/x-norvo-type"), QByteArray("slider"));
}

QString tst_TypePalette::addTemplate(const QByteArray& text) const
{
    const QString file = norvo::TemplateSet::ownFolder() + "/mine.yaml";
    QDir().mkpath(norvo::TemplateSet::ownFolder());
    QFile written(file);
    if (!written.open(QIODevice::WriteOnly) || written.write(text) != text.size()) {
        qFatal("no template is written");
    }
    written.close();
    session().templates().read();
    return file;
}

void tst_TypePalette::templatesAreFoundByTyping()
{
    QTest::keyClicks(m_search, "trend readout");
    QCOMPARE(keys(), QStringList(":/norvo/templates/readout-with-trend.yaml"));
    QTest::keyClick(m_search, Qt::Key_Return);
    QCOMPARE(session().toPlace(), keys().first());
}

void tst_TypePalette::aTemplateWithoutWidgetsIsPutAtOnce()
{
    const QString key = addTemplate("devices:\n"
                                    "  wave: {device: generator}\n"
                                    "  still: {device: settle}\n"
                                    "connections:\n"
                                    "  - wave.output(double) -> still.input(double)\n");
    tap(key);
    QCOMPARE(session().toPlace(), QString());
    QCOMPARE(session().selection(), QStringList({"wave", "still"}));
    QCOMPARE(m_panel->description().connections.size(), 1);
    QCOMPARE(session().undoName(), QString("Put mine"));
}

void tst_TypePalette::aTemplateWithAFaultSaysIt()
{
    const QByteArray text = "title: Odd\ndevices:\n  a: {device: nosuch}\n";
    const QString key = addTemplate(text);
    QVERIFY2(item(key)->data(norvo::TypeDelegate::PurposeRole).toString().contains("nosuch"),
             qPrintable(item(key)->data(norvo::TypeDelegate::PurposeRole).toString()));
    QVERIFY(item(key)->data(norvo::TypeDelegate::FaultyRole).toBool());
    const QSignalSpy problems(m_palette.get(), &TypePalette::problem);
    tap(key);
    QCOMPARE(session().toPlace(), QString());
    QCOMPARE(problems.count(), 1);
    QVERIFY(problems.first().first().toString().contains("nosuch"));
    QFile file(key);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), text);
}

void tst_TypePalette::whatWasChosenStaysWhenTemplatesCome()
{
    tap("indicator");
    addTemplate("devices:\n  a: {device: label}\n");
    QCOMPARE(session().toPlace(), QString("indicator"));
}

void tst_TypePalette::anOwnTemplateIsRemovedByItsKey()
{
    const QString key = addTemplate("devices:\n  a: {device: label}\n");
    auto* const remove = m_palette->findChild<QPushButton*>("removeTemplate");
    tap("label");
    QVERIFY(!remove->isVisible());
    tap(key);
    QCOMPARE(session().toPlace(), key);
    QVERIFY(remove->isVisible());
    QTest::mouseClick(remove, Qt::LeftButton);
    QVERIFY(!QFile::exists(key));
    QVERIFY(!keys().contains(key));
    QCOMPARE(session().toPlace(), QString());
    QVERIFY(!remove->isVisible());
}

void tst_TypePalette::theKeyboardRemovesAnOwnTemplate()
{
    const QString key = addTemplate("devices:\n  a: {device: label}\n");
    QTest::keyClicks(m_search, "mine");
    m_list->setFocus();
    QCOMPARE(keys(), QStringList(key));
    QTest::keyClick(m_list, Qt::Key_Delete);
    QVERIFY(!QFile::exists(key));
    QTest::keyClick(m_list, Qt::Key_Delete); // Nothing is there any more.
    QCOMPARE(keys(), QStringList());
}

NORVO_TEST(tst_TypePalette)
#include "tst_TypePalette.moc"
