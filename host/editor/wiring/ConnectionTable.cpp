// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/ConnectionTable.h"

#include "host/editor/EditSession.h"
#include "host/editor/wiring/ConnectionSheet.h"
#include "host/editor/wiring/ports/ListFont.h"
#include "host/editor/wiring/WireEdits.h"
#include "host/editor/wiring/WireValues.h"
#include "host/window/look/TouchSize.h"
#include "host/window/sheet/SheetTable.h"
#include "host/window/status/ValuesPage.h"
#include "host/window/touch/LineKeyboard.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kTickMs = 1000;

enum Column { Ends, Value, ColumnCount };

/// Without arguments, which are read in full where the row is chosen.
QString endsOf(const ConnectionSetting& connection)
{
    const auto text = [](const Endpoint& end) {
        return end.device.text + '.' + end.method.text.section('(', 0, 0).trimmed();
    };
    return text(connection.from) + QString("\n\u203a ") + text(connection.to);
}

} // namespace

ConnectionTable::ConnectionTable(EditSession& session, QWidget* parent)
    : QWidget(parent),
      m_session(session),
      m_values(new WireValues(this)),
      m_filter(new QLineEdit),
      m_rows(new QTableWidget(0, ColumnCount)),
      m_about(new QLabel),
      m_add(makeAction("addConnection", tr("Add a connection"))),
      m_change(makeAction("changeConnection", tr("Change the chosen connection"))),
      m_remove(makeAction("removeChosenConnection", tr("Remove the chosen connection")))
{
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
    m_filter->setPlaceholderText(tr("Show only rows with this text"));
    m_filter->setAccessibleName(tr("Search the connections"));
    m_filter->setMinimumHeight(target);
    new LineKeyboard(*m_filter);
    m_rows->setObjectName("connections");
    m_rows->setHorizontalHeaderLabels({tr("Connection"), tr("Last value")});
    m_rows->setSelectionMode(QAbstractItemView::SingleSelection);
    SheetTable::prepare(*m_rows);
    m_rows->setWordWrap(false);
    m_rows->setMinimumHeight(2 * target); // Less than its bars ask for.
    m_rows->verticalHeader()->setDefaultSectionSize(
        std::max(target, 2 * fontMetrics().height() + 8));
    m_rows->horizontalHeader()->setSectionResizeMode(Ends, QHeaderView::Stretch);
    m_rows->setColumnWidth(Value, fontMetrics().horizontalAdvance("-0000.0000"));
    m_about->setWordWrap(true);
    setListFont(*m_filter);
    setListFont(*m_about);

    auto* const keys = new QHBoxLayout;
    const auto addKey = [&](QAction* action, const QString& text) {
        auto* const key = new QPushButton(text);
        key->setObjectName(action->objectName());
        key->setAccessibleName(action->text());
        key->setMinimumHeight(target);
        key->setEnabled(action->isEnabled());
        connect(key, &QPushButton::clicked, action, &QAction::trigger);
        connect(action, &QAction::changed, key,
                [action, key] { key->setEnabled(action->isEnabled()); });
        keys->addWidget(key);
    };
    addKey(m_add, tr("Add"));
    addKey(m_change, tr("Change"));
    addKey(m_remove, tr("Remove"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_filter);
    layout->addWidget(m_rows, 1);
    layout->addWidget(m_about);
    layout->addLayout(keys);

    m_remove->setShortcut(QKeySequence::Delete);
    connect(m_add, &QAction::triggered, this, [this] { openSheet(-1); });
    connect(m_change, &QAction::triggered, this, [this] { openSheet(current()); });
    connect(m_remove, &QAction::triggered, this, &ConnectionTable::removeCurrent);
    connect(m_filter, &QLineEdit::textChanged, this, &ConnectionTable::narrow);
    connect(m_rows, &QTableWidget::itemSelectionChanged, this, &ConnectionTable::choose);
    connect(m_rows, &QTableWidget::itemActivated, m_change, &QAction::trigger);
    connect(&session, &EditSession::changed, this, &ConnectionTable::fill);
    fill();
}

QAction* ConnectionTable::makeAction(const char* name, const QString& text)
{
    auto* const action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(action);
    return action;
}

QList<QAction*> ConnectionTable::actions() const
{
    return {m_add, m_change, m_remove};
}

void ConnectionTable::fill()
{
    const QSignalBlocker blocker(m_rows);
    const int chosen = m_rows->currentRow();
    const QVector<ConnectionSetting>& all = m_session.live().description().connections;
    const PortList ports(m_session);
    m_wires.clear();
    m_rows->setRowCount(all.size());
    for (int row = 0; row < all.size(); ++row) {
        SheetTable::fill(*m_rows, row, {endsOf(all[row]), {}});
        const bool isFixed = !WireEdits::whyFixed(m_session, all[row]).isEmpty();
        m_rows->item(row, Ends)->setForeground(
            palette().brush(isFixed ? QPalette::Disabled : QPalette::Active, QPalette::Text));
        m_rows->item(row, Ends)->setToolTip(all[row].whole.text);
        if (const auto wire = ports.wire(all[row])) {
            m_wires.insert(row, *wire);
        }
    }
    m_rows->setCurrentCell(std::min(chosen, all.size() - 1), Ends);
    hear();
    refreshValues();
    narrow();
    showChosen();
}

void ConnectionTable::hear()
{
    m_values->hear(isVisible() ? QVector<PlannedWire>::fromList(m_wires.values())
                               : QVector<PlannedWire>(),
                   m_session.live().panel());
}

void ConnectionTable::showEvent(QShowEvent* event)
{
    m_tick.start(kTickMs, this);
    hear();
    QWidget::showEvent(event);
}

void ConnectionTable::hideEvent(QHideEvent* event)
{
    m_tick.stop();
    m_values->hear({}, m_session.live().panel());
    QWidget::hideEvent(event);
}

void ConnectionTable::timerEvent(QTimerEvent* /*event*/)
{
    refreshValues();
}

void ConnectionTable::refreshValues()
{
    for (auto wire = m_wires.cbegin(); wire != m_wires.cend(); ++wire) {
        QTableWidgetItem& item = *m_rows->item(wire.key(), Value);
        const QString text = m_values->text(*wire) + '\n' + ageText(m_values->ageMs(*wire));
        if (item.text() != text) {
            item.setText(text);
        }
    }
}

void ConnectionTable::narrow()
{
    const QString wanted = m_filter->text().trimmed();
    for (int row = 0; row < m_rows->rowCount(); ++row) {
        m_rows->setRowHidden(
            row, !m_rows->item(row, Ends)->text().contains(wanted, Qt::CaseInsensitive));
    }
}

int ConnectionTable::current() const
{
    return m_rows->selectedItems().isEmpty() ? -1 : m_rows->currentRow();
}

void ConnectionTable::choose()
{
    showChosen();
    const ConnectionSetting one = m_session.live().description().connections.value(current());
    m_session.select({one.from.device.text, one.to.device.text});
    emit connectionChosen(current());
}

void ConnectionTable::chooseConnection(int connection)
{
    if (connection == current()) {
        return;
    }
    const QSignalBlocker blocker(m_rows);
    m_rows->clearSelection();
    m_rows->setCurrentCell(connection, Ends);
    if (connection >= 0) {
        m_rows->scrollToItem(m_rows->item(connection, Ends));
    }
    showChosen();
}

void ConnectionTable::showChosen()
{
    const int chosen = current();
    const ConnectionSetting one = m_session.live().description().connections.value(chosen);
    const QString fixed = chosen < 0 ? QString() : WireEdits::whyFixed(m_session, one);
    m_about->setText(fixed.isEmpty() ? one.whole.text : one.whole.text + '\n' + fixed);
    m_about->setVisible(chosen >= 0);
    m_change->setEnabled(chosen >= 0 && fixed.isEmpty());
    m_remove->setEnabled(chosen >= 0 && fixed.isEmpty());
}

void ConnectionTable::openSheet(int connection)
{
    auto* const sheet = new ConnectionSheet(*this, m_session, connection);
    connect(sheet, &ConnectionSheet::problem, this, &ConnectionTable::problem);
    sheet->present();
}

void ConnectionTable::removeCurrent()
{
    const QString fault =
        WireEdits::remove(m_session, m_session.live().description().connections.value(current()));
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

} // namespace norvo
