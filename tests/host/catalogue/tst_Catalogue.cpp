// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/Listing.h"
#include "host/program/PluginSet.h"
#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QtTest>

#include <algorithm>
#include <memory>

using namespace norvo;

namespace {

/// Says little of itself.
class BareDevice : public BaseDevice
{
public:
    static DeviceTypeInfo typeInfo() { return {}; }

    BareDevice()
    {
        addParam("code", "");
        getParam("code").setUnit("multiline");
    }
};

} // namespace

/// The words of the types that come with the program, and how a type without words is described.
class tst_Catalogue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyTypeHasPurposeAndExample_data() { everyType(); }
    void everyTypeHasPurposeAndExample();
    void everyParameterHasWords_data() { everyType(); }
    void everyParameterHasWords();
    void everyOutputAndInputHasWords_data() { everyType(); }
    void everyOutputAndInputHasWords();
    void tablesNameNothingThatDoesNotExist();
    void parametersStandInTheOrderOfTheirDeclaration_data() { everyType(); }
    void parametersStandInTheOrderOfTheirDeclaration();
    void everyDefaultIsInItsRange_data() { everyType(); }
    void everyDefaultIsInItsRange();
    void defaultsKeepToTheRelations_data() { everyType(); }
    void defaultsKeepToTheRelations();
    void typeIsFoundInAnyCase();
    void deviceThatIsThereIsDescribedWithoutMakingAnother();
    void rangesAndRelationsAreAtHand();
    void methodsOfASliderForItsWidgetAreMarked();
    void methodsOfADocumentAreNotKnownBefore();
    void placeOnThePanelIsDescribedOnceForAll();
    void typeWithoutTableIsDescribedByItself();
    void typeWithoutATitleIsCalledByItsKey();
    void listingTellsWhatIsKeptAndWhereItHolds();
    void linesOfAListingAreBounded();

private:
    void everyType() const
    {
        QTest::addColumn<QString>("type");
        for (const QString& type : m_plugins.manager().factories().keys()) {
            QTest::newRow(qPrintable(type)) << type;
        }
    }

    PluginSet m_plugins;
    std::unique_ptr<Catalogue> m_catalogue;
};

void tst_Catalogue::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    m_catalogue = std::make_unique<Catalogue>(m_plugins.manager());
    QVERIFY(m_catalogue->keys().size() >= 20);
}

void tst_Catalogue::everyTypeHasPurposeAndExample()
{
    QFETCH(QString, type);
    const TypeWords* const words = m_catalogue->words(type);
    QVERIFY(words->purpose.endsWith('.'));
    QVERIFY(words->example.contains("device: " + type));
    QVERIFY(!words->categories.isEmpty());
}

void tst_Catalogue::everyParameterHasWords()
{
    QFETCH(QString, type);
    for (const ParamWords& param : m_catalogue->words(type)->params) {
        QVERIFY2(!param.meaning.isEmpty(), qPrintable(param.name));
        QVERIFY2(param.meaning.size() > 3, qPrintable(param.name));
    }
}

void tst_Catalogue::everyOutputAndInputHasWords()
{
    QFETCH(QString, type);
    const std::unique_ptr<BaseDevice> device(m_plugins.manager().createDevice(type));
    const TypeWords* const words = m_catalogue->words(type);
    if (!words->hasLateMethods) {
        QCOMPARE(words->outputs.size(), device->grabMethods({}, QMetaMethod::Signal, true).size());
        QCOMPARE(words->inputs.size(), device->grabMethods({}, QMetaMethod::Slot, true).size());
    }
    for (const MethodWords& method : words->outputs + words->inputs) {
        QVERIFY2(!method.meaning.isEmpty(), qPrintable(method.signature));
    }
}

void tst_Catalogue::tablesNameNothingThatDoesNotExist()
{
    const Catalogue catalogue(m_plugins.manager());
    QCOMPARE(Listing::allTypes(catalogue).size(), catalogue.keys().size());
    QCOMPARE(catalogue.problems(), QStringList());
}

void tst_Catalogue::parametersStandInTheOrderOfTheirDeclaration()
{
    QFETCH(QString, type);
    const std::unique_ptr<BaseDevice> device(m_plugins.manager().createDevice(type));
    QStringList names;
    for (const ParamWords& param : m_catalogue->words(type)->params) {
        names.append(param.name);
        QCOMPARE(param.defaultValue, device->getParam(param.name).defaultValue());
        QCOMPARE(param.options, device->getParam(param.name).options());
    }
    QCOMPARE(names, device->paramNames());
}

void tst_Catalogue::everyDefaultIsInItsRange()
{
    QFETCH(QString, type);
    for (const ParamWords& param : m_catalogue->words(type)->params) {
        if (param.isNumber() && (param.also.isEmpty() || param.defaultValue != param.also)) {
            bool isNumber = false;
            const double value = param.defaultValue.toDouble(&isNumber);
            QVERIFY2(isNumber && param.isInRange(value), qPrintable(param.name));
        }
    }
}

void tst_Catalogue::defaultsKeepToTheRelations()
{
    QFETCH(QString, type);
    const TypeWords* const words = m_catalogue->words(type);
    for (const Relation& relation : words->relations) {
        bool areNumbers[2] = {};
        const double smaller =
            words->param(relation.smaller)->defaultValue.toDouble(&areNumbers[0]);
        const double larger = words->param(relation.larger)->defaultValue.toDouble(&areNumbers[1]);
        QVERIFY2(!areNumbers[0] || !areNumbers[1] || relation.holds(smaller, larger),
                 qPrintable(relation.toString()));
    }
}

void tst_Catalogue::typeIsFoundInAnyCase()
{
    QVERIFY(m_catalogue->words("Output_Graph"));
    QCOMPARE(m_catalogue->words("BUTTON"), m_catalogue->words("button"));
    QCOMPARE(m_catalogue->words("buton"), nullptr);
}

void tst_Catalogue::deviceThatIsThereIsDescribedWithoutMakingAnother()
{
    const Catalogue catalogue(m_plugins.manager());
    const std::unique_ptr<BaseDevice> device(m_plugins.manager().createDevice("slider"));
    device->setParam("widget/step", "7");
    const TypeWords* const words = catalogue.words("slider", device.get());
    QCOMPARE(words->param("widget/step")->defaultValue, QString("1"));
    QCOMPARE(words->outputs.size(), 2);
}

void tst_Catalogue::rangesAndRelationsAreAtHand()
{
    const TypeWords* const slider = m_catalogue->words("slider");
    const ParamWords* const step = slider->param("WIDGET/STEP");
    QVERIFY(step);
    QCOMPARE(int(step->kind), int(ParamKind::WholeNumber));
    QVERIFY(!step->isInRange(0));
    QVERIFY(step->isInRange(1));
    QVERIFY(!step->isInRange(qQNaN()));
    QCOMPARE(step->range(), QString("at least 1"));
    QCOMPARE(slider->relations.size(), 1);
    QVERIFY(slider->relations[0].holds(0, 100));
    QVERIFY(!slider->relations[0].holds(5, 5));
    QCOMPARE(slider->relations[0].toString(), QString("widget/minValue < widget/maxValue"));

    const TypeWords* const bar = m_catalogue->words("output_bar");
    QCOMPARE(bar->param("widget/dashesStep")->range(), QString("above 0"));
    QVERIFY(!bar->param("widget/dashesStep")->isInRange(0));
    QCOMPARE(bar->param("widget/scaleHeight")->range(), QString("0 to 1"));
    QVERIFY(bar->relations[1].holds(5, 5)); // Equal thresholds are a green line.
}

void tst_Catalogue::methodsOfASliderForItsWidgetAreMarked()
{
    const TypeWords* const slider = m_catalogue->words("slider");
    QCOMPARE(slider->outputs[0].signature, QString("wgOutput(double)"));
    QVERIFY(slider->outputs[0].isForWidget);
    QVERIFY(!slider->outputs[1].isForWidget);
    QCOMPARE(slider->outputs[1].carries(), QString("number"));
    QCOMPARE(m_catalogue->words("button")->inputs[2].carries(), QString("pulse"));
    QCOMPARE(m_catalogue->words("output_vector")->inputs[0].carries(), QString("array"));
}

void tst_Catalogue::methodsOfADocumentAreNotKnownBefore()
{
    const TypeWords* const qml = m_catalogue->words("qml_widget");
    QVERIFY(qml->drawsByOpenGl);
    QVERIFY(!m_catalogue->words("label")->drawsByOpenGl);
    QVERIFY(qml->hasLateMethods);
    QVERIFY(qml->outputs.isEmpty() && qml->inputs.isEmpty());
    QCOMPARE(int(qml->param("sourceCode")->kind), int(ParamKind::Lines));
    QCOMPARE(qml->param("sourceCode")->unit, QString());
    QVERIFY(qml->param("sourceData")->isFile());
    QCOMPARE(qml->param("sourceData")->enabledWhen.value("sourceType"), QStringList("file"));
}

void tst_Catalogue::placeOnThePanelIsDescribedOnceForAll()
{
    const ParamWords* const row = m_catalogue->words("label")->param("widget/row");
    QVERIFY(row->isOfEveryType);
    QVERIFY(row->isInRange(-1) && row->isInRange(999) && !row->isInRange(1000));
    QVERIFY(!m_catalogue->words("label")->param("Value")->isOfEveryType);
    QCOMPARE(m_catalogue->words("system")->param("widget/row"), nullptr);
}

void tst_Catalogue::typeWithoutTableIsDescribedByItself()
{
    PluginSet strangers;
    strangers.load(NORVO_BUILD_DIR "/tests/fixtures/example");
    const Catalogue catalogue(strangers.manager());
    QVERIFY(!catalogue.keys().isEmpty());
    for (const QString& key : catalogue.keys()) {
        const std::unique_ptr<BaseDevice> device(strangers.manager().createDevice(key));
        const TypeWords* const words = catalogue.words(key);
        QCOMPARE(words->purpose, strangers.manager().typeInfos().value(key).description);
        QCOMPARE(words->params.size(), device->paramNames().size());
        QCOMPARE(words->inputs.size(), device->grabMethods({}, QMetaMethod::Slot, true).size());
        QVERIFY(words->example.isEmpty());
        QVERIFY(Listing::text({words}).contains(key));
    }
}

void tst_Catalogue::typeWithoutATitleIsCalledByItsKey()
{
    DeviceManager manager;
    manager.registerDeviceType<BareDevice>("bare");
    const Catalogue catalogue(manager);
    const TypeWords* const words = catalogue.words("BARE");
    QCOMPARE(words->title, QString("bare"));
    QVERIFY(words->params[0].kind == ParamKind::Lines); // "multiline" is no unit.
    QCOMPARE(words->params[0].unit, QString());
}

void tst_Catalogue::listingTellsWhatIsKeptAndWhereItHolds()
{
    TypeWords type;
    type.key = "k";
    ParamWords param;
    param.name = "p";
    param.isKept = true;
    param.enabledWhen = {{"mode", {"a", "b", "c"}}, {"on", {"true"}}};
    type.params = {param};
    QCOMPARE(Listing::conditionOf(param), QString("where mode is a, b or c and on is true"));
    const QString json = Listing::as(Listing::Format::Json, {&type});
    QVERIFY(json.contains("\"kept\": true"));
}

void tst_Catalogue::linesOfAListingAreBounded()
{
    TypeWords type;
    type.key = "k";
    for (const int length : {3, 4, 5, 6}) {
        type.purpose = QString(QString(length, 'x') + ' ').repeated(60).trimmed();
        int longest = 0;
        for (const QString& line : Listing::as(Listing::Format::Text, {&type}).split('\n')) {
            longest = std::max(longest, line.size());
        }
        QVERIFY(longest <= 96);
        QVERIFY(longest + 1 + length > 96);
    }
}

NORVO_TEST(tst_Catalogue)
#include "tst_Catalogue.moc"
