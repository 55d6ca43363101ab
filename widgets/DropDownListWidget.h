#pragma once

#include "norvo/BaseWidget.h"

class QComboBox;
class QLabel;

/// The list of a DropDownListDevice, with a caption above it where there is one.
class DropDownListWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    /// Shows what the device holds, the item rather than the index. Again: builds the list anew.
    void initialise() override;

signals:
    void output(int idx);
    void currentTextChanged(QString text);

public slots:
    void onIndexChanged(int idx);
    void input(int idx);      ///< Moves the list in silence. Beyond the list: nothing is chosen.
    void input(QString item); ///< The same; a text that is not in the list changes nothing.

private:
    void placeUnderCaption(const QString& caption);

    QLabel* m_caption = nullptr; ///< Null: none.
    QComboBox* m_list = nullptr;
};
