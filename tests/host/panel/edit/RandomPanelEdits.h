// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EditedModel.h"
#include "host/panel/edit/KeepPlaces.h"

#include <random>

/// Where a text of devices that are all seen puts each.
norvo::CellsById cellsOf(const norvo::YamlEdit& edit);

/// Edits of any kind of a panel's text, each with what it is to make of the panel's model.
class RandomPanelEdits
{
public:
    using Error = norvo::YamlEdit::Error;

    void seed(unsigned number) { m_random.seed(number); }
    int pick(int count) { return int(m_random() % unsigned(count)); }

    /// An error that begins with WRONG is none of the edit. `what` names it.
    Error editAny(norvo::YamlEdit& edit, EditedModel& model, QString& what);

private:
    using YamlEdit = norvo::YamlEdit;

    QString pickOf(const QStringList& list)
    {
        return list.isEmpty() ? "" : list[pick(list.size())];
    }
    QString anyText();
    Error editDevices(YamlEdit& edit, EditedModel& model, QString& what);
    Error editParams(YamlEdit& edit, EditedModel& model, QString& what);
    Error editConnections(YamlEdit& edit, EditedModel& model, QString& what);
    Error editPorts(YamlEdit& edit, EditedModel& model, QString& what);
    Error place(YamlEdit& edit, EditedModel& model, QString& what);
    Error paste(YamlEdit& edit, EditedModel& model, QString& what);
    Error editPages(YamlEdit& edit, EditedModel& model, QString& what);
    Error editLines(YamlEdit& edit, EditedModel& model, QString& what);

    std::mt19937 m_random;
};
