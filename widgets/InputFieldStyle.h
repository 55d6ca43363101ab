#pragma once

/// The look of an input field's spin box; a line editor is left as it is.
inline constexpr char kInputFieldStyle[] = R"(
    QAbstractSpinBox {
        background-color: green;
        color: white;
        border: 1px solid #222;
        border-radius: 6px;
        font-size: 60px;
        height: 64px;
        min-width: 180px;
        padding-right: 40px;
        
    }

    QAbstractSpinBox::up-arrow,
    QAbstractSpinBox::down-arrow {
        subcontrol-origin: content;
        width: 40px;
        height: 32px;
    }

    QAbstractSpinBox::up-arrow {
        image: url(:/icons/norvogui_collapse);
    }

    QAbstractSpinBox::down-arrow {
        image: url(:/icons/norvogui_expand);
    }

    QAbstractSpinBox::up-button,
    QAbstractSpinBox::down-button {
        subcontrol-origin: border;
        background: #eaebec;
        border: 1px solid #555;
        width: 40px;
        height: 32px;
        margin: 0;
        padding: 0;
        position: absolute;
    }

    QAbstractSpinBox::up-button {
        subcontrol-position: top right;
        border-top-left-radius: 4px;
        border-bottom-left-radius: 0px;
        border-top-right-radius: 4px;
        border-bottom-right-radius: 0px;
    }

    QAbstractSpinBox::down-button {
        subcontrol-position: bottom right;
        right: 0px;
        border-top: none;
        border-top-left-radius: 0px;
        border-bottom-left-radius: 4px;
        border-top-right-radius: 0px;
        border-bottom-right-radius: 4px;
    }

    QAbstractSpinBox::up-button:hover,
    QAbstractSpinBox::down-button:hover {
        background: #ccc;
    }

    QAbstractSpinBox::up-button:pressed,
    QAbstractSpinBox::down-button:pressed {
        background: #aaa;
    }
)";
