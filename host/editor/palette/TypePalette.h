// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/palette/TypeList.h"

#include <QStringList>
#include <QWidget>

#include <memory>

class QLabel;
class QLineEdit;

namespace norvo {

class EditSession;
class TypePictures;

/// All device types, to be put on the panel: one with a widget by a tap here and one on a cell, or
/// by a drag; one without at once.
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
    void pick(const QString& typeKey);
    void showChosen();
    QStringList found(const QString& text, bool& isSimilar) const;
    TypeList::Entry entry(const QString& typeKey) const;

    EditSession& m_session;
    const std::unique_ptr<TypePictures> m_pictures;
    QLineEdit* m_search;
    QLabel* m_message;
    TypeList* m_list;
};

} // namespace norvo
