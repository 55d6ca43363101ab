// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/reload/FileFault.h"

#include "host/window/ErrorList.h"
#include "host/window/sheet/Sheet.h"

#include <QShortcut>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMargin = 10;     // pixels, on both sides of the text
constexpr int kLeastWidth = 90; // pixels

/// Of an included file, which is named then.
QString placeOf(const Diagnostic& error)
{
    return error.place.line > 0 ? FileFault::tr("line %1: ").arg(error.place.line) : QString();
}

} // namespace

FileFault::FileFault()
{
    setObjectName("fileFault");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, &FileFault::openList);
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this,
            &FileFault::readAgainRequested);
    hide();
}

void FileFault::show(const DiagnosticList& diagnostics)
{
    m_diagnostics = diagnostics;
    const auto first =
        std::find_if(m_diagnostics.cbegin(), m_diagnostics.cend(), [](const Diagnostic& one) {
            return one.severity == Diagnostic::Severity::Error;
        });
    const bool hasError = first != m_diagnostics.cend();
    if (hasError) {
        setText(QChar(0x26A0) + QString(" ") +
                tr("The file has an error: %1").arg(placeOf(*first) + first->text.simplified()));
        setToolTip(text());
        setAccessibleName(text());
    }
    setVisible(hasError);
}

QSize FileFault::sizeHint() const
{
    return {kLeastWidth, QPushButton::sizeHint().height()};
}

QSize FileFault::minimumSizeHint() const
{
    return sizeHint();
}

void FileFault::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    const QRect inside = rect().adjusted(kMargin, 0, -kMargin, 0);
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(inside, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text(), Qt::ElideRight, inside.width()));
}

void FileFault::openList()
{
    auto* const sheet = new Sheet(*this, tr("Errors in the panel's file"));
    sheet->setObjectName("fileErrors");
    sheet->content().addWidget(new ErrorList(m_diagnostics));
    QPushButton* const again = sheet->addKey(tr("Read again"));
    again->setShortcut(Qt::Key_F5);
    connect(again, &QPushButton::clicked, sheet, &QDialog::reject);
    connect(again, &QPushButton::clicked, this, &FileFault::readAgainRequested);
    sheet->present();
}

} // namespace norvo
