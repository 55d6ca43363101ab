// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/look/PanelLook.h"

#include <QWidget>

class QHBoxLayout;

namespace norvo {

/// The line at the bottom of the window for what concerns the whole panel: alarms, sources, the
/// lock. As high as one key, and there only while something in it is to be seen.
class PanelStrip : public QWidget
{
    Q_OBJECT

public:
    explicit PanelStrip(QWidget* parent = nullptr);

    void setTouch(PanelLook::Touch touch); ///< How high it is: as high as a key that is touched.

    /// Takes the part over: it is seen until hide() is called. The one with `stretch` gets the
    /// width that the others leave, and stands first.
    void addPart(QWidget* part, int stretch = 0);

protected:
    bool eventFilter(QObject* part, QEvent* event) override;

private:
    void followParts();

    QHBoxLayout* m_parts;
};

} // namespace norvo
