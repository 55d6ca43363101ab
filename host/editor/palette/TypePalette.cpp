// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/TypePalette.h"

#include "host/catalogue/Catalogue.h"
#include "host/editor/EditSession.h"
#include "host/editor/canvas/CanvasEdits.h"
#include "host/editor/form/FormText.h"
#include "host/editor/palette/TypePictures.h"
#include "host/editor/templates/DeviceGroup.h"
#include "host/editor/templates/TemplateSet.h"
#include "host/panel/file/EditDistance.h"
#include "host/window/look/TouchSize.h"
#include "host/window/touch/LineKeyboard.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

bool matches(const QStringList& texts, const QStringList& wanted)
{
    const QString all = texts.join(' ');
    return std::all_of(wanted.cbegin(), wanted.cend(), [&all](const QString& word) {
        return all.contains(word, Qt::CaseInsensitive);
    });
}

} // namespace

TypePalette::TypePalette(EditSession& session, QWidget* parent)
    : QWidget(parent),
      m_session(session),
      m_pictures(new TypePictures(session.catalogue(), session.templates())),
      m_search(new QLineEdit),
      m_message(FormText::fault({})),
      m_list(new TypeList),
      m_remove(new QAction(tr("Remove the template"), this)),
      m_removeKey(new QPushButton(m_remove->text()))
{
    m_search->setObjectName("typeSearch");
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search the types and templates"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    FormText::prepare(*m_search);
    new LineKeyboard(*m_search);
    m_list->setObjectName("types");
    m_list->setAccessibleName(tr("Types of devices and templates"));
    m_remove->setShortcut(QKeySequence::Delete);
    m_remove->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(m_remove);
    m_removeKey->setObjectName("removeTemplate");
    m_removeKey->setMinimumHeight(TouchSize::pixels(PanelLook::Touch::Fingers, *screen()));
    m_message->setObjectName("paletteMessage");
    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_search);
    column->addWidget(m_message);
    column->addWidget(m_list, 1);
    column->addWidget(m_removeKey);
    connect(m_search, &QLineEdit::textChanged, this, &TypePalette::search);
    connect(m_list, &TypeList::picked, this, &TypePalette::pick);
    connect(&session, &EditSession::toPlaceChanged, this, &TypePalette::showChosen);
    connect(m_pictures.get(), &TypePictures::made, this,
            [this](const QString& key) { m_list->setPicture(key, m_pictures->picture(key)); });
    connect(m_list, &QListWidget::currentItemChanged, this, &TypePalette::showRemoval);
    connect(m_remove, &QAction::triggered, this, &TypePalette::removeTemplate);
    connect(m_removeKey, &QPushButton::clicked, m_remove, &QAction::trigger);
    connect(&session.templates(), &TemplateSet::changed, this, &TypePalette::followTemplates);
    session.templates().read();
}

TypePalette::~TypePalette()
{
    disconnect(m_list, nullptr, this, nullptr); // It dies after this one's own part.
}

void TypePalette::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    makePictures();
}

void TypePalette::makePictures()
{
    QStringList all = m_session.catalogue().keys();
    for (const PanelTemplate& group : m_session.templates().all()) {
        if (group.fault.isEmpty()) {
            all += group.file;
        }
    }
    m_pictures->make(all);
}

/// What was chosen may be gone.
void TypePalette::followTemplates()
{
    const QString chosen = m_session.toPlace();
    if (!m_session.catalogue().words(chosen) && !m_session.templates().find(chosen)) {
        m_session.setToPlace({});
    }
    search();
    if (isVisible()) {
        makePictures();
    }
}

TypeList::Entry TypePalette::entry(const QString& typeKey) const
{
    const TypeWords& words = *m_session.catalogue().words(typeKey);
    return {typeKey, words.title, words.purpose, words.categories.value(0, tr("Others")),
            m_pictures->picture(typeKey)};
}

QVector<TypeList::Entry> TypePalette::foundTemplates(const QString& text) const
{
    const QStringList wanted = text.split(' ', Qt::SkipEmptyParts);
    const QString category = tr("Templates");
    QVector<TypeList::Entry> found;
    for (const PanelTemplate& group : m_session.templates().all()) {
        if (matches({category, group.title, group.purpose}, wanted)) {
            found.append({group.file, group.title, group.purpose, category,
                          m_pictures->picture(group.file), group.fault});
        }
    }
    return found;
}

/// Where nothing matches, the type that is called alike.
QStringList TypePalette::found(const QString& text, bool& isSimilar) const
{
    const Catalogue& catalogue = m_session.catalogue();
    const QStringList keys = catalogue.keys();
    const QStringList wanted = text.split(' ', Qt::SkipEmptyParts);
    QStringList found;
    std::copy_if(keys.cbegin(), keys.cend(), std::back_inserter(found), [&](const QString& key) {
        const TypeWords& words = *catalogue.words(key);
        return matches({key, words.title, words.purpose, words.categories.join(' ')}, wanted);
    });
    const QString near = found.isEmpty() ? nearestName(text, keys) : QString();
    isSimilar = !near.isEmpty();
    return isSimilar ? QStringList(near) : found;
}

void TypePalette::search()
{
    bool isSimilar = false;
    const QString text = m_search->text().trimmed();
    const QVector<TypeList::Entry> templates = foundTemplates(text);
    QVector<TypeList::Entry> entries;
    for (const QString& key : found(text, isSimilar)) {
        if (!isSimilar || templates.isEmpty()) {
            entries.append(entry(key));
        }
    }
    isSimilar = isSimilar && templates.isEmpty();
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return a.category < b.category; });
    m_list->setEntries(entries + templates);
    showChosen();
    showRemoval();
    const bool isNothing = entries.isEmpty() && templates.isEmpty();
    if (isNothing || isSimilar) {
        m_message->setText(isNothing ? tr("Nothing is found.")
                                     : tr("No type is called %1. Similar:").arg(text));
        m_message->show();
    }
}

void TypePalette::pick(const QString& key)
{
    const PanelTemplate* const group = m_session.templates().find(key);
    if (group && !group->fault.isEmpty()) {
        emit problem(group->title + ": " + group->fault);
        return;
    }
    const TypeWords* const words = m_session.catalogue().words(key);
    const bool isSeen =
        group ? !DeviceGroup::placesAt(group->panel, m_session.catalogue(), {}).isEmpty()
              : words && words->hasWidget;
    if (isSeen) {
        m_session.setToPlace(m_session.toPlace() == key ? QString() : key);
        return;
    }
    const QString fault =
        group ? CanvasEdits(m_session).putTemplate(*group, {}) : m_session.addDevice(key);
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

void TypePalette::showRemoval()
{
    const PanelTemplate* const group = m_session.templates().find(m_list->currentKey());
    m_remove->setEnabled(group && group->isOwn);
    m_removeKey->setVisible(m_remove->isEnabled());
}

void TypePalette::removeTemplate()
{
    const QString fault = m_session.templates().remove(m_list->currentKey());
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

void TypePalette::showChosen()
{
    const QString& chosen = m_session.toPlace();
    m_list->setChosen(chosen);
    m_message->setText(tr("Tap a cell to place it; tap here again to leave it"));
    m_message->setVisible(!chosen.isEmpty());
}

bool TypePalette::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up) {
            m_list->setFocus();
            return true;
        }
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !m_list->currentKey().isEmpty()) {
            pick(m_list->currentKey());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

/// Takes back what was chosen, then the search.
void TypePalette::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && !m_session.toPlace().isEmpty()) {
        m_session.setToPlace({});
    } else if (event->key() == Qt::Key_Escape && !m_search->text().isEmpty()) {
        m_search->clear();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace norvo
