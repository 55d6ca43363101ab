// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QVector>
#include <QWidget>

class QAction;
class QHBoxLayout;
class QPushButton;

namespace norvo {

/// The bar above a panel that is edited: a row of large keys, and one line that says what can be
/// done here, or what could not. As high as it is, whatever it says.
class EditorBar : public QWidget
{
    Q_OBJECT

public:
    explicit EditorBar(QWidget* parent = nullptr);

    /// A key that does the action, and looks as it does: enabled, checked. Its text is `text`, as
    /// the action's may be too long; the action's own is what screen readers say.
    QPushButton* addKey(QAction& action, const QString& text);
    /// The same, of a key that is left out where the bar is too narrow for all. The key that was
    /// added last goes first.
    void addSpareKey(QAction& action, const QString& text);
    void addGap(); ///< As wide as can be.
    void removeKeys();

    void setHint(const QString& text);
    /// Says it in the place of the hint for a while; an empty text ends that.
    void tellProblem(const QString& text);
    const QString& problem() const { return m_problem; }

    QSize minimumSizeHint() const override; ///< Without the keys that may be left out.

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showText();
    void showSpareKeys();

    QHBoxLayout* m_keys;
    QVector<QPushButton*> m_spare;
    QLabel* m_text;
    QString m_hint;
    QString m_problem;
};

} // namespace norvo
