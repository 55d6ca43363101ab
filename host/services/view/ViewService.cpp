// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/ViewService.h"

namespace norvo {

ViewService::ViewService(const ViewSettings& settings, const ViewSubject& subject)
    : m_subject(subject),
      m_picture(subject.window),
      m_server(new ViewServer(settings, subject.title))
{
    m_server->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_server, &QObject::deleteLater);
    connect(&m_server->viewers(), &Viewers::watchedChanged, &m_picture, &PanelPicture::setWatched);
    connect(&m_server->viewers(), &Viewers::frameWanted, this, &ViewService::sendFrame);
    connect(m_server, &ViewServer::valuesWanted, this, &ViewService::sendValues);
    m_thread.setObjectName("view");
    m_thread.start();
}

ViewService::~ViewService()
{
    m_thread.quit();
    m_thread.wait();
}

bool ViewService::open(QString& error)
{
    bool isOpen = false;
    QMetaObject::invokeMethod(
        m_server,
        [this, &isOpen, &error] {
            isOpen = m_server->open(error);
            m_url = m_server->url();
        },
        Qt::BlockingQueuedConnection);
    return isOpen;
}

void ViewService::sendFrame()
{
    QMetaObject::invokeMethod(
        m_server, [server = m_server, frame = m_picture.take()] { server->viewers().show(frame); });
}

void ViewService::sendValues()
{
    QMetaObject::invokeMethod(
        m_server, [server = m_server, json = m_subject.values()] { server->setValues(json); });
}

} // namespace norvo

extern "C" Q_DECL_EXPORT norvo::View* norvoMakeView(const norvo::ViewSettings& settings,
                                                    const norvo::ViewSubject& subject,
                                                    QString& error)
{
    auto service = std::make_unique<norvo::ViewService>(settings, subject);
    return service->open(error) ? service.release() : nullptr;
}
