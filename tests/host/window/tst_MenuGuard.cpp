// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/MenuGuard.h"

#include "ShownPanel.h"
#include "TestMain.h"

#include <optional>

class tst_MenuGuard : public QObject
{
    Q_OBJECT

private slots:
    void fieldsAndLogsOpenNoMenu_data();
    void fieldsAndLogsOpenNoMenu();
};

void tst_MenuGuard::fieldsAndLogsOpenNoMenu_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<bool>("isGuarded");
    for (const bool isGuarded : {true, false}) {
        const char* const how = isGuarded ? "guarded" : "unguarded";
        QTest::addRow("log, %s", how) << QByteArray("multiline") << isGuarded;
        QTest::addRow("field, %s", how) << QByteArray("input, params: {type: string}") << isGuarded;
    }
}

void tst_MenuGuard::fieldsAndLogsOpenNoMenu()
{
    QFETCH(QByteArray, device);
    QFETCH(bool, isGuarded);
    std::optional<norvo::MenuGuard> guard;
    if (isGuarded) {
        guard.emplace(*qApp);
    }
    const ShownPanel shown("devices:\n  a: {device: " + device + "}\n");
    auto* const log = shown.only<QTextEdit>("a");
    QWidget* const target = log ? log->viewport() : shown.only<QLineEdit>("a");
    bool isOpened = false;
    QTimer look;
    look.callOnTimeout([&isOpened] {
        if (QWidget* const menu = QApplication::activePopupWidget()) {
            isOpened = true;
            menu->close();
        }
    });
    look.start(0);
    const QPoint middle = target->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle, target->mapToGlobal(middle));
    QApplication::sendEvent(target, &event);
    QCoreApplication::processEvents();
    QCOMPARE(isOpened, !isGuarded);
}

NORVO_TEST(tst_MenuGuard)
#include "tst_MenuGuard.moc"
