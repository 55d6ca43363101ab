// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/program/run/RunningPanel.h"
#include "host/window/ShownPanel.h"
#include "host/window/sheet/Sheet.h"
#include "host/window/status/StaleMarks.h"
#include "host/window/status/ValuesPage.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

using norvo::RunningPanel;
using norvo::StaleMark;

namespace {

/// A panel with what the program puts beside it, on view.
class Running
{
public:
    explicit Running(const QByteArray& text)
        : m_description(panelOf(text)), panel(m_description, m_knowledge, QString())
    {
        norvo::Diagnostics diagnostics("panel.yaml");
        panel.start(norvo::PanelPlan::make(m_description, builtTypes(), {}, diagnostics),
                    diagnostics);
        panel.window().resize(800, 480);
        panel.window().show();
        panel.window().activateWindow();
        if (diagnostics.hasErrors() || !QTest::qWaitForWindowActive(&panel.window())) {
            qFatal("%s", qPrintable(diagnostics.summary()));
        }
    }

    QPushButton& key() { return *panel.window().findChild<QPushButton*>("sourceKey"); }
    static norvo::Sheet* sheet()
    {
        return qobject_cast<norvo::Sheet*>(QApplication::activeModalWidget());
    }
    QStringList marked() const
    {
        QStringList ids;
        for (const StaleMark* mark : m_window().findChildren<StaleMark*>()) {
            for (const char* id : {"speed", "level", "lamp"}) {
                const BaseWidget* const widget = panel.panel().widget(id);
                ids += widget && mark->isVisible() && mark->geometry() == widget->geometry()
                           ? QStringList(id)
                           : QStringList();
            }
        }
        return ids;
    }

private:
    const norvo::PanelDescription m_description;
    const norvo::TypeKnowledge m_knowledge;
    QWidget& m_window() const { return panel.window(); }

public:
    mutable RunningPanel panel;
};

const QByteArray kPanel("devices:\n"
                        "  gone: {device: process, params: {command: \"sh -c 'echo 42; read x; "
                        "echo away >&2; exit 3'\"}}\n"
                        "  level: {device: output_digital, params: {widget: {row: 0}}}\n"
                        "  lamp: {device: indicator, params: {widget: {row: 1}}}\n"
                        "connections:\n"
                        "  - gone.output(double) -> level.input(double)\n"
                        "  - gone.running -> lamp.input(bool)\n");

} // namespace

/// What the strip and the displays say of sources, in a real window.
class tst_SourceKey : public QObject
{
    Q_OBJECT

private slots:
    void panelWithoutSourcesHasNoKey();
    void keyCountsTheSourcesThatAreWell();
    void displayOfALostSourceIsMarkedAndStillWorks();
    void listNamesStateMessageAndRate();
    void allValuesOpenByF12();
    void allValuesAreNarrowedAndCopied();
};

void tst_SourceKey::panelWithoutSourcesHasNoKey()
{
    Running running("devices: {push: {device: button}}\n");
    QVERIFY(running.key().isHidden());
}

void tst_SourceKey::keyCountsTheSourcesThatAreWell()
{
    Running running(kPanel);
    QTRY_VERIFY(running.key().text().endsWith("Sources 1 of 1"));
    const QString well = running.key().text();
    QMetaObject::invokeMethod(running.panel.panel().device("gone"), "input", Q_ARG(QString, "end"));
    QTRY_VERIFY(running.key().text().endsWith("Sources 0 of 1"));
    QVERIFY(running.key().text().at(0) != well.at(0));
    QCOMPARE(running.key().accessibleName(), QString("1 of 1 sources lost"));
}

void tst_SourceKey::displayOfALostSourceIsMarkedAndStillWorks()
{
    Running running(kPanel);
    QTRY_VERIFY(running.key().text().endsWith("Sources 1 of 1"));
    QCOMPARE(running.marked(), QStringList());
    QMetaObject::invokeMethod(running.panel.panel().device("gone"), "input", Q_ARG(QString, "end"));
    QTRY_COMPARE(running.marked(), QStringList("level"));
    QWidget* const level = running.panel.panel().widget("level");
    running.panel.window().resize(1000, 600);
    QTRY_COMPARE(running.marked(), QStringList("level"));
    QWidget& window = running.panel.window();
    QVERIFY(level->isAncestorOf(window.childAt(level->mapTo(&window, level->rect().center()))));
}

void tst_SourceKey::listNamesStateMessageAndRate()
{
    QTest::ignoreMessage(QtInfoMsg, "gone: away");
    QTest::ignoreMessage(QtWarningMsg,
                         "gone: the program has ended with exit status 3; it wrote last: away");
    Running running(kPanel);
    QTRY_VERIFY(running.key().text().endsWith("Sources 1 of 1"));
    QMetaObject::invokeMethod(running.panel.panel().device("gone"), "input", Q_ARG(QString, "end"));
    QTRY_VERIFY(running.key().text().endsWith("Sources 0 of 1"));
    QTest::mouseClick(&running.key(), Qt::LeftButton);
    QTRY_VERIFY(Running::sheet());
    const auto* const rows = Running::sheet()->findChild<QTableWidget*>("sourceList");
    QCOMPARE(rows->rowCount(), 1);
    const QHeaderView& header = *rows->horizontalHeader();
    QCOMPARE(header.length(), rows->viewport()->width()); // The message takes what is left.
    QVERIFY(header.sectionSize(0) < header.sectionSize(4));
    QVERIFY(header.sectionSize(3) >= header.sectionSizeHint(3));
    QCOMPARE(rows->item(0, 0)->text(), QString("gone"));
    QVERIFY(rows->item(0, 1)->text().endsWith("lost"));
    QTRY_VERIFY(rows->item(0, 3)->text() == "0.0" || rows->item(0, 3)->text() == "0,0");
    QTRY_VERIFY(rows->item(0, 4)->text().contains("exit status 3"));
    QTest::keyClick(Running::sheet(), Qt::Key_Escape);
    QTRY_VERIFY(!Running::sheet());
}

void tst_SourceKey::allValuesOpenByF12()
{
    Running running(kPanel);
    QTRY_VERIFY(running.key().text().endsWith("Sources 1 of 1"));
    QTest::keyClick(&running.panel.window(), Qt::Key_F12);
    QTRY_VERIFY(Running::sheet());
    const auto* const page = Running::sheet()->findChild<norvo::ValuesPage*>();
    QTRY_VERIFY(page->text().contains("gone\toutput(double)\t42\t"));
    QVERIFY(page->text().contains("lamp\toutput(bool)\t"));
    QTest::mouseClick(Running::sheet()->closeKey(), Qt::LeftButton);
    QTRY_VERIFY(!Running::sheet());
}

void tst_SourceKey::allValuesAreNarrowedAndCopied()
{
    Running running(kPanel);
    QTRY_VERIFY(running.key().text().endsWith("Sources 1 of 1"));
    QTest::keyClick(&running.panel.window(), Qt::Key_F12);
    QTRY_VERIFY(Running::sheet());
    auto* const page = Running::sheet()->findChild<norvo::ValuesPage*>();
    QTest::keyClicks(page->findChild<QLineEdit*>(), "LAMP");
    page->copy();
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
    QCOMPARE(lines[0].section('\t', 0, 2), QString("Device\tOutput\tLast value"));
    QVERIFY(lines.size() > 2);
    for (const QString& line : lines.mid(1, lines.size() - 2)) {
        QVERIFY2(line.startsWith("lamp\t"), qPrintable(line));
    }
    Running::sheet()->close();
}

NORVO_TEST(tst_SourceKey)
#include "tst_SourceKey.moc"
