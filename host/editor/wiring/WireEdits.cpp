// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/WireEdits.h"

#include "host/editor/EditSession.h"
#include "host/editor/wiring/ports/PortList.h"
#include "host/panel/edit/ConnectionEdit.h"

#include <QCoreApplication>

namespace norvo {

namespace {

struct Words
{
    Q_DECLARE_TR_FUNCTIONS(norvo::WireEdits)
};

QString ends(const ConnectionSetting& connection, const QString& pattern)
{
    return pattern.arg(connection.from.device.text, connection.to.device.text);
}

QString deviceOf(const QString& end)
{
    return end.section('.', 0, 0);
}

} // namespace

QString WireEdits::whyFixed(const EditSession& session, const ConnectionSetting& connection)
{
    if (ConnectionEdit::indexOf(session.document(), connection) >= 0) {
        return {};
    }
    const auto& origin = connection.whole.place.origin;
    return origin && !origin->use.isEmpty()
               ? Words::tr("It is made %1: change it there").arg(origin->use)
               : Words::tr("It stands in another file");
}

QString WireEdits::add(EditSession& session, const WireChoice& choice)
{
    return session.change(
        Words::tr("Connect %1 to %2").arg(deviceOf(choice.from), deviceOf(choice.to)),
        [&](YamlEdit& edit) { return ConnectionEdit::add(edit, choice.from, choice.to); });
}

QString WireEdits::replace(EditSession& session, const ConnectionSetting& connection,
                           const WireChoice& choice)
{
    const int index = ConnectionEdit::indexOf(session.document(), connection);
    if (index < 0) {
        return whyFixed(session, connection);
    }
    return session.change(ends(connection, Words::tr("Change the connection of %1 to %2")),
                          [&](YamlEdit& edit) {
                              return ConnectionEdit::replace(edit, index, choice.from, choice.to);
                          });
}

QString WireEdits::remove(EditSession& session, const ConnectionSetting& connection)
{
    const int index = ConnectionEdit::indexOf(session.document(), connection);
    if (index < 0) {
        return whyFixed(session, connection);
    }
    return session.change(ends(connection, Words::tr("Disconnect %1 from %2")),
                          [&](YamlEdit& edit) { return ConnectionEdit::remove(edit, index); });
}

QString WireEdits::noteOn(const QString& circle)
{
    return circle.isEmpty() ? QString()
                            : Words::tr("Connected. This closes the circle %1; its values are "
                                        "passed on one after the other")
                                  .arg(circle);
}

} // namespace norvo
