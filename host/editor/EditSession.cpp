// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/EditSession.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/TypeWords.h"
#include "host/editor/ExampleParams.h"
#include "host/editor/TextCells.h"
#include "host/editor/templates/TemplateSet.h"
#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/panel/file/PanelFile.h"

#include <algorithm>
#include <utility>

namespace norvo {

EditSession::EditSession(LivePanel& live, const Catalogue& catalogue, const QByteArray& text)
    : m_live(live),
      m_catalogue(catalogue),
      m_templates(std::make_unique<TemplateSet>(catalogue, live.description().file)),
      m_document(text)
{}

EditSession::~EditSession() = default;

const DeviceSetting* EditSession::device(const QString& id) const
{
    const QVector<DeviceSetting>& devices = m_live.description().devices;
    const auto found = std::find_if(devices.cbegin(), devices.cend(),
                                    [&id](const DeviceSetting& one) { return one.id.text == id; });
    return found == devices.cend() ? nullptr : &*found;
}

QString EditSession::whyFixed(const QString& id) const
{
    const DeviceSetting* const setting = device(id);
    if (!setting || ParamEdit::hasDevice(m_document, id)) {
        return {};
    }
    const auto& origin = setting->id.place.origin;
    return origin && !origin->use.isEmpty() ? tr("It is made %1: change it there").arg(origin->use)
                                            : tr("It stands in another file");
}

void EditSession::select(const QStringList& ids)
{
    QStringList known;
    std::copy_if(ids.cbegin(), ids.cend(), std::back_inserter(known),
                 [this](const QString& id) { return device(id) != nullptr; });
    known.removeDuplicates();
    if (known != m_selection) {
        m_selection = known;
        emit selectionChanged();
    }
}

QString EditSession::change(const QString& what, const Edit& edit, const QString& joinKey)
{
    YamlEdit next = m_document;
    if (const YamlEdit::Error error = edit(next)) {
        return error->text;
    }
    const QByteArray before = m_document.text();
    if (next.text() == before) {
        return {};
    }
    QString fault = take(std::move(next), LivePanel::Accept::Better);
    if (fault.isEmpty()) {
        m_history.add(what, before, m_document.text(), joinKey);
        emit changed();
        emit savedChanged();
        pruneSelection();
    }
    return fault;
}

QString EditSession::take(YamlEdit next, LivePanel::Accept accept)
{
    if (const YamlEdit::Error& error = next.error()) {
        return tr("line %1: %2").arg(error->place.line).arg(error->text);
    }
    if (const std::optional<Diagnostic> fault = m_live.run(next, accept)) {
        return fault->text;
    }
    m_document = std::move(next);
    return {};
}

YamlEdit::Error EditSession::keepPlaces(YamlEdit& edit, const QStringList& meant) const
{
    const QString file = m_live.description().file;
    return norvo::keepPlaces(edit, m_live.cells(), meant, [&](const YamlEdit& text) {
        Diagnostics diagnostics(file);
        return cellsOfText(PanelFile::parse(text, file, diagnostics), m_catalogue);
    });
}

QString EditSession::undo()
{
    return canUndo() ? step(&EditHistory::undo, &EditHistory::redo) : QString();
}

QString EditSession::redo()
{
    return canRedo() ? step(&EditHistory::redo, &EditHistory::undo) : QString();
}

QString EditSession::step(Step there, Step back)
{
    m_history.endJoin();
    const QByteArray text = (m_history.*there)(m_document.text());
    QString fault = take(YamlEdit(text, m_document), LivePanel::Accept::Runnable);
    if (fault.isEmpty()) {
        emit changed();
        emit savedChanged();
        pruneSelection();
    } else {
        (m_history.*back)(text);
    }
    return fault;
}

void EditSession::setSaved()
{
    m_history.endJoin();
    m_history.setSaved();
    emit savedChanged();
}

bool EditSession::hasUnsaved() const
{
    return !isSaved() && (canUndo() || canRedo());
}

void EditSession::setNeverSaved()
{
    m_history.setNeverSaved();
    emit savedChanged();
}

QString EditSession::runAgain()
{
    QString fault = take(m_document, LivePanel::Accept::Runnable);
    if (fault.isEmpty()) {
        emit changed();
    }
    return fault;
}

QString EditSession::replaceText(const QString& what, const QByteArray& text)
{
    const QByteArray before = m_document.text();
    QString fault = take(YamlEdit(text), LivePanel::Accept::Runnable);
    if (fault.isEmpty() && before != text) {
        m_history.add(what, before, text);
        emit changed();
        emit savedChanged();
        pruneSelection();
    }
    return fault;
}

void EditSession::pruneSelection()
{
    select(QStringList(m_selection));
}

void EditSession::setToPlace(const QString& what)
{
    if (what != m_toPlace) {
        m_toPlace = what;
        emit toPlaceChanged();
    }
}

QString EditSession::addDevice(const QString& typeKey, const Cells& cells)
{
    const QString id = DeviceEdit::freeId(m_document, typeKey);
    const TypeWords* const words = m_catalogue.words(typeKey);
    const auto addWith = [&](const QVector<QPair<QString, QString>>& params) {
        return change(tr("Add %1").arg(id), [&](YamlEdit& edit) {
            YamlEdit::Error error = DeviceEdit::add(edit, {id, typeKey, params});
            if (error || !words || !words->hasWidget || cells.row < 0) {
                return error;
            }
            error = DeviceEdit::place(edit, id, cells);
            return error ? error : keepPlaces(edit, {id});
        });
    };
    QString fault = addWith({});
    if (!fault.isEmpty() && words) {
        QVector<QPair<QString, QString>> params;
        for (const ParamSetting& param : exampleParams(*words)) {
            params.append({param.name.text, param.value.text});
        }
        if (addWith(params).isEmpty()) {
            fault.clear(); // Some do not start without them: a program needs its command.
        }
    }
    if (fault.isEmpty()) {
        setToPlace({});
        select({id});
    }
    return fault;
}

} // namespace norvo
