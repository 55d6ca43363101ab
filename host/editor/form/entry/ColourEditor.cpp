// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/ColourEditor.h"

#include "host/catalogue/TypeWords.h"
#include "host/window/sheet/Sheet.h"

#include <QColor>
#include <QGridLayout>
#include <QIcon>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

namespace norvo {

namespace {

constexpr int kColumns = 6;

/// By name, so that the panel file says what a reader can picture.
const char* const kColours[] = {"black",     "dimgray",      "gray",    "silver",    "white",
                                "brown",     "darkred",      "red",     "tomato",    "orange",
                                "gold",      "yellow",       "olive",   "darkgreen", "green",
                                "limegreen", "lightgreen",   "teal",    "turquoise", "lightblue",
                                "steelblue", "dodgerblue",   "blue",    "navy",      "indigo",
                                "purple",    "mediumorchid", "magenta", "hotpink",   "pink"};

/// A plate of the colour; crossed out where there is none.
QIcon swatch(const QColor& colour, int size, const QPalette& palette)
{
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette.color(QPalette::WindowText));
    painter.setBrush(colour.isValid() ? QBrush(colour) : QBrush(Qt::NoBrush));
    const QRectF plate = QRectF(picture.rect()).adjusted(1, 1, -1, -1);
    painter.drawRoundedRect(plate, 4, 4);
    if (!colour.isValid()) {
        painter.drawLine(plate.bottomLeft(), plate.topRight());
    }
    return picture;
}

} // namespace

ColourEditor::ColourEditor(const ParamWords& words)
    : LineEditor(words), m_swatch(addKey({}, tr("Colours")))
{
    m_swatch->setObjectName(words.name + " colours");
    m_swatch->setIconSize({target() / 2, target() / 2});
    connect(m_swatch, &QPushButton::clicked, this, &ColourEditor::openSheet);
    connect(&line(), &QLineEdit::textChanged, this, &ColourEditor::showSwatch);
    showSwatch();
}

void ColourEditor::showText(const QString& text, Shown how)
{
    LineEditor::showText(text, how);
    showSwatch();
}

void ColourEditor::showSwatch()
{
    const QString text = line().text().isEmpty() ? shownText() : line().text();
    const QColor colour = QColor::isValidColor(text) ? QColor(text) : QColor();
    m_swatch->setIcon(swatch(colour, target() / 2, palette()));
}

void ColourEditor::openSheet()
{
    auto* const sheet = new Sheet(*this, tr("Colour"));
    auto* const page = new QWidget;
    auto* const grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    int count = 0;
    for (const char* const name : kColours) {
        auto* const key = new QPushButton;
        key->setObjectName(name);
        key->setAccessibleName(name);
        key->setToolTip(name);
        key->setAutoDefault(false);
        key->setFixedSize(target(), target());
        key->setIconSize({target() * 2 / 3, target() * 2 / 3});
        key->setIcon(swatch(QColor(name), target() * 2 / 3, palette()));
        grid->addWidget(key, count / kColumns, count % kColumns);
        ++count;
        connect(key, &QPushButton::clicked, this, [this, sheet, name] {
            sheet->accept();
            enter(name);
        });
    }
    sheet->content().addWidget(page);
    sheet->present({1, 1});
}

} // namespace norvo
