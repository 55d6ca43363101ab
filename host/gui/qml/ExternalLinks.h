// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QObject>

class QUrl;

namespace norvo {

class QmlSandbox;

/// Is asked, in place of the desktop, to open a URL in another program, and refuses it to scripts
/// that are not allowed the network. Covers the schemes that programs here are entered for.
class ExternalLinks : public QObject
{
    Q_OBJECT

public:
    static void add(QmlSandbox& sandbox);
    static void remove(QmlSandbox& sandbox);

public slots:
    void open(const QUrl& url);

private:
    ExternalLinks();
};

} // namespace norvo
