// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace norvo {

class EditSession;

/// Name and definition of an output or an input, to be edited in place. What keeps a change from
/// being made stands below.
class PortRow : public QWidget
{
    Q_OBJECT

public:
    /// `hint` says what a definition is. Without a name: a row that adds one.
    PortRow(EditSession& session, const QString& device, bool isOutput, const QString& name,
            const QString& hint);

    const QString& name() const { return m_name; }
    bool isOutput() const { return m_isOutput; }
    bool isNew() const { return m_name.isEmpty(); }
    void setDefinition(const QString& definition);
    void setFixed(); ///< To be read only.
    void setValue(const QString& value);
    void focusName();

signals:
    void added(); ///< A port, by a row without a name.

private:
    void rename();
    void define();
    void add();
    void remove();
    bool take(const QString& fault); ///< False, and the fault is seen, where there is one.

    EditSession& m_session;
    const QString m_device;
    const bool m_isOutput;
    const QString m_name;
    QString m_definition;
    QLineEdit* m_nameField;
    QLineEdit* m_definitionField;
    QLabel* m_value;
    QLabel* m_fault;
    QPushButton* m_key; ///< Removes, or adds.
};

} // namespace norvo
