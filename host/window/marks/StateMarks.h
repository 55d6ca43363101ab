// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/TypeKnowledge.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <optional>

class BaseDevice;

namespace norvo {

class Panel;
struct PanelPlan;

/// Marks displays of a panel that cannot say by themselves that no value has come, or what state
/// they are in without colour; see StateMark.
class StateMarks : public QObject
{
    Q_OBJECT

public:
    explicit StateMarks(const TypeKnowledge& knowledge) : m_knowledge(knowledge) {}

    /// To be called before each plan is applied: values come while a panel starts, too.
    void listen(const PanelPlan& plan);
    void show(const Panel& panel); ///< Once the widgets are on their pages.

private slots:
    void take();
    void take(bool isOn);

private:
    struct Heard
    {
        bool hasValue = false;
        std::optional<bool> state;
    };

    const TypeKnowledge& m_knowledge;
    QHash<const QObject*, Heard> m_heard; ///< By device, until the marks are shown.
};

} // namespace norvo
