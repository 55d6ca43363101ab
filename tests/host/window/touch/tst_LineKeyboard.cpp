// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/KeyboardKey.h"
#include "host/window/touch/LineKeyboard.h"
#include "TestMain.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QtTest>

using namespace norvo;

namespace {

/// Two lines, the first with a keyboard that gives "typed".
struct Lines
{
    Lines()
    {
        auto* const layout = new QHBoxLayout(&window);
        layout->addWidget(line);
        layout->addWidget(other);
        new LineKeyboard(*line, [this] { return given; });
        window.resize(400, 80);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("no window");
        }
    }

    bool isKeySeen() const { return line->findChild<KeyboardKey*>()->isVisible(); }

    QWidget window;
    QLineEdit* line = new QLineEdit;
    QLineEdit* other = new QLineEdit;
    QString given = "typed";
};

} // namespace

/// The key in a line of text that opens the keyboard on the screen.
class tst_LineKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void keyIsSeenWhileTheLineHasTheFocus();
    void keyStaysUnderAMenu();
    void lineThatTakesNoTextHasNoKey();
    void textKeepsClearOfTheKey();
    void givenTextTakesTheOldOnesPlace();
    void nothingGivenChangesNothing();
};

void tst_LineKeyboard::keyIsSeenWhileTheLineHasTheFocus()
{
    const Lines lines;
    lines.other->setFocus();
    QVERIFY(!lines.isKeySeen());
    lines.line->setFocus();
    QVERIFY(lines.isKeySeen());
    lines.other->setFocus();
    QVERIFY(!lines.isKeySeen());
}

/// The focus comes back to the line then, and nothing has jumped meanwhile.
void tst_LineKeyboard::keyStaysUnderAMenu()
{
    const Lines lines;
    for (const auto why : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason}) {
        lines.line->setFocus();
        QFocusEvent out(QEvent::FocusOut, why);
        QApplication::sendEvent(lines.line, &out);
        QVERIFY(lines.isKeySeen());
    }
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(lines.line, &out);
    QVERIFY(!lines.isKeySeen());
}

void tst_LineKeyboard::lineThatTakesNoTextHasNoKey()
{
    const Lines lines;
    lines.line->setFocus();
    lines.line->setReadOnly(true);
    QVERIFY(!lines.isKeySeen());
    lines.line->setReadOnly(false);
    QVERIFY(lines.isKeySeen());
    lines.line->setEnabled(false);
    QVERIFY(!lines.isKeySeen());
}

void tst_LineKeyboard::textKeepsClearOfTheKey()
{
    const Lines lines;
    const auto* const key = lines.line->findChild<KeyboardKey*>();
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        lines.line->setLayoutDirection(direction);
        lines.line->setFocus();
        const QMargins margins = lines.line->textMargins();
        const bool isAtTheEnd = direction == Qt::LeftToRight;
        QCOMPARE(isAtTheEnd ? margins.right() : margins.left(), key->width());
        QCOMPARE(isAtTheEnd ? margins.left() : margins.right(), 0);
        QCOMPARE(key->x(), isAtTheEnd ? lines.line->width() - key->width() : 0);
        lines.other->setFocus();
        QCOMPARE(lines.line->textMargins(), QMargins());
    }
}

void tst_LineKeyboard::givenTextTakesTheOldOnesPlace()
{
    const Lines lines;
    lines.line->setText("old");
    lines.line->setFocus();
    const QSignalSpy ended(lines.line, &QLineEdit::editingFinished);
    QTest::mouseClick(lines.line->findChild<KeyboardKey*>(), Qt::LeftButton);
    QCOMPARE(lines.line->text(), QString("typed"));
    QCOMPARE(ended.size(), 1);
}

void tst_LineKeyboard::nothingGivenChangesNothing()
{
    Lines lines;
    lines.given = QString();
    lines.line->setText("old");
    lines.line->setFocus();
    const QSignalSpy ended(lines.line, &QLineEdit::editingFinished);
    QTest::mouseClick(lines.line->findChild<KeyboardKey*>(), Qt::LeftButton);
    QCOMPARE(lines.line->text(), QString("old"));
    QCOMPARE(ended.size(), 0);
}

NORVO_TEST(tst_LineKeyboard)
#include "tst_LineKeyboard.moc"
