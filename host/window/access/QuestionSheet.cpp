// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/QuestionSheet.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace norvo {

namespace {

constexpr int kWhatPoints = 18;

} // namespace

QuestionSheet::QuestionSheet(QWidget& opener, const QString& question, const QString& what)
    : Sheet(opener, question), m_yes(addKey(tr("Yes")))
{
    setObjectName("question");
    auto* const value = new QLabel(what);
    value->setObjectName("value");
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    QFont font = value->font();
    font.setPointSize(kWhatPoints);
    value->setFont(font);
    content().addWidget(value);

    m_yes->setObjectName("yes");
    m_yes->setAutoDefault(true);
    m_yes->setEnabled(false);
    QTimer::singleShot(kPauseMs, m_yes, [this] { m_yes->setEnabled(true); });
    connect(m_yes, &QPushButton::clicked, this, &QDialog::accept);
    closeKey()->setObjectName("no");
    closeKey()->setAutoDefault(true);
    closeKey()->setDefault(true);
    closeKey()->setFocus();
    setSecondsLeft(kTimeoutSeconds);
    m_second.callOnTimeout(this, &QuestionSheet::countDown);
    m_second.start(1000);
}

void QuestionSheet::setSecondsLeft(int seconds)
{
    m_secondsLeft = seconds;
    closeKey()->setText(tr("No (%1 s)").arg(seconds));
}

void QuestionSheet::countDown()
{
    setSecondsLeft(m_secondsLeft - 1);
    if (m_secondsLeft <= 0) {
        reject();
    }
}

} // namespace norvo
