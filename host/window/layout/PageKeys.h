// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVector>
#include <QWidget>

class QPushButton;
class QTabWidget;

namespace norvo {

/// A key for each tab, in as many lines as they need: all are seen, and large enough to touch.
/// Ctrl+PageUp and Ctrl+PageDown go to the tab before and behind.
class PageKeys : public QWidget
{
    Q_OBJECT

public:
    /// Stands for the tabs' own bar, which it hides. `keySize` is the least height of a key, in
    /// pixels.
    PageKeys(QTabWidget& tabs, int keySize);

    QPushButton* key(int tab) const { return m_keys.value(tab); } ///< Null: there is none.

    QSize sizeHint() const override;        ///< In one line.
    QSize minimumSizeHint() const override; ///< Of one key.

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QPushButton* makeKey(int index);
    void go(int by);
    void takeHeight();
    int keysInLine(int width) const;

    QTabWidget& m_tabs;
    QVector<QPushButton*> m_keys;
    QSize m_keySize; ///< Of each: that of the largest.
};

} // namespace norvo
