// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/file/ConflictSheet.h"

#include "host/editor/file/EditedFile.h"
#include "host/editor/file/LineDiff.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>

namespace norvo {

namespace {

/// The text, with the lines that the other one does not have in reverse, the first of them in view.
QPlainTextEdit* makeView(const QString& name, const QStringList& lines, const QVector<bool>& isOwn)
{
    auto* const view = new QPlainTextEdit(lines.join('\n'));
    view->setObjectName(name);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    QList<QTextEdit::ExtraSelection> marks;
    for (int line = 0; line < lines.size(); ++line) {
        if (isOwn[line]) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(view->document()->findBlockByNumber(line));
            mark.format.setBackground(view->palette().highlight());
            mark.format.setForeground(view->palette().highlightedText());
            mark.format.setProperty(QTextFormat::FullWidthSelection, true);
            marks.append(mark);
        }
    }
    view->setExtraSelections(marks);
    if (!marks.isEmpty()) {
        view->setTextCursor(marks.constFirst().cursor);
        view->centerCursor();
    }
    return view;
}

QStringList linesOf(const QByteArray& text)
{
    return QString::fromUtf8(text).remove('\r').split('\n');
}

} // namespace

ConflictSheet::ConflictSheet(QWidget& opener, EditedFile& file, const QByteArray& mine)
    : Sheet(opener, tr("The file was changed by others, too"))
{
    setObjectName("conflict");
    addTexts(mine, file.theirs());
    closeKey()->setText(tr("Decide later"));
    const auto add = [this](const QString& text, const char* name) {
        QPushButton* const key = addKey(text);
        key->setObjectName(name);
        return key;
    };
    QPushButton* const theirs = add(tr("Take theirs"), "takeTheirs");
    connect(theirs, &QPushButton::clicked, &file, [this, &file] {
        emit problem(file.takeTheirs());
        accept();
    });
    QPushButton* const keep = add(tr("Save mine over it"), "keepMine");
    connect(keep, &QPushButton::clicked, &file, [this, &file] {
        emit problem(file.saveOver());
        accept();
    });
}

void ConflictSheet::addTexts(const QByteArray& mine, const QByteArray& theirs)
{
    const QStringList mineLines = linesOf(mine);
    const QStringList theirLines = linesOf(theirs);
    const LineDiff diff(mineLines, theirLines);
    auto* const row = new QHBoxLayout;
    const auto addSide = [row](const QString& title, QPlainTextEdit* view) {
        auto* const column = new QVBoxLayout;
        auto* const label = new QLabel(title);
        label->setBuddy(view);
        view->setAccessibleName(title);
        column->addWidget(label);
        column->addWidget(view, 1);
        row->addLayout(column);
    };
    addSide(tr("Here, not saved"), makeView("mine", mineLines, diff.onlyLeft));
    addSide(tr("In the file"), makeView("theirs", theirLines, diff.onlyRight));
    content().addLayout(row, 1);
}

} // namespace norvo
