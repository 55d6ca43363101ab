// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/QmlWidget.h"

#include "norvo/QmlDeviceImpl.h"
#include "norvo/Truncation.h"

#include <QDebug>
#include <QGridLayout>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>

namespace {

constexpr char kRootCode[] = "import QtQuick 2.0\nItem { id: root }\n";
constexpr char kTransparent[] = "background:transparent;";

} // namespace

QmlWidget::QmlWidget(QmlDeviceImpl* impl, BaseGuiDevice* device, QWidget* parent)
    : BaseWidget(device, parent), m_impl(impl)
{}

void QmlWidget::initialise()
{
    if (!m_impl || !m_impl->isInitialised()) {
        qCritical().noquote() << getObjectName() + ": QmlDeviceImpl not initialised!";
        return;
    }
    delete m_quickWidget;
    buildQuickWidget();
    makeTransparent();
    m_quickWidget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    QQuickItem* const item = m_impl->getItem();
    if (!item) {
        qCritical().noquote() << getObjectName() + ": QmlDeviceImpl's item is null!";
        return;
    }
    adopt(item);
    setInitialised(true);
}

void QmlWidget::buildQuickWidget()
{
    QQmlEngine* const engine = m_impl->getEngine();
    m_quickWidget = new QQuickWidget(engine, nullptr);
    // The engine dies right after the loader, and nothing made on it must be left by then.
    connect(m_impl, &QObject::destroyed, m_quickWidget,
            [widget = m_quickWidget] { delete widget; });
    auto* const component = new QQmlComponent(engine, m_quickWidget);
    component->setData(kRootCode, QUrl());
    m_quickWidget->setContent(QUrl(), component, component->create());
    m_quickWidget->setResizeMode(QQuickWidget::SizeRootObjectToView);
}

void QmlWidget::makeTransparent()
{
    m_quickWidget->setClearColor(Qt::transparent);
    m_quickWidget->setAttribute(Qt::WA_TranslucentBackground);
    m_quickWidget->setAttribute(Qt::WA_AlwaysStackOnTop);
    m_quickWidget->setWindowFlags(Qt::FramelessWindowHint);
    m_quickWidget->setStyleSheet(kTransparent);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowFlags(Qt::FramelessWindowHint);
    setStyleSheet(kTransparent);
}

void QmlWidget::adopt(QQuickItem* item)
{
    const QSize size(norvo::truncatedToInt(item->width()), norvo::truncatedToInt(item->height()));
    m_quickWidget->setMinimumSize(size);
    m_quickWidget->setGeometry(QRect(QPoint(0, 0), size));
    QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
    item->setParentItem(m_quickWidget->rootObject());
    getLayout()->addWidget(m_quickWidget);
    getLayout()->setContentsMargins(0, 0, 0, 0);
}

void QmlWidget::deinitialise()
{
    if (m_quickWidget) {
        m_quickWidget->setParent(nullptr);
        m_quickWidget->rootObject()->deleteLater();
        m_quickWidget->close();
        m_quickWidget->deleteLater();
    }
    BaseWidget::deinitialise();
}

void QmlWidget::resizeEvent(QResizeEvent* event)
{
    BaseWidget::resizeEvent(event);
    if (m_quickWidget) {
        m_quickWidget->quickWindow()->update();
        m_quickWidget->update();
    }
}
