// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/FormSteps.h"

#include <QSet>
#include <QStringList>
#include <QWidget>

#include <functional>

class QLineEdit;
class QScrollArea;

namespace norvo {

class FormHead;
class FormSection;
class ParamRow;

/// The selected device, or what several have in common, to be filled in. What is entered shows on
/// the panel at once; what is refused stays where it was typed, with the reason below it.
class DeviceForm : public QWidget
{
    Q_OBJECT

public:
    explicit DeviceForm(EditSession& session, QWidget* parent = nullptr);
    ~DeviceForm() override;

signals:
    void problem(const QString& text); ///< That has no field to stand at.

private:
    using DeviceStep = std::function<YamlEdit::Error(YamlEdit&, const QString& id)>;

    void layOut();
    void connectSection(FormSection& section, void (DeviceForm::*change)(ParamRow&, const QString&),
                        void (DeviceForm::*reset)(ParamRow&));
    void followSelection();
    void rename(const QString& id, const QString& newId);
    void refresh();
    void setRows();
    void flush();

    void changeParam(ParamRow& row, const QString& text);
    void resetParam(ParamRow& row);
    void changePlace(ParamRow& row, const QString& text);
    void changeKey(ParamRow& row, const QString& text);
    void resetKey(ParamRow& row);
    void step(ParamRow& row, const QString& what, const DeviceStep& edit);
    QString selectedName() const; ///< The id, or how many there are.

    EditSession& m_session;
    QStringList m_ids;
    QSet<QString> m_first;    ///< Parameters that are seen at once, in lower case.
    bool m_isOwnStep = false; ///< Of a rename, which changes what is selected.
    FormSteps m_steps;
    QScrollArea* m_scroll = nullptr;
    FormHead* m_head;
    QLineEdit* m_search;
    FormSection* m_essential;
    FormSection* m_rest;
    FormSection* m_place;
    FormSection* m_keys;
    QList<FormSection*> m_sections;
};

} // namespace norvo
