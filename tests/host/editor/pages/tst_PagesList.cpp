// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/pages/PagesList.h"
#include "host/editor/pages/RemovePageSheet.h"
#include "host/window/look/TouchSize.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using norvo::EditSession;
using norvo::PagesList;

namespace {

const QByteArray kPaged = "pages: [Main, Pumps, Spare] # by importance\n"
                          "devices:\n"
                          "  go: {device: button}\n"
                          "  p1: {device: button, params: {widget/area: Pumps}}\n"
                          "  p2: {device: label, params: {widget/area: Pumps}} # the old one\n"
                          "connections:\n"
                          "  - p1.toggled -> p2.inputWarning\n";
const QByteArray kPlain = "devices:\n"
                          "  go: {device: button}\n";

} // namespace

/// A panel with the list of its pages beside it.
class tst_PagesList : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void thePagesStandInTheirOrder();
    void aTapGoesToThePage();
    void theListFollowsThePanel();
    void aPageIsAddedBehindTheOthersAndNamed();
    void aPanelWithoutPagesGetsItsSecond();
    void theOnlyPageCanBeNamed();
    void aPageIsRenamedWithItsDevices();
    void aNameThatIsTakenIsRefusedAtItsField();
    void aNameBelongsToThePageOfItsField();
    void aPageIsMoved();
    void anEmptyPageIsRemovedAtOnce();
    void aPageWithDevicesIsAskedFor();
    void theOnlyPageStays();
    void theKeyboardAloneIsEnough();
    void itsKeysAreLargeAndNamed();

private:
    void start(const QByteArray& text);
    QListWidget& rows() const { return *m_list->findChild<QListWidget*>("pages"); }
    QLineEdit& name() const { return *m_list->findChild<QLineEdit*>("pageName"); }
    QPushButton& key(const char* name) const { return *m_list->findChild<QPushButton*>(name); }
    QLabel& fault() const { return *m_list->findChild<QLabel*>("pageFault"); }
    void click(const char* name) const { QTest::mouseClick(&key(name), Qt::LeftButton); }
    void tap(int row) const
    {
        QTest::mouseClick(rows().viewport(), Qt::LeftButton, {},
                          rows().visualItemRect(rows().item(row)).center());
    }
    QStringList listed() const
    {
        QStringList texts;
        for (int i = 0; i < rows().count(); ++i) {
            texts.append(rows().item(i)->text().section('\n', 0, 0));
        }
        return texts;
    }
    QStringList pages() const { return m_panel->pages().areas(); }
    bool isShown(const QString& page) const
    {
        return m_panel->pages().key(page) && m_panel->pages().key(page)->isChecked();
    }
    QString areaOf(const QString& id) const { return m_panel->cells().value(id).area; }
    norvo::RemovePageSheet* question() const
    {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return m_list->findChild<norvo::RemovePageSheet*>();
    }
    EditSession& session() const { return *m_panel->session; }
    QByteArray text() const { return session().document().text(); }

    std::unique_ptr<EditedPanel> m_panel;
    std::unique_ptr<PagesList> m_list;
};

void tst_PagesList::init()
{
    start(kPaged);
}

void tst_PagesList::cleanup()
{
    m_list.reset();
    m_panel.reset();
}

void tst_PagesList::start(const QByteArray& text)
{
    m_list.reset();
    m_panel = std::make_unique<EditedPanel>(text);
    m_list = std::make_unique<PagesList>(session());
    m_list->resize(320, 420);
    m_list->show();
    m_list->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_list.get()));
}

void tst_PagesList::thePagesStandInTheirOrder()
{
    QCOMPARE(listed(), QStringList({"Main", "Pumps", "Spare"}));
    QVERIFY(rows().item(1)->text().endsWith(": 2"));
    QVERIFY(rows().item(2)->text().endsWith(": 0"));
    QCOMPARE(name().text(), QString("Main"));
}

void tst_PagesList::aTapGoesToThePage()
{
    tap(1);
    QVERIFY(isShown("Pumps"));
    QCOMPARE(name().text(), QString("Pumps"));
    QVERIFY(!session().canUndo());
}

void tst_PagesList::theListFollowsThePanel()
{
    QTest::mouseClick(m_panel->pages().key("Spare"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(rows().currentRow(), 2, 60000);
    QCOMPARE(name().text(), QString("Spare"));
}

void tst_PagesList::aPageIsAddedBehindTheOthersAndNamed()
{
    click("addPage");
    QCOMPARE(pages(), QStringList({"Main", "Pumps", "Spare", "Page 4"}));
    QVERIFY(isShown("Page 4"));
    QCOMPARE(m_list->focusWidget(), &name());
    QTest::keyClicks(&name(), "Valves\r"); // What stood there is selected.
    QCOMPARE(text(), QByteArray(kPaged).replace("Spare]", "Spare, Valves]"));
    QVERIFY(isShown("Valves"));
    QCOMPARE(session().undoName(), QString("Rename the page Page 4 to Valves"));
    session().undo();
    QCOMPARE(session().undoName(), QString("Add the page Page 4"));
    session().undo();
    QCOMPARE(text(), kPaged);
    QCOMPARE(listed(), QStringList({"Main", "Pumps", "Spare"}));
}

void tst_PagesList::aPanelWithoutPagesGetsItsSecond()
{
    start(kPlain);
    QCOMPARE(listed(), QStringList("The only page"));
    click("addPage");
    QCOMPARE(pages(), QStringList({"Main", "Page 2"}));
    QVERIFY(isShown("Page 2"));
    QCOMPARE(areaOf("go"), QString("Main"));
    session().undo();
    QCOMPARE(text(), kPlain);
    QCOMPARE(listed(), QStringList("The only page"));
}

void tst_PagesList::theOnlyPageCanBeNamed()
{
    start(kPlain);
    QTest::keyClicks(&name(), "Hall\r");
    QCOMPARE(pages(), QStringList("Hall"));
    QCOMPARE(listed(), QStringList("Hall"));
    session().undo();
    QCOMPARE(text(), kPlain);
    QCOMPARE(name().text(), QString());
}

void tst_PagesList::aPageIsRenamedWithItsDevices()
{
    tap(1);
    name().selectAll();
    QTest::keyClicks(&name(), "Wells\r");
    QCOMPARE(text(), QByteArray(kPaged).replace("Pumps", "Wells"));
    QCOMPARE(areaOf("p2"), QString("Wells"));
    QVERIFY(isShown("Wells"));
    session().undo();
    QCOMPARE(text(), kPaged);
    QVERIFY(isShown("Pumps"));
    QCOMPARE(name().text(), QString("Pumps"));
}

void tst_PagesList::aNameThatIsTakenIsRefusedAtItsField()
{
    QVERIFY(!fault().isVisible());
    name().selectAll();
    QTest::keyClicks(&name(), "Pumps\r");
    QCOMPARE(text(), kPaged);
    QVERIFY(fault().isVisible());
    QVERIFY2(fault().text().contains("Pumps"), qPrintable(fault().text()));
    QCOMPARE(name().text(), QString("Pumps"));
    QTest::keyClick(&name(), Qt::Key_Escape);
    QVERIFY(!fault().isVisible());
    QCOMPARE(name().text(), QString("Main"));
    name().selectAll();
    QTest::keyClick(&name(), Qt::Key_Delete);
    QTest::keyClick(&name(), Qt::Key_Return);
    QVERIFY(fault().isVisible()); // It needs one.
    QCOMPARE(text(), kPaged);
}

void tst_PagesList::aNameBelongsToThePageOfItsField()
{
    QTest::keyClick(&name(), Qt::Key_End);
    QTest::keyClicks(&name(), "2");
    QTest::mouseClick(m_panel->pages().key("Spare"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(pages(), QStringList({"Main2", "Pumps", "Spare"}), 60000);
    QCOMPARE(name().text(), QString("Spare"));
    QVERIFY(isShown("Spare"));
}

void tst_PagesList::aPageIsMoved()
{
    QVERIFY(!key("pageUp").isEnabled());
    tap(2);
    QVERIFY(!key("pageDown").isEnabled());
    click("pageUp");
    QCOMPARE(pages(), QStringList({"Main", "Spare", "Pumps"}));
    QVERIFY(isShown("Spare"));
    click("pageUp");
    QCOMPARE(pages(), QStringList({"Spare", "Main", "Pumps"}));
    QCOMPARE(areaOf("go"), QString("Main")); // It named none, and stays where it was.
    QCOMPARE(session().undoName(), QString("Move the page Spare"));
    click("pageDown");
    QCOMPARE(pages(), QStringList({"Main", "Spare", "Pumps"}));
    while (session().canUndo()) {
        session().undo();
    }
    QCOMPARE(text(), kPaged);
}

void tst_PagesList::anEmptyPageIsRemovedAtOnce()
{
    tap(2);
    click("removePage");
    QVERIFY(!question());
    QCOMPARE(text(), QByteArray(kPaged).replace(", Spare", ""));
    QVERIFY(isShown("Pumps"));
    session().undo();
    QCOMPARE(text(), kPaged);
}

void tst_PagesList::aPageWithDevicesIsAskedFor()
{
    tap(1);
    click("removePage");
    QVERIFY(question());
    bool isNamed = false;
    for (const auto* const label : question()->findChildren<QLabel*>()) {
        isNamed = isNamed || label->text().contains("p1, p2");
    }
    QVERIFY(isNamed);
    QTest::mouseClick(question()->closeKey(), Qt::LeftButton);
    QCOMPARE(text(), kPaged);
    QVERIFY(!question());
    click("removePage");
    QTest::mouseClick(question()->findChild<QPushButton*>("remove"), Qt::LeftButton);
    QCOMPARE(pages(), QStringList({"Main", "Spare"}));
    QVERIFY(!session().device("p1"));
    QVERIFY(m_panel->description().connections.isEmpty());
    session().undo();
    QCOMPARE(text(), kPaged);
    QVERIFY(m_panel->panel().device("p2"));
    QCOMPARE(areaOf("p2"), QString("Pumps"));
}

void tst_PagesList::theOnlyPageStays()
{
    start(kPlain);
    QVERIFY(!key("removePage").isEnabled());
    QVERIFY(!key("pageUp").isEnabled());
    QVERIFY(!key("pageDown").isEnabled());
    QTest::keyClick(&rows(), Qt::Key_Delete);
    QCOMPARE(text(), kPlain);
}

void tst_PagesList::theKeyboardAloneIsEnough()
{
    rows().setFocus();
    QTest::keyClick(&rows(), Qt::Key_Down);
    QVERIFY(isShown("Pumps"));
    QTest::keyClick(&rows(), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(pages(), QStringList({"Pumps", "Main", "Spare"}));
    QTest::keyClick(&rows(), Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(pages(), QStringList({"Main", "Pumps", "Spare"}));
    QTest::keyClick(&rows(), Qt::Key_Return);
    QCOMPARE(m_list->focusWidget(), &name());
    QTest::keyClicks(&name(), "Wells\r");
    QCOMPARE(pages(), QStringList({"Main", "Wells", "Spare"}));
    rows().setFocus();
    QTest::keyClick(&rows(), Qt::Key_End);
    QTest::keyClick(&rows(), Qt::Key_Delete);
    QCOMPARE(pages(), QStringList({"Main", "Wells"}));
    QTest::keyClick(&rows(), Qt::Key_Delete);
    QVERIFY(question());
    QTest::keyClick(question(), Qt::Key_Escape);
    QCOMPARE(pages(), QStringList({"Main", "Wells"}));
    QTest::keyClick(&rows(), Qt::Key_Insert);
    QCOMPARE(pages(), QStringList({"Main", "Wells", "Page 3"}));
}

void tst_PagesList::itsKeysAreLargeAndNamed()
{
    const int least = norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers, *m_list->screen());
    for (const auto* const one : m_list->findChildren<QPushButton*>()) {
        QVERIFY2(one->height() >= least && one->width() >= least, qPrintable(one->objectName()));
        QVERIFY2(!one->accessibleName().isEmpty(), qPrintable(one->objectName()));
    }
    QVERIFY(name().height() >= least);
    QVERIFY(rows().visualItemRect(rows().item(0)).height() >= least);
    QCOMPARE(m_list->actions().size(), 4);
    // With the tabs of its pane and the keys of the editor above it, on a screen of 480 pixels.
    QVERIFY2(m_list->minimumSizeHint().height() <= 340,
             qPrintable(QString::number(m_list->minimumSizeHint().height())));
}

NORVO_TEST(tst_PagesList)
#include "tst_PagesList.moc"
