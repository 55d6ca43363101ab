// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/view/PanelPicture.h"
#include "host/services/view/View.h"
#include "host/services/view/ViewServer.h"

#include <QThread>

namespace norvo {

/// Stands between the panel, in the GUI's thread, and the server, in its own. What goes to the
/// server are pictures and values, and what comes from it are only the wishes for them.
class ViewService : public QObject, public View
{
    Q_OBJECT

public:
    ViewService(const ViewSettings& settings, const ViewSubject& subject);
    ~ViewService() override;

    bool open(QString& error);
    QString url() const override { return m_url; }

private:
    void sendFrame();
    void sendValues();

    const ViewSubject m_subject;
    PanelPicture m_picture;
    QThread m_thread;
    ViewServer* const m_server; ///< Of the thread; deleted at its end.
    QString m_url;
};

} // namespace norvo
