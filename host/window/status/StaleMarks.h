// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace norvo {

class Panel;
class SourceWatch;

/// Over a display whose source is lost: hatched, and a plate that says so. Lets everything through
/// that is meant for the display, and follows it on its page.
class StaleMark : public QWidget
{
    Q_OBJECT

public:
    explicit StaleMark(QWidget& display); ///< Owned by the page that the display stands on.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();

    const QPointer<QWidget> m_display;
};

/// Marks what is wired to a lost source as long as it is lost.
class StaleMarks : public QObject
{
    Q_OBJECT

public:
    StaleMarks(const SourceWatch& watch, const Panel& panel);

private:
    void set(const QString& device, bool isStale);

    const Panel& m_panel;
    QHash<QString, QPointer<StaleMark>> m_marks;
};

} // namespace norvo
