#include "host/window/FaultsPage.h"

#include <QLabel>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

namespace norvo {

namespace {

constexpr int kTitlePoints = 18;
constexpr int kTextPoints = 12;
constexpr int kGap = 12; // pixels, between faults

QFont sized(QFont font, int points)
{
    font.setPointSize(points);
    return font;
}

/// The place and the kind in bold, the text below.
void append(QTextCursor& cursor, const Fault& fault)
{
    QTextBlockFormat block;
    block.setBottomMargin(kGap);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    cursor.setBlockFormat(block);
    Fault heading = fault;
    heading.text.clear();
    cursor.insertText(heading.toString().trimmed(), bold);
    cursor.insertText(QString(QChar::LineSeparator) + fault.text, QTextCharFormat());
}

QTextEdit* makeList(const Faults& faults)
{
    auto* const list = new QTextEdit;
    list->setReadOnly(true);
    list->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    list->setFont(sized(list->font(), kTextPoints));
    QTextCursor cursor(list->document());
    for (const Fault& fault : faults) {
        if (!list->document()->isEmpty()) {
            cursor.insertBlock();
        }
        append(cursor, fault);
    }
    return list;
}

} // namespace

FaultsPage::FaultsPage(const Faults& faults, QWidget* parent) : QWidget(parent)
{
    auto* const title = new QLabel(tr("This panel cannot start"));
    title->setFont(sized(title->font(), kTitlePoints));
    auto* const summary = new QLabel(norvo::summary(faults));
    summary->setFont(sized(summary->font(), kTextPoints));
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(summary);
    layout->addWidget(makeList(faults), 1);
}

} // namespace norvo
