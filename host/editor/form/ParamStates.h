// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/ParamRow.h"
#include "host/yaml/Place.h"

#include <QSet>
#include <QStringList>
#include <QVector>

namespace norvo {

class EditSession;
struct ParamWords;

/// What a form shows of the devices that are selected.
namespace ParamStates {

/// The parameters that all the devices have, of the same kind; without those of the place.
QVector<ParamWords> common(const EditSession& session, const QStringList& ids);
/// Of one device: row, column, spans and page, as far as there are pages.
QVector<ParamWords> ofPlace(const EditSession& session, const QString& id);
/// Of one device: the keys beside its parameters that mean something for it.
QVector<ParamWords> ofKeys(const EditSession& session, const QString& id);

ParamState param(const EditSession& session, const QStringList& ids, const ParamWords& words);
ParamState place(const EditSession& session, const QString& id, const ParamWords& words);
ParamState key(const EditSession& session, const QString& id, const ParamWords& words);

/// Names of parameters that one sets first: those of the type's own example.
QSet<QString> essential(const EditSession& session, const QString& id);
/// What the check has against the device as a whole.
QStringList problems(const EditSession& session, const QString& id);
/// What it has against what stands at these places of the panel's own file.
QStringList problemsAt(const EditSession& session, const QVector<Place>& places);

} // namespace ParamStates

} // namespace norvo
