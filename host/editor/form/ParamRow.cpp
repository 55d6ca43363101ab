// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/ParamRow.h"

#include "host/editor/form/FormText.h"
#include "host/yaml/Quote.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace norvo {

namespace {

const QChar kWarning(0x26A0);
const QChar kReset(0x21BA);

bool isLined(const ParamWords& words, const ParamState& state)
{
    return words.kind == ParamKind::Lines || (words.kind == ParamKind::Text && state.hasLines());
}

} // namespace

ParamRow::ParamRow(const ParamWords& words, const ParamState& state)
    : m_words(words),
      m_hasLines(isLined(words, state)),
      m_state(state),
      m_editor(ParamEditor::make(words, m_hasLines)),
      m_reset(new QPushButton(kReset)),
      m_name(FormText::name(words.unit.isEmpty() ? words.name
                                                 : QString("%1 (%2)").arg(words.name, words.unit))),
      m_meaning(FormText::small(words.meaning)),
      m_hint(FormText::small({})),
      m_message(FormText::fault({}))
{
    m_name->setBuddy(m_editor);
    m_reset->setObjectName(words.name + " reset");
    m_reset->setAccessibleName(tr("%1: back to the default").arg(words.name));
    m_reset->setToolTip(m_reset->accessibleName());
    m_reset->setAutoDefault(false);
    m_reset->setFocusPolicy(Qt::TabFocus);
    m_message->setObjectName(words.name + " message");
    m_hint->setObjectName(words.name + " hint");
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPauseMs);
    layOut();

    connect(&m_pause, &QTimer::timeout, this, &ParamRow::take);
    connect(m_editor, &ParamEditor::typed, this, [this] {
        m_isPending = true;
        m_pause.start();
        m_hint->setText(hint());
    });
    connect(m_editor, &ParamEditor::stepped, this, [this] {
        m_isPending = true;
        take();
    });
    connect(m_editor, &ParamEditor::entered, this, [this] {
        take();
        emit entryEnded();
    });
    connect(m_reset, &QPushButton::clicked, this, [this] {
        forget();
        emit resetWanted();
    });
    showState();
}

ParamRow::~ParamRow()
{
    m_editor->disconnect(this); // It loses the focus once this one's own part is gone.
}

void ParamRow::layOut()
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(m_name);
    if (!m_words.meaning.isEmpty()) {
        column->addWidget(m_meaning);
    }
    auto* const row = new QHBoxLayout;
    row->setSpacing(4);
    row->addWidget(m_editor, 1);
    row->addWidget(m_reset, 0, Qt::AlignTop);
    column->addLayout(row);
    column->addWidget(m_hint);
    column->addWidget(m_message);
    m_reset->setFixedSize(ParamEditor::target(), ParamEditor::target());
    QSizePolicy policy = m_reset->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // Under a hand that taps twice no key moves.
    m_reset->setSizePolicy(policy);
    setTabOrder(m_editor, m_reset);
}

bool ParamRow::fits(const ParamWords& words, const ParamState& state) const
{
    return words.name == m_words.name && words.kind == m_words.kind &&
           words.options == m_words.options && words.meaning == m_words.meaning &&
           isLined(words, state) == m_hasLines;
}

bool ParamRow::matches(const QString& search) const
{
    return m_words.name.contains(search, Qt::CaseInsensitive) ||
           m_words.meaning.contains(search, Qt::CaseInsensitive);
}

void ParamRow::setState(const ParamState& state)
{
    m_state = state;
    showState();
}

void ParamRow::setFault(const QString& fault)
{
    m_fault = fault;
    showState();
}

void ParamRow::flush()
{
    take();
}

void ParamRow::forget()
{
    m_pause.stop();
    m_isPending = false;
    m_fault.clear();
    showState();
}

void ParamRow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && (m_isPending || !m_fault.isEmpty())) {
        return forget();
    }
    QWidget::keyPressEvent(event);
}

void ParamRow::take()
{
    m_pause.stop();
    if (m_isPending) {
        m_isPending = false;
        m_fault.clear();
        emit changeWanted(m_editor->text());
    }
}

void ParamRow::showState()
{
    const bool hasEntry = m_isPending || !m_fault.isEmpty();
    if (!hasEntry) {
        m_editor->showText(m_state.text, m_state.shown);
    }
    m_editor->setEnabled(m_state.whyDisabled.isEmpty());
    m_reset->setVisible(m_state.isSet || !m_fault.isEmpty());
    QStringList said = m_fault.isEmpty() ? m_state.problems : QStringList(m_fault);
    const QString about = QString("parameter %1: ").arg(inQuotes(m_words.name));
    said.replaceInStrings(QRegularExpression('^' + QRegularExpression::escape(about)), {});
    m_message->setText(said.isEmpty() ? QString() : kWarning + QString(" ") + said.join('\n'));
    m_message->setVisible(!said.isEmpty());
    m_hint->setText(hint());
    m_hint->setVisible(!m_hint->text().isEmpty());
}

/// What helps to fill it in: why it has no effect, what it gives, what it takes.
QString ParamRow::hint() const
{
    if (!m_state.whyDisabled.isEmpty()) {
        return m_state.whyDisabled;
    }
    if (m_words.kind == ParamKind::TimeFormat) {
        const QString format = m_editor->text().isEmpty() ? m_state.text : m_editor->text();
        return tr("now: %1").arg(QDateTime::currentDateTime().toString(format));
    }
    QString range = m_words.isNumber() ? m_words.range() : QString();
    if (m_words.also.isEmpty()) {
        return range;
    }
    const QString also = inQuotes(m_words.also);
    return range.isEmpty() ? tr("a number, or %1").arg(also) : tr("%1, or %2").arg(range, also);
}

} // namespace norvo
