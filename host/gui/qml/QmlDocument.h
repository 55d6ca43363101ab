// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

#include <memory>

class QQmlEngine;
class QQmlError;
class QQuickItem;

namespace norvo {

/// A QML document by its place, and what a user is to read about it.
class QmlDocument
{
public:
    /// `path` is relative to the working directory, or the URL of a resource or of a far file.
    static QmlDocument fromFile(const QString& path);
    /// Files that `code` names are relative to the working directory.
    static QmlDocument fromText(const QString& code);

    /// Makes the item that the document describes; null when that fails, and `error` says why.
    std::unique_ptr<QQuickItem> load(QQmlEngine& engine, QString& error) const;

    /// `file:line:column: text`, with the file as the user knows it.
    QString describe(const QQmlError& error) const;

private:
    QString describe(const QList<QQmlError>& errors) const;
    QString rootError() const;

    QString m_name; ///< As the user knows it.
    QUrl m_url;
    QString m_code;
    bool m_isFile = true;
};

} // namespace norvo
