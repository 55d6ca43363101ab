// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QLabel;
class QWidget;

/// A text that is shown may come from a machine, so it is content and never a document.
///
/// Inline marks such as <b> and <font> are rich text, as Qt has it, and so is a table or a list. A
/// text that holds more than that is shown verbatim: nothing that it names is loaded, and what it
/// costs to lay out grows with its length only.
namespace norvo {

/// Whether `text` may have marks and is shown with them. Any other text is shown as it stands: it
/// has none, or it names a picture, a style sheet or a background, nests tables or lists, has a
/// mark that is not known to be harmless, or is very long.
bool isMarked(const QString& text);

/// `text` without what is behind the first `length` characters, in place of which stands "…". The
/// first text that `shownBy` has cut is reported.
QString shortened(const QString& text, int length, QWidget& shownBy);

/// Shows a text: as marks or verbatim, and no more of it than a screen has room for.
void showText(QLabel& label, const QString& text);

/// Shows a text in the colour of a warning.
void showWarning(QLabel& label, const QString& text);

} // namespace norvo
