// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/marks/Overlay.h"

#include <QHash>
#include <QPointer>

namespace norvo {

class Panel;
class SourceWatch;

/// Over a display whose source is lost: hatched, and a plate that says so.
class StaleMark : public Overlay
{
    Q_OBJECT

public:
    explicit StaleMark(QWidget& display);

protected:
    void paintEvent(QPaintEvent* event) override;
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
