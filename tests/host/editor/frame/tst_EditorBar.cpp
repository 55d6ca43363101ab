// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/frame/EditorBar.h"
#include "host/editor/frame/MenuSheet.h"
#include "host/window/look/TouchSize.h"

#include "TestMain.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QtTest>

using norvo::EditorBar;
using norvo::MenuSheet;

namespace {

QAction* newAction(QObject& parent, const QString& name, const QString& text)
{
    auto* const action = new QAction(text, &parent);
    action->setObjectName(name);
    return action;
}

} // namespace

class tst_EditorBar : public QObject
{
    Q_OBJECT

private slots:
    void aKeyDoesItsAction();
    void aKeyFollowsItsAction();
    void aKeyIsLargeEnoughForAFinger();
    void spareKeysAreThereWhereTheyFit();
    void aProblemTakesThePlaceOfTheHint();
    void nothingMovesWhenAProblemIsTold();
    void theMenuHoldsEachActionWithItsKey();
    void theMenuDoesWhatIsTappedOnceItIsGone();
};

void tst_EditorBar::aKeyDoesItsAction()
{
    EditorBar bar;
    QAction* const action = newAction(bar, "save", "Save the file");
    QSignalSpy done(action, &QAction::triggered);
    QTest::mouseClick(bar.addKey(*action, "Save"), Qt::LeftButton);
    QCOMPARE(done.count(), 1);
}

void tst_EditorBar::aKeyFollowsItsAction()
{
    EditorBar bar;
    QAction* const action = newAction(bar, "undo", "Undo");
    QPushButton* const key = bar.addKey(*action, "Undo");
    action->setEnabled(false);
    action->setText("Undo: Move lamp");
    QVERIFY(!key->isEnabled());
    QCOMPARE(key->text(), QString("Undo"));
    QCOMPARE(key->accessibleName(), QString("Undo: Move lamp"));
    action->setCheckable(true);
    action->setChecked(true);
    QVERIFY(key->isChecked());
}

void tst_EditorBar::aKeyIsLargeEnoughForAFinger()
{
    EditorBar bar;
    const QPushButton* const key = bar.addKey(*newAction(bar, "a", "A"), "A");
    const int target = norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers, *bar.screen());
    QVERIFY(key->width() >= target && key->height() >= target);
}

void tst_EditorBar::spareKeysAreThereWhereTheyFit()
{
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    auto* const bar = new EditorBar;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    const auto keyOf = [bar](const char* name) { return bar->findChild<QPushButton*>(name); };
    bar->addKey(*newAction(*bar, "menu", "Menu"), "Menu");
    bar->addSpareKey(*newAction(*bar, "redo", "Redo"), "Redo");
    bar->addSpareKey(*newAction(*bar, "panel", "Panel"), "Panel");
    bar->addKey(*newAction(*bar, "done", "Done"), "Done");
    const int least = bar->minimumSizeHint().width();
    const auto widthWith = [&](std::initializer_list<const char*> names) {
        int width = least;
        for (const char* const name : names) {
            width += keyOf(name)->minimumWidth() + bar->findChild<QHBoxLayout*>()->spacing();
        }
        return width;
    };
    window.resize(2000, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(keyOf("redo")->isVisible() && keyOf("panel")->isVisible());
    window.resize(widthWith({"redo", "panel"}) - 1, 100);
    QTRY_VERIFY_WITH_TIMEOUT(!keyOf("panel")->isVisible(), 60000);
    QVERIFY(keyOf("redo")->isVisible());
    window.resize(least, 100);
    QTRY_VERIFY_WITH_TIMEOUT(!keyOf("redo")->isVisible(), 60000);
    QCOMPARE(window.width(), least);
    QTRY_VERIFY_WITH_TIMEOUT(keyOf("done")->geometry().right() < least, 60000);
    window.resize(widthWith({"redo", "panel"}), 100);
    QTRY_VERIFY_WITH_TIMEOUT(keyOf("panel")->isVisible() && keyOf("redo")->isVisible(), 60000);
}

void tst_EditorBar::aProblemTakesThePlaceOfTheHint()
{
    EditorBar bar;
    const auto* const text = bar.findChild<QLabel*>("editorText");
    bar.setHint("Tap a device");
    QCOMPARE(text->text(), QString("Tap a device"));
    bar.tellProblem("two\nlines");
    QCOMPARE(text->text(), QString("! two lines"));
    bar.setHint("Another hint");
    QCOMPARE(text->text(), QString("! two lines"));
    bar.tellProblem({});
    QCOMPARE(text->text(), QString("Another hint"));
}

void tst_EditorBar::nothingMovesWhenAProblemIsTold()
{
    EditorBar bar;
    bar.addKey(*newAction(bar, "a", "A"), "A");
    bar.setHint("Tap a device");
    const QSize before = bar.sizeHint();
    bar.tellProblem(QString("a very long problem ").repeated(50));
    QCOMPARE(bar.sizeHint(), before);
}

void tst_EditorBar::theMenuHoldsEachActionWithItsKey()
{
    QWidget window;
    window.resize(800, 480);
    window.show();
    QAction* const save = newAction(window, "save", "Save");
    save->setShortcut(QKeySequence::Save);
    QAction* const undo = newAction(window, "undo", "Undo");
    undo->setEnabled(false);
    auto* const sheet = new MenuSheet(window, {{"File", {save, undo}}, {"Empty", {}}});
    sheet->present();
    QVERIFY(sheet->findChild<QPushButton*>("save")->text().contains("Ctrl+S"));
    QVERIFY(!sheet->findChild<QPushButton*>("undo")->isEnabled());
    for (const QLabel* label : sheet->findChildren<QLabel*>()) {
        QVERIFY(label->text() != "Empty");
    }
}

void tst_EditorBar::theMenuDoesWhatIsTappedOnceItIsGone()
{
    QWidget window;
    window.resize(800, 480);
    window.show();
    QAction* const save = newAction(window, "save", "Save");
    QPointer<MenuSheet> sheet = new MenuSheet(window, {{"File", {save}}});
    bool isGone = false;
    connect(save, &QAction::triggered, &window, [&] { isGone = !sheet || !sheet->isVisible(); });
    sheet->present();
    QSignalSpy done(save, &QAction::triggered);
    QTest::mouseClick(sheet->findChild<QPushButton*>("save"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(done.count(), 1, 60000);
    QVERIFY(isGone);
}

NORVO_TEST(tst_EditorBar)
#include "tst_EditorBar.moc"
