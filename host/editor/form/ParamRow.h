// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"
#include "host/editor/form/entry/ParamEditor.h"

#include <QStringList>
#include <QTimer>

class QLabel;
class QPushButton;

namespace norvo {

/// What a form shows of a parameter.
struct ParamState
{
    QString text;
    ParamEditor::Shown shown = ParamEditor::Shown::Default;
    bool isSet = false;   ///< In the panel file, at one of the devices at least.
    QString whyDisabled;  ///< Empty: it has an effect.
    QStringList problems; ///< That the check has with it.

    bool hasLines() const { return text.contains('\n'); }
};

/// One parameter in a form: its name, its meaning, its editor, what is wrong with it, and a key
/// that gives it its default again.
class ParamRow : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kPauseMs = 500; ///< After which what is being typed is taken.

    ParamRow(const ParamWords& words, const ParamState& state);
    ~ParamRow() override; ///< What has been typed and not been taken is forgotten.

    const ParamWords& words() const { return m_words; }
    bool fits(const ParamWords& words, const ParamState& state) const; ///< It can show that, too.
    bool matches(const QString& search) const;                         ///< By name or meaning.

    /// What is being typed, or was refused, stays.
    void setState(const ParamState& state);
    /// Why the text that stands in the editor has not been taken; empty: it has been.
    void setFault(const QString& fault);
    void flush();  ///< Takes at once what has been typed.
    void forget(); ///< What has been typed and not been taken.

protected:
    void keyPressEvent(QKeyEvent* event) override; ///< Escape forgets what has been typed.

signals:
    void changeWanted(QString text);
    void resetWanted();
    void entryEnded(); ///< What is typed next is another entry.

private:
    void layOut();
    void take();
    void showState();
    QString hint() const;

    const ParamWords m_words;
    const bool m_hasLines;
    ParamState m_state;
    QString m_fault;
    bool m_isPending = false; ///< Something has been typed that has not been taken.
    QTimer m_pause;
    ParamEditor* m_editor;
    QPushButton* m_reset;
    QLabel* m_name;
    QLabel* m_meaning;
    QLabel* m_hint;
    QLabel* m_message;
};

} // namespace norvo
