// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "../ShownPanel.h"
#include "../../services/access/TestPins.h"
#include "ModalDialog.h"
#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/services/access/Access.h"
#include "host/services/signals/SignalTap.h"
#include "host/window/access/AccessFace.h"
#include "host/window/accessible/Accessibility.h"
#include "host/window/touch/WheelGuard.h"

#include "norvo/BaseDevice.h"

#include <QQuickWidget>

/// A panel of real devices in its window, with its lock and its questions.
class GuardedPanel : public ShownPanel
{
public:
    explicit GuardedPanel(const QByteArray& text)
        : ShownPanel(text, {900, 1500}), face(knowledge(), {}, window)
    {
        face.follow(panelOf(text));
        face.show(panel);
        QApplication::setActiveWindow(&window);
        for (const norvo::Node* node : panel.nodes()) {
            listen(*node->device());
        }
    }

    /// "access: ..." with two PINs, to stand before the rest of a panel.
    static QByteArray pinsInFile()
    {
        return QString("access: {roles: {operate: \"%1\", engineer: \"%2\"}}\n")
            .arg(pins::kOperateHash, pins::kEngineerHash)
            .toUtf8();
    }

    void unlock(const QString& pin = pins::kOperate)
    {
        QVERIFY(face.access()->tryPin(pin, norvo::Role::Operate));
        QTRY_VERIFY(!face.access()->isLocked());
    }

    /// What a hand touches of the device.
    QWidget* part(const QString& id) const
    {
        const BaseWidget* const widget = panel.widget(id);
        auto* const scene = widget ? widget->findChild<QQuickWidget*>() : nullptr;
        return scene ? scene : widget ? widget->focusProxy() : nullptr;
    }

    /// What the devices have sent, "pump toggled(bool)" and so on.
    QStringList sent;
    const norvo::WheelGuard wheelGuard{*qApp};
    norvo::AccessFace face;

private:
    static const norvo::TypeKnowledge& knowledge()
    {
        static const norvo::Catalogue catalogue(builtTypes());
        static const norvo::SenseCheck check(catalogue);
        return check;
    }

    void listen(BaseDevice& device)
    {
        for (const QString& signal : device.grabMethods(QString(), QMetaMethod::Signal, true)) {
            const QString line = device.objectName() + ' ' + signal;
            norvo::SignalTap::open(
                device, signal, [this, line](const auto&) { sent.append(line); }, m_owner);
        }
    }

    QObject m_owner;
};
