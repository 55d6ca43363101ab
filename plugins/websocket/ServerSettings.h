// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QSslCertificate>
#include <QUrl>

#include <chrono>

class ParametersEntity;

namespace norvo {

/// How a server is reached.
struct ServerSettings
{
    QUrl url;
    QList<QSslCertificate> authorities; ///< Empty: those that the machine trusts.
    QList<QPair<QByteArray, QByteArray>> headers;
    /// How long the server may be silent, although it is asked, before it counts as away.
    std::chrono::milliseconds maxSilence{2000};
};

/// Declares the parameters that readSettings() reads.
void declareSettings(ParametersEntity& entity);

/// Reads them and the files that they name. What is wrong, or an empty text.
QString readSettings(ParametersEntity& entity, ServerSettings& settings);

} // namespace norvo
