// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/TypePictures.h"

#include "host/catalogue/Catalogue.h"
#include "host/editor/palette/ExampleRun.h"
#include "host/editor/palette/TypeSymbol.h"

#include <QGuiApplication>
#include <QHash>
#include <QPalette>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kIntervalMs = 75;
constexpr int kValues = 20; ///< Of an example, before it is pictured.

/// Those of each theme. Images, which may outlive the application.
QHash<QString, QImage>& kept()
{
    static QHash<QString, QImage> images;
    return images;
}

QString keyOf(const QString& typeKey)
{
    return typeKey + ' ' + QGuiApplication::palette().color(QPalette::Window).name();
}

} // namespace

const QSize TypePictures::kSize(104, 68);

TypePictures::TypePictures(const Catalogue& catalogue, const DeviceManager& manager)
    : m_catalogue(catalogue), m_manager(manager)
{
    m_values.setInterval(kIntervalMs);
    connect(&m_next, &QTimer::timeout, this, &TypePictures::startNext);
    connect(&m_values, &QTimer::timeout, this, &TypePictures::sendValues);
}

TypePictures::~TypePictures() = default;

QImage TypePictures::picture(const QString& typeKey) const
{
    const QImage image = kept().value(keyOf(typeKey));
    const TypeWords* const words = m_catalogue.words(typeKey);
    return !image.isNull() || !words ? image
                                     : TypeSymbol::draw(*words, kSize, QGuiApplication::palette());
}

void TypePictures::make(const QStringList& typeKeys)
{
    for (const QString& typeKey : typeKeys) {
        const TypeWords* const words = m_catalogue.words(typeKey);
        if (words && words->hasWidget && !kept().contains(keyOf(typeKey)) &&
            !m_waiting.contains(typeKey)) {
            m_waiting.append(typeKey);
        }
    }
    m_next.start(0);
}

void TypePictures::startNext()
{
    if (m_waiting.isEmpty()) {
        return m_next.stop();
    }
    const QString typeKey = m_waiting.takeFirst();
    const TypeWords* const words = m_catalogue.words(typeKey);
    m_runs.push_back({typeKey, 0, std::make_unique<ExampleRun>(*words, m_manager)});
    m_values.start();
}

void TypePictures::sendValues()
{
    for (Run& run : m_runs) {
        run.example->send();
        ++run.sent;
    }
    // One at a time: a picture takes its time, too.
    const auto ready = std::find_if(m_runs.begin(), m_runs.end(),
                                    [](const Run& run) { return run.sent >= kValues; });
    if (ready != m_runs.end()) {
        const QString typeKey = ready->typeKey;
        kept().insert(keyOf(typeKey), ready->example->picture(kSize));
        m_runs.erase(ready);
        emit made(typeKey);
    }
    if (m_runs.empty()) {
        m_values.stop();
    }
}

} // namespace norvo
