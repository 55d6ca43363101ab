// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/start/StartSheet.h"

#include "host/window/layout/FingerScrollArea.h"

#include <QFile>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QToolButton>

// A library's resources are known to a program once it has named them.
static void loadStartPictures()
{
    Q_INIT_RESOURCE(start);
}

namespace norvo {

namespace {

constexpr int kColumns = 3;
constexpr QSize kPicture(192, 120);
constexpr int kPadding = 8; // pixels
const QString kFolder = QStringLiteral(":/norvo/start/");

QString titleOf(const QString& example)
{
    return example == "hello"      ? StartSheet::tr("Hello")
           : example == "readings" ? StartSheet::tr("Readings")
           : example == "controls" ? StartSheet::tr("Controls")
                                   : StartSheet::tr("This machine");
}

QToolButton* makePictureKey(const QString& name, const QString& title, const QPixmap& picture)
{
    auto* const key = new QToolButton;
    key->setObjectName(name);
    key->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    key->setIconSize(kPicture);
    key->setIcon(picture);
    key->setText(title);
    key->setMinimumSize(kPicture + QSize(2 * kPadding, 4 * kPadding));
    key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return key;
}

/// Nothing but a frame.
QPixmap emptyPicture(const QPalette& palette)
{
    QPixmap picture(kPicture);
    picture.fill(palette.color(QPalette::Base));
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
        add(makePictureKey(example, titleOf(example), QPixmap(kFolder + example + ".png")),
            textOf(example));
    }
    grid->setRowStretch(grid->rowCount(), 1);
    auto* const scroll = new FingerScrollArea(list);
    scroll->setWidgetResizable(true);
    content().addWidget(scroll, 1);
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
