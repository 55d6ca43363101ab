// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/TypeKnowledge.h"

namespace norvo {

class Catalogue;

/// What the words tables know of device types, for a plan: ranges and relations of parameters,
/// files that must be there, and which types break cycles. Of a type without words nothing is said.
class SenseCheck : public TypeKnowledge
{
public:
    explicit SenseCheck(const Catalogue& catalogue) : m_catalogue(catalogue) {}

    bool breaksCycles(const QString& type) const override;
    bool startsNothing(const QString& type) const override;
    std::optional<KeptMethods> keptMethods(const QString& type) const override;
    std::optional<ShownSignal> shownSignal(const QString& type) const override;
    Control control(const QString& type) const override;
    void rebaseFiles(PanelDescription& description) const override;
    void checkSense(const DeviceSetting& setting, const BaseDevice& device,
                    Diagnostics& diagnostics) const override;
    void checkCurves(const PanelDescription& description, Diagnostics& diagnostics) const override;

private:
    const Catalogue& m_catalogue;
};

} // namespace norvo
