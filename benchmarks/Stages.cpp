// SPDX-License-Identifier: GPL-3.0-or-later

#include "benchmarks/Stages.h"

#include "benchmarks/RunningFile.h"

#include "norvo/BaseDevice.h"

#include <QGridLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QProgressBar>

#include <vector>

namespace {

QByteArray textOf(const StagePlan& plan)
{
    QString text = "title: Benchmark\ndevices:\n";
    for (int i = 0; i < plan.count; ++i) {
        text += QString("  d%1: {device: %2, params: {%3, widget/row: %4, widget/column: %5}}\n")
                    .arg(QString::number(i), plan.type, plan.params,
                         QString::number(i / plan.columns), QString::number(i % plan.columns));
    }
    return text.toUtf8();
}

class Source : public QObject
{
    Q_OBJECT

signals:
    void output(double value);
};

class PanelStage : public Stage
{
public:
    explicit PanelStage(const StagePlan& plan)
        : m_file(textOf(plan), plan.size), m_sources(std::size_t(plan.count))
    {}

    QWidget& window() override { return m_file.running->window(); }
    void feed(int display, double value) override
    {
        std::unique_ptr<Source>& source = m_sources[std::size_t(display)];
        if (!source) {
            source = std::make_unique<Source>();
            QObject::connect(source.get(), SIGNAL(output(double)),
                             m_file.running->panel().device(QString("d%1").arg(display)),
                             SLOT(input(double)));
        }
        emit source->output(value);
    }

private:
    RunningFile m_file;
    std::vector<std::unique_ptr<Source>> m_sources; ///< Made for the first value.
};

template <class Widget>
class WidgetStage : public Stage
{
public:
    explicit WidgetStage(const StagePlan& plan)
    {
        auto* const grid = new QGridLayout(&m_window);
        for (int i = 0; i < plan.count; ++i) {
            m_widgets.push_back(new Widget);
            grid->addWidget(m_widgets.back(), i / plan.columns, i % plan.columns);
        }
        m_window.resize(plan.size);
        m_window.show();
        RunningFile::settle();
    }

    QWidget& window() override { return m_window; }
    void feed(int display, double value) override;

private:
    QWidget m_window;
    std::vector<Widget*> m_widgets; ///< The window's.
};

template <>
void WidgetStage<QLabel>::feed(int display, double value)
{
    m_widgets[std::size_t(display)]->setText(QString::number(value, 'f', 1));
}

template <>
void WidgetStage<QProgressBar>::feed(int display, double value)
{
    m_widgets[std::size_t(display)]->setValue(int(value));
}

class DrawnStage : public Stage, private QWidget
{
public:
    using Draw = void (*)(QPainter& painter, const QRect& cell, double value);

    DrawnStage(const StagePlan& plan, Draw draw)
        : m_draw(draw),
          m_columns(plan.columns),
          m_rows((plan.count + plan.columns - 1) / plan.columns),
          m_values(std::size_t(plan.count))
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(plan.size);
        show();
        RunningFile::settle();
    }

    QWidget& window() override { return *this; }
    void feed(int display, double value) override
    {
        m_values[std::size_t(display)] = value;
        update(cell(display));
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QPainter painter(this);
        painter.fillRect(event->rect(), Qt::white);
        for (int i = 0; i < int(m_values.size()); ++i) {
            if (event->region().intersects(cell(i))) {
                m_draw(painter, cell(i), m_values[std::size_t(i)]);
            }
        }
    }

private:
    QRect cell(int display) const
    {
        const int column = display % m_columns;
        const int row = display / m_columns;
        const QPoint from(width() * column / m_columns, height() * row / m_rows);
        const QPoint to(width() * (column + 1) / m_columns, height() * (row + 1) / m_rows);
        return {from, to - QPoint(1, 1)};
    }

    const Draw m_draw;
    const int m_columns;
    const int m_rows;
    std::vector<double> m_values;
};

void drawText(QPainter& painter, const QRect& cell, double value)
{
    painter.drawText(cell, Qt::AlignCenter, QString::number(value, 'f', 1));
}

void drawBar(QPainter& painter, const QRect& cell, double value)
{
    const QRect bar = cell.adjusted(2, 2, -2, -2);
    const int filled = int(bar.width() * value / 100);
    painter.fillRect(bar, Qt::lightGray);
    painter.fillRect(QRect(bar.topLeft(), QSize(filled, bar.height())), Qt::darkGreen);
}

} // namespace

std::unique_ptr<Stage> panelStage(const StagePlan& plan)
{
    return std::make_unique<PanelStage>(plan);
}

std::unique_ptr<Stage> labelStage(const StagePlan& plan)
{
    return std::make_unique<WidgetStage<QLabel>>(plan);
}

std::unique_ptr<Stage> progressBarStage(const StagePlan& plan)
{
    return std::make_unique<WidgetStage<QProgressBar>>(plan);
}

std::unique_ptr<Stage> drawnTextStage(const StagePlan& plan)
{
    return std::make_unique<DrawnStage>(plan, drawText);
}

std::unique_ptr<Stage> drawnBarStage(const StagePlan& plan)
{
    return std::make_unique<DrawnStage>(plan, drawBar);
}

#include "Stages.moc"
