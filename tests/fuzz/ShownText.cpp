// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ShownText.h"
#include "Harness.h"

#include <QLabel>
#include <QTextDocument>

namespace {

/// Fails where its text names anything that is to be loaded.
class ContentOnly : public QTextDocument
{
protected:
    QVariant loadResource(int /*type*/, const QUrl& /*name*/) override
    {
        norvo::require(false, "a text that is shown loads nothing");
        return {};
    }
};

} // namespace

/// Any text is laid out within the fuzzer's time for one input, and loads nothing.
NORVO_HARNESS(ShownText)
{
    const QString text = QString::fromUtf8(input);
    QLabel label;
    label.setWordWrap(true);
    norvo::showText(label, text);
    label.sizeHint();
    label.heightForWidth(80);
    norvo::showWarning(label, text);
    label.sizeHint();
    if (norvo::isMarked(text)) {
        ContentOnly document;
        document.setHtml(text);
        document.setTextWidth(80);
        document.size();
    }
}
