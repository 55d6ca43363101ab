// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace norvo {

class TouchKey;

/// A modal dialog for a finger: a display, keys, and a reason while OK cannot be pressed.
///
/// Its parts are made here; a subclass places them in its layout.
class EntryDialog : public QDialog
{
    Q_OBJECT

public:
    EntryDialog(QWidget* parent, Qt::WindowFlags flags, const QString& title);

    /// Runs the dialog; true, also in `ok` where that is not null, when it was confirmed. False
    /// also if its parent took it along.
    static bool runModal(EntryDialog* dialog, bool* ok);

    void setVisible(bool visible) override;

protected:
    /// Empty: what the display shows can be accepted. Otherwise it is red.
    void showError(const QString& reason);
    /// Takes that size, or the screen's where that is smaller.
    void fitIntoScreen(const QSize& preferred);
    void showEvent(QShowEvent* event) override;

    QLineEdit* m_display;
    QLabel* m_reason;
    TouchKey* m_ok;
    TouchKey* m_cancel;
};

} // namespace norvo
