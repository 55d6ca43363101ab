// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace norvo {

struct ParamWords;

/// An editor of one parameter's text, as its kind asks for. What is typed into bears the
/// parameter's name as object name.
class ParamEditor : public QWidget
{
    Q_OBJECT

public:
    enum class Shown {
        Value,
        Default,  ///< The text is what the parameter is by default: greyed.
        Different ///< Of several devices, whose texts differ: none is shown.
    };

    /// Editor for the kind of the parameter; `hasLines`: its text has several lines whatever its
    /// kind.
    static ParamEditor* make(const ParamWords& words, bool hasLines);

    static int target(); ///< The least size of a key, in pixels.

    virtual QString text() const = 0;
    virtual void showText(const QString& text, Shown how) = 0;

signals:
    void typed();   ///< Some of a text, which may go on.
    void stepped(); ///< A whole value, of which more may follow.
    void entered(); ///< The entry is over, whether or not something was typed.

protected:
    ParamEditor() = default;

    static QString differentValues();                 ///< In words.
    static void grey(QWidget& widget, bool isGreyed); ///< As a text that nobody has set.
};

} // namespace norvo
