#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QQuickItemGrabResult>
#include <QQuickView>
#include <QSharedPointer>
#include <QStringList>
#include <QTimer>

namespace gallery {

class Shell;

// Opens one page after the other and saves each as a picture as soon as it is ready and does not change any
// more.
class PictureTaker : public QObject
{
    Q_OBJECT

public:
    PictureTaker(Shell *shell, QQuickView *view, QObject *parent = nullptr);

    // With `file` given the one page of the list goes there, else every page into `folder` under its own
    // name.
    void start(const QStringList &pages, const QString &file, const QString &folder);

signals:
    void finished(bool allTaken);

private slots:
    void openNextPage();
    void look();
    void handleGrab();

private:
    void fail(const QString &reason);
    void save(const QImage &picture);

    Shell *m_shell;
    QQuickView *m_view;
    QStringList m_pages;
    QString m_file;
    QString m_folder;
    QTimer m_lookTimer;
    QElapsedTimer m_pageTime;
    QSharedPointer<QQuickItemGrabResult> m_grab;
    QImage m_lastPicture;
    bool m_allTaken = true;
};

} // namespace gallery
