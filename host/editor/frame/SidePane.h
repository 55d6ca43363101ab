// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>

class QVBoxLayout;

namespace norvo {

/// The pane beside a page that is edited. Of one width, whatever it holds.
class SidePane : public QWidget
{
    Q_OBJECT

public:
    explicit SidePane(QWidget* parent = nullptr);

    /// Shows it in the place of what was shown, which is deleted; null hides the pane.
    void show(QWidget* content);
    QWidget* content() const { return m_content; } ///< Null: it is hidden.
    void enter(const QString& field); ///< Gives the focus to what bears that object name, if any.

    QSize sizeHint() const override; ///< Follows the width of the window.

private:
    QVBoxLayout* m_layout;
    QPointer<QWidget> m_content;
};

} // namespace norvo
