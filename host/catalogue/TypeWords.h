// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/TypeKnowledge.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace norvo {

/// What a parameter's text stands for.
enum class ParamKind {
    Text,
    Lines, ///< A text of several lines.
    Number,
    WholeNumber,
    YesNo,
    Choice, ///< One of the options.
    List,   ///< Texts with a separator between them.
    Colour, ///< A name such as "orange" or a form such as "#ff8800".
    File,
    PictureFile,
    QmlFile,
    Command,   ///< A program and its arguments.
    TimeFormat ///< As QDateTime writes times: "hh:mm:ss".
};

/// As the words tables spell it: "whole number".
QString toString(ParamKind kind);

/// One parameter, for a panel's author.
struct ParamWords
{
    QString name;    ///< As declared.
    QString meaning; ///< Empty: not described.
    ParamKind kind = ParamKind::Text;
    QString defaultValue;
    QString unit;
    QStringList options; ///< Of the live type; empty: free.
    QString also;        ///< A text that is taken where the kind is a number: "no".
    std::optional<double> min;
    std::optional<double> above; ///< A minimum that the value may not be equal to.
    std::optional<double> max;
    /// The device cannot work outside the range, or without the file; else a warning.
    bool isErrorOutside = false;
    bool isKept = false;        ///< Its device stores it, across starts too.
    bool isOfEveryType = false; ///< The host gives it, as that of the place on the panel.
    QMap<QString, QStringList> enabledWhen; ///< Other parameter to its values; empty: always.

    bool isNumber() const { return kind == ParamKind::Number || kind == ParamKind::WholeNumber; }
    bool isFile() const
    {
        return kind == ParamKind::File || kind == ParamKind::PictureFile ||
               kind == ParamKind::QmlFile;
    }
    bool isInRange(double value) const; ///< NaN is in no range.
    QString range() const;              ///< "1 to 500", "at least 1", "above 0"; empty: any.
};

/// What two parameters must keep to: `smaller` < `larger`. A side that does not read as a number is
/// no breach.
struct Relation
{
    QString smaller; ///< Names of parameters, as declared.
    QString larger;
    bool mayBeEqual = false;
    bool isError = false; ///< The device cannot work otherwise; else a warning.

    bool holds(double smallerValue, double largerValue) const;
    QString toString() const; ///< "widget/minValue < widget/maxValue"
};

/// An output or an input.
struct MethodWords
{
    QString signature;        ///< "output(double,QString)"
    QString meaning;          ///< Empty: not described.
    bool isForWidget = false; ///< For the device's own widget; no concern of a panel's author.

    QString name() const { return signature.section('(', 0, 0); }
    /// What it carries, in a panel author's words: "number, text"; "pulse" for nothing.
    QString carries() const;
};

/// A device type: what the live type says of itself, and the words of its plug-in's table.
struct TypeWords
{
    QString key;
    QString title; ///< The key where the type has none.
    QString purpose;
    QString notes; ///< What else there is to know; may be empty.
    QStringList categories;
    bool hasWidget = false;
    QString curveInput;          ///< Each sender to it is a curve; empty: none.
    QString curveNameInput;      ///< Names the curve of its sender.
    QString curveAdvice;         ///< How a panel's author names one.
    bool hasLateMethods = false; ///< More outputs and inputs are known after its start only.
    /// It sends nothing that follows at once from what it is given: it measures, waits or asks.
    bool breaksCycles = false;
    bool takesPorts = false;  ///< A panel's author names outputs and inputs of its devices.
    QString outputDefinition; ///< What stands behind the name of such an output; may be empty.
    QString inputDefinition;
    bool drawsByOpenGl = false;       ///< Its widget may; a type without words may, too.
    bool startsNothing = false;       ///< Its initialise() only checks its parameters.
    std::optional<KeptMethods> kept;  ///< How the value that an operator gives is kept.
    std::optional<ShownSignal> shown; ///< What tells that a display has a value.
    Control control = Control::None;
    QVector<ParamWords> params; ///< In the order of declaration.
    QVector<MethodWords> outputs;
    QVector<MethodWords> inputs;
    QVector<Relation> relations;
    QString example; ///< A smallest panel, as the text of its file; may be empty.

    const ParamWords* param(const QString& name) const; ///< In any case; null when unknown.
};

} // namespace norvo
