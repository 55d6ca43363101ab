// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/palette/TypeList.h"

#include <QStringList>
#include <QWidget>

#include <memory>

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;

namespace norvo {

class EditSession;
class TypePictures;

/// All device types and templates, to be put on the panel: what is seen there by a tap here and one
/// on a cell, or by a drag; what is not at once.
class TypePalette : public QWidget
{
    Q_OBJECT

public:
    explicit TypePalette(EditSession& session, QWidget* parent = nullptr);
    ~TypePalette() override;

    const TypePictures& pictures() const { return *m_pictures; }

signals:
    void problem(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; ///< Keys of the search.
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void search();
    void pick(const QString& key);
    void showChosen();
    void showRemoval();
    void removeTemplate();
    void followTemplates();
    void makePictures();
    QStringList found(const QString& text, bool& isSimilar) const;
    TypeList::Entry entry(const QString& typeKey) const;
    QVector<TypeList::Entry> foundTemplates(const QString& text) const;

    EditSession& m_session;
    const std::unique_ptr<TypePictures> m_pictures;
    QLineEdit* m_search;
    QLabel* m_message;
    TypeList* m_list;
    QAction* m_remove;
    QPushButton* m_removeKey; ///< Seen while a template of the user's own is current.
};

} // namespace norvo
