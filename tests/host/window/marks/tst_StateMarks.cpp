// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/marks/StateMarks.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/run/Panel.h"
#include "host/program/PluginSet.h"
#include "host/window/PanelPages.h"
#include "host/window/marks/StateMark.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

using namespace norvo;

namespace {

/// A panel with marks, as the program shows it.
class MarkedPanel
{
public:
    MarkedPanel(const PluginSet& plugins, const QByteArray& text)
        : m_catalogue(plugins.manager()),
          m_knowledge(m_catalogue),
          m_marks(m_knowledge),
          m_panel(m_pages)
    {
        Diagnostics diagnostics("p");
        PanelPlan plan = PanelPlan::make(PanelFile::parse(text, "p", diagnostics),
                                         plugins.manager(), {}, diagnostics, {}, m_knowledge);
        m_marks.listen(plan);
        m_panel.apply(std::move(plan), diagnostics);
        m_marks.show(m_panel);
        for (const Diagnostic& diagnostic : diagnostics.sorted()) {
            qWarning("%s", qPrintable(diagnostic.toString()));
        }
        m_pages.resize(800, 480);
        m_pages.show();
    }

    StateMark* mark(const QString& id) const ///< Null where the device has none.
    {
        const QWidget* const widget = m_panel.widget(id);
        for (StateMark* mark : m_pages.findChildren<StateMark*>()) {
            if (widget->geometry().contains(mark->geometry()) && mark->isVisible()) {
                return mark;
            }
        }
        return nullptr;
    }
    void send(const QString& id, double value) { send(id, Q_ARG(double, value)); }
    void send(const QString& id, bool value) { send(id, Q_ARG(bool, value)); }
    QWidget* widget(const QString& id) const { return m_panel.widget(id); }
    PanelPages& pages() { return m_pages; }

private:
    void send(const QString& id, const QGenericArgument& value)
    {
        QVERIFY(QMetaObject::invokeMethod(m_panel.device(id), "input", value));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    const Catalogue m_catalogue;
    const SenseCheck m_knowledge;
    StateMarks m_marks;
    PanelPages m_pages;
    Panel m_panel;
};

} // namespace

class tst_StateMarks : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void readoutWithoutValueSaysSo_data();
    void readoutWithoutValueSaysSo();
    void lampTellsItsStateByShape();
    void valueThatComesWhileThePanelStartsCounts();
    void markStaysWithItsDisplay();
    void markIsAboveItsDisplayAlsoWhenThatIsRaised();
    void displayThatMovesLeavesTheOrderAlone();
    void pressGoesThroughAMark();
    void controlsHaveNone();

private:
    PluginSet m_plugins;
};

void tst_StateMarks::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    QVERIFY(!m_plugins.isEmpty());
}

void tst_StateMarks::readoutWithoutValueSaysSo_data()
{
    QTest::addColumn<QString>("type");
    for (const char* type :
         {"output_digital", "output_with_progress", "output_bar", "output_lumeno"}) {
        QTest::newRow(type) << type;
    }
}

void tst_StateMarks::readoutWithoutValueSaysSo()
{
    QFETCH(QString, type);
    MarkedPanel panel(m_plugins, "devices: {a: {device: " + type.toUtf8() + "}}\n");
    QVERIFY(panel.mark("a"));
    QCOMPARE(panel.mark("a")->accessibleName(), QString("no value yet"));
    QCOMPARE(panel.mark("a")->geometry(), panel.widget("a")->geometry());
    panel.send("a", 0.0); // A value as good as any.
    QVERIFY(!panel.mark("a"));
}

void tst_StateMarks::lampTellsItsStateByShape()
{
    MarkedPanel panel(m_plugins, "devices: {a: {device: indicator}}\n");
    QStringList names;
    QVector<QImage> pictures;
    const auto look = [&] {
        names.append(panel.mark("a")->accessibleName());
        pictures.append(panel.mark("a")->grab().toImage());
    };
    look();
    panel.send("a", true);
    look();
    panel.send("a", false);
    look();
    QCOMPARE(names, QStringList({"no value yet", "on", "off"}));
    for (const QImage& picture : pictures) {
        QCOMPARE(pictures.count(picture), 1);
    }
    const QPoint centre = panel.mark("a")->rect().center();
    QCOMPARE(pictures[1].pixelColor(centre), panel.pages().palette().color(QPalette::WindowText));
    QCOMPARE(pictures[2].pixelColor(centre), panel.pages().palette().color(QPalette::Window));
}

void tst_StateMarks::valueThatComesWhileThePanelStartsCounts()
{
    MarkedPanel panel(m_plugins, "devices:\n"
                                 "  key: {device: button, params: {toggled: true}}\n"
                                 "  lamp: {device: indicator}\n"
                                 "  other: {device: indicator}\n"
                                 "connections: [key.toggled -> lamp.input]\n");
    QCOMPARE(panel.mark("lamp")->accessibleName(), QString("on"));
    QCOMPARE(panel.mark("other")->accessibleName(), QString("no value yet"));
}

void tst_StateMarks::markStaysWithItsDisplay()
{
    MarkedPanel panel(m_plugins, "devices: {a: {device: output_bar}, b: {device: indicator}}\n");
    QVERIFY(panel.mark("a") && panel.mark("b"));
    const StateMark* const mark = panel.mark("a");
    panel.pages().resize(1200, 900);
    QTRY_COMPARE(mark->geometry(), panel.widget("a")->geometry());
    const QRect lamp =
        panel.widget("b")->findChild<QLabel*>()->geometry().translated(panel.widget("b")->pos());
    QVERIFY(!panel.mark("b")->geometry().intersects(lamp)); // It covers no letter of the caption.
    QCOMPARE(panel.mark("b")->geometry().right() + 5, lamp.left());
    panel.widget("a")->hide();
    QVERIFY(!mark->isVisible());
}

void tst_StateMarks::markIsAboveItsDisplayAlsoWhenThatIsRaised()
{
    MarkedPanel panel(m_plugins, "devices: {a: {device: output_bar}, b: {device: indicator}}\n");
    const auto isAbove = [&] {
        const QObjectList& order = panel.mark("a")->parentWidget()->children();
        return order.indexOf(panel.mark("a")) > order.indexOf(panel.widget("a"));
    };
    QVERIFY(isAbove());
    panel.widget("a")->raise();
    QVERIFY(isAbove());
}

/// To raise a mark costs a look at all that stands on the page, and a page that is laid out moves
/// them all.
void tst_StateMarks::displayThatMovesLeavesTheOrderAlone()
{
    MarkedPanel panel(m_plugins, "devices: {a: {device: output_bar}, b: {device: indicator}}\n");
    const QObjectList before = panel.mark("a")->parentWidget()->children();
    panel.widget("a")->move(3, 3);
    panel.widget("a")->resize(50, 50);
    panel.widget("a")->hide();
    panel.widget("a")->show();
    QCOMPARE(panel.mark("a")->geometry(), panel.widget("a")->geometry());
    QCOMPARE(panel.mark("a")->parentWidget()->children(), before);
}

void tst_StateMarks::pressGoesThroughAMark()
{
    MarkedPanel panel(m_plugins, "devices: {a: {device: output_digital}}\n");
    const QPoint centre = panel.widget("a")->geometry().center();
    QVERIFY(panel.mark("a")->parentWidget()->childAt(centre) != panel.mark("a"));
}

void tst_StateMarks::controlsHaveNone()
{
    MarkedPanel panel(m_plugins,
                      "devices: {a: {device: slider}, b: {device: checkbox}, c: {device: "
                      "label}, d: {device: input}, e: {device: output_graph}}\n");
    QCOMPARE(panel.pages().findChildren<StateMark*>().size(), 0);
}

NORVO_TEST(tst_StateMarks)
#include "tst_StateMarks.moc"
