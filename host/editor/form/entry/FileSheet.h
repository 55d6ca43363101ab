// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"
#include "host/window/sheet/Sheet.h"

#include <QDir>

class QLabel;
class QListWidget;

namespace norvo {

/// The files of a kind, folder by folder, from the panel's own; a picture is shown beside.
class FileSheet : public Sheet
{
    Q_OBJECT

public:
    static constexpr int kMaxFiles = 1000; ///< That a folder is listed with.

    /// Starts in the folder of `now`, as a panel file names it.
    FileSheet(QWidget& opener, ParamKind kind, const QString& now);

signals:
    void chosen(QString file); ///< Relative to the panel's folder where it is in or below it.

private:
    void list();
    void use();
    void preview();
    QString current() const; ///< The path; empty: nothing is current.

    const ParamKind m_kind;
    const QDir m_panelFolder; ///< Which is the working folder.
    QDir m_folder;
    QLabel* m_where;
    QListWidget* m_files;
    QLabel* m_picture;
    QPushButton* m_use;
};

} // namespace norvo
