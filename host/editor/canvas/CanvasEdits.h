// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/canvas/cells/CellMap.h"

#include <QCoreApplication>

namespace norvo {

class EditSession;
struct PanelTemplate;

/// What the canvas does to the panel: each function is one step of undo, and returns why it cannot
/// be done; empty: it is done.
class CanvasEdits
{
    Q_DECLARE_TR_FUNCTIONS(norvo::CanvasEdits)

public:
    explicit CanvasEdits(EditSession& session) : m_session(session) {}

    /// Why one of them cannot be edited here; empty: all can.
    QString whyFixed(const QStringList& ids) const;

    QString move(const CellMap::Places& places, const QString& joinKey = {});
    QString resize(const CellMap::Places& places, const QString& joinKey = {});
    QString remove(const QStringList& ids);

    QByteArray copy(const QStringList& ids) const; ///< The text of a panel file of their own.
    QString cut(const QStringList& ids);           ///< Behind a copy().
    /// Adds what copy() has given with its upper left cell at `target`, or where it is free behind
    /// it, and selects it.
    QString paste(const QByteArray& copied, const Cells& target);
    QString putTemplate(const PanelTemplate& group, const Cells& target); ///< Likewise.
    QString duplicate(const QStringList& ids);                            ///< Next to them.

    QString insertRow(const QString& page, int row);
    QString insertColumn(const QString& page, int column);
    QString removeRow(const QString& page, int row);
    QString removeColumn(const QString& page, int column);

private:
    QString place(const QString& what, const CellMap::Places& places, const QString& joinKey);
    QString removeAs(const QString& what, const QStringList& ids);

    EditSession& m_session;
};

} // namespace norvo
