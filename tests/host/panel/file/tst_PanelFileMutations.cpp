// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"

#include "PanelTexts.h"
#include "TestMain.h"

#include <QtTest>

#include <random>

using norvo::Diagnostic;
using norvo::Diagnostics;

namespace {

/// Whether what comes out of a text is in order, whatever the text is: places lie in the text, and
/// a text without errors has all that a panel needs.
bool isInOrder(const QByteArray& text, QString& reason)
{
    Diagnostics diagnostics("panel.yaml");
    const auto panel = panels::parse(text, diagnostics);
    const int lines = text.count('\n') + 1;
    for (const Diagnostic& error : diagnostics.sorted()) {
        const QString line = error.toString();
        const auto& place = error.place;
        if (place.line < 1 || place.line > lines || place.column < 1 ||
            place.column > text.size() + 1 || line.contains('\n') || error.text.isEmpty()) {
            reason = line;
            return false;
        }
    }
    for (const auto& device : panel.devices) {
        if (diagnostics.isEmpty() && (device.id.text.isEmpty() || device.type.text.isEmpty())) {
            reason = "a device without id or type";
            return false;
        }
    }
    for (const auto& arrow : panel.connections) {
        for (const auto& part : {arrow.from.device, arrow.from.method, arrow.to.device,
                                 arrow.to.method, arrow.whole}) {
            if (part.text.isEmpty() || part.place.line < 1 || part.place.line > lines) {
                reason = panels::shown(arrow);
                return false;
            }
        }
    }
    return true;
}

} // namespace

class tst_PanelFileMutations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyPrefix();
    void everyByteLeftOut();
    void everyByteReplaced();
    void anyPiecesInAnyOrder();

private:
    QByteArray m_panel;
};

/// Quotes, blocks, brackets, aliases, tags, connections: all that the reader takes apart.
void tst_PanelFileMutations::initTestCase()
{
    QFile file("tests/panels/bad/much-of-everything.yaml");
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_panel = file.readAll();
    QVERIFY(m_panel.size() > 300);
}

void tst_PanelFileMutations::everyPrefix()
{
    for (int i = 0; i <= m_panel.size(); ++i) {
        QString reason;
        QVERIFY2(isInOrder(m_panel.left(i), reason),
                 qPrintable(QString("prefix of %1: %2").arg(i).arg(reason)));
    }
}

void tst_PanelFileMutations::everyByteLeftOut()
{
    for (int i = 0; i < m_panel.size(); ++i) {
        QString reason;
        QVERIFY2(isInOrder(QByteArray(m_panel).remove(i, 1), reason),
                 qPrintable(QString("without byte %1: %2").arg(i).arg(reason)));
    }
}

void tst_PanelFileMutations::everyByteReplaced()
{
    const QByteArray replacements("\0\t\n\r \"'#&*!|>-?:,[]{}%@~.\\\xff\xc3", 29);
    for (int i = 0; i < m_panel.size(); ++i) {
        for (const char replacement : replacements) {
            QByteArray text = m_panel;
            text[i] = replacement;
            QString reason;
            QVERIFY2(isInOrder(text, reason), qPrintable(QString("byte %1 is now %2: %3")
                                                             .arg(i)
                                                             .arg(int(uchar(replacement)))
                                                             .arg(reason)));
        }
    }
}

void tst_PanelFileMutations::anyPiecesInAnyOrder()
{
    const QList<QByteArray> pieces{
        "title", "devices", "connections", "device", "params", "network", ":",     ": ",
        "- ",    "? ",      "\n",          "\n  ",   "\n    ", "\n\t",    "{",     "}",
        "[",     "]",       ",",           "\"",     "'",      "|\n",     ">-\n",  "&a ",
        "*a",    "!!str ",  "~",           "#",      "%",      "---\n",   "...\n", "a.b",
        " -> ",  "->",      "true",        "<<",     "\\",     "é",       "\r\n",  " "};
    std::mt19937 random(20); // The same texts in every run.
    for (int round = 0; round < 20000; ++round) {
        QByteArray text;
        const int count = 1 + int(random() % 40);
        for (int i = 0; i < count; ++i) {
            text += pieces[int(random() % unsigned(pieces.size()))];
        }
        QString reason;
        QVERIFY2(isInOrder(text, reason), qPrintable(text.toPercentEncoding() + reason));
    }
}

NORVO_GUILESS_TEST(tst_PanelFileMutations)
#include "tst_PanelFileMutations.moc"
