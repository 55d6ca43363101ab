// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace norvo {

class EditSession;

/// What a form is about: the device's id, which can be changed, its type and what it is for.
class FormHead : public QWidget
{
    Q_OBJECT

public:
    explicit FormHead(EditSession& session);

    void showDevices(const QStringList& ids); ///< None: says how to select one.
    void refuseId(const QString& fault);      ///< The one that stands in the field, which stays.

signals:
    void renameWanted(QString id, QString newId);

private:
    void askToRename();
    void setText(QLabel& label, const QString& text);

    EditSession& m_session;
    QString m_id;      ///< Empty: of none, or of several.
    QString m_refused; ///< An id that stands in the field and was not taken.
    QLabel* m_title;
    QLineEdit* m_idField;
    QLabel* m_purpose;
    QLabel* m_fixed;
    QLabel* m_problems;
};

} // namespace norvo
