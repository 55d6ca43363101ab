// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/start/StartSheet.h"

#include "host/window/layout/FingerScrollArea.h"

#include <QFile>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QPen>
#include <QPixmap>
#include <QResizeEvent>
#include <QToolButton>

// A library's resources are known to a program once it has named them.
static void loadStartPictures()
{
    Q_INIT_RESOURCE(start);
}

namespace norvo {

namespace {

constexpr int kColumns = 3;
constexpr int kPadding = 8;  // pixels
constexpr int kMargins = 90; // pixels, of the sheet and of what stands beside its pictures
constexpr int kLeastWidth = 192, kMostWidth = 480; // pixels, of a picture
const QString kFolder = QStringLiteral(":/norvo/start/");

QString titleOf(const QString& example)
{
    return example == "hello"      ? StartSheet::tr("Hello")
           : example == "readings" ? StartSheet::tr("Readings")
           : example == "controls" ? StartSheet::tr("Controls")
                                   : StartSheet::tr("This machine");
}

/// In the proportions of the examples' pictures.
constexpr int heightOf(int width)
{
    return width * 5 / 8;
}

QToolButton* makePictureKey(const QString& name, const QString& title, const QPixmap& picture)
{
    auto* const key = new QToolButton;
    key->setObjectName(name);
    key->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    key->setIcon(picture);
    key->setText(title);
    key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return key;
}

/// Nothing but the frame of a cell.
QPixmap emptyPicture(const QPalette& palette)
{
    QPixmap picture(kMostWidth, heightOf(kMostWidth));
    picture.fill(palette.color(QPalette::Window));
    QPainter painter(&picture);
    painter.setPen(QPen(palette.color(QPalette::WindowText), 2, Qt::DashLine));
    painter.drawRect(picture.rect().adjusted(kPadding, kPadding, -kPadding - 1, -kPadding - 1));
    return picture;
}

} // namespace

StartSheet::StartSheet(QWidget& opener) : Sheet(opener, tr("A new panel"))
{
    setObjectName("start");
    loadStartPictures();
    auto* const text = new QLabel(tr("What shall it begin with? All of it can be changed."));
    text->setFont(font());
    text->setWordWrap(true);
    content().addWidget(text);
    auto* const list = new QWidget;
    auto* const grid = new QGridLayout(list);
    const auto add = [this, grid](QToolButton* key, const QByteArray& panel) {
        const int place = grid->count();
        grid->addWidget(key, place / kColumns, place % kColumns);
        connect(key, &QToolButton::clicked, this, [this, panel] {
            accept();
            emit chosen(panel);
        });
    };
    add(makePictureKey("empty", tr("An empty page"), emptyPicture(palette())), {});
    for (const QString& example : examples()) {
        const QPixmap picture(kFolder + example + ".png");
        add(makePictureKey(example, titleOf(example), picture), textOf(example));
    }
    grid->setRowStretch(grid->rowCount(), 1);
    auto* const scroll = new FingerScrollArea(list);
    scroll->setWidgetResizable(true);
    content().addWidget(scroll, 1);
}

/// The pictures are as large as three of them fit beside each other.
void StartSheet::resizeEvent(QResizeEvent* event)
{
    Sheet::resizeEvent(event);
    const int width = (event->size().width() - kMargins) / kColumns - 2 * kPadding;
    const int bound = qBound(kLeastWidth, width, kMostWidth);
    for (QToolButton* key : findChildren<QToolButton*>()) {
        key->setIconSize({bound, heightOf(bound)});
    }
}

QStringList StartSheet::examples()
{
    return {"hello", "readings", "controls", "machine"};
}

QByteArray StartSheet::textOf(const QString& example)
{
    loadStartPictures();
    QFile file(kFolder + example + ".yaml");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace norvo
