// SPDX-License-Identifier: GPL-3.0-or-later

#include "RandomHand.h"

#include "host/editor/canvas/EditCanvas.h"
#include "host/editor/canvas/PageCover.h"
#include "host/panel/edit/PageEdit.h"
#include "host/window/PanelPages.h"
#include "host/window/sheet/Sheet.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QMenu>

using norvo::PageCover;
using norvo::YamlEdit;

namespace {

constexpr int kManyDevices = 14;
constexpr int kRows = 5; // As far as a hand reaches for cells.
constexpr int kColumns = 4;

} // namespace

QString RandomHand::act()
{
    QString done;
    switch (below(16)) {
    case 0:
    case 1:
    case 2:
        done = arrange();
        break;
    case 3:
        done = addOrRemove();
        break;
    case 4:
        done = turnPage();
        break;
    case 5:
        done = editPages();
        break;
    case 6:
    case 7:
        done = walkHistory();
        break;
    case 8:
    case 9:
    case 10:
        done = fillForm();
        break;
    case 11:
        done = oneIn(2) ? rename() : editPorts();
        break;
    case 12:
        done = placeType();
        break;
    case 13:
        done = oneIn(4) ? removeLine() : wire();
        break;
    case 14:
        done = useTable();
        break;
    default:
        done = "save";
        LiveEditor::click(m_editor.key("save"));
    }
    closeSheets();
    return done;
}

QString RandomHand::anyId()
{
    QStringList ids;
    for (const norvo::DeviceSetting& device : m_editor.panel.reload->description().devices) {
        ids.append(device.id.text);
    }
    return anyOf(ids);
}

PageCover* RandomHand::cover() const
{
    return m_editor.shown<PageCover>();
}

void RandomHand::tap(QWidget* widget, const QPoint& place, Qt::KeyboardModifiers modifiers) const
{
    QTest::mouseClick(widget, Qt::LeftButton, modifiers, place);
    LiveEditor::settle();
}

void RandomHand::type(QLineEdit& field, const QString& text) const
{
    field.setFocus();
    field.selectAll();
    if (text.isEmpty()) {
        QTest::keyClick(&field, Qt::Key_Delete);
    }
    for (const QChar one : text) {
        const bool isAscii = one.unicode() < 128; // All that QTest knows the key of.
        QTest::sendKeyEvent(QTest::Click, &field,
                            isAscii ? QTest::asciiToKey(one.toLatin1()) : Qt::Key_unknown,
                            QString(one), {});
    }
}

void RandomHand::closeSheets() const
{
    for (norvo::Sheet* const sheet : m_editor.allShown<norvo::Sheet>()) {
        QTest::keyClick(sheet, Qt::Key_Escape);
    }
    LiveEditor::settle();
}

QPoint RandomHand::anyCell()
{
    const norvo::CellLines& lines = cover()->lines();
    return lines.rect(below(kRows), below(kColumns)).center();
}

QString RandomHand::arrange()
{
    m_editor.openPane("device");
    PageCover* const page = cover();
    const int arrows[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
    switch (below(6)) {
    case 0:
        tap(page, anyCell(), oneIn(2) ? Qt::ControlModifier : Qt::NoModifier);
        return "tap";
    case 1:
    case 2: {
        const QPoint from = anyCell();
        const QPoint to = anyCell();
        QTest::mousePress(page, Qt::LeftButton, {}, from);
        for (const QPoint& place : {from + (to - from) / 2, to}) {
            QMouseEvent move(QEvent::MouseMove, place, page->mapToGlobal(place), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(page, &move);
        }
        QTest::mouseRelease(page, Qt::LeftButton, {}, to);
        LiveEditor::settle();
        return "drag";
    }
    case 3:
        QTest::keyClick(page, Qt::Key(arrows[below(4)]),
                        oneIn(2) ? Qt::ShiftModifier : Qt::NoModifier);
        LiveEditor::settle();
        return "arrow";
    default:
        return act(m_editor.pages().findChild<norvo::EditCanvas*>()->actions());
    }
}

/// All but what would leave nothing, or grow without end.
QString RandomHand::act(const QList<QAction*>& actions)
{
    QAction* const action = anyOf(actions);
    const QList<QKeySequence> others{QKeySequence::Cut,    QKeySequence::Paste,
                                     QKeySequence::Delete, QKeySequence::SelectAll,
                                     Qt::CTRL + Qt::Key_D, Qt::Key_M};
    if (!action || !action->isEnabled() || others.contains(action->shortcut())) {
        return "nothing";
    }
    QAction* const chosen = action->menu() ? anyOf(action->menu()->actions()) : action;
    const QString name = action->text();
    chosen->trigger();
    LiveEditor::settle();
    return name;
}

QString RandomHand::addOrRemove()
{
    m_editor.openPane("device");
    const bool isMany = m_editor.panel.reload->description().devices.size() > kManyDevices;
    const QString id = anyId();
    if (!id.isEmpty()) {
        m_editor.session.select(oneIn(3) ? QStringList{id, anyId()} : QStringList(id));
    }
    struct Step
    {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    };
    const QVector<Step> adding{{Qt::Key_D, Qt::ControlModifier},
                               {Qt::Key_V, Qt::ControlModifier},
                               {Qt::Key_C, Qt::ControlModifier}};
    const QVector<Step> removing{{Qt::Key_X, Qt::ControlModifier}, {Qt::Key_Delete, {}}};
    const Step step = isMany || oneIn(5) ? anyOf(removing) : anyOf(adding);
    QTest::keyClick(cover(), step.key, step.modifiers);
    LiveEditor::settle();
    return QKeySequence(step.key + int(step.modifiers)).toString();
}

QString RandomHand::turnPage()
{
    if (QAbstractButton* const key = m_editor.pages().key(anyOf(m_editor.pages().areas()))) {
        LiveEditor::click(key);
    }
    return "turn the page";
}

/// All pages in another order; the rest is done by the pane.
QString RandomHand::editPages()
{
    QStringList pages = m_editor.pages().areas();
    if (pages.size() < 2 || !oneIn(5)) {
        return oneIn(2) ? usePagesList() : fillPanelForm();
    }
    const QHash<QString, norvo::Cells> cells = m_editor.panel.reload->cells();
    std::shuffle(pages.begin(), pages.end(), m_random);
    m_editor.session.change("order the pages", [&](YamlEdit& edit) {
        return norvo::PageEdit::order(edit, cells, pages);
    });
    LiveEditor::settle();
    return "order the pages";
}

QString RandomHand::walkHistory()
{
    const int back = 1 + below(8);
    for (int i = 0; i < back; ++i) {
        LiveEditor::click(m_editor.key("undo"));
    }
    const int again = below(back + 2);
    for (int i = 0; i < again; ++i) {
        LiveEditor::click(m_editor.key("redo"));
    }
    return QString("undo %1, redo %2").arg(back).arg(again);
}
