#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QSharedPointer>
#include <QTimer>
#include <QVector>

namespace graph {

// Takes pictures of items with the scene graph, which needs a frame or two.
class ItemPictures : public QObject
{
    Q_OBJECT

public:
    ItemPictures(const QVector<QQuickItem *> &items, double scale, QObject *parent);

    // Of the items that are still there.
    QHash<QQuickItem *, QImage> pictures() const;

signals:
    // All are taken, or it has lasted too long. From the event loop.
    void taken();

private slots:
    void handleReady();

private:
    struct Grab
    {
        QPointer<QQuickItem> item;
        QSharedPointer<QQuickItemGrabResult> result;
    };

    QVector<Grab> m_grabs;
    QTimer m_patience;
};

} // namespace graph
