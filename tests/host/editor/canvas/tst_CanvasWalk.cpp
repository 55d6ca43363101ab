// SPDX-License-Identifier: GPL-3.0-or-later

#include "CanvasTest.h"
#include "TestMain.h"

#include <QRandomGenerator>

namespace {

constexpr int kSteps = 500;

const QByteArray kPanel =
    "devices:\n"
    "  go: {device: button, params: {text: Go, widget: {row: 0, column: 0}}}\n"
    "  lamp: {device: label, params: {widget/row: 0, widget/column: 1}}\n"
    "  wide: {device: label, params: {widget: {colspan: 2}}}\n"
    "  free: {device: label}\n"
    "connections:\n"
    "  - go.toggled -> lamp.inputWarning\n";

QStringList placesOf(const EditedPanel& panel)
{
    QStringList places;
    const QHash<QString, norvo::Cells> cells = panel.cells();
    for (auto one = cells.cbegin(); one != cells.cend(); ++one) {
        places.append(one.key() + " " + toText(*one));
    }
    places.sort();
    return places;
}

QString firstOverlap(const EditedPanel& panel)
{
    const norvo::CellMap map(panel.cells());
    for (auto one = map.places().cbegin(); one != map.places().cend(); ++one) {
        const QString other = map.inTheWay({{one.key(), *one}});
        if (!other.isEmpty()) {
            return one.key() + " and " + other;
        }
    }
    return {};
}

} // namespace

class tst_CanvasWalk : public QObject
{
    Q_OBJECT

private slots:
    void anyWalkKeepsCellsApartAndIsUndoneToEqualBytes();
};

void tst_CanvasWalk::anyWalkKeepsCellsApartAndIsUndoneToEqualBytes()
{
    CanvasTest test(kPanel);
    QRandomGenerator random(16);
    const auto any = [&random](int limit) { return int(random.bounded(limit)); };
    const auto anyRow = [&] { return any(test.cover()->lines().rows()); };
    const auto anyColumn = [&] { return any(test.cover()->lines().columns()); };
    const int arrows[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
    int changes = 0;
    for (int step = 0; step < kSteps; ++step) {
        const QByteArray before = test.text();
        switch (any(9)) {
        case 0:
            test.tap(test.middle(anyRow(), anyColumn()));
            break;
        case 1:
            test.tap(test.middle(anyRow(), anyColumn()), Qt::ControlModifier);
            break;
        case 2:
        case 3:
            test.drag(test.middle(anyRow(), anyColumn()), test.middle(any(5), any(5)));
            break;
        case 4:
            test.key(arrows[any(4)]);
            break;
        case 5:
            test.key(arrows[any(4)], Qt::ShiftModifier);
            break;
        case 6:
            test.key(test.panel.cells().size() < 8 ? Qt::Key_D : Qt::Key_X, Qt::ControlModifier);
            break;
        case 7:
            test.key(test.panel.cells().size() > 6 ? Qt::Key_Delete : Qt::Key_V,
                     test.panel.cells().size() > 6 ? Qt::NoModifier : Qt::ControlModifier);
            break;
        default:
            const auto actions = test.canvas->actions();
            actions[actions.size() - 1 - any(6)]->trigger(); // Of rows and columns.
            CanvasTest::settle();
        }
        changes += test.text() != before;
        QCOMPARE(firstOverlap(test.panel), QString());
    }
    QVERIFY(changes > kSteps / 10);
    const EditedPanel fresh(test.text());
    QCOMPARE(placesOf(test.panel), placesOf(fresh));
    while (test.panel.session->canUndo()) {
        QCOMPARE(test.panel.session->undo(), QString());
    }
    QCOMPARE(test.text(), kPanel);
}

NORVO_TEST(tst_CanvasWalk)
#include "tst_CanvasWalk.moc"
