// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/palette/TypeList.h"
#include "host/editor/palette/TypePalette.h"

#include <QMimeData>
#include <QtTest>

using norvo::EditSession;
using norvo::TypeList;
using norvo::TypePalette;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button}\n";

} // namespace

/// A panel with the palette beside it.
class tst_TypePalette : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    // The key that clears a line of text fades by an animation that nobody owns.
    void cleanupTestCase() { QTest::qWait(400); }

    void everyTypeIsThere();
    void aTapChoosesAndASecondOneTakesBack();
    void escapeTakesBack();
    void aTypeWithoutWidgetIsAddedAtOnce();
    void typesAreFoundByTyping_data();
    void typesAreFoundByTyping();
    void theNearestNameIsOffered();
    void theKeyboardAloneSuffices();
    void aDragCarriesTheTypeKey();

private:
    QStringList keys() const;
    QListWidgetItem* item(const QString& typeKey) const;
    void tap(const QString& typeKey) const;
    EditSession& session() const { return *m_panel->session; }

    std::unique_ptr<EditedPanel> m_panel;
    std::unique_ptr<TypePalette> m_palette;
    TypeList* m_list = nullptr;
    QLineEdit* m_search = nullptr;
};

void tst_TypePalette::init()
{
    m_panel = std::make_unique<EditedPanel>(kPanel);
    m_palette = std::make_unique<TypePalette>(session());
    m_palette->resize(320, 440);
    m_palette->show();
    m_palette->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_palette.get()));
    m_list = m_palette->findChild<TypeList*>();
    m_search = m_palette->findChild<QLineEdit*>("typeSearch");
}

void tst_TypePalette::cleanup()
{
    m_palette.reset();
    m_panel.reset();
}

QStringList tst_TypePalette::keys() const
{
    QStringList keys;
    for (int i = 0; i < m_list->count(); ++i) {
        const QString key = m_list->item(i)->data(Qt::UserRole).toString();
        if (!key.isEmpty()) {
            keys.append(key);
        }
    }
    return keys;
}

QListWidgetItem* tst_TypePalette::item(const QString& typeKey) const
{
    for (int i = 0; i < m_list->count(); ++i) {
        if (m_list->item(i)->data(Qt::UserRole).toString() == typeKey) {
            return m_list->item(i);
        }
    }
    qFatal("%s is not listed", qPrintable(typeKey));
}

void tst_TypePalette::tap(const QString& typeKey) const
{
    QListWidgetItem* const at = item(typeKey);
    m_list->scrollToItem(at);
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, m_list->visualItemRect(at).center());
}

void tst_TypePalette::everyTypeIsThere()
{
    QStringList listed = keys();
    listed.sort();
    QStringList known = EditedPanel::types().keys();
    known.sort();
    QCOMPARE(listed, known);
    QVERIFY(!item("process")->data(Qt::DecorationRole).value<QImage>().isNull());
}

void tst_TypePalette::aTapChoosesAndASecondOneTakesBack()
{
    auto* const message = m_palette->findChild<QLabel*>("paletteMessage");
    QVERIFY(!message->isVisible());
    tap("indicator");
    QCOMPARE(session().typeToPlace(), QString("indicator"));
    QVERIFY(message->isVisible());
    QTest::qWait(QApplication::doubleClickInterval() + 50); // Else it is one double click.
    tap("indicator");
    QCOMPARE(session().typeToPlace(), QString());
    QVERIFY(!message->isVisible());
    QCOMPARE(session().document().text(), kPanel);
}

void tst_TypePalette::escapeTakesBack()
{
    tap("indicator");
    QTest::keyClick(m_list, Qt::Key_Escape);
    QCOMPARE(session().typeToPlace(), QString());
}

void tst_TypePalette::aTypeWithoutWidgetIsAddedAtOnce()
{
    tap("generator");
    QCOMPARE(session().typeToPlace(), QString());
    QVERIFY(m_panel->panel().device("generator"));
    QCOMPARE(session().selection(), QStringList("generator"));
}

void tst_TypePalette::typesAreFoundByTyping_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("key");
    QTest::newRow("key") << "output_gr"
                         << "output_graph";
    QTest::newRow("words of the purpose") << "lamp CAPTION"
                                          << "indicator";
    QTest::newRow("a source") << "sine"
                              << "generator";
}

void tst_TypePalette::typesAreFoundByTyping()
{
    QFETCH(QString, text);
    QFETCH(QString, key);
    QTest::keyClicks(m_search, text);
    QVERIFY2(keys().contains(key), qPrintable(keys().join(' ')));
    QVERIFY(keys().size() < 4);
}

void tst_TypePalette::theNearestNameIsOffered()
{
    QTest::keyClicks(m_search, "indcator");
    QCOMPARE(keys(), QStringList("indicator"));
    auto* const message = m_palette->findChild<QLabel*>("paletteMessage");
    QVERIFY(message->isVisible());
    QVERIFY(message->text().contains("indcator"));
    QTest::keyClicks(m_search, "qqqqqqq");
    QCOMPARE(keys(), QStringList());
    QVERIFY(message->isVisible());
}

void tst_TypePalette::theKeyboardAloneSuffices()
{
    m_search->setFocus();
    QTest::keyClicks(m_search, "slider");
    QTest::keyClick(m_search, Qt::Key_Return);
    QCOMPARE(session().typeToPlace(), QString("slider"));
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(session().typeToPlace(), QString());
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(m_search->text(), QString());
    QTest::keyClick(m_search, Qt::Key_Down);
    QVERIFY(m_list->hasFocus());
    m_list->setCurrentItem(item("button"));
    QTest::keyClick(m_list, Qt::Key_Down);
    QTest::keyClick(m_list, Qt::Key_Return);
    QCOMPARE(session().typeToPlace(), m_list->currentType());
    QVERIFY(!session().typeToPlace().isEmpty() && session().typeToPlace() != "button");
}

void tst_TypePalette::aDragCarriesTheTypeKey()
{
    const QModelIndex index = m_list->model()->index(m_list->row(item("slider")), 0);
    QVERIFY(m_list->dragEnabled());
    QVERIFY(index.flags() & Qt::ItemIsDragEnabled);
    const std::unique_ptr<QMimeData> data(m_list->model()->mimeData({index}));
    QCOMPARE(data->data("application/x-norvo-type"), QByteArray("slider"));
}

NORVO_TEST(tst_TypePalette)
#include "tst_TypePalette.moc"
