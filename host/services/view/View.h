// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/view/ViewSettings.h"

#include <functional>
#include <memory>

class QWidget;

namespace norvo {

/// What is looked at.
struct ViewSubject
{
    QWidget& window;                    ///< Its picture, without dialogs over it.
    QString title;                      ///< In one line.
    std::function<QByteArray()> values; ///< All values as JSON, now; on the GUI thread.
};

/// Serves pictures and values of a panel to viewers until it is deleted. Nothing that a viewer
/// sends reaches the panel. It lies in a library of its own, because linking Qt's network costs
/// every start, and few panels are looked at from afar.
class View
{
public:
    View() = default;
    virtual ~View() = default;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    virtual QString url() const = 0; ///< Of its page, without the token.
};

/// Null where it cannot be served; `error` then says why.
std::unique_ptr<View> makeView(const ViewSettings& settings, const ViewSubject& subject,
                               QString& error);

/// What the library exports, under the name kMakeViewFunction; the caller owns the view.
using MakeView = View* (*)(const ViewSettings& settings, const ViewSubject& subject,
                           QString& error);
constexpr char kMakeViewFunction[] = "norvoMakeView";

} // namespace norvo
