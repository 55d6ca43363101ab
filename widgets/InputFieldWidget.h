// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/InputDevice.h"
#include "widgets/DeviceView.h"

#include <QLabel>
#include <QPointer>

#include <memory>

class QDoubleSpinBox;
class QLineEdit;

/// The editor of an InputDevice, a line editor or a spin box, with caption and unit.
class InputFieldWidget : public DeviceView<InputDevice>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;
    ~InputFieldWidget() override;

    /// Places caption, editor and unit; labels without text are left out.
    void setLayout(Qt::Orientation orientation);
    void setMinMax(double min, double max); ///< Of a spin box; a line editor has none.
    void setIncrement(double step);         ///< Of a spin box.

    /// Opens the numeric keypad or the keyboard on a press; the editor gets the press as well.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void output(QString text);
    void output(double value);

public slots:
    /// A value that changes the editor leaves the widget again, as if it had been typed.
    void input(double value);
    void input(QString text); ///< A spin box ignores a text that is not a number.

protected:
    void build(InputDevice& device) override;

private slots:
    void onEdit(const QString& text);

private:
    QWidget* createLineEdit(const InputDevice& device);
    QWidget* createSpinBox(const InputDevice& device);
    QDoubleSpinBox* spinBox() const;
    QLineEdit* lineEdit() const;
    void editInDialog(const InputDevice& device);

    std::unique_ptr<QLabel> m_caption;
    std::unique_ptr<QLabel> m_units;
    QPointer<QWidget> m_editor;
    QPointer<QWidget> m_pressedEditor; ///< Its press has opened a dialog; null: none is open.
    QString m_lastText;                ///< The last text that was passed on.
};
