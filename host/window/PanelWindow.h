// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"

#include <QWidget>

#include <functional>
#include <utility>

class QHBoxLayout;
class QScrollArea;

namespace norvo {

class PanelStrip;

/// The program's window: a page for the panel, or what is wrong with it. Scroll bars come only
/// where the page does not fit.
///
/// F11 changes between the whole screen and a window, Escape leaves the whole screen, unless the
/// window is to keep it.
class PanelWindow : public QWidget
{
    Q_OBJECT

public:
    static constexpr QSize kMinSize{800, 480}; ///< The size that a page gets at least.

    explicit PanelWindow(const QString& title);

    QWidget* page() const; ///< Empty at first, without layout; the window owns it.
    PanelStrip& strip() const { return *m_strip; } ///< Below the page, and never scaled.
    void addBar(QWidget* bar);   ///< Above the page, as wide as the window. Taken over.
    void addSide(QWidget* pane); ///< Beside the page, at its right. Taken over.
    /// Replaces the page. It has a key to read the file again where readAgainRequested() is heard.
    void showErrors(const Diagnostics& diagnostics);
    /// From now on the page is as large as `design` says, and drawn so much larger or smaller that
    /// the window holds the whole of it.
    void scalePage(const QSize& design);
    void unscalePage(); ///< Back to the page's own size; nothing where it has it.

    /// Gives the window the size that its page asks for, between kMinSize and `limit`.
    void fit(const QSize& limit);
    /// Shows the window on the whole screen, and follows when that changes its size.
    void coverScreen();
    void keepScreen(); ///< Covers it to the end: no key leaves it, and closing does nothing.

    /// Asked when somebody closes the window; false: it stays open.
    void setMayClose(std::function<bool()> mayClose) { m_mayClose = std::move(mayClose); }

signals:
    void closed();
    void readAgainRequested(); ///< By the key on the page of errors, or F5.

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fillScreen();
    void leaveScreen();

    QWidget* m_page;
    QScrollArea* m_scroll; ///< Around the page, or around the view that scales it.
    QHBoxLayout* m_row;    ///< Of the page and what stands beside it.
    PanelStrip* m_strip;
    QRect m_windowGeometry; ///< Before the whole screen was covered.
    QMetaObject::Connection m_screenChange;
    bool m_isKept = false; ///< On the whole screen.
    std::function<bool()> m_mayClose;
};

} // namespace norvo
