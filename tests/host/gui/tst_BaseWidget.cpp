// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseWidget.h"

#include "MessageLog.h"
#include "TestMain.h"

#include <QGridLayout>
#include <QLabel>
#include <QtTest>

#include <cstring>
#include <memory>
#include <numeric>
#include <type_traits>

namespace {

class Device : public BaseGuiDevice
{
public:
    Device()
    {
        setObjectName("pump");
        addParam("widget/fontSize", "10");
    }
    BaseWidget* createWidget() override { return new BaseWidget(this, nullptr); }
};

class Widget : public BaseWidget
{
public:
    using BaseWidget::BaseWidget;
    using BaseWidget::device;

    void initialise() override { setInitialised(true); }
};

template <class Function>
int virtualIndex(Function function)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &function, sizeof offset);
    return int(offset / std::ptrdiff_t(sizeof(void*)));
}

} // namespace

class tst_BaseWidget : public QObject
{
    Q_OBJECT

private slots:
    void derivesFromItsThreeBases()
    {
        QVERIFY((std::is_base_of_v<QWidget, BaseWidget>));
        QVERIFY((std::is_base_of_v<ParametersEntity, BaseWidget>));
        QVERIFY((std::is_base_of_v<NamedObject, BaseWidget>));
    }

    void virtualOperationsStandInTheAgreedOrder()
    {
        const QVector<int> order{
            virtualIndex(&BaseWidget::initialise), virtualIndex(&BaseWidget::deinitialise),
            virtualIndex(&BaseWidget::getObjectName), virtualIndex(&BaseWidget::sendParamChanged)};
        QVector<int> expected(order.size());
        std::iota(expected.begin(), expected.end(), order.first());
        QCOMPARE(order, expected);
        QVERIFY(order.first() > virtualIndex(&BaseWidget::sizeHint));
    }

    void widgetsWriteReachesTheDevice()
    {
        Device device;
        Widget widget(&device, nullptr);
        QSignalSpy changed(&device, &BaseDevice::paramChanged);
        widget.setParam("widget/fontsize", "12");
        QCOMPARE(device.getParam("widget/fontSize").value(), QString("12"));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first(), QVariantList({"widget/fontSize", "12"}));
    }

    void devicesWriteReachesTheWidget()
    {
        Device device;
        Widget widget(&device, nullptr);
        device.setParam("widget/fontSize", "14");
        QCOMPARE(int(widget.getParam("WIDGET/FONTSIZE")), 14);
        QCOMPARE(widget.paramNames(), device.paramNames());
        QCOMPARE(&widget.params(), &device.params());
    }

    void undeclaredNameIsTheDevicesAlert()
    {
        Device device;
        Widget widget(&device, nullptr);
        QSignalSpy alerts(&device, &BaseDevice::alertRaised);
        MessageLog log;
        widget.setParam("speed", "1");
        QCOMPARE(log.take(), QStringList("warning: pump: There is no parameter \"speed\""));
        QCOMPARE(alerts.size(), 1);
    }

    void errorAndAlertAreTheDevices()
    {
        Device device;
        Widget widget(&device, nullptr);
        QSignalSpy errors(&device, &BaseDevice::errorOccurred);
        MessageLog log;
        QCOMPARE(widget.error("it broke"), false);
        QCOMPARE(widget.alert("take care"), true);
        QCOMPARE(log.take(), QStringList({"warning: pump: it broke", "warning: pump: take care"}));
        QCOMPARE(errors.size(), 1);
    }

    void sendParamChangedIsTheDevices()
    {
        Device device;
        Widget widget(&device, nullptr);
        QSignalSpy changed(&device, &BaseDevice::paramChanged);
        widget.sendParamChanged();
        QCOMPARE(changed.size(), device.paramNames().size());
        QCOMPARE(changed.last(), QVariantList({"widget/fontSize", "10"}));
        widget.initialise();
        widget.sendParamChanged();
        QCOMPARE(changed.size(), 2 * device.paramNames().size());
    }

    void widgetWithoutDeviceHasAnEmptySetAndWorksOn()
    {
        Widget widget(nullptr, nullptr);
        QVERIFY(!widget.device());
        QVERIFY(widget.params().isEmpty());
        QCOMPARE(int(widget.getParam("widget/fontSize")), 0);
        QCOMPARE(widget.getObjectName(), QString());
        widget.sendParamChanged();
        widget.initialise();
        widget.deinitialise();

        MessageLog log;
        widget.setParam("widget/fontSize", "12");
        QCOMPARE(log.take(), QStringList("warning: There is no parameter \"widget/fontSize\""));
        QVERIFY(widget.params().isEmpty());
    }

    void deviceMayDieFirst()
    {
        auto device = std::make_unique<Device>();
        Widget widget(device.get(), nullptr);
        widget.initialise();
        device->setParam("widget/fontSize", "12");
        device.reset();

        QVERIFY(!widget.device());
        QCOMPARE(widget.getObjectName(), QString());
        QCOMPARE(int(widget.getParam("widget/fontSize")), 12);
        widget.setParam("widget/fontSize", "14");
        QCOMPARE(int(widget.getParam("widget/fontSize")), 14);
        widget.sendParamChanged();
        MessageLog log;
        QCOMPARE(widget.error("it broke"), false);
        QCOMPARE(log.take(), QStringList("warning: it broke"));
        widget.deinitialise();
    }

    void widgetMayDieFirst()
    {
        Device device;
        {
            Widget widget(&device, nullptr);
            widget.setParam("widget/fontSize", "12");
        }
        device.setParam("widget/fontSize", "14");
        QCOMPARE(int(device.getParam("widget/fontSize")), 14);
    }

    void deviceCanBeDestroyedWhileTheWidgetListens()
    {
        auto device = std::make_unique<Device>();
        Widget widget(device.get(), nullptr);
        QString seen;
        connect(device.get(), &QObject::destroyed, &widget, [&] {
            widget.setParam("widget/fontSize", "20");
            seen = widget.getParam("widget/fontSize").value() + widget.getObjectName();
        });
        device.reset();
        QCOMPARE(seen, QString("20"));
    }

    void layoutIsNeverNull()
    {
        Device device;
        Widget widget(&device, nullptr);
        const Widget lonely(nullptr, nullptr);
        QVERIFY(widget.getLayout());
        QVERIFY(lonely.getLayout());
        QCOMPARE(widget.getLayout(), widget.layout());
        QCOMPARE(widget.getLayout()->count(), 0);
        QCOMPARE(widget.getLayout()->contentsMargins(), QMargins());
    }

    void layoutIsDoneWhenItIsShownAndAfterEachChange()
    {
        Widget widget(nullptr, nullptr);
        auto* const first = new QWidget;
        widget.getLayout()->addWidget(first, 0, 0);
        widget.resize(200, 100);
        widget.show();
        QCOMPARE(first->geometry(), widget.rect());
        auto* const second = new QWidget;
        widget.getLayout()->addWidget(second, 1, 0);
        second->show();
        QTRY_COMPARE(first->height() + second->height() + widget.getLayout()->spacing(),
                     widget.height());
    }

    void layoutIsDoneWithinALayoutThatIsShownAlready()
    {
        QWidget page;
        QGridLayout around(&page);
        page.resize(300, 100);
        page.show();
        auto* const widget = new Widget(nullptr, nullptr);
        auto* const label = new QLabel("12.5");
        widget->getLayout()->addWidget(label);
        around.addWidget(widget);
        QTRY_VERIFY(label->isVisible());
        QTRY_COMPARE(label->size(), widget->size());
        QCOMPARE(widget->sizeHint(), label->sizeHint());
        label->setText("a longer one");
        QCOMPARE(widget->sizeHint(), label->sizeHint());
    }

    /// Thousands of requests that wait would be looked through for each further one.
    void layoutAsksForNothingBeforeItIsShown()
    {
        class Counting : public Widget
        {
        public:
            using Widget::Widget;
            int requests = 0;

        protected:
            bool event(QEvent* event) override
            {
                requests += event->type() == QEvent::LayoutRequest ? 1 : 0;
                return Widget::event(event);
            }
        };
        Counting widget(nullptr, nullptr);
        widget.getLayout()->addWidget(new QLabel("12.5"));
        QCoreApplication::processEvents();
        QCOMPARE(widget.requests, 0);
    }

    void initialisedFlagIsTheWidgetsToSet()
    {
        Device device;
        BaseWidget bare(&device, nullptr);
        QVERIFY(!bare.isInitialised());
        bare.initialise();
        QVERIFY(!bare.isInitialised());

        Widget widget(&device, nullptr);
        QVERIFY(!widget.isInitialised());
        widget.initialise();
        QVERIFY(widget.isInitialised());
        widget.deinitialise();
        QVERIFY(!widget.isInitialised());
        widget.initialise();
        QVERIFY(widget.isInitialised());
    }

    void objectNameIsItsOwnElseItsDevices()
    {
        Device device;
        QWidget parent;
        Widget* const widget = new Widget(&device, &parent);
        QCOMPARE(widget->parentWidget(), &parent);
        const NamedObject& named = *widget;
        QCOMPARE(named.getObjectName(), QString("pump"));
        device.setObjectName("valve");
        QCOMPARE(named.getObjectName(), QString("valve"));
        widget->setObjectName("face");
        QCOMPARE(named.getObjectName(), QString("face"));
    }
};

NORVO_TEST(tst_BaseWidget)

#include "tst_BaseWidget.moc"
