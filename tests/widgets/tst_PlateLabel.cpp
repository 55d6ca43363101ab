// SPDX-License-Identifier: GPL-3.0-or-later

#include "EventCounter.h"

#include "widgets/Looks.h"
#include "widgets/PlateLabel.h"
#include "TestMain.h"

#include <QtTest>

#include <algorithm>
#include <cstdlib>

namespace Looks = norvo::Looks;

namespace {

/// A page with a label alone on it.
class Page : public QWidget
{
public:
    explicit Page(QLabel* label)
    {
        label->setAlignment(Qt::AlignCenter);
        label->setParent(this);
        label->setGeometry(7, 5, 90, 40);
        resize(120, 60);
        setAutoFillBackground(true);
        QPalette striped = palette();
        striped.setBrush(QPalette::Window, QBrush(Qt::blue, Qt::Dense4Pattern));
        setPalette(striped);
    }

    QImage picture()
    {
        show();
        return grab().toImage();
    }
};

/// To a level of each colour: corners that are kept are rounded once more.
bool isAlike(const QImage& a, const QImage& b)
{
    if (a.size() != b.size()) {
        return false;
    }
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb one = a.pixel(x, y);
            const QRgb other = b.pixel(x, y);
            const int most =
                std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                          std::abs(qBlue(one) - qBlue(other))});
            if (most > 1) {
                qWarning() << "other at" << x << y << QColor(one).name() << QColor(other).name();
                return false;
            }
        }
    }
    return true;
}

} // namespace

/// Its own way of drawing shows what a plain label with the same settings shows.
class tst_PlateLabel : public QObject
{
    Q_OBJECT

private slots:
    void looksAsAPlainLabelDoes_data();
    void looksAsAPlainLabelDoes();
    void takesTheRoomOfAPlainLabel_data();
    void takesTheRoomOfAPlainLabel();
    void everyPlateLooksAsItsSheetSays();
    void followsASheetAroundIt();
    void followsAForeignSheet();
    void foreignSheetGivesWayToAPlate();

    void textOfTheSameSizeAsksForNoLayout();
    void widerTextAsksForALayout();
    void widerTextWithinTheLeastSizeAsksForNone();
    void plateAsksForNoLayout();
    void hiddenLabelStaysHidden();
};

void tst_PlateLabel::looksAsAPlainLabelDoes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("digits") << "12.5" << QSize(90, 40) << 14 << true;
    QTest::newRow("large digits") << "-7" << QSize(90, 40) << 60 << true;
    QTest::newRow("no room for the corners") << "1" << QSize(12, 12) << 6 << true;
    QTest::newRow("one line high") << "1" << QSize(60, 15) << 6 << true;
    QTest::newRow("lines") << "Pump\non" << QSize(90, 40) << 9 << true;
    QTest::newRow("marks") << "<b>Pump</b> on" << QSize(90, 40) << 9 << true;
    QTest::newRow("right to left") << QString::fromUtf8("משאבה 1") << QSize(90, 40) << 12 << true;
    QTest::newRow("nothing") << "" << QSize(90, 40) << 12 << true;
    QTest::newRow("disabled") << "12.5" << QSize(90, 40) << 14 << false;
}

void tst_PlateLabel::looksAsAPlainLabelDoes()
{
    QFETCH(QString, text);
    QFETCH(QSize, size);
    QFETCH(int, points);
    QFETCH(bool, enabled);
    auto* const plain = new QLabel;
    auto* const ours = new PlateLabel;
    Page plainPage(plain);
    Page ourPage(ours);
    for (QLabel* label : {plain, static_cast<QLabel*>(ours)}) {
        label->setFont(Looks::digitsFont(points));
        label->setMargin(1);
        label->resize(size);
        label->setEnabled(enabled);
    }
    plain->setText(text);
    plain->setStyleSheet(Looks::kInRange.digits);
    ours->setPlate(Looks::kInRange.digits);
    ours->setPlainText(text);
    QVERIFY(isAlike(ourPage.picture(), plainPage.picture()));
}

void tst_PlateLabel::takesTheRoomOfAPlainLabel_data()
{
    QTest::addColumn<bool>("isLaidOutFirst");
    QTest::newRow("a sheet from the beginning") << false;
    QTest::newRow("a sheet when it stands in its layout") << true;
}

void tst_PlateLabel::takesTheRoomOfAPlainLabel()
{
    QFETCH(bool, isLaidOutFirst);
    QWidget page;
    auto* const layout = new QGridLayout(&page);
    auto* const plain = new QLabel("12.5");
    auto* const ours = new PlateLabel;
    plain->setAlignment(Qt::AlignCenter);
    ours->setText("12.5");
    const auto layOut = [&] {
        layout->addWidget(plain, 0, 0, Qt::AlignTop);
        layout->addWidget(ours, 0, 1, Qt::AlignTop);
    };
    if (isLaidOutFirst) {
        layOut();
    }
    plain->setStyleSheet(Looks::kInRange.digits);
    ours->setPlate(Looks::kInRange.digits);
    if (!isLaidOutFirst) {
        layOut();
    }
    page.resize(200, 100);
    page.show();
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    QCOMPARE(ours->frameWidth(), plain->frameWidth());
    QCOMPARE(ours->frameWidth(), 1);
    QCOMPARE(ours->sizeHint(), plain->sizeHint());
    QCOMPARE(ours->minimumSizeHint(), plain->minimumSizeHint());
    QCOMPARE(ours->contentsRect().topLeft(), plain->contentsRect().topLeft());
    QCOMPARE(ours->geometry().top(), plain->geometry().top());
    QCOMPARE(ours->size(), plain->size());
    QCOMPARE(layout->itemAt(1)->geometry(), ours->geometry());
}

void tst_PlateLabel::everyPlateLooksAsItsSheetSays()
{
    auto* const plain = new QLabel("5");
    auto* const ours = new PlateLabel;
    Page plainPage(plain);
    Page ourPage(ours);
    ours->setPlainText("5");
    QStringList plates{Looks::kInRange.digits, Looks::kOutOfRange.digits, Looks::kTimedOut.digits};
    for (const auto& lamp : Looks::kLamps) {
        plates << lamp.lit << lamp.dark;
    }
    for (const QString& plate : qAsConst(plates)) {
        plain->setStyleSheet(plate);
        ours->setPlate(plate);
        QCOMPARE(ours->styleSheet(), plate);
        QVERIFY(isAlike(ourPage.picture(), plainPage.picture()));
    }
}

void tst_PlateLabel::followsASheetAroundIt()
{
    auto* const plain = new QLabel("5");
    auto* const ours = new PlateLabel;
    Page plainPage(plain);
    Page ourPage(ours);
    ours->setPlainText("5");
    plain->setStyleSheet(Looks::kInRange.digits);
    ours->setPlate(Looks::kInRange.digits);
    const QImage before = ourPage.picture();
    for (Page* page : {&plainPage, &ourPage}) {
        page->setStyleSheet("QLabel { padding-left: 30px; border-style: dashed; "
                            "margin: 6px; }");
    }
    QVERIFY(ourPage.picture() != before);
    QVERIFY(isAlike(ourPage.picture(), plainPage.picture()));
    for (Page* page : {&plainPage, &ourPage}) {
        page->setStyleSheet({});
    }
    QVERIFY(isAlike(ourPage.picture(), plainPage.picture()));
    QVERIFY(isAlike(ourPage.picture(), before));
}

void tst_PlateLabel::followsAForeignSheet()
{
    auto* const plain = new QLabel("5");
    auto* const ours = new PlateLabel;
    Page plainPage(plain);
    Page ourPage(ours);
    ours->setPlainText("5");
    ours->setPlate(Looks::kInRange.digits);
    ourPage.picture();
    for (QLabel* label : {plain, static_cast<QLabel*>(ours)}) {
        label->setStyleSheet("QLabel { background: yellow; border: 3px dotted black; }");
    }
    QVERIFY(isAlike(ourPage.picture(), plainPage.picture()));
}

void tst_PlateLabel::foreignSheetGivesWayToAPlate()
{
    auto* const plain = new QLabel("5");
    auto* const ours = new PlateLabel;
    Page plainPage(plain);
    Page ourPage(ours);
    ours->setPlainText("5");
    ours->setStyleSheet("QLabel { background: yellow; border: 3px dotted black; }");
    ourPage.picture();
    plain->setStyleSheet(Looks::kOutOfRange.digits);
    ours->setPlate(Looks::kOutOfRange.digits);
    QVERIFY(isAlike(ourPage.picture(), plainPage.picture()));
}

namespace {

/// A label in a layout, on view and settled.
struct LaidOut
{
    LaidOut()
    {
        (new QVBoxLayout(&page))->addWidget(label);
        label->setPlate(Looks::kInRange.digits);
        label->setPlainText("55");
        page.show();
        settle();
    }

    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
    /// Of the page, for whatever happened since the last call.
    int layouts()
    {
        settle();
        return counter.take(QEvent::LayoutRequest);
    }

    QWidget page;
    PlateLabel* const label = new PlateLabel;
    EventCounter counter{&page};
};

} // namespace

void tst_PlateLabel::textOfTheSameSizeAsksForNoLayout()
{
    LaidOut made;
    made.layouts();
    made.label->setPlainText("55 ");
    QVERIFY(made.layouts() > 0); // for another text
    made.label->setPlainText("55");
    made.layouts();
    const QSize hint = made.label->sizeHint();
    for (const char* text : {"22", "33", "55"}) {
        made.label->setPlainText(text);
        QCOMPARE(made.label->text(), QString(text));
        QCOMPARE(made.label->sizeHint(), hint);
        QCOMPARE(made.layouts(), 0);
    }
}

void tst_PlateLabel::widerTextAsksForALayout()
{
    LaidOut made;
    made.page.resize(made.page.minimumSizeHint());
    made.layouts();
    const int before = made.label->width();
    made.label->setPlainText("5555555555");
    QVERIFY(made.layouts() > 0);
    QVERIFY(made.label->width() > before);
}

void tst_PlateLabel::widerTextWithinTheLeastSizeAsksForNone()
{
    LaidOut made;
    made.label->setMinimumSize(300, 200);
    made.layouts();
    made.label->setPlainText("5555555555");
    QCOMPARE(made.layouts(), 0);
}

void tst_PlateLabel::plateAsksForNoLayout()
{
    LaidOut made;
    made.layouts();
    const QSize hint = made.label->sizeHint();
    made.label->setPlate(Looks::kOutOfRange.digits);
    QCOMPARE(made.label->sizeHint(), hint);
    QCOMPARE(made.layouts(), 0);
    made.label->setStyleSheet("QLabel { padding: 20px; }");
    made.layouts();
    made.label->setPlate(Looks::kOutOfRange.digits);
    QVERIFY(made.layouts() > 0); // the foreign sheet needed other room
    QCOMPARE(made.label->sizeHint(), hint);
}

void tst_PlateLabel::hiddenLabelStaysHidden()
{
    LaidOut made;
    made.label->hide();
    made.label->setPlate(Looks::kOutOfRange.digits);
    made.label->setPlainText("7");
    QVERIFY(made.label->isHidden());
    made.label->show();
    made.label->setPlate(Looks::kInRange.digits);
    made.label->setPlainText("8");
    QVERIFY(!made.label->isHidden());
    QVERIFY(made.label->isVisible());
}

NORVO_TEST(tst_PlateLabel)
#include "tst_PlateLabel.moc"
