#pragma once

#include "norvo/BaseWidget.h"
#include "widgets/LogArea.h"

#include <QPointer>

/// The text area of a MultilineDevice. The operator may edit what stands in it.
class TextWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    void setFontSize(int size);      ///< In points.
    void scrollEnable(bool enabled); ///< False: the first line stays in view.

    void initialise() override;

public slots:
    void input(QString text); ///< Appends a paragraph. Text that looks like HTML is taken as such.

protected:
    void showEvent(QShowEvent* event) override;

private:
    void scrollToTop();

    QPointer<LogArea> m_text;
    bool m_scrollingDisabled = false;
};
