// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QPointer>

class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace norvo {

class Scrim;

/// A page of the host's own over a dimmed panel, which runs on behind it and takes nothing
/// meanwhile. It has a title, a content, and a row of large keys, the last of which closes it, as
/// Escape does. Deleted when it is closed.
class Sheet : public QDialog
{
    Q_OBJECT

public:
    /// Over the window of `opener`; `opener` gets the focus back.
    Sheet(QWidget& opener, const QString& title);
    ~Sheet() override;

    QVBoxLayout& content() { return *m_content; }
    /// A key of the row, before those that are there; large enough for a finger.
    QPushButton* addKey(const QString& text);
    QPushButton* closeKey() const { return m_closeKey; }

    /// Shows it in the middle of the window: as large as `preferred`, or what the window leaves. An
    /// empty size takes all that the window leaves.
    void present(const QSize& preferred = {});

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override; ///< Draws the edge.
    void done(int result) override;

private:
    QPushButton* makeKey(const QString& text);
    void place();

    const QPointer<QWidget> m_opener;
    const QPointer<QWidget> m_window;
    QPointer<Scrim> m_scrim;
    QSize m_preferred;
    QVBoxLayout* m_content;
    QHBoxLayout* m_keys;
    QPushButton* m_closeKey;
};

} // namespace norvo
