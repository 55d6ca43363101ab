// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/ErrorTile.h"

#include <QLabel>
#include <QTextDocument>
#include <QVBoxLayout>

namespace norvo {

namespace {

// Background and text are both set, so that the tile reads the same on a light and a dark panel.
const char* const kLook = "norvo--ErrorTile { background: #fdecea; border: 2px solid #b3261e;"
                          " border-radius: 4px; }"
                          "norvo--ErrorTile QLabel { background: transparent; color: #5f1410; }";

QLabel* addText(QVBoxLayout& layout, const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout.addWidget(label);
    return label;
}

} // namespace

ErrorTile::ErrorTile(const QString& id, const QString& reason, QWidget* parent)
    : QFrame(parent), m_reason(reason)
{
    setObjectName(id);
    setStyleSheet(kLook);
    setToolTip(Qt::convertFromPlainText(reason, Qt::WhiteSpaceNormal));
    auto* layout = new QVBoxLayout(this);
    QLabel* heading = addText(*layout, id);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    addText(*layout, reason);
    addText(*layout, tr("Mend the cause or the panel file, then start the panel again."));
    layout->addStretch();
}

} // namespace norvo
