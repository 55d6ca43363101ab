// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/EditedPanel.h"
#include "host/editor/wiring/DeviceShelf.h"
#include "host/editor/wiring/WireCanvas.h"

#include <QListWidget>
#include <QPushButton>
#include <QtTest>

/// A panel under a canvas, driven by hand.
struct WiredPanel : EditedPanel
{
    explicit WiredPanel(const QByteArray& text, const QSize& size = {800, 480})
        : EditedPanel(text, size), canvas(new norvo::WireCanvas(*session, &pages()))
    {
        QObject::connect(canvas, &norvo::WireCanvas::problem,
                         [this](const QString& said) { problems.append(said); });
        settle();
    }
    ~WiredPanel() { delete canvas; }

    void settle() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    void tap(const QPoint& point) const
    {
        QTest::mouseClick(canvas, Qt::LeftButton, {}, point);
        settle();
    }
    /// Anywhere on the device.
    void tapDevice(const QString& id) const
    {
        if (canvas->scene().isOnPage(id)) {
            tap(canvas->scene().deviceRect(id).center());
        } else {
            norvo::DeviceShelf& shelf = canvas->shelf();
            QTest::mouseClick(shelf.viewport(), Qt::LeftButton, {},
                              shelf.itemRect(id).center() - shelf.viewport()->pos());
            settle();
        }
    }
    QPushButton* key(const QString& port) const { return canvas->findChild<QPushButton*>(port); }
    void tapKey(const QString& port) const
    {
        QPushButton* const found = key(port);
        QVERIFY2(found && found->isVisible(), qPrintable(port));
        QTest::mouseClick(found, Qt::LeftButton);
        settle();
    }
    QListWidget* list() const { return window.findChild<QListWidget*>("pick"); }
    QStringList connections() const
    {
        QStringList texts;
        for (const auto& one : description().connections) {
            texts.append(one.whole.text);
        }
        return texts;
    }
    bool hasSaid(const QString& text) const { return !problems.filter(text).isEmpty(); }

    norvo::WireCanvas* canvas;
    QStringList problems;
};
