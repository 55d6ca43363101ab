// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <optional>

class BaseDevice;

namespace norvo {

/// By which methods the value that an operator gives to a device is kept: full signatures, each of
/// one argument of the same type: double, int, bool or QString.
struct KeptMethods
{
    QString output;      ///< A signal of the device that tells it.
    QString input;       ///< A slot of the device that takes it.
    QString widgetInput; ///< A slot of its widget that takes it.
};

/// By which signal a display tells what it shows now.
struct ShownSignal
{
    QString signature;    ///< Full.
    bool isState = false; ///< It carries yes or no, which is shown as a colour alone.
};

/// How devices of a type take something from a hand.
enum class Control {
    None,  ///< A display, or a source: they take nothing.
    Asks,  ///< It can be asked first whether a hand means it.
    Held,  ///< It acts only while a hand is on it.
    Always ///< As one that is held, and it stops something: it is free unless the panel locks it.
};

/// What is known of device types beyond what the types declare themselves. This one knows nothing.
class TypeKnowledge
{
public:
    TypeKnowledge() = default;
    virtual ~TypeKnowledge() = default;
    Q_DISABLE_COPY(TypeKnowledge)

    /// Whether devices of the type send nothing that follows at once from what they are given, such
    /// as one that measures, waits, or asks a program. A cycle through one is not reported.
    virtual bool breaksCycles(const QString& /*type*/) const { return false; }
    /// Whether the type's initialise() only checks its parameters, so that a check may call it.
    /// What it reports is then an error of the check.
    virtual bool startsNothing(const QString& /*type*/) const { return false; }
    /// None where devices of the type keep no value.
    virtual std::optional<KeptMethods> keptMethods(const QString& /*type*/) const { return {}; }
    /// None where devices of the type are no displays, or say themselves that they have no value.
    virtual std::optional<ShownSignal> shownSignal(const QString& /*type*/) const { return {}; }
    /// What is not known may be a control.
    virtual Control control(const QString& /*type*/) const { return Control::Asks; }
    /// Makes names of files that stand in an included file relative to the panel's folder.
    virtual void rebaseFiles(PanelDescription& /*description*/) const {}
    /// Reports values in the file with which the device cannot do what its author means. The device
    /// has its parameters; files are looked for in the working folder.
    virtual void checkSense(const DeviceSetting& /*setting*/, const BaseDevice& /*device*/,
                            Diagnostics& /*diagnostics*/) const
    {}
    /// Reports displays with many curves that nobody has named.
    virtual void checkCurves(const PanelDescription& /*description*/,
                             Diagnostics& /*diagnostics*/) const
    {}
};

} // namespace norvo
