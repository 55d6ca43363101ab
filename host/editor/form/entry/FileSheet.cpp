// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/FileSheet.h"

#include "host/window/look/TouchSize.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScroller>
#include <QVBoxLayout>

namespace norvo {

namespace {

const QSize kPicture(200, 200); // pixels, the room of the preview

QStringList filtersOf(ParamKind kind)
{
    if (kind == ParamKind::QmlFile) {
        return {"*.qml"};
    }
    QStringList filters;
    if (kind == ParamKind::PictureFile) {
        const QList<QByteArray> formats = QImageReader::supportedImageFormats();
        for (const QByteArray& format : formats) {
            filters.append("*." + format);
        }
    }
    return filters;
}

/// Where the file lies; the panel's folder for one that comes with the program, and for none.
QDir folderOf(const QString& file)
{
    const QFileInfo info(file);
    return file.isEmpty() || file.startsWith(':') || !info.dir().exists() ? QDir::current()
                                                                          : info.absoluteDir();
}

} // namespace

FileSheet::FileSheet(QWidget& opener, ParamKind kind, const QString& now)
    : Sheet(opener, tr("File")),
      m_kind(kind),
      m_panelFolder(QDir::current()),
      m_folder(folderOf(now)),
      m_where(new QLabel),
      m_files(new QListWidget),
      m_picture(new QLabel),
      m_use(addKey(tr("Use")))
{
    m_files->setObjectName("files");
    m_files->setUniformItemSizes(true);
    m_files->setVerticalScrollMode(QListWidget::ScrollPerPixel);
    QScroller::grabGesture(m_files->viewport(), QScroller::TouchGesture);
    m_picture->setObjectName("preview");
    m_picture->setFixedSize(kPicture);
    m_picture->setAlignment(Qt::AlignCenter);
    m_where->setFont(font());
    m_where->setTextFormat(Qt::PlainText);
    m_use->setObjectName("use");
    auto* const row = new QHBoxLayout;
    row->addWidget(m_files, 1);
    row->addWidget(m_picture);
    m_picture->setHidden(kind != ParamKind::PictureFile);
    content().addWidget(m_where);
    content().addLayout(row, 1);
    connect(m_files, &QListWidget::currentItemChanged, this, &FileSheet::preview);
    connect(m_files, &QListWidget::itemActivated, this, &FileSheet::use);
    connect(m_use, &QPushButton::clicked, this, &FileSheet::use);
    list();
    m_files->setFocus();
}

void FileSheet::list()
{
    const int height = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
    m_files->clear();
    m_where->setText(m_folder.absolutePath());
    const QFileInfoList entries =
        m_folder.entryInfoList(filtersOf(m_kind), QDir::AllDirs | QDir::Files | QDir::NoDot,
                               QDir::DirsFirst | QDir::Name | QDir::IgnoreCase);
    for (const QFileInfo& entry : entries.mid(0, kMaxFiles)) {
        auto* const item = new QListWidgetItem(entry.fileName() + (entry.isDir() ? "/" : ""));
        item->setData(Qt::UserRole, entry.absoluteFilePath());
        item->setSizeHint({height, height});
        m_files->addItem(item);
    }
    m_files->setCurrentRow(0);
    preview();
}

QString FileSheet::current() const
{
    const QListWidgetItem* const item = m_files->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

void FileSheet::use()
{
    const QString path = current();
    if (path.isEmpty()) {
        return;
    }
    if (QFileInfo(path).isDir()) {
        m_folder = QDir(QDir::cleanPath(path));
        return list();
    }
    const QString relative = m_panelFolder.relativeFilePath(path);
    accept();
    emit chosen(relative.startsWith("../") ? path : relative);
}

/// Read no larger than it is shown.
void FileSheet::preview()
{
    const QString path = current();
    m_use->setEnabled(!path.isEmpty());
    m_use->setText(QFileInfo(path).isDir() ? tr("Open") : tr("Use"));
    m_picture->clear();
    if (m_kind != ParamKind::PictureFile || path.isEmpty() || QFileInfo(path).isDir()) {
        return;
    }
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    if (reader.size().width() > kPicture.width() || reader.size().height() > kPicture.height()) {
        reader.setScaledSize(reader.size().scaled(kPicture, Qt::KeepAspectRatio));
    }
    m_picture->setPixmap(QPixmap::fromImage(reader.read()));
}

} // namespace norvo
