// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/ParametersEntity.h"

#include "MessageLog.h"
#include "TestMain.h"

#include <QtTest>

#include <cstring>
#include <memory>

namespace {

/// Notes what reaches it.
class Entity : public ParametersEntity
{
public:
    Entity() = default;
    explicit Entity(ParametersEntity* owner) : ParametersEntity(owner) {}

    void setParam(QString name, QString value) override
    {
        calls.append(name + " := " + value);
        ParametersEntity::setParam(name, value);
    }
    bool error(QString text) override
    {
        calls.append("error: " + text);
        return false;
    }
    bool alert(QString text) override
    {
        calls.append("alert: " + text);
        return true;
    }

    QStringList calls;
};

/// Which entry of the virtual table a pointer to a virtual function stands for.
template <class Function>
std::ptrdiff_t virtualIndex(Function function)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &function, sizeof offset);
    return offset / std::ptrdiff_t(sizeof(void*));
}

} // namespace

class tst_ParametersEntity : public QObject
{
    Q_OBJECT

private slots:
    void virtualOperationsStandInTheAgreedOrder()
    {
        QCOMPARE(virtualIndex(&ParametersEntity::setParam), 0);
        QCOMPARE(virtualIndex(&ParametersEntity::params), 1);
        QCOMPARE(virtualIndex(&ParametersEntity::getParam), 2);
        // The destructor takes two entries.
        QCOMPARE(virtualIndex(&ParametersEntity::sendParamChanged), 5);
        QCOMPARE(virtualIndex(&ParametersEntity::error), 6);
        QCOMPARE(virtualIndex(&ParametersEntity::alert), 7);
    }

    void declaredWithDefaultText()
    {
        ParametersEntity entity;
        entity.addParam("mode", "b", {"a", "b"}, true, {{"other", {"x", "y"}}});
        const Param& param = entity.getParam("mode");
        QCOMPARE(param.name(), QString("mode"));
        QCOMPARE(param.value(), QString("b"));
        QCOMPARE(param.defaultValue(), QString("b"));
        QCOMPARE(param.options(), QStringList({"a", "b"}));
        QCOMPARE(param.flag(), true);
        QCOMPARE(param.enabledConditions(), Param::EnabledConditions({{"other", {"x", "y"}}}));
    }

    void declaredWithoutDefaultTextStartsAsItsFirstOption()
    {
        ParametersEntity entity;
        entity.addParam("mode", QStringList{"a", "b"}, false, {{"other", {"x"}}});
        const Param& param = entity.getParam("mode");
        QCOMPARE(param.value(), QString("a"));
        QCOMPARE(param.defaultValue(), QString("a"));
        QCOMPARE(param.options(), QStringList({"a", "b"}));
        QCOMPARE(param.flag(), false);
        QCOMPARE(param.enabledConditions(), Param::EnabledConditions({{"other", {"x"}}}));

        entity.addParam("free", QStringList{});
        QCOMPARE(entity.getParam("free").value(), QString());
        QCOMPARE(entity.getParam("free").flag(), true);
    }

    void namesAreListedInTheOrderOfDeclaration()
    {
        ParametersEntity entity;
        for (const char* name : {"zeta", "Alpha", "widget/row", "beta"}) {
            entity.addParam(name, "");
        }
        QCOMPARE(entity.paramNames(), QStringList({"zeta", "Alpha", "widget/row", "beta"}));
        QCOMPARE(entity.params().keys(), QStringList({"Alpha", "beta", "widget/row", "zeta"}));

        entity.addParam("Alpha", "again");
        QCOMPARE(entity.paramNames(), QStringList({"zeta", "Alpha", "widget/row", "beta"}));
        QCOMPARE(entity.getParam("Alpha").value(), QString("again"));
    }

    void namesAreFoundWhateverTheirCase()
    {
        ParametersEntity entity;
        entity.addParam("widget/fontSize", "10");
        entity.setParam("WIDGET/FONTSIZE", "12");
        QCOMPARE(int(entity.getParam("Widget/Fontsize")), 12);
        QCOMPARE(entity.getParam("WIDGET/fontsize").name(), QString("widget/fontSize"));
        QVERIFY(entity.params().contains("WIDGET/FONTSIZE"));
        QCOMPARE(entity.paramNames(), QStringList("widget/fontSize"));
    }

    void getParamGivesTheParameterItself()
    {
        ParametersEntity entity;
        entity.addParam("rate", "1");
        entity.getParam("rate").setUnit("Hz");
        QCOMPARE(entity.params().value("rate").unit(), QString("Hz"));
    }

    void textIsKeptVerbatim()
    {
        ParametersEntity entity;
        entity.addParam("text", "");
        entity.setParam("text", " a\tb \n");
        QCOMPARE(entity.getParam("text").value(), QString(" a\tb \n"));
    }

    void undeclaredNameIsEmptyAndKeepsNothing()
    {
        ParametersEntity entity;
        Param& undeclared = entity.getParam("rate");
        QCOMPARE(undeclared.name() + undeclared.value(), QString());
        undeclared.setValue("5");
        QCOMPARE(entity.getParam("rate").value(), QString());
        QVERIFY(entity.paramNames().isEmpty());
        QVERIFY(entity.params().isEmpty());
    }

    void settingAnUndeclaredNameAlertsAndStoresNothing()
    {
        Entity entity;
        entity.setParam("rate", "5");
        QCOMPARE(entity.calls, QStringList({"rate := 5", "alert: There is no parameter \"rate\""}));
        QVERIFY(entity.params().isEmpty());
    }

    void errorsNameTheParameterInTheOrderOfDeclaration()
    {
        ParametersEntity entity;
        entity.addParam("rate", "1");
        entity.addParam("active", "false");
        entity.addParam("mode", "a", {"a", "b"});
        QVERIFY(entity.paramsOk());
        QCOMPARE(entity.paramFaults(), QStringList());

        entity.setParam("mode", "c");
        QVERIFY(entity.paramsOk());

        entity.setParam("ACTIVE", "perhaps %1");
        entity.setParam("rate", "fast");
        QVERIFY(!entity.paramsOk());
        QCOMPARE(entity.paramFaults(),
                 QStringList({"parameter \"rate\": \"fast\" is not a number",
                              "parameter \"active\": \"perhaps %1\" is neither true nor false"}));

        entity.setParam("rate", "2");
        entity.setParam("active", "on");
        QVERIFY(entity.paramsOk());
    }

    void errorAndAlertAreLoggedAndAnswered()
    {
        ParametersEntity entity;
        MessageLog log;
        QCOMPARE(entity.error("it broke"), false);
        QCOMPARE(entity.alert("take care"), true);
        QCOMPARE(log.take(), QStringList({"warning: it broke", "warning: take care"}));
    }

    void sharersSeeEachOthersWrites()
    {
        Entity owner;
        owner.addParam("rate", "1");
        ParametersEntity sharer(&owner);
        QCOMPARE(&sharer.params(), &owner.params());

        owner.setParam("rate", "2");
        QCOMPARE(sharer.getParam("rate").value(), QString("2"));
        sharer.setParam("RATE", "3");
        QCOMPARE(owner.getParam("rate").value(), QString("3"));
        sharer.addParam("late", "x");
        QCOMPARE(owner.paramNames(), QStringList({"rate", "late"}));
    }

    void whatASharerDoesGoesThroughTheOwner()
    {
        Entity owner;
        owner.addParam("rate", "1");
        ParametersEntity sharer(&owner);
        ParametersEntity second(&sharer);
        second.setParam("rate", "2");
        sharer.setParam("speed", "3");
        QCOMPARE(sharer.error("it broke"), false);
        QCOMPARE(sharer.alert("take care"), true);
        QCOMPARE(owner.calls,
                 QStringList({"rate := 2", "speed := 3", "alert: There is no parameter \"speed\"",
                              "error: it broke", "alert: take care"}));
    }

    void setOutlivesItsOwner()
    {
        auto owner = std::make_unique<Entity>();
        owner->addParam("rate", "1");
        Entity sharer(owner.get());
        Entity second(owner.get());
        owner->setParam("rate", "2");
        owner.reset();

        QCOMPARE(sharer.getParam("rate").value(), QString("2"));
        sharer.setParam("rate", "3");
        QCOMPARE(second.getParam("rate").value(), QString("3"));
        sharer.setParam("speed", "4");
        QCOMPARE(sharer.calls.last(), QString("alert: There is no parameter \"speed\""));
    }

    void sharingWithNoOwnerGivesAnEmptySet()
    {
        Entity entity(nullptr);
        QVERIFY(entity.params().isEmpty());
        QVERIFY(entity.paramsOk());
        entity.addParam("rate", "1");
        entity.setParam("rate", "2");
        QCOMPARE(int(entity.getParam("rate")), 2);
    }
};

NORVO_GUILESS_TEST(tst_ParametersEntity)

#include "tst_ParametersEntity.moc"
