// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// Shows a fixed text, numbers written into a template, or the last text that arrived.
class Label : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kFontSize[] = "widget/fontSize";
    static constexpr char kAlignment[] = "widget/alignment";

    Label();

    const QString& getValue() const { return m_text; } ///< The current text or template.

    /// `text` as it is shown before any value came: where it contains "%0", an em dash stands in
    /// the place of its lowest-numbered placeholder; any other text is returned as it is.
    static QString withoutValue(const QString& text);

    bool initialise() override;
    void postInitialisation() override; ///< Emits the text as it is shown without a value.
    BaseWidget* createWidget() override;

signals:
    void outputWarning(bool warning);
    void output(QString val); ///< What is to be shown.

public slots:
    void inputWarning(bool warning);
    void input(QString val); ///< Replaces the text, a template too.
    void input(double val);  ///< Written into the template, which stays; NaN is shown as "-".

private:
    QString m_text;
    int m_precision = 0;          ///< Digits after the point.
    bool m_hasPlaceholder = true; ///< Until the text turns out to have none.
};
