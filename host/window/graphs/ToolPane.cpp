// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/graphs/ToolPane.h"

#include "host/window/accessible/AccessibleDevice.h"
#include "host/window/graphs/GraphFiles.h"
#include "host/plots/PlotLibrary.h"
#include "host/window/graphs/ToolKey.h"
#include "host/window/sheet/Sheet.h"

#include "norvo/BaseWidget.h"

#include <QBuffer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kEdge = 2;        // pixels
constexpr int kGap = 4;         // between two keys
constexpr int kLeastPlot = 160; // pixels, upright
constexpr int kStateTextPixels = 13;
constexpr int kSheetWidth = 440;

void tellSaved(QWidget& opener, const QString& file, const QString& reason)
{
    auto* const sheet =
        new Sheet(opener, file.isEmpty() ? ToolPane::tr("Not saved") : ToolPane::tr("Saved"));
    auto* const label = new QLabel(file.isEmpty() ? reason : file);
    label->setFont(sheet->font());
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    sheet->content().addWidget(label);
    sheet->present({kSheetWidth, 1});
}

} // namespace

ToolPane::ToolPane(BaseWidget& display, QWidget& plot, const ToolSetting& setting)
    : Overlay(display),
      m_shown(&plot),
      m_setting(setting),
      m_view(plotLibrary()->view(plot, setting.readEarlier, [this] { followView(); })),
      m_state(new QLabel)
{
    setObjectName("graphTools");
    setAttribute(Qt::WA_TransparentForMouseEvents, false);
    setAutoFillBackground(true);
    this->plot().setAccessibleName(AccessibleDevice::nameOf(display));
    m_state->setObjectName("graphState");
    QFont small = m_state->font();
    small.setPixelSize(kStateTextPixels);
    small.setBold(true);
    m_state->setFont(small);
    m_state->setAlignment(Qt::AlignCenter);
    m_state->setAutoFillBackground(true);
    m_state->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(kEdge, kEdge, kEdge, kEdge);
    column->setSpacing(kGap);
    column->addWidget(m_state);
    column->addWidget(&this->plot(), 1);
    auto* const row = new QHBoxLayout;
    row->setSpacing(kGap);
    column->addLayout(row);
    addKeys(*row);

    connect(&plot, &QObject::destroyed, this, &ToolPane::closed);
    plot.installEventFilter(this); // Its place in the display is known only once it has moved.
    followView();
    follow();
}

ToolPane::~ToolPane() = default;

QWidget& ToolPane::plot() const
{
    return m_view->widget();
}

void ToolPane::addKeys(QHBoxLayout& row)
{
    using Symbol = ToolKey::Symbol;
    const auto add = [this, &row](Symbol symbol, const QString& text, const char* name) {
        auto* const key = new ToolKey(symbol, text, m_setting.keySize);
        key->setObjectName(name);
        row.addWidget(key, 1);
        return key;
    };
    m_pause = add(Symbol::Pause, tr("Pause"), "graphPause");
    m_range = add(Symbol::Range, tr("Fix range"), "graphRange");
    ToolKey* const table = add(Symbol::Table, tr("Save CSV"), "graphTable");
    ToolKey* const picture = add(Symbol::Picture, tr("Save picture"), "graphPicture");
    ToolKey* const close = add(Symbol::Close, tr("Close"), "graphClose");
    m_range->setCheckable(true);
    connect(m_pause, &ToolKey::clicked, this, [this] {
        if (m_view->isHeld()) {
            m_view->goLive();
        } else {
            m_view->hold();
        }
    });
    connect(m_range, &ToolKey::clicked, this,
            [this](bool isChecked) { m_view->fixValues(isChecked); });
    connect(table, &ToolKey::clicked, this,
            [this, table] { save(*table, ".csv", m_view->table()); });
    connect(picture, &ToolKey::clicked, this,
            [this, picture] { save(*picture, ".png", this->picture()); });
    connect(close, &ToolKey::clicked, this, &ToolPane::closed);
}

QRect ToolPane::placeOnPage(const QWidget& plot, const QWidget& page)
{
    return {plot.mapTo(&page, QPoint()), plot.size()};
}

QRect ToolPane::area(const QRect& display) const
{
    const QRect page = parentWidget()->rect();
    const QRect graph = m_shown ? placeOnPage(*m_shown, *parentWidget()) : display;
    const QSize least(layout()->minimumSize().width(),
                      kLeastPlot + layout()->minimumSize().height());
    QRect area(graph.topLeft(), graph.size().expandedTo(least).boundedTo(page.size()));
    const int left = graph.center().x() - area.width() / 2;
    area.moveLeft(qBound(page.left(), left, page.right() + 1 - area.width()));
    area.moveTop(qBound(page.top(), graph.top(), page.bottom() + 1 - area.height()));
    return area;
}

/// Said in words and by its place as well as by its colours, which are turned about.
void ToolPane::followView()
{
    QStringList says;
    if (m_view->isHeld()) {
        says << tr("Not live: %1")
                    .arg(m_view->showsTimes()
                             ? m_view->range()
                             : m_view->heldAt().toString("hh:mm:ss") + ", " + m_view->range());
    }
    if (m_view->isReading()) {
        says << tr("reading earlier values");
    } else if (m_view->isAtBeginning()) {
        says << tr("beginning of the record");
    } else if (m_view->isAtUnreadable()) {
        says << tr("the history cannot be read");
    }
    if (m_view->isAtCut()) {
        says << tr("later values dropped until live");
    }
    if (m_view->areValuesFixed()) {
        says << tr("range by hand");
    }
    const bool isLive = says.isEmpty();
    m_state->setText(isLive ? tr("Live") : says.join(QString(" %1 ").arg(QChar(0xb7))));
    m_state->setAccessibleName(m_state->text());
    m_state->setBackgroundRole(isLive ? QPalette::Window : QPalette::WindowText);
    m_state->setForegroundRole(isLive ? QPalette::WindowText : QPalette::Window);
    m_pause->show(m_view->isHeld() ? ToolKey::Symbol::Live : ToolKey::Symbol::Pause,
                  m_view->isHeld() ? tr("Live") : tr("Pause"));
    m_range->setChecked(m_view->areValuesFixed());
}

QByteArray ToolPane::picture() const
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    plot().grab().save(&buffer, "PNG");
    return bytes;
}

void ToolPane::save(ToolKey& key, const QString& end, const QByteArray& content)
{
    const QPointer<ToolKey> opener(&key);
    const QString start = m_setting.fileStart;
    const auto write = [opener, start, end, content] {
        QString reason;
        const QString file = writeNewFile(start, end, content, reason);
        if (opener) {
            tellSaved(*opener, file, reason);
        }
    };
    if (m_setting.permit) {
        m_setting.permit(write);
    } else {
        write();
    }
}

void ToolPane::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        emit closed();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ToolPane::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void ToolPane::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), kEdge));
    painter.drawRect(QRectF(rect()).adjusted(kEdge / 2., kEdge / 2., -kEdge / 2., -kEdge / 2.));
}

} // namespace norvo
