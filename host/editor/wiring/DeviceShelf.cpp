// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/DeviceShelf.h"

#include "host/editor/EditSession.h"
#include "host/editor/wiring/ports/PortList.h"
#include "host/window/look/TouchSize.h"

#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QScroller>

namespace norvo {

namespace {

constexpr int kPadding = 10; // pixels, beside and above the texts
constexpr int kGap = 4;      // pixels

QString idOf(const QListWidgetItem& item)
{
    return item.data(Qt::UserRole).toString();
}

} // namespace

DeviceShelf::DeviceShelf(EditSession& session, QWidget* parent)
    : QListWidget(parent), m_session(session)
{
    setObjectName("deviceShelf");
    setAccessibleName(tr("Devices that are not seen on the panel"));
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setSpacing(kGap / 2);
    setAlternatingRowColors(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    connect(this, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { emit tapped(idOf(*item)); });
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &DeviceShelf::scrolled);
    connect(&session, &EditSession::changed, this, &DeviceShelf::fill);
    connect(&session, &EditSession::selectionChanged, this, &DeviceShelf::followSelection);
    fill();
}

void DeviceShelf::fill()
{
    const int position = horizontalScrollBar()->value();
    clear();
    m_items.clear();
    const PortList ports(m_session);
    const QHash<QString, Cells> seen = m_session.live().cells();
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
    for (const DeviceSetting& device : m_session.live().description().devices) {
        const QString& id = device.id.text;
        if (seen.contains(id)) {
            continue;
        }
        const QString counts =
            tr("%1 out, %2 in").arg(ports.outputs(id).size()).arg(ports.inputs(id).size());
        auto* const item = new QListWidgetItem(id + '\n' + device.type.text + ", " + counts, this);
        item->setData(Qt::UserRole, id);
        item->setTextAlignment(Qt::AlignCenter);
        QFont bold = font();
        bold.setBold(true); // As it is drawn where it fits.
        const QSize text = QFontMetrics(bold).size(0, item->text());
        item->setSizeHint({std::max(text.width() + 2 * kPadding, 2 * target),
                           std::max(text.height() + kPadding, target)});
        m_items.insert(id, item);
    }
    setVisible(count() > 0);
    doItemsLayout();
    horizontalScrollBar()->setValue(position);
    updateGeometry();
    followSelection();
}

void DeviceShelf::followSelection()
{
    const QString id = m_session.selection().value(0);
    if (QListWidgetItem* const item = m_items.value(id)) {
        setCurrentItem(item);
    } else {
        clearSelection();
    }
}

QStringList DeviceShelf::devices() const
{
    QStringList ids;
    for (int i = 0; i < count(); ++i) {
        ids.append(idOf(*item(i)));
    }
    return ids;
}

QRect DeviceShelf::itemRect(const QString& device) const
{
    QListWidgetItem* const item = m_items.value(device);
    return item ? visualItemRect(item).translated(viewport()->pos()) : QRect();
}

void DeviceShelf::setMarks(const QHash<QString, Mark>& marks)
{
    for (auto entry = m_items.cbegin(); entry != m_items.cend(); ++entry) {
        const Mark mark = marks.value(entry.key(), Mark::None);
        QFont font = this->font();
        font.setBold(mark == Mark::Fits);
        (*entry)->setFont(font);
        (*entry)->setForeground(mark == Mark::FitsNot
                                    ? palette().brush(QPalette::Disabled, QPalette::Text)
                                : mark == Mark::Fits ? palette().brush(QPalette::Link)
                                                     : palette().brush(QPalette::Text));
    }
}

void DeviceShelf::showDevice(const QString& device)
{
    if (QListWidgetItem* const item = m_items.value(device)) {
        scrollToItem(item);
    }
}

void DeviceShelf::keyPressEvent(QKeyEvent* event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentItem()) {
        emit tapped(idOf(*currentItem()));
        return;
    }
    QListWidget::keyPressEvent(event);
}

QSize DeviceShelf::sizeHint() const
{
    int height = 0;
    int width = 0;
    for (int i = 0; i < count(); ++i) {
        height = std::max(height, item(i)->sizeHint().height());
        width += item(i)->sizeHint().width() + kGap;
    }
    const bool isScrolled = width > this->width() - 2 * frameWidth();
    return {width, height + kGap + 2 * frameWidth() +
                       (isScrolled ? horizontalScrollBar()->sizeHint().height() : 0)};
}

QSize DeviceShelf::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

} // namespace norvo
