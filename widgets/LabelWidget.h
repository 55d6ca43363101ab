#pragma once

#include "norvo/BaseWidget.h"

#include <QFont>

class QLabel;

/// The text of a Label.
class LabelWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    void initialise() override;
    void deinitialise() override; ///< The last text stays on view.

public slots:
    void inputWarning(bool warning); ///< Takes effect with the next text.
    void input(QString value);

private:
    void setFontAgain();

    QLabel* m_label = nullptr; ///< Null: not to be written to.
    QFont m_font;
    QFont m_shownFont; ///< The label's own copy of it, as it was set last.
    bool m_warning = false;
};
