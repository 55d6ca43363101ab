// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QByteArray>
#include <QObject>
#include <QVector>

namespace norvo {

class Catalogue;

/// Devices with their connections, ready to be put on a panel at once: a panel file of their own.
struct PanelTemplate
{
    QString file;    ///< Names it: a path, or one of the program's resources.
    QString title;   ///< Of the panel file, else the file's name.
    QString purpose; ///< The comment at the head of the file, else what devices it has.
    QString fault;   ///< Why it cannot be put on a panel; empty: it can.
    QByteArray text;
    PanelDescription panel; ///< What the text says.
    bool isOwn = false;     ///< The user has made it, and may remove it.
};

/// The templates that there are: those of the program, those in the folder "templates" beside the
/// panel file, and the user's own, in "norvo/templates" of the folder for the data of a user.
///
/// They are copied into a panel file. The key "templates" of a panel file is something else: what
/// it names is used where it stands.
class TemplateSet : public QObject
{
    Q_OBJECT

public:
    /// The catalogue must outlive it.
    TemplateSet(const Catalogue& catalogue, const QString& panelFile);

    /// As they were when they were last read: the program's, then the others by their titles.
    const QVector<PanelTemplate>& all() const { return m_all; }
    const PanelTemplate* find(const QString& file) const; ///< Null: there is none.
    void read();                                          ///< Once more.

    /// Keeps the text of a panel file as one of the user's own, under this title. Returns why it
    /// could not be; empty: it is kept.
    QString save(const QString& title, const QByteArray& panel);
    QString remove(const QString& file); ///< One of the user's own. Returns as save() does.

    static QString ownFolder();

signals:
    void changed();

private:
    void readFolder(const QString& folder, bool isOwn);
    PanelTemplate readFile(const QString& file) const;

    const Catalogue& m_catalogue;
    const QString m_besidePanel; ///< A folder.
    QVector<PanelTemplate> m_all;
};

} // namespace norvo
