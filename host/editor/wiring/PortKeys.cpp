// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/PortKeys.h"

#include "host/window/look/TouchSize.h"

#include <QScreen>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kGap = 3; // pixels, between two keys
constexpr int kPadding = 24;
constexpr int kMostWidth = 220;

} // namespace

PortKeys::PortKeys(QWidget& canvas, const QRect& device, const QVector<Key>& inputs,
                   const QVector<Key>& outputs)
    : m_canvas(canvas)
{
    addSide(inputs, false);
    addSide(outputs, true);
    place(device);
    for (QPushButton* key : qAsConst(m_keys)) {
        key->show();
    }
}

PortKeys::~PortKeys()
{
    close();
}

void PortKeys::close()
{
    disconnect();
    for (QPushButton* key : qAsConst(m_keys)) {
        key->hide();
        key->deleteLater(); // It may be the one that was tapped.
    }
    m_keys.clear();
    m_ports.clear();
}

void PortKeys::addSide(const QVector<Key>& keys, bool isOutput)
{
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, m_canvas);
    const int room = std::max(1, m_canvas.height() / (target + kGap));
    const int shown = keys.size() <= room ? keys.size() : room - 1;
    QVector<QPushButton*>& side = isOutput ? m_outputs : m_inputs;
    for (int i = 0; i < shown; ++i) {
        const Port port = keys[i].port;
        QPushButton* const key =
            addKey(isOutput ? port.name + QString(" \u203a") : QString("\u203a ") + port.name,
                   !keys[i].whyNot.isEmpty(), [this, port] { emit tapped(port); });
        key->setObjectName(port.text());
        key->setAccessibleName(isOutput ? tr("Output %1").arg(port.name)
                                        : tr("Input %1").arg(port.name));
        key->setAccessibleDescription(keys[i].whyNot.isEmpty() ? port.meaning : keys[i].whyNot);
        key->setToolTip(port.carries());
        side.append(key);
        m_ports.append(port);
    }
    if (shown < keys.size()) {
        QPushButton* const key = addKey(tr("All %1 ...").arg(keys.size()), false,
                                        [this, isOutput] { emit listWanted(isOutput); });
        key->setObjectName(isOutput ? "allOutputs" : "allInputs");
        side.append(key);
        m_ports.append(Port());
    }
}

QPushButton* PortKeys::addKey(const QString& text, bool isDim, const std::function<void()>& tap)
{
    auto* const key = new QPushButton(&m_canvas);
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, m_canvas);
    const int most = std::min(kMostWidth, m_canvas.width() / 2 - kGap);
    const QString shown = key->fontMetrics().elidedText(text, Qt::ElideMiddle, most - kPadding);
    key->setText(QString(shown).replace('&', "&&"));
    key->resize(std::max(key->fontMetrics().horizontalAdvance(shown) + kPadding, target), target);
    key->setAutoDefault(false);
    if (isDim) {
        QPalette dim = key->palette();
        dim.setBrush(QPalette::ButtonText, dim.brush(QPalette::Disabled, QPalette::ButtonText));
        dim.setBrush(QPalette::Button, dim.brush(QPalette::Disabled, QPalette::Button));
        key->setPalette(dim);
    }
    connect(key, &QPushButton::clicked, this, tap);
    m_keys.append(key);
    return key;
}

/// Each column in the middle of its edge, as far as the canvas has room there.
void PortKeys::place(const QRect& device)
{
    const auto widthOf = [](const QVector<QPushButton*>& side) {
        int width = 0;
        for (const QPushButton* key : side) {
            width = std::max(width, key->width());
        }
        return width;
    };
    const int width = m_canvas.width();
    const int inWidth = widthOf(m_inputs);
    const int outWidth = widthOf(m_outputs);
    int in = device.left() - inWidth / 2;
    int out = device.right() - outWidth / 2;
    const int overlap = in + inWidth + kGap - out;
    if (overlap > 0 && inWidth > 0 && outWidth > 0) {
        in -= overlap / 2;
        out += overlap - overlap / 2;
    }
    in = std::max(0, std::min(in, width - inWidth - (outWidth > 0 ? outWidth + kGap : 0)));
    out = std::max(in + (inWidth > 0 ? inWidth + kGap : 0), std::min(out, width - outWidth));
    for (const bool isOutput : {false, true}) {
        const QVector<QPushButton*>& side = isOutput ? m_outputs : m_inputs;
        const int step = side.isEmpty() ? 0 : side.first()->height() + kGap;
        const int height = side.size() * step;
        int y = std::max(0, std::min(device.center().y() - height / 2, m_canvas.height() - height));
        for (QPushButton* key : side) {
            key->setGeometry(isOutput ? out : in, y, isOutput ? outWidth : inWidth, key->height());
            y += step;
        }
    }
}

void PortKeys::focusNext(bool isForward)
{
    const auto current = std::find_if(m_keys.cbegin(), m_keys.cend(),
                                      [](const QPushButton* key) { return key->hasFocus(); });
    if (m_keys.isEmpty()) {
        return;
    }
    const int place =
        current == m_keys.cend() ? (isForward ? -1 : 0) : int(current - m_keys.cbegin());
    const int next = (place + (isForward ? 1 : -1) + m_keys.size()) % m_keys.size();
    m_keys[next]->setFocus(Qt::TabFocusReason);
}

QRect PortKeys::keyRect(const Port& port) const
{
    const int place = port.name.isEmpty() ? -1 : m_ports.indexOf(port);
    return place < 0 ? QRect() : m_keys[place]->geometry();
}

} // namespace norvo
