// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/editor/form/FormText.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

#include <memory>

namespace FormText = norvo::FormText;

/// The texts of a form.
class tst_FormText : public QObject
{
    Q_OBJECT

private slots:
    void namesAndFaultsAreBoldAndExplanationsAreNot()
    {
        const std::unique_ptr<QLabel> name(FormText::name("a"));
        const std::unique_ptr<QLabel> small(FormText::small("a"));
        const std::unique_ptr<QLabel> fault(FormText::fault("a"));
        QVERIFY(name->font().bold());
        QVERIFY(!small->font().bold());
        QVERIFY(fault->font().bold());
        QVERIFY(small->font().pointSize() < name->font().pointSize());
        QCOMPARE(small->foregroundRole(), QPalette::PlaceholderText);
    }

    void textsAreShownAsTheyStandAndWrap()
    {
        const std::unique_ptr<QLabel> small(FormText::small("<b>a</b>"));
        QCOMPARE(small->textFormat(), Qt::PlainText);
        QVERIFY(small->wordWrap());
        QVERIFY(small->minimumWidth() <= 1);
    }

    void fieldHasRoomOnBothSidesOfItsText()
    {
        QLineEdit line;
        FormText::prepare(line);
        QVERIFY(line.textMargins().left() > 0);
        QCOMPARE(line.textMargins().left(), line.textMargins().right());
    }
};

NORVO_TEST(tst_FormText)

#include "tst_FormText.moc"
