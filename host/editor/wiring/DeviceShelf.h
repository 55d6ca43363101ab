// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QListWidget>

namespace norvo {

class EditSession;

/// The devices of a panel that have no widget, side by side in one row that scrolls sideways: id,
/// type, and how many outputs and inputs each has. Hidden where there are none.
class DeviceShelf : public QListWidget
{
    Q_OBJECT

public:
    enum class Mark { None, Fits, FitsNot };

    DeviceShelf(EditSession& session, QWidget* parent);

    QStringList devices() const; ///< Ids, from left to right.
    /// In the shelf's coordinates, whether it is scrolled into view or not; empty: not on it.
    QRect itemRect(const QString& device) const;
    void setMarks(const QHash<QString, Mark>& marks); ///< Devices that are not named have none.
    void showDevice(const QString& device);           ///< Scrolls to it.

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void tapped(QString device); ///< Or Enter was pressed on it.
    void scrolled();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fill();
    void followSelection();

    EditSession& m_session;
    QHash<QString, QListWidgetItem*> m_items; ///< By id.
};

} // namespace norvo
