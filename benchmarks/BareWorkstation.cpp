// SPDX-License-Identifier: LGPL-3.0-or-later

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QString>

#include <qcustomplot.h>

namespace {

QLabel* textOf(const QString& text, int points)
{
    auto* const label = new QLabel(text);
    QFont font = label->font();
    font.setPointSize(points);
    label->setFont(font);
    return label;
}

QProgressBar* bar()
{
    auto* const made = new QProgressBar;
    made->setOrientation(Qt::Vertical);
    made->setValue(40);
    return made;
}

QCustomPlot* plot()
{
    auto* const made = new QCustomPlot;
    for (const QColor& colour : {QColor("#3a7bd5"), QColor("#d9730d")}) {
        made->addGraph()->setPen(colour);
    }
    made->legend->setVisible(true);
    made->xAxis->setTicker(QSharedPointer<QCPAxisTickerDateTime>::create());
    return made;
}

/// What examples/workstation shows, made by hand.
void fillWorkstation(QGridLayout& page)
{
    int column = 0;
    for (const QString name : {"Processor", "Memory"}) {
        auto* const readout = new QVBoxLayout;
        readout->addWidget(textOf(name, 12));
        readout->addWidget(textOf("0 %", 40));
        page.addLayout(readout, 0, column);
        page.addWidget(bar(), 1, 2 + column);
        ++column;
    }
    page.addWidget(textOf("Load 0.00", 18), 0, 2);
    page.addWidget(textOf("-", 18), 0, 3);
    page.addWidget(plot(), 1, 0, 1, 2);
    page.addWidget(new QCheckBox("Pause"), 2, 0);
    page.addWidget(textOf("In 0 B/s", 12), 2, 1);
    page.addWidget(textOf("Out 0 B/s", 12), 2, 2, 1, 2);
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
