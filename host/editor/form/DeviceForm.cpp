// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/DeviceForm.h"

#include "host/editor/EditSession.h"
#include "host/editor/form/FormHead.h"
#include "host/editor/form/FormSection.h"
#include "host/editor/form/FormText.h"
#include "host/editor/form/ParamStates.h"
#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/window/layout/FingerScrollArea.h"
#include "host/window/touch/LineKeyboard.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMargin = 8; // pixels, around the page
constexpr int kFew = 6;    ///< As many parameters need no second section.

/// Of a parameter of the place that does not read; empty: the cells have it.
QString setCell(Cells& cells, const QString& param, const QString& text)
{
    QString error = placementError(param, text);
    if (error.isEmpty()) {
        int* const number = param == "widget/row"       ? &cells.row
                            : param == "widget/column"  ? &cells.column
                            : param == "widget/rowspan" ? &cells.rowspan
                            : param == "widget/colspan" ? &cells.colspan
                                                        : nullptr;
        if (number) {
            *number = text.toInt();
        } else {
            cells.area = text;
        }
    }
    return error;
}

} // namespace

DeviceForm::DeviceForm(EditSession& session, QWidget* parent)
    : QWidget(parent),
      m_session(session),
      m_steps(session),
      m_head(new FormHead(session)),
      m_search(new QLineEdit),
      m_essential(new FormSection({}, {})),
      m_rest(new FormSection(tr("More parameters"), "allParameters")),
      m_place(new FormSection(tr("Place on the panel"), "place")),
      m_keys(new FormSection(tr("Operation"), "keys")),
      m_sections({m_essential, m_rest, m_place, m_keys})
{
    layOut();
    for (FormSection* const section : {m_essential, m_rest}) {
        connectSection(*section, &DeviceForm::changeParam, &DeviceForm::resetParam);
    }
    connectSection(*m_place, &DeviceForm::changePlace, &DeviceForm::resetParam);
    connectSection(*m_keys, &DeviceForm::changeKey, &DeviceForm::resetKey);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        for (FormSection* const section : qAsConst(m_sections)) {
            section->search(text.trimmed());
        }
    });
    connect(m_head, &FormHead::renameWanted, this, &DeviceForm::rename);
    connect(&session, &EditSession::changed, this, &DeviceForm::refresh);
    connect(&session, &EditSession::selectionChanged, this, &DeviceForm::followSelection);
    followSelection();
}

DeviceForm::~DeviceForm()
{
    disconnect(m_head, nullptr, this, nullptr);
    for (FormSection* const section : qAsConst(m_sections)) {
        disconnect(section, nullptr, this, nullptr); // They die after this one's own part.
    }
}

void DeviceForm::layOut()
{
    m_search->setObjectName("formSearch");
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search the parameters"));
    FormText::prepare(*m_search);
    new LineKeyboard(*m_search);
    m_search->setClearButtonEnabled(true);
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->addWidget(m_head);
    column->addWidget(m_search);
    for (FormSection* const section : qAsConst(m_sections)) {
        column->addWidget(section);
    }
    column->addStretch(1);
    m_scroll = new FingerScrollArea(page);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setMinimumHeight(2 * ParamEditor::target()); // Less than its bar asks for.
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scroll);
}

void DeviceForm::connectSection(FormSection& section,
                                void (DeviceForm::*change)(ParamRow&, const QString&),
                                void (DeviceForm::*reset)(ParamRow&))
{
    connect(&section, &FormSection::changeWanted, this,
            [this, change](ParamRow* row, const QString& text) { (this->*change)(*row, text); });
    connect(&section, &FormSection::resetWanted, this,
            [this, reset](ParamRow* row) { (this->*reset)(*row); });
    connect(&section, &FormSection::entryEnded, this, [this] { m_steps.endEntry(); });
}

/// What has been typed for the devices of before is theirs.
void DeviceForm::followSelection()
{
    if (m_isOwnStep || (m_session.selection() == m_ids && !m_ids.isEmpty())) {
        return;
    }
    flush();
    m_ids = m_session.selection();
    m_steps.endEntry();
    m_scroll->verticalScrollBar()->setValue(0);
    m_first = m_ids.isEmpty() ? QSet<QString>() : ParamStates::essential(m_session, m_ids.first());
    const QVector<ParamWords> params = ParamStates::common(m_session, m_ids);
    for (const ParamWords& words : params) {
        if (params.size() <= kFew || ParamStates::param(m_session, m_ids, words).isSet) {
            m_first.insert(words.name.toLower());
        }
    }
    for (FormSection* const section : qAsConst(m_sections)) {
        for (ParamRow* const row : section->rows()) {
            row->forget();
        }
    }
    setRows();
}

void DeviceForm::flush()
{
    const bool areThere = std::all_of(m_ids.cbegin(), m_ids.cend(),
                                      [this](const QString& id) { return m_session.device(id); });
    for (FormSection* const section : qAsConst(m_sections)) {
        const QVector<ParamRow*> rows = section->rows();
        for (ParamRow* const row : rows) {
            areThere ? row->flush() : row->forget();
        }
    }
}

/// The form stays with the device, whatever its id.
void DeviceForm::rename(const QString& id, const QString& newId)
{
    m_isOwnStep = true;
    const QString fault =
        m_session.change(tr("Rename %1 to %2").arg(id, newId),
                         [&](YamlEdit& edit) { return DeviceEdit::rename(edit, id, newId); });
    m_isOwnStep = false;
    if (!fault.isEmpty()) {
        return m_head->refuseId(fault);
    }
    m_ids = QStringList(newId);
    m_session.select(m_ids);
    setRows();
}

void DeviceForm::refresh()
{
    const bool areThere = std::all_of(m_ids.cbegin(), m_ids.cend(),
                                      [this](const QString& id) { return m_session.device(id); });
    if (areThere) {
        setRows();
    }
}

void DeviceForm::setRows()
{
    m_head->showDevices(m_ids);
    const QString id = m_ids.size() == 1 ? m_ids.first() : QString();
    QVector<ParamWords> first;
    QVector<ParamWords> rest;
    for (const ParamWords& words : ParamStates::common(m_session, m_ids)) {
        (m_first.contains(words.name.toLower()) ? first : rest).append(words);
    }
    const auto paramState = [this](const ParamWords& words) {
        return ParamStates::param(m_session, m_ids, words);
    };
    m_essential->setParams(first, paramState);
    m_rest->setParams(rest, paramState);
    m_place->setParams(ParamStates::ofPlace(m_session, id), [this](const ParamWords& words) {
        return ParamStates::place(m_session, m_ids.value(0), words);
    });
    m_keys->setParams(ParamStates::ofKeys(m_session, id), [this](const ParamWords& words) {
        return ParamStates::key(m_session, m_ids.value(0), words);
    });
    const bool isFixed = std::any_of(m_ids.cbegin(), m_ids.cend(), [this](const QString& one) {
        return !m_session.whyFixed(one).isEmpty();
    });
    for (FormSection* const section : qAsConst(m_sections)) {
        section->setEnabled(!isFixed);
    }
    m_search->setVisible(first.size() + rest.size() > kFew);
}

QString DeviceForm::selectedName() const
{
    return m_ids.size() == 1 ? m_ids.first() : tr("%1 devices").arg(m_ids.size());
}

/// Of all that are selected. The row can be gone afterwards.
void DeviceForm::step(ParamRow& row, const QString& what, const DeviceStep& edit)
{
    const QStringList ids = m_ids;
    const QString fault = m_steps.take(row, m_ids.value(0), what, [&](YamlEdit& next) {
        YamlEdit::Error error;
        for (int i = 0; i < ids.size() && !error; ++i) {
            error = edit(next, ids[i]);
        }
        return error;
    });
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

void DeviceForm::changeParam(ParamRow& row, const QString& text)
{
    const ParamWords words = row.words();
    const bool isUnset = text.isEmpty() && (words.isNumber() || words.defaultValue.isEmpty());
    if (isUnset) {
        return resetParam(row);
    }
    step(row, tr("Set %1 of %2").arg(words.name, selectedName()),
         [&](YamlEdit& edit, const QString& id) {
             return ParamEdit::setParam(edit, id, words.name, text);
         });
}

void DeviceForm::resetParam(ParamRow& row)
{
    const QString name = row.words().name;
    step(row, tr("Reset %1 of %2").arg(name, selectedName()),
         [&](YamlEdit& edit, const QString& id) { return ParamEdit::removeParam(edit, id, name); });
}

void DeviceForm::changePlace(ParamRow& row, const QString& text)
{
    Cells cells = m_session.live().cells().value(m_ids.value(0));
    const QString fault = setCell(cells, row.words().name, text);
    if (!fault.isEmpty()) {
        return row.setFault(fault);
    }
    step(row, tr("Move %1").arg(selectedName()),
         [&](YamlEdit& edit, const QString& id) { return DeviceEdit::place(edit, id, cells); });
}

void DeviceForm::changeKey(ParamRow& row, const QString& text)
{
    const ParamWords words = row.words();
    const QString value = text == words.defaultValue ? QString() : text;
    step(row, tr("Set %1 of %2").arg(words.name, selectedName()),
         [&](YamlEdit& edit, const QString& id) {
             return DeviceEdit::setKey(edit, id, words.name, value);
         });
}

void DeviceForm::resetKey(ParamRow& row)
{
    changeKey(row, row.words().defaultValue);
}

} // namespace norvo
