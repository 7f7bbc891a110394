#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTemporaryDir>

namespace gallery {

// The folder that the simulated analyzer writes its heat maps into, and that goes with this program.
class HeatmapFolder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString path READ path CONSTANT)
    // Stays when the file has been read and deleted, and is announced again for a new file of the same name.
    Q_PROPERTY(QString newestFile READ newestFile NOTIFY newestFileChanged)

public:
    explicit HeatmapFolder(QObject *parent = nullptr);

    QString path() const { return m_folder.path(); }
    QString newestFile() const { return m_newestFile; }
    // Forgets what another instrument left.
    void clear();

signals:
    void newestFileChanged();

private slots:
    void look();

private:
    QTemporaryDir m_folder;
    QFileSystemWatcher m_watcher;
    QString m_newestFile;
};

} // namespace gallery
