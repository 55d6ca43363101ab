// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/sheet/Sheet.h"

#include "host/gui/dialogs/Scrim.h"
#include "host/window/look/TouchSize.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace norvo {

namespace {

constexpr int kTitlePoints = 14;
constexpr int kMargin = 16; // pixels, around what it holds
constexpr int kAround = 24; // pixels of the dimmed window that are seen around it

} // namespace

Sheet::Sheet(QWidget& opener, const QString& title)
    : QDialog(opener.window(), Qt::Dialog | Qt::FramelessWindowHint),
      m_opener(&opener),
      m_window(opener.window()),
      m_content(new QVBoxLayout),
      m_keys(new QHBoxLayout),
      m_closeKey(makeKey(tr("Close")))
{
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* const heading = new QLabel(title);
    QFont font = heading->font();
    font.setPointSize(kTitlePoints);
    font.setBold(true);
    heading->setFont(font);
    heading->setWordWrap(true);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(heading);
    layout->addLayout(m_content, 1);
    layout->addLayout(m_keys);
    m_keys->addStretch(1);
    m_keys->addWidget(m_closeKey);
    connect(m_closeKey, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_window, &QObject::destroyed, this, &QObject::deleteLater);
}

Sheet::~Sheet()
{
    delete m_scrim;
}

QPushButton* Sheet::makeKey(const QString& text)
{
    auto* const key = new QPushButton(text);
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
    key->setMinimumSize(2 * target, target);
    key->setAutoDefault(false);
    return key;
}

QPushButton* Sheet::addKey(const QString& text)
{
    QPushButton* const key = makeKey(text);
    m_keys->insertWidget(1, key); // Behind the stretch.
    return key;
}

void Sheet::present(const QSize& preferred)
{
    m_preferred = preferred;
    m_scrim = new Scrim(*m_window);
    m_window->installEventFilter(this);
    place();
    open();
    activateWindow(); // Nobody else does it where there is no window manager.
}

void Sheet::place()
{
    const QSize room = m_window->size() - QSize(2 * kAround, 2 * kAround);
    const QSize wanted = m_preferred.isEmpty() ? room : m_preferred.expandedTo(sizeHint());
    QRect area({}, wanted.boundedTo(room).expandedTo(minimumSizeHint()));
    area.moveCenter(m_window->rect().center());
    setGeometry(area.translated(m_window->mapToGlobal({0, 0})));
}

bool Sheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window && (event->type() == QEvent::Resize || event->type() == QEvent::Move)) {
        place();
    }
    return QDialog::eventFilter(watched, event);
}

void Sheet::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    constexpr int width = 2;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Disabled, QPalette::WindowText), width));
    painter.drawRect(QRectF(rect()).adjusted(width / 2., width / 2., -width / 2., -width / 2.));
}

void Sheet::done(int result)
{
    delete m_scrim;
    QDialog::done(result);
    if (m_window) {
        m_window->activateWindow();
    }
    if (m_opener) {
        m_opener->setFocus();
    }
}

} // namespace norvo
