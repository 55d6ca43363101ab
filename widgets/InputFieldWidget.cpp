#include "widgets/InputFieldWidget.h"

#include "devices/InputDevice.h"
#include "devices/LenientNumber.h"
#include "norvo/NumpadDialog.h"
#include "norvo/ScreenKeyboardDialog.h"
#include "norvo/Truncation.h"
#include "widgets/InnerControl.h"
#include "widgets/InputFieldStyle.h"

#include <QDoubleSpinBox>
#include <QDoubleValidator>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

namespace {

constexpr int kThin = 3; ///< Of 0 to 99.

std::unique_ptr<QLabel> createLabel(const QString& text, int pointSize,
                                    QSizePolicy::Policy horizontal)
{
    auto label = std::make_unique<QLabel>(text);
    label->setFont(QFont("Arial", pointSize, kThin, false));
    label->setSizePolicy(horizontal, QSizePolicy::Minimum);
    return label;
}

QValidator* createValidator(const InputDevice& inputDevice, QObject* owner)
{
    if (inputDevice.getType() == InputDevice::kDoubleType) {
        return new QDoubleValidator(inputDevice.getMinValue(), inputDevice.getMaxValue(),
                                    inputDevice.getDecimals(), owner);
    }
    if (inputDevice.getType() == InputDevice::kIntType) {
        return new QIntValidator(norvo::truncatedToInt(inputDevice.getMinValue()),
                                 norvo::truncatedToInt(inputDevice.getMaxValue()), owner);
    }
    return nullptr;
}

/// Does what setText() does, but nothing where that would leave all as it is: a number from the
/// wiring arrives twice, as text and as number.
void showText(QLineEdit& line, const QString& text)
{
    const bool isShown = line.text() == text && line.cursorPosition() == text.size() &&
                         !line.hasSelectedText() && !line.isModified() && !line.isUndoAvailable() &&
                         !line.isRedoAvailable();
    if (!isShown) {
        line.setText(text);
    }
}

QString editedNumber(double number)
{
    return QString::number(number, 'g', 8);
}

} // namespace

InputFieldWidget::InputFieldWidget(BaseGuiDevice* device, QWidget* parent)
    : BaseWidget(device, parent)
{}

InputFieldWidget::~InputFieldWidget() = default;

void InputFieldWidget::initialise()
{
    auto* const inputDevice = compatibleDevice<InputDevice>(device(), *this);
    if (!inputDevice) {
        return;
    }
    connect(this, SIGNAL(output(QString)), inputDevice, SLOT(wgInput(QString)));
    connect(inputDevice, SIGNAL(wgOutput(QString)), this, SLOT(input(QString)));
    connect(this, SIGNAL(output(double)), inputDevice, SLOT(wgInput(double)));
    connect(inputDevice, SIGNAL(wgOutput(double)), this, SLOT(input(double)));

    m_editor = inputDevice->getType() == InputDevice::kSpinType ? createSpinBox(*inputDevice)
                                                                : createLineEdit(*inputDevice);
    m_editor->setStyleSheet(kInputFieldStyle);
    m_editor->setAccessibleName(inputDevice->getName());
    setFocusProxy(m_editor);

    m_caption = createLabel(inputDevice->getName(), 25, QSizePolicy::Expanding);
    m_units = createLabel(inputDevice->getUnits(), 30, QSizePolicy::Minimum);
    setLayout(inputDevice->getLayout() == InputDevice::kHorizontalLayout ? Qt::Horizontal
                                                                         : Qt::Vertical);
    setInitialised(true);
}

QWidget* InputFieldWidget::createLineEdit(const InputDevice& inputDevice)
{
    auto* const editor = new QLineEdit(inputDevice.getCurrentString());
    connect(editor, SIGNAL(textChanged(const QString)), this, SLOT(onEdit(const QString&)));
    editor->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    editor->setLocale(QLocale::c()); // a decimal point is a point, as everywhere in the wiring
    if (QValidator* const validator = createValidator(inputDevice, editor)) {
        validator->setLocale(editor->locale());
        editor->setValidator(validator);
    }
    const bool isText = inputDevice.getType() == InputDevice::kStringType;
    if (isText ? inputDevice.getUseScreenKeyboard() : inputDevice.getUseScreenNumpad()) {
        editor->installEventFilter(this);
    }
    return editor;
}

QWidget* InputFieldWidget::createSpinBox(const InputDevice& inputDevice)
{
    auto* const editor = new QDoubleSpinBox;
    editor->setLocale(QLocale::c());
    editor->setMinimum(inputDevice.getMinValue());
    editor->setMaximum(inputDevice.getMaxValue());
    editor->setSingleStep(inputDevice.getValueStep());
    editor->setDecimals(inputDevice.getDecimals());
    editor->setValue(inputDevice.getCurrentNumber());
    connect(editor, SIGNAL(valueChanged(const QString)), this, SLOT(onEdit(const QString&)));
    connect(editor, SIGNAL(valueChanged(double)), this, SIGNAL(output(double)));
    editor->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    if (inputDevice.getUseScreenNumpad()) {
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
    return dynamic_cast<QDoubleSpinBox*>(m_editor.data());
}

QLineEdit* InputFieldWidget::lineEdit() const
{
    return dynamic_cast<QLineEdit*>(m_editor.data());
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
        if (const std::optional<double> number = readLeniently(text)) {
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
    const auto* const inputDevice = dynamic_cast<InputDevice*>(device());
    if (!inputDevice || event->type() != QEvent::MouseButtonPress ||
        !dynamic_cast<QMouseEvent*>(event)) {
        return false;
    }
    const QPointer<QObject> pressed(watched);
    editInDialog(*inputDevice);
    return pressed.isNull(); // gone with its panel under the open dialog: nobody is left to get it
}

void InputFieldWidget::editInDialog(const InputDevice& inputDevice)
{
    const QPointer<InputFieldWidget> self(this);
    const QString title = tr("Input value");
    const QString type = inputDevice.getType();
    const double min = inputDevice.getMinValue();
    const double max = inputDevice.getMaxValue();
    const double step = inputDevice.getValueStep();
    bool ok = false;
    if (type == InputDevice::kStringType) {
        if (const QLineEdit* const line = lineEdit()) {
            const QString text = ScreenKeyboardDialog::getText(
                nullptr, title, line->text(), Qt::WindowFlags(), &ok, QString(), QString(), {});
            if (ok && self) {
                lineEdit()->setText(text);
            }
        }
    } else if (spinBox()) {
        const double number =
            NumpadDialog::getDouble(nullptr, title, QString(), inputDevice.getCurrentNumber(), min,
                                    max, inputDevice.getDecimals(), &ok, Qt::WindowFlags(), step);
        if (ok && self) {
            spinBox()->setValue(number);
        }
    } else if (type == InputDevice::kDoubleType) {
        const double number = NumpadDialog::getDouble(
            nullptr, title, QString(), inputDevice.getCurrentString().toDouble(), min, max,
            inputDevice.getDecimals(), &ok, Qt::WindowFlags(), step);
        if (ok && self) {
            lineEdit()->setText(editedNumber(number));
        }
    } else if (type == InputDevice::kIntType) {
        const int number =
            NumpadDialog::getInt(nullptr, title, QString(), inputDevice.getCurrentString().toInt(),
                                 norvo::truncatedToInt(min), norvo::truncatedToInt(max),
                                 norvo::truncatedToInt(step), &ok, Qt::WindowFlags());
        if (ok && self) {
            lineEdit()->setText(editedNumber(number));
        }
    }
}
