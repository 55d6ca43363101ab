// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtTest>
#include <QTouchDevice>
#include <QWidget>

/// A touch screen; one for the life of the test program.
inline QTouchDevice* touchScreen()
{
    static QTouchDevice* const device = QTest::createTouchDevice();
    return device;
}

/// A window with two widgets of that class side by side, on view and active.
template <class Key>
class TwoKeys : public QWidget
{
public:
    TwoKeys() : left(new Key("left", this)), right(new Key("right", this))
    {
        resize(400, 100);
        left->setGeometry(0, 0, 150, 100);
        right->setGeometry(200, 0, 150, 100);
        show();
        activateWindow();
        if (!QTest::qWaitForWindowActive(this)) {
            qWarning("the window is not active");
        }
    }

    Key* const left;
    Key* const right;
};
