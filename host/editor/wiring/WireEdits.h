// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace norvo {

class EditSession;
struct ConnectionSetting;
struct WireChoice;

/// The steps of wiring. Each returns as EditSession::change() does.
namespace WireEdits {

/// Why the connection cannot be edited here; empty: it can.
QString whyFixed(const EditSession& session, const ConnectionSetting& connection);

QString add(EditSession& session, const WireChoice& choice);
QString replace(EditSession& session, const ConnectionSetting& connection,
                const WireChoice& choice);
QString remove(EditSession& session, const ConnectionSetting& connection);

/// What there is to know about the connection between two devices once it is there; empty:
/// nothing.
QString noteOn(const QString& circle);

} // namespace WireEdits

} // namespace norvo
