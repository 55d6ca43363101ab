// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/TypePalette.h"

#include "host/catalogue/Catalogue.h"
#include "host/editor/EditSession.h"
#include "host/editor/form/FormText.h"
#include "host/editor/palette/TypePictures.h"
#include "host/panel/file/EditDistance.h"
#include "host/window/touch/LineKeyboard.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

bool matches(const TypeWords& words, const QStringList& wanted)
{
    const QString all =
        QStringList({words.key, words.title, words.purpose, words.categories.join(' ')}).join(' ');
    return std::all_of(wanted.cbegin(), wanted.cend(), [&all](const QString& word) {
        return all.contains(word, Qt::CaseInsensitive);
    });
}

} // namespace

TypePalette::TypePalette(EditSession& session, QWidget* parent)
    : QWidget(parent),
      m_session(session),
      m_pictures(new TypePictures(session.catalogue(), session.catalogue().manager())),
      m_search(new QLineEdit),
      m_message(FormText::fault({})),
      m_list(new TypeList)
{
    m_search->setObjectName("typeSearch");
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search the types"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    FormText::prepare(*m_search);
    new LineKeyboard(*m_search);
    m_list->setObjectName("types");
    m_list->setAccessibleName(tr("Types of devices"));
    m_message->setObjectName("paletteMessage");
    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_search);
    column->addWidget(m_message);
    column->addWidget(m_list, 1);
    connect(m_search, &QLineEdit::textChanged, this, &TypePalette::search);
    connect(m_list, &TypeList::picked, this, &TypePalette::pick);
    connect(&session, &EditSession::typeToPlaceChanged, this, &TypePalette::showChosen);
    connect(m_pictures.get(), &TypePictures::made, this,
            [this](const QString& key) { m_list->setPicture(key, m_pictures->picture(key)); });
    search();
}

TypePalette::~TypePalette() = default;

void TypePalette::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_pictures->make(m_session.catalogue().keys());
}

TypeList::Entry TypePalette::entry(const QString& typeKey) const
{
    const TypeWords& words = *m_session.catalogue().words(typeKey);
    return {typeKey, words.title, words.purpose, words.categories.value(0, tr("Others")),
            m_pictures->picture(typeKey)};
}

/// Where nothing matches, the type that is called alike.
QStringList TypePalette::found(const QString& text, bool& isSimilar) const
{
    const Catalogue& catalogue = m_session.catalogue();
    const QStringList keys = catalogue.keys();
    const QStringList wanted = text.split(' ', Qt::SkipEmptyParts);
    QStringList found;
    std::copy_if(keys.cbegin(), keys.cend(), std::back_inserter(found),
                 [&](const QString& key) { return matches(*catalogue.words(key), wanted); });
    const QString near = found.isEmpty() ? nearestName(text, keys) : QString();
    isSimilar = !near.isEmpty();
    return isSimilar ? QStringList(near) : found;
}

void TypePalette::search()
{
    bool isSimilar = false;
    const QString text = m_search->text().trimmed();
    QVector<TypeList::Entry> entries;
    for (const QString& key : found(text, isSimilar)) {
        entries.append(entry(key));
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return a.category < b.category; });
    m_list->setEntries(entries);
    showChosen();
    if (entries.isEmpty() || isSimilar) {
        m_message->setText(entries.isEmpty() ? tr("Nothing is found.")
                                             : tr("No type is called %1. Similar:").arg(text));
        m_message->show();
    }
}

void TypePalette::pick(const QString& typeKey)
{
    const TypeWords* const words = m_session.catalogue().words(typeKey);
    if (words && words->hasWidget) {
        m_session.setTypeToPlace(m_session.typeToPlace() == typeKey ? QString() : typeKey);
        return;
    }
    const QString fault = m_session.addDevice(typeKey);
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
}

void TypePalette::showChosen()
{
    const QString& chosen = m_session.typeToPlace();
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
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !m_list->currentType().isEmpty()) {
            pick(m_list->currentType());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

/// Takes back what was chosen, then the search.
void TypePalette::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && !m_session.typeToPlace().isEmpty()) {
        m_session.setTypeToPlace({});
    } else if (event->key() == Qt::Key_Escape && !m_search->text().isEmpty()) {
        m_search->clear();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace norvo
