// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/pages/PanelForm.h"

#include "host/editor/form/FormSection.h"
#include "host/editor/form/ParamStates.h"
#include "host/panel/edit/PanelKeyEdit.h"
#include "host/panel/edit/PanelTree.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/file/look/LookReader.h"
#include "host/texts/Language.h"
#include "host/window/layout/FingerScrollArea.h"

#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMargin = 8; // pixels, around the page

/// The entry of a key; null: the file does not have it.
const YamlEntry* entryOf(const EditSession& session, const QString& key)
{
    const auto& entries = session.document().root().entries;
    const auto found =
        std::find_if(entries.cbegin(), entries.cend(), [&key](const YamlEntry& entry) {
            return entry.key && entry.key->text == key;
        });
    return found == entries.cend() ? nullptr : &*found;
}

/// Title first, then what says how the panel is shown by a text.
QStringList textKeys()
{
    static const QStringList lists{"pages", "rows", "columns"};
    QStringList keys{"title"};
    for (const QString& key : lookKeys()) {
        if (!lists.contains(key)) {
            keys.append(key);
        }
    }
    return keys;
}

} // namespace

PanelForm::PanelForm(EditSession& session, QWidget* parent)
    : QWidget(parent), m_session(session), m_steps(session), m_section(new FormSection({}, {}))
{
    layOut();
    describeKeys();
    connect(m_section, &FormSection::changeWanted, this,
            [this](ParamRow* row, const QString& text) { change(*row, text); });
    connect(m_section, &FormSection::resetWanted, this, [this](ParamRow* row) { reset(*row); });
    connect(m_section, &FormSection::entryEnded, this, [this] { m_steps.endEntry(); });
    connect(&session, &EditSession::changed, this, &PanelForm::refresh);
    refresh();
}

PanelForm::~PanelForm()
{
    disconnect(m_section, nullptr, this, nullptr); // It dies after this one's own part.
}

void PanelForm::layOut()
{
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->addWidget(m_section);
    column->addStretch(1);
    auto* const scroll = new FingerScrollArea(page);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setMinimumHeight(2 * ParamEditor::target()); // Less than its bar asks for.
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
}

void PanelForm::refresh()
{
    m_section->setParams(m_keys, [this](const ParamWords& words) { return state(words); });
}

void PanelForm::describeKeys()
{
    const QHash<QString, QString> meanings{
        {"title", tr("The text above the window; without it, the name of the file.")},
        {"theme", tr("The colours; system: as the desktop has them.")},
        {"touch", tr("How large keys are at least: for fingers, or for hands in gloves.")},
        {"design", tr("The size in pixels that the panel was laid out for, such as 1024x600.")},
        {"fit", tr("What fills a larger window: grow, the widgets do; scale, the page is drawn "
                   "larger, which needs a design.")},
        {"language", tr("Of the program's own texts and of the keyboard, such as de or pt_BR; "
                        "without it, the system's.")}};
    PanelDescription untitled = m_session.live().description();
    untitled.title = {};
    for (const QString& key : textKeys()) {
        ParamWords words;
        words.name = key;
        words.meaning = meanings.value(key);
        words.options = key == "language" ? Language::all() : lookNames(key);
        words.kind = words.options.isEmpty() ? ParamKind::Text : ParamKind::Choice;
        words.defaultValue = key == "title" ? PanelFile::shownTitle(untitled) : lookDefault(key);
        m_keys.append(words);
    }
}

ParamState PanelForm::state(const ParamWords& words) const
{
    const YamlEntry* const entry = entryOf(m_session, words.name);
    ParamState state;
    state.isSet = entry;
    state.text = entry ? entry->value->text : words.defaultValue;
    state.shown = entry ? ParamEditor::Shown::Value : ParamEditor::Shown::Default;
    if (entry) {
        state.problems =
            ParamStates::problemsAt(m_session, {entry->key->place, entry->value->place});
    }
    return state;
}

void PanelForm::change(ParamRow& row, const QString& text)
{
    if (text.isEmpty()) {
        return reset(row);
    }
    const QString key = row.words().name;
    step(row, tr("Set %1 of the panel").arg(key),
         [&](YamlEdit& edit) { return PanelKeyEdit::set(edit, key, text); });
}

void PanelForm::reset(ParamRow& row)
{
    const QString key = row.words().name;
    step(row, tr("Reset %1 of the panel").arg(key),
         [&](YamlEdit& edit) { return PanelKeyEdit::remove(edit, key); });
}

void PanelForm::step(ParamRow& row, const QString& what, const EditSession::Edit& edit)
{
    const QString fault = m_steps.take(row, {}, what, edit);
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

} // namespace norvo
