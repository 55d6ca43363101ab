// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/ParamEditor.h"

#include "host/catalogue/TypeWords.h"
#include "host/editor/form/entry/ChoiceEditor.h"
#include "host/editor/form/entry/ColourEditor.h"
#include "host/editor/form/entry/FileEditor.h"
#include "host/editor/form/entry/LinesEditor.h"
#include "host/editor/form/entry/NumberEditor.h"
#include "host/editor/form/entry/SwitchEditor.h"
#include "host/window/look/TouchSize.h"

#include <QGuiApplication>
#include <QPalette>

namespace norvo {

ParamEditor* ParamEditor::make(const ParamWords& words, bool hasLines)
{
    if (hasLines || words.kind == ParamKind::Lines) {
        return new LinesEditor(words);
    }
    switch (words.kind) {
    case ParamKind::Number:
    case ParamKind::WholeNumber:
        return new NumberEditor(words);
    case ParamKind::YesNo:
        return new SwitchEditor(words);
    case ParamKind::Choice:
        return new ChoiceEditor(words);
    case ParamKind::Colour:
        return new ColourEditor(words);
    case ParamKind::File:
    case ParamKind::PictureFile:
    case ParamKind::QmlFile:
        return new FileEditor(words);
    default:
        return new LineEditor(words);
    }
}

int ParamEditor::target()
{
    return TouchSize::pixels(PanelLook::Touch::Fingers, *QGuiApplication::primaryScreen());
}

QString ParamEditor::differentValues()
{
    return tr("different values");
}

void ParamEditor::grey(QWidget& widget, bool isGreyed)
{
    QPalette palette; // Inherits what is not set.
    if (isGreyed) {
        const QColor quiet = widget.parentWidget()->palette().color(QPalette::PlaceholderText);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            palette.setColor(role, quiet);
        }
    }
    widget.setPalette(palette);
}

} // namespace norvo
