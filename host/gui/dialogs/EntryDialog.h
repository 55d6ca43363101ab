// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "host/gui/dialogs/AskedField.h"

#include <QDialog>

class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QVBoxLayout;

namespace norvo {

class Scrim;
class TouchKey;

/// A modal dialog for a finger: a display, keys, and a reason while OK cannot be pressed.
///
/// A sheet without a frame, beside the field that has the focus, over its dimmed window. The parts
/// are made here; a subclass places the keys below them in its layout.
class EntryDialog : public QDialog
{
    Q_OBJECT

public:
    /// `label` stands above the display, and names it; empty: the name and unit of the field.
    EntryDialog(QWidget* parent, Qt::WindowFlags flags, const QString& title, const QString& label);
    ~EntryDialog() override;

    /// Runs the dialog; true, also in `ok` where that is not null, when it was confirmed. False
    /// also if its parent took it along.
    static bool runModal(EntryDialog* dialog, bool* ok);

    void setVisible(bool visible) override;

protected:
    /// Begins the layout: label, display with `aside` beside it, and reason below each other. Where
    /// so many columns and rows of keys then have no room at the size for a touch: side by side.
    QVBoxLayout* placeHead(const QSize& keys, QLayout* aside = nullptr);
    /// So many columns and rows of keys of that size the screen holds below the head.
    const QSize& room() const { return m_room; }
    /// Empty: what the display shows can be accepted. Otherwise it is red.
    void showError(const QString& reason);
    /// Takes that size, or less where the screen or the room beside the field is smaller. The keys,
    /// which stand in so many rows, get the height that they want, if the screen lets all have it.
    void fitIntoScreen(const QSize& preferred, int rows);
    /// The least width of each of so many keys in a row: what they want, or what the screen leaves.
    int leastKeyWidth(int inRow) const;
    void paintEvent(QPaintEvent* event) override; ///< Draws the edge.
    void showEvent(QShowEvent* event) override;

    QLabel* m_label; ///< Hidden while it is empty.
    QLineEdit* m_display;
    QLabel* m_reason;
    TouchKey* m_ok;
    TouchKey* m_cancel;

private:
    void fillHead(QGridLayout& head, QLayout* aside);
    void fillLowHead(QGridLayout& head, QLayout* aside);
    QSize roomBelow(int head) const;
    void dim(QWidget* window);

    const AskedField m_field;
    QPointer<Scrim> m_scrim;
    QSize m_room;
};

} // namespace norvo
