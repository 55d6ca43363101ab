// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/palette/ExampleRun.h"

#include <QImage>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace norvo {

class Catalogue;
class TemplateSet;

/// A picture of each device type: of its example as it runs; of one without a widget a symbol with
/// the names of its outputs and inputs. A template's is that of its devices with a widget. They are
/// made one after the other, one at a turn of the event loop, and kept for the run of the program.
class TypePictures : public QObject
{
    Q_OBJECT

public:
    static const QSize kSize; ///< In pixels.

    /// Both must outlive it.
    TypePictures(const Catalogue& catalogue, const TemplateSet& templates);
    ~TypePictures() override;

    /// Of a type by its key, or of a template by its file; the symbol, or null for a template,
    /// where there is no other yet.
    QImage picture(const QString& what) const;
    void make(const QStringList& all); ///< Those that are not there yet.
    bool isDone() const { return m_waiting.isEmpty() && m_runs.empty(); }

signals:
    void made(QString what);

private:
    struct Run
    {
        QString what;
        QString keptAs;
        int sent = 0;
        std::unique_ptr<ExampleRun> example;
    };

    QString keyOf(const QString& what) const;
    std::optional<PicturedPanel> panelOf(const QString& what) const;
    void startNext();
    void sendValues();

    const Catalogue& m_catalogue;
    const TemplateSet& m_templates;
    QStringList m_waiting;
    std::vector<Run> m_runs;
    QTimer m_next;
    QTimer m_values;
};

} // namespace norvo
