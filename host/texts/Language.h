// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QGuiApplication;
class QString;
class QStringList;

namespace norvo {

/// The language of the program's own texts, of Qt's, and of the keyboard on the screen. What a
/// panel says itself, its numbers and the errors in its file stay as they are written.
namespace Language {

/// From now on. A name such as "de" or "pt_BR"; empty: the system's. Languages without texts of
/// ours keep the English ones. A panel in a language that is written from the right is mirrored.
///
/// The keyboard finds the name in the application's property "norvoLanguage".
void use(QGuiApplication& application, const QString& name);

/// Those with texts of ours, as use() takes them, by name.
QStringList all();

} // namespace Language

} // namespace norvo
