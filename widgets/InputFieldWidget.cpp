// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/InputFieldWidget.h"

#include "devices/LenientNumber.h"
#include "norvo/NumpadDialog.h"
#include "norvo/ScreenKeyboardDialog.h"
#include "norvo/Truncation.h"
#include "widgets/Looks.h"
#include "widgets/NumberEditors.h"
#include "widgets/ShownText.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QMouseEvent>

#include <optional>

namespace {

std::unique_ptr<QLabel> createLabel(const QString& text, int pointSize,
                                    QSizePolicy::Policy horizontal)
{
    auto label = std::make_unique<QLabel>();
    norvo::showText(*label, text);
    label->setFont(norvo::Looks::captionFont(pointSize));
    label->setSizePolicy(horizontal, QSizePolicy::Minimum);
    return label;
}

QValidator* createValidator(const InputDevice& device, QObject* owner)
{
    if (device.getType() == InputDevice::kDoubleType) {
        return new NumberValidator(device.getMinValue(), device.getMaxValue(), device.getDecimals(),
                                   owner);
    }
    if (device.getType() == InputDevice::kIntType) {
        return new IntegerValidator(norvo::truncatedToInt(device.getMinValue()),
                                    norvo::truncatedToInt(device.getMaxValue()), owner);
    }
    return nullptr;
}

/// Does what setText() does, but nothing where that would leave all as it is: a number from the
/// wiring arrives twice, as text and as number, and may cost no more than twice a bare setText().
void showText(QLineEdit& line, const QString& text)
{
    const bool isShown = line.text() == text && line.cursorPosition() == text.size() &&
                         !line.hasSelectedText() && !line.isUndoAvailable() &&
                         !line.isRedoAvailable();
    if (!isShown) {
        line.setText(text);
    }
}

// What the operator enters in a dialog; nothing where it is cancelled.

std::optional<double> askForNumber(const InputDevice& device, bool forSpinBox)
{
    const QString title = InputFieldWidget::tr("Input value");
    bool ok = false;
    double number = 0;
    if (forSpinBox || device.getType() == InputDevice::kDoubleType) {
        const double current =
            forSpinBox ? device.getCurrentNumber() : device.getCurrentString().toDouble();
        number = NumpadDialog::getDouble(nullptr, title, QString(), current, device.getMinValue(),
                                         device.getMaxValue(), device.getDecimals(), &ok,
                                         Qt::WindowFlags(), device.getValueStep());
    } else if (device.getType() == InputDevice::kIntType) {
        number = NumpadDialog::getInt(nullptr, title, QString(), device.getCurrentString().toInt(),
                                      norvo::truncatedToInt(device.getMinValue()),
                                      norvo::truncatedToInt(device.getMaxValue()),
                                      norvo::truncatedToInt(device.getValueStep()), &ok,
                                      Qt::WindowFlags());
    }
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<QString> askForText(const QString& current)
{
    bool ok = false;
    const QString text =
        ScreenKeyboardDialog::getText(nullptr, InputFieldWidget::tr("Input value"), current,
                                      Qt::WindowFlags(), &ok, QString(), QString(), {});
    return ok ? std::optional(text) : std::nullopt;
}

} // namespace

InputFieldWidget::~InputFieldWidget()
{
    if (m_pressedEditor) {
        m_pressedEditor->setParent(nullptr); // eventFilter() deletes it
    }
}

void InputFieldWidget::build(InputDevice& device)
{
    connect(this, SIGNAL(output(QString)), &device, SLOT(wgInput(QString)));
    connect(&device, SIGNAL(wgOutput(QString)), this, SLOT(input(QString)));
    connect(this, SIGNAL(output(double)), &device, SLOT(wgInput(double)));
    connect(&device, SIGNAL(wgOutput(double)), this, SLOT(input(double)));

    m_editor =
        device.getType() == InputDevice::kSpinType ? createSpinBox(device) : createLineEdit(device);
    m_editor->setStyleSheet(norvo::Looks::kInputField);
    m_editor->setAccessibleName(device.getName());
    setFocusProxy(m_editor);

    m_caption = createLabel(device.getName(), 25, QSizePolicy::Expanding);
    m_units = createLabel(device.getUnits(), 30, QSizePolicy::Minimum);
    setLayout(device.getLayout() == InputDevice::kHorizontalLayout ? Qt::Horizontal : Qt::Vertical);
}

QWidget* InputFieldWidget::createLineEdit(const InputDevice& device)
{
    auto* const editor = new QLineEdit(device.getCurrentString());
    connect(editor, SIGNAL(textChanged(const QString)), this, SLOT(onEdit(const QString&)));
    editor->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    editor->setValidator(createValidator(device, editor));
    const bool isText = device.getType() == InputDevice::kStringType;
    if (isText ? device.getUseScreenKeyboard() : device.getUseScreenNumpad()) {
        editor->installEventFilter(this);
    }
    return editor;
}

QWidget* InputFieldWidget::createSpinBox(const InputDevice& device)
{
    auto* const editor = new NumberSpinBox;
    editor->setMinimum(device.getMinValue());
    editor->setMaximum(device.getMaxValue());
    editor->setSingleStep(device.getValueStep());
    editor->setDecimals(device.getDecimals());
    editor->setValue(device.getCurrentNumber());
    connect(editor, SIGNAL(valueChanged(const QString)), this, SLOT(onEdit(const QString&)));
    connect(editor, SIGNAL(valueChanged(double)), this, SIGNAL(output(double)));
    editor->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    if (device.getUseScreenNumpad()) {
        const auto innerEditors =
            editor->findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
        for (QLineEdit* innerEditor : innerEditors) {
            innerEditor->installEventFilter(this);
        }
    }
    return editor;
}

QDoubleSpinBox* InputFieldWidget::spinBox() const
{
    return qobject_cast<QDoubleSpinBox*>(m_editor.data());
}

QLineEdit* InputFieldWidget::lineEdit() const
{
    return qobject_cast<QLineEdit*>(m_editor.data());
}

void InputFieldWidget::setLayout(Qt::Orientation orientation)
{
    if (!m_editor) {
        return;
    }
    const bool isVertical = orientation == Qt::Vertical;
    QGridLayout* const grid = BaseWidget::getLayout();
    if (!m_caption->text().isEmpty()) {
        grid->addWidget(m_caption.get(), 0, 0, 1, isVertical ? 2 : 1,
                        isVertical ? Qt::AlignBottom : Qt::AlignLeft);
    }
    if (isVertical) {
        grid->addWidget(m_editor, 1, 0, Qt::AlignTop);
    } else {
        grid->addWidget(m_editor, 0, 1);
    }
    if (!m_units->text().isEmpty()) {
        grid->addWidget(m_units.get(), isVertical ? 1 : 0, isVertical ? 1 : 2,
                        isVertical ? Qt::AlignVCenter : Qt::AlignRight);
    }
}

void InputFieldWidget::setMinMax(double min, double max)
{
    if (QDoubleSpinBox* const editor = spinBox()) {
        editor->setMinimum(min);
        editor->setMaximum(max);
    }
}

void InputFieldWidget::setIncrement(double step)
{
    if (QDoubleSpinBox* const editor = spinBox()) {
        editor->setSingleStep(step);
    }
}

void InputFieldWidget::input(double value)
{
    if (QDoubleSpinBox* const editor = spinBox()) {
        editor->setValue(value);
    } else if (QLineEdit* const line = lineEdit()) {
        showText(*line, QString::number(value, 'g', 6));
    }
}

void InputFieldWidget::input(QString text)
{
    if (QDoubleSpinBox* const editor = spinBox()) {
        if (const std::optional<double> number = parseNumber(text)) {
            editor->setValue(*number);
        }
    } else if (QLineEdit* const line = lineEdit()) {
        showText(*line, text);
    }
}

void InputFieldWidget::onEdit(const QString& text)
{
    if (text == m_lastText) {
        return;
    }
    m_lastText = text;
    emit output(text);
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (ok) {
        emit output(number);
    }
}

bool InputFieldWidget::eventFilter(QObject* watched, QEvent* event)
{
    const InputDevice* const inputDevice = device();
    if (!inputDevice || event->type() != QEvent::MouseButtonPress ||
        !dynamic_cast<QMouseEvent*>(event)) {
        return false;
    }
    // The panel may go under the open dialog; the editor stays until the press has reached it.
    m_pressedEditor = qobject_cast<QWidget*>(watched);
    if (m_pressedEditor && m_pressedEditor->parent() != this) {
        m_pressedEditor = m_pressedEditor->parentWidget(); // the spin box around it
    }
    const QPointer<QWidget> editor(m_pressedEditor);
    const QPointer<InputFieldWidget> self(this);
    editInDialog(*inputDevice);
    if (self) {
        m_pressedEditor = nullptr;
    } else if (editor) {
        editor->deleteLater();
    }
    return false;
}

void InputFieldWidget::editInDialog(const InputDevice& device)
{
    // Under the open dialog the widget may go, or get another editor.
    const QPointer<InputFieldWidget> self(this);
    const QWidget* const asked = m_editor;
    std::optional<double> number;
    std::optional<QString> text;
    if (device.getType() != InputDevice::kStringType) {
        number = askForNumber(device, spinBox());
    } else if (lineEdit()) {
        text = askForText(lineEdit()->text());
    }
    if (!self || m_editor != asked) {
        return;
    }
    if (number && spinBox()) {
        spinBox()->setValue(*number);
    } else if (number || text) {
        lineEdit()->setText(text ? *text : QString::number(*number, 'g', 8));
    }
}
