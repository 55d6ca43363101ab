// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"
#include "host/editor/form/FormSteps.h"

#include <QVector>
#include <QWidget>

namespace norvo {

class FormSection;
struct ParamState;

/// What a panel says on itself as a whole, such as its title and theme, to be filled in. What is
/// entered shows on the panel at once; what is refused stays where it was typed, with the reason
/// below it.
class PanelForm : public QWidget
{
    Q_OBJECT

public:
    explicit PanelForm(EditSession& session, QWidget* parent = nullptr);
    ~PanelForm() override;

signals:
    void problem(const QString& text); ///< That has no field to stand at.

private:
    void layOut();
    void refresh();
    void describeKeys();
    ParamState state(const ParamWords& words) const;
    void change(ParamRow& row, const QString& text);
    void reset(ParamRow& row);
    void step(ParamRow& row, const QString& what, const EditSession::Edit& edit);

    EditSession& m_session;
    FormSteps m_steps;
    QVector<ParamWords> m_keys;
    FormSection* m_section;
};

} // namespace norvo
