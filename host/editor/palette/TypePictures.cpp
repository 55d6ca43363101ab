// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/TypePictures.h"

#include "host/catalogue/Catalogue.h"
#include "host/editor/palette/TypeSymbol.h"
#include "host/editor/templates/TemplateSet.h"

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

} // namespace

const QSize TypePictures::kSize(104, 68);

TypePictures::TypePictures(const Catalogue& catalogue, const TemplateSet& templates)
    : m_catalogue(catalogue), m_templates(templates)
{
    m_values.setInterval(kIntervalMs);
    connect(&m_next, &QTimer::timeout, this, &TypePictures::startNext);
    connect(&m_values, &QTimer::timeout, this, &TypePictures::sendValues);
}

TypePictures::~TypePictures() = default;

/// A template may have changed since it was pictured.
QString TypePictures::keyOf(const QString& what) const
{
    const PanelTemplate* const group = m_templates.find(what);
    const QString version = group ? QString::number(qHash(group->text)) : QString();
    return what + ' ' + version + QGuiApplication::palette().color(QPalette::Window).name();
}

QImage TypePictures::picture(const QString& what) const
{
    const QImage image = kept().value(keyOf(what));
    const TypeWords* const words = m_catalogue.words(what);
    return !image.isNull() || !words ? image
                                     : TypeSymbol::draw(*words, kSize, QGuiApplication::palette());
}

std::optional<PicturedPanel> TypePictures::panelOf(const QString& what) const
{
    if (const PanelTemplate* const group = m_templates.find(what)) {
        return PicturedPanel::ofGroup(group->panel, m_catalogue);
    }
    const TypeWords* const words = m_catalogue.words(what);
    return words && words->hasWidget ? std::optional(PicturedPanel::ofType(*words)) : std::nullopt;
}

void TypePictures::make(const QStringList& all)
{
    for (const QString& what : all) {
        if (!kept().contains(keyOf(what)) && !m_waiting.contains(what)) {
            m_waiting.append(what);
        }
    }
    m_next.start(0);
}

void TypePictures::startNext()
{
    if (m_waiting.isEmpty()) {
        return m_next.stop();
    }
    const QString what = m_waiting.takeFirst();
    if (const auto panel = panelOf(what)) {
        m_runs.push_back({what, keyOf(what), 0, std::make_unique<ExampleRun>(*panel, m_catalogue)});
        m_values.start();
    }
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
        const QString what = ready->what;
        kept().insert(ready->keptAs, ready->example->picture(kSize));
        m_runs.erase(ready);
        emit made(what);
    }
    if (m_runs.empty()) {
        m_values.stop();
    }
}

} // namespace norvo
