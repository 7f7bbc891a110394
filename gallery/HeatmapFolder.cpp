#include "HeatmapFolder.h"

#include <QDir>

namespace gallery {

namespace {

QStringList heatmapFiles(const QString &folder)
{
    return QDir(folder).entryList({"*.heatmap"}, QDir::Files, QDir::Time);
}

} // namespace

HeatmapFolder::HeatmapFolder(QObject *parent)
    : QObject(parent)
    , m_watcher({m_folder.path()})
{
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &HeatmapFolder::look);
}

void HeatmapFolder::clear()
{
    for (const QString &name : heatmapFiles(path()))
        QFile::remove(m_folder.filePath(name));
    m_newestFile.clear();
    emit newestFileChanged();
}

void HeatmapFolder::look()
{
    const QStringList files = heatmapFiles(path());
    if (files.isEmpty())
        return;
    m_newestFile = m_folder.filePath(files.first());
    emit newestFileChanged();
}

} // namespace gallery
