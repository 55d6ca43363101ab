// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

#include <optional>

/// A list of choices. A choice leaves as its index and as its text; other devices can make it, too.
///
/// What is held is what came in last, be it in the list or not.
class DropDownListDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kEmitOnInit[] = "emitOnInit";
    static constexpr char kLabel[] = "widget/label";
    static constexpr char kLabelSize[] = "widget/labelSize";
    static constexpr char kSize[] = "widget/size";

    DropDownListDevice();

    std::optional<int> getIndex() const { return m_index; }
    std::optional<QString> getItem() const { return m_item; }

    /// The choices as the parameters say: parts of one text, empty ones left out, the separator in
    /// any case. An empty separator makes a choice of every single character.
    QStringList choices();

    bool initialise() override; ///< Fails when there are no choices.
    BaseWidget* createWidget() override;

signals:
    void output(int index);
    void output(double index);
    void output(QString item);             ///< Only for an item that came as a text.
    void currentTextChanged(QString item); ///< The operator's choice.

public slots: // what is held already is not passed on again
    void input(int index);
    void input(double index); ///< Rounded, halves upward; NaN counts as 0.
    void input(QString item);

private:
    std::optional<int> m_index;
    std::optional<QString> m_item;
    bool m_isPassingIndex = false;
    bool m_isPassingItem = false;
};
