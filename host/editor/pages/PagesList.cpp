// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/pages/PagesList.h"

#include "host/editor/form/FormText.h"
#include "host/editor/pages/RemovePageSheet.h"
#include "host/panel/edit/PageEdit.h"
#include "host/window/PanelPages.h"
#include "host/window/look/TouchSize.h"
#include "host/window/touch/LineKeyboard.h"

#include <QAbstractButton>
#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScroller>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kSpacing = 4; // pixels
constexpr int kPadding = 8; // above and below the lines of a row
constexpr int kPage = Qt::UserRole;

int target(const QWidget& widget)
{
    return TouchSize::pixels(PanelLook::Touch::Fingers, *widget.screen());
}

} // namespace

PagesList::PagesList(EditSession& session, QWidget* parent)
    : QWidget(parent),
      m_session(session),
      m_rows(new QListWidget),
      m_name(new QLineEdit),
      m_fault(FormText::fault({})),
      m_add(makeAction("addPage", tr("Add a page"), Qt::Key_Insert)),
      m_up(makeAction("pageUp", tr("Page up by one"), Qt::ALT + Qt::Key_Up)),
      m_down(makeAction("pageDown", tr("Page down by one"), Qt::ALT + Qt::Key_Down)),
      m_remove(makeAction("removePage", tr("Remove the page"), QKeySequence::Delete))
{
    layOut();
    connect(m_rows, &QListWidget::currentItemChanged, this,
            [this](const QListWidgetItem* item) { go(item->data(kPage).toString()); });
    connect(m_rows, &QListWidget::itemActivated, this, [this] {
        m_name->setFocus();
        m_name->selectAll();
    });
    connect(m_name, &QLineEdit::editingFinished, this, &PagesList::takeName);
    connect(m_add, &QAction::triggered, this, &PagesList::add);
    connect(m_up, &QAction::triggered, this, [this] { move(-1); });
    connect(m_down, &QAction::triggered, this, [this] { move(1); });
    connect(m_remove, &QAction::triggered, this, &PagesList::askToRemove);
    connect(&session, &EditSession::changed, this, &PagesList::fill);
    fill();
}

PagesList::~PagesList()
{
    disconnect(m_name, nullptr, this, nullptr); // They die after this one's own part.
    disconnect(m_rows, nullptr, this, nullptr);
}

void PagesList::layOut()
{
    m_rows->setObjectName("pages");
    m_rows->setAccessibleName(tr("Pages"));
    m_rows->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_rows->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_rows->setMinimumHeight(2 * target(*this)); // Less than its bars ask for.
    QScroller::grabGesture(m_rows->viewport(), QScroller::TouchGesture);
    m_name->setObjectName("pageName");
    m_name->setAccessibleName(tr("Name of the page"));
    m_name->setMinimumHeight(target(*this));
    FormText::prepare(*m_name);
    new LineKeyboard(*m_name);
    m_fault->setObjectName("pageFault");
    QLabel* const caption = FormText::name(tr("Name of the page"));
    caption->setBuddy(m_name);
    auto* const keys = new QHBoxLayout;
    keys->setSpacing(kSpacing);
    addKey(*keys, *m_add, tr("Add"));
    addKey(*keys, *m_up, QChar(0x25B2));
    addKey(*keys, *m_down, QChar(0x25BC));
    addKey(*keys, *m_remove, tr("Remove"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_rows, 1);
    layout->addWidget(caption);
    layout->addWidget(m_name);
    layout->addWidget(m_fault);
    layout->addLayout(keys);
}

QAction* PagesList::makeAction(const char* name, const QString& text, const QKeySequence& key)
{
    auto* const action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(action);
    return action;
}

void PagesList::addKey(QHBoxLayout& keys, QAction& action, const QString& text)
{
    auto* const key = new QPushButton(text);
    key->setObjectName(action.objectName());
    key->setAccessibleName(action.text());
    key->setToolTip(action.text());
    key->setMinimumSize(target(*this), target(*this));
    key->setAutoDefault(false);
    connect(key, &QPushButton::clicked, &action, &QAction::trigger);
    connect(&action, &QAction::changed, key,
            [key, &action] { key->setEnabled(action.isEnabled()); });
    keys.addWidget(key);
}

QStringList PagesList::pages() const
{
    const QStringList& areas = m_session.live().pages().areas();
    return areas.isEmpty() ? QStringList(QString()) : areas;
}

QString PagesList::shown() const
{
    const PanelPages& panel = m_session.live().pages();
    for (const QString& area : panel.areas()) {
        if (panel.key(area)->isChecked()) {
            return area;
        }
    }
    return pages().constFirst();
}

QStringList PagesList::devicesOn(const QString& page) const
{
    QStringList ids;
    const QHash<QString, Cells> cells = m_session.live().cells();
    for (auto one = cells.cbegin(); one != cells.cend(); ++one) {
        if (one->area == page) {
            ids.append(one.key());
        }
    }
    ids.sort();
    return ids;
}

void PagesList::fill()
{
    const QSignalBlocker blocker(m_rows);
    m_rows->clear();
    const QStringList names = pages();
    const int height = std::max(target(*this), 2 * fontMetrics().height() + kPadding);
    for (const QString& name : names) {
        const QString devices = tr("Devices: %1").arg(devicesOn(name).size());
        auto* const item =
            new QListWidgetItem((name.isEmpty() ? tr("The only page") : name) + '\n' + devices);
        item->setData(kPage, name);
        item->setSizeHint({0, height});
        m_rows->addItem(item);
        if (const auto* const key = m_session.live().pages().key(name)) {
            // A name that is taken then gives the panel new keys.
            connect(key, &QAbstractButton::toggled, this, &PagesList::follow,
                    Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
        }
    }
    follow();
}

void PagesList::follow()
{
    const QString page = shown();
    if (page != m_page && pages().contains(m_page)) {
        takeName(); // It is that of the page before.
    }
    const QSignalBlocker blocker(m_rows);
    const int row = pages().indexOf(page);
    m_rows->setCurrentRow(row);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row < m_rows->count() - 1);
    m_remove->setEnabled(m_rows->count() > 1);
    showName();
}

/// What is being typed, or was refused, stays with its page.
void PagesList::showName()
{
    const QString page = shown();
    if (page != m_page || !m_name->isModified()) {
        m_page = page;
        m_refused.reset();
        if (m_name->text() != page) {
            m_name->setText(page);
        }
        m_name->setModified(false);
    }
    m_fault->setVisible(bool(m_refused));
}

void PagesList::go(const QString& page)
{
    if (QAbstractButton* const key = m_session.live().pages().key(page)) {
        key->click();
        follow();
    }
}

void PagesList::takeName()
{
    const QString page = m_page;
    const QString name = m_name->text();
    if (name == page) {
        m_name->setModified(false);
        return showName();
    }
    if (!m_name->isModified() || name == m_refused) {
        return;
    }
    const QString what = page.isEmpty() ? tr("Name the page %1").arg(name)
                                        : tr("Rename the page %1 to %2").arg(page, name);
    m_name->setModified(false);
    const QString fault = m_session.change(what, [&](YamlEdit& edit) {
        return PageEdit::rename(edit, m_session.live().cells(), page, name);
    });
    if (!fault.isEmpty()) {
        m_name->setModified(true);
        m_refused = name;
        m_fault->setText(QChar(0x26A0) + QString(" ") + fault);
        showName();
    }
}

void PagesList::add()
{
    takeName();
    const QStringList there = m_session.live().pages().areas();
    int number = pages().size() + 1;
    while (there.contains(tr("Page %1").arg(number))) {
        ++number;
    }
    const QString name = tr("Page %1").arg(number);
    const QString fault = m_session.change(tr("Add the page %1").arg(name), [&](YamlEdit& edit) {
        return PageEdit::add(edit, there, name);
    });
    if (!fault.isEmpty()) {
        emit problem(fault);
        return;
    }
    go(name);
    m_name->setFocus();
    m_name->selectAll();
}

void PagesList::move(int by)
{
    takeName();
    QStringList order = pages();
    const QString page = shown();
    const int from = order.indexOf(page);
    if (from + by < 0 || from + by >= order.size()) {
        return;
    }
    order.move(from, from + by);
    const QString fault = m_session.change(tr("Move the page %1").arg(page), [&](YamlEdit& edit) {
        return PageEdit::order(edit, m_session.live().cells(), order);
    });
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

void PagesList::askToRemove()
{
    const QString page = shown();
    const QStringList devices = devicesOn(page);
    if (devices.isEmpty()) {
        return remove(page);
    }
    auto* const sheet = new RemovePageSheet(*this, page, devices);
    connect(sheet, &QDialog::accepted, this, [this, page] { remove(page); });
    sheet->present();
}

void PagesList::remove(const QString& page)
{
    const QString fault = m_session.change(tr("Remove the page %1").arg(page), [&](YamlEdit& edit) {
        return PageEdit::remove(edit, m_session.live().cells(), page);
    });
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

void PagesList::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_name->text() != m_page) {
        m_name->setModified(false);
        return showName();
    }
    QWidget::keyPressEvent(event);
}

} // namespace norvo
