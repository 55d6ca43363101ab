// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlDocument.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlError>
#include <QQmlFile>
#include <QQuickItem>
#include <QRegularExpression>
#include <QTimer>

#include <chrono>

namespace norvo {

namespace {

constexpr std::chrono::seconds kMaxLoadTime{10}; ///< Of what a document fetches from elsewhere.
constexpr char kTextName[] = "sourceCode";       ///< The parameter that the text comes from.

/// Only what lies elsewhere is not there at once. Meanwhile keys and clicks wait.
void waitFor(const QQmlComponent& component)
{
    if (!component.isLoading()) {
        return;
    }
    QEventLoop loop;
    QObject::connect(&component, &QQmlComponent::statusChanged, &loop, &QEventLoop::quit);
    QTimer::singleShot(kMaxLoadTime, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

/// Where the root object of a document begins.
struct QmlRoot
{
    int line = 0; ///< From 1; 0: there is none.
    int column = 0;
    QString type; ///< As it is written.
};

QmlRoot findQmlRoot(const QString& code)
{
    // Spaces, comments, and what stands above the root, up to the end of its line or a semicolon.
    static const QRegularExpression preamble(
        R"((?:\s|//[^\n]*|/\*.*?\*/|(?:import|pragma)\b(?:"[^"\n]*"|'[^'\n]*'|[^;\n"'/])*;?)*)",
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression name(R"([\w.]+)",
                                         QRegularExpression::UseUnicodePropertiesOption);
    const auto match = [&code](const QRegularExpression& pattern, int offset) {
        return pattern.match(code, offset, QRegularExpression::NormalMatch,
                             QRegularExpression::AnchoredMatchOption);
    };
    const int begin = match(preamble, 0).capturedLength();
    const auto type = match(name, begin);
    if (!type.hasMatch()) {
        return {};
    }
    const QString before = code.left(begin);
    return {before.count('\n') + 1, begin - before.lastIndexOf('\n'), type.captured()};
}

} // namespace

QmlDocument QmlDocument::fromFile(const QString& path)
{
    static const QStringList urlSchemes{"qrc", "file", "http", "https"};
    QmlDocument document;
    document.m_name = path;
    if (urlSchemes.contains(QUrl(path).scheme())) {
        document.m_url = QUrl(path);
    } else if (path.startsWith(":/")) {
        document.m_url = QUrl("qrc" + path);
    } else {
        document.m_url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    }
    return document;
}

QmlDocument QmlDocument::fromText(const QString& code)
{
    QmlDocument document;
    document.m_name = kTextName;
    document.m_url = QUrl::fromLocalFile(QDir::current().absoluteFilePath(kTextName));
    document.m_code = code;
    document.m_isFile = false;
    return document;
}

std::unique_ptr<QQuickItem> QmlDocument::load(QQmlEngine& engine, QString& error) const
{
    QQmlComponent component(&engine);
    if (m_isFile) {
        component.loadUrl(m_url);
    } else {
        component.setData(m_code.toUtf8(), m_url);
    }
    waitFor(component);
    if (component.isLoading()) {
        error = QString("%1: not everything that it needs came within %2 s")
                    .arg(m_name)
                    .arg(kMaxLoadTime.count());
        return nullptr;
    }
    std::unique_ptr<QObject> root(component.isReady() ? component.create() : nullptr);
    if (!root || component.isError()) {
        error = describe(component.errors());
        return nullptr;
    }
    if (!qobject_cast<QQuickItem*>(root.get())) {
        error = rootError();
        return nullptr;
    }
    return std::unique_ptr<QQuickItem>(static_cast<QQuickItem*>(root.release()));
}

QString QmlDocument::describe(const QQmlError& error) const
{
    const bool isElsewhere = !error.url().isEmpty() && error.url() != m_url;
    QString place = isElsewhere ? error.url().toString(QUrl::PreferLocalFile) : m_name;
    if (error.line() > 0) {
        place += QString(":%1").arg(error.line());
    }
    if (error.line() > 0 && error.column() > 0) {
        place += QString(":%1").arg(error.column());
    }
    return place + ": " + error.description();
}

QString QmlDocument::describe(const QList<QQmlError>& errors) const
{
    QStringList lines;
    for (const QQmlError& error : errors) {
        lines.append(describe(error));
    }
    lines.removeDuplicates();
    return lines.isEmpty() ? m_name + ": it makes no object" : lines.join("; ");
}

/// Why the root object will not do.
QString QmlDocument::rootError() const
{
    QString code = m_code;
    if (m_isFile) {
        QFile file(QQmlFile::urlToLocalFileOrQrc(m_url));
        code = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    const QmlRoot root = findQmlRoot(code);
    return m_name +
           (root.line > 0 ? QString(":%1:%2").arg(root.line).arg(root.column) : QString()) +
           ": the root object must be an Item" +
           (root.type.isEmpty() ? QString() : QString(", and %1 is none").arg(root.type));
}

} // namespace norvo
