// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QLabel;
class QLineEdit;
class QString;

namespace norvo {

/// The texts of a form, which is narrower than a panel and holds more.
namespace FormText {

QLabel* name(const QString& text);
QLabel* small(const QString& text); ///< What explains something; it wraps.
QLabel* fault(const QString& text); ///< What is wrong; it wraps, and is marked.
void prepare(QLineEdit& line);

} // namespace FormText

} // namespace norvo
