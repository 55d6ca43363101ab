// SPDX-License-Identifier: LGPL-3.0-or-later

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QString>

#include <qcustomplot.h>

namespace {

QLabel* textOf(const QString& text, const QFont& font)
{
    auto* const label = new QLabel(text);
    label->setFont(font);
    return label;
}

QFont arial(int points)
{
    return QFont("Arial", points);
}

QFont captionFont()
{
    return QFont("Arial", 16, 3);
}

QFont gaugeFont(int pixels)
{
    QFont font("Roboto");
    font.setPixelSize(pixels);
    return font;
}

/// A value above a scale with a bar, and a name below.
class Gauge : public QWidget
{
public:
    explicit Gauge(const QString& name) : m_name(name) {}

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QFont value = gaugeFont(22);
        value.setBold(true);
        painter.setFont(value);
        painter.drawText(rect(), Qt::AlignHCenter | Qt::AlignTop, "0");
        painter.setFont(gaugeFont(15));
        painter.drawText(rect(), Qt::AlignHCenter | Qt::AlignBottom, m_name);
        const int around = 40;
        const double unit = (height() - 2 * around) / 100.0;
        for (int step = 0; step <= 100; step += 5) {
            const int y = height() - around - int(step * unit);
            painter.drawLine(width() / 2, y, width() / 2 + 8, y);
            if (step % 20 == 0) {
                painter.drawText(width() / 2 + 12, y + 5, QString::number(step));
            }
        }
        painter.fillRect(width() / 2 - 8, around, 8, height() - 2 * around, Qt::darkBlue);
    }

private:
    const QString m_name;
};

QCustomPlot* plot()
{
    auto* const made = new QCustomPlot;
    for (const char* colour : {"#3a7bd5", "#d9730d"}) {
        made->addGraph()->setPen(QColor(colour));
    }
    made->graph(0)->setBrush(QColor("#803a7bd5"));
    made->legend->setVisible(true);
    made->yAxis->setRange(0, 100);
    const auto times = QSharedPointer<QCPAxisTickerDateTime>::create();
    times->setDateTimeFormat("HH:mm:ss");
    made->xAxis->setTicker(times);
    auto* const threshold = new QCPItemStraightLine(made);
    threshold->setPen(QPen(Qt::darkRed));
    threshold->point1->setCoords(0, 90);
    threshold->point2->setCoords(1, 90);
    return made;
}

QLayout* readout(const QString& name)
{
    auto* const made = new QGridLayout;
    made->addWidget(textOf(name, captionFont()), 0, 0, 1, 2);
    QLabel* const digits = textOf("0", QFont("DSEG7 Classic", 40));
    digits->setStyleSheet("background-color: green; color: white");
    digits->setAlignment(Qt::AlignCenter);
    made->addWidget(digits, 1, 0);
    made->addWidget(textOf("%", arial(20)), 1, 1);
    return made;
}

/// What examples/workstation shows, made by hand: the same texts in the same fonts.
void fillWorkstation(QGridLayout& page)
{
    int column = 0;
    for (const char* name : {"Processor", "Memory"}) {
        page.addLayout(readout(name), 0, column);
        page.addWidget(new Gauge(name), 1, 2 + column);
        ++column;
    }
    page.addWidget(textOf("Load 0.00", arial(18)), 0, 2);
    page.addWidget(textOf("-", arial(18)), 0, 3);
    auto* const graph = new QVBoxLayout;
    graph->addWidget(textOf("Processor and memory, %", captionFont()));
    graph->addWidget(plot(), 1);
    page.addLayout(graph, 1, 0, 1, 2);
    auto* const pause = new QCheckBox("Pause");
    pause->setFont(arial(20));
    page.addWidget(pause, 2, 0);
    page.addWidget(textOf("In 0 B/s", arial(12)), 2, 1);
    page.addWidget(textOf("Out 0 B/s", arial(12)), 2, 2, 1, 2);
}

} // namespace

/// The least program that shows it.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    QGridLayout page(&window);
    fillWorkstation(page);
    window.resize(800, 480); // as a panel's is
    window.show();
    return QApplication::exec();
}
