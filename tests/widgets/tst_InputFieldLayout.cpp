// SPDX-License-Identifier: GPL-3.0-or-later

#include "InputFieldParts.h"
#include "TestMain.h"

#include <QtTest>

class tst_InputFieldLayout : public QObject
{
    Q_OBJECT

private slots:
    void captionAndUnitsHaveTheirFontsAndPolicies();
    void layoutPlacesEachPart_data();
    void layoutPlacesEachPart();
    void captionNamesTheEditorForAssistiveTechnology();
    void editorHasTheFocusOfTheWidget();
};

void tst_InputFieldLayout::captionAndUnitsHaveTheirFontsAndPolicies()
{
    const InputStand stand({{"name", "Heater"}, {"units", "K"}});
    const QLabel* const caption = labelWith(stand, "Heater");
    const QLabel* const units = labelWith(stand, "K");
    QVERIFY(caption && units);
    QCOMPARE(fontOf(*caption), QString("Arial 25 weight 3 upright"));
    QCOMPARE(caption->sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum));
    QCOMPARE(fontOf(*units), QString("Arial 30 weight 3 upright"));
    QCOMPARE(units->sizePolicy(), QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
}

void tst_InputFieldLayout::layoutPlacesEachPart_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("units");
    QTest::addColumn<QString>("captionPlace");
    QTest::addColumn<QString>("editorPlace");
    QTest::addColumn<QString>("unitsPlace");
    const QString top = alignment(Qt::AlignTop);
    const QString bottom = alignment(Qt::AlignBottom);
    const QString middle = alignment(Qt::AlignVCenter);
    const QString left = alignment(Qt::AlignLeft);
    const QString right = alignment(Qt::AlignRight);
    QTest::newRow("vertical") << "vertical"
                              << "Heater"
                              << "K"
                              << "0 0 1 2 " + bottom << "1 0 1 1 " + top << "1 1 1 1 " + middle;
    QTest::newRow("horizontal") << "horizontal"
                                << "Heater"
                                << "K"
                                << "0 0 1 1 " + left << "0 1 1 1 0"
                                << "0 2 1 1 " + right;
    QTest::newRow("capitalHIsVertical")
        << "Horizontal"
        << "Heater"
        << "K"
        << "0 0 1 2 " + bottom << "1 0 1 1 " + top << "1 1 1 1 " + middle;
    QTest::newRow("emptyNameAndUnitsVertical") << "vertical"
                                               << ""
                                               << ""
                                               << "none"
                                               << "1 0 1 1 " + top << "none";
    QTest::newRow("emptyNameAndUnitsHorizontal") << "horizontal"
                                                 << ""
                                                 << ""
                                                 << "none"
                                                 << "0 1 1 1 0"
                                                 << "none";
    QTest::newRow("emptyUnits") << "horizontal"
                                << "Heater"
                                << ""
                                << "0 0 1 1 " + left << "0 1 1 1 0"
                                << "none";
}

void tst_InputFieldLayout::layoutPlacesEachPart()
{
    QFETCH(QString, layout);
    QFETCH(QString, name);
    QFETCH(QString, units);
    const InputStand stand({{"layout", layout}, {"name", name}, {"units", units}});
    QTEST(placeOf(stand, labelWith(stand, name)), "captionPlace");
    QTEST(placeOf(stand, editorOf(stand)), "editorPlace");
    QTEST(placeOf(stand, labelWith(stand, units)), "unitsPlace");
    const int labels = !name.isEmpty() + !units.isEmpty();
    QCOMPARE(stand.widget->findChildren<QLabel*>().size(), labels);
    QCOMPARE(stand.widget->getLayout()->count(), labels + 1);

    auto* const field = static_cast<InputFieldWidget*>(stand.widget.get());
    field->setLayout(Qt::Horizontal); // a second time moves the parts
    QCOMPARE(placeOf(stand, editorOf(stand)), QString("0 1 1 1 0"));
    QCOMPARE(stand.widget->getLayout()->count(), labels + 1);
}

void tst_InputFieldLayout::captionNamesTheEditorForAssistiveTechnology()
{
    QCOMPARE(editorOf(InputStand({{"name", "Heater"}}))->accessibleName(), QString("Heater"));
    const InputStand line({{"name", "Heater"}, {"type", "int"}});
    QCOMPARE(editorOf(line)->accessibleName(), QString("Heater"));
    QCOMPARE(editorOf(InputStand())->accessibleName(), QString());
}

void tst_InputFieldLayout::editorHasTheFocusOfTheWidget()
{
    const InputStand stand;
    QCOMPARE(stand.widget->focusProxy(), editorOf(stand));
}

NORVO_TEST(tst_InputFieldLayout)
#include "tst_InputFieldLayout.moc"
