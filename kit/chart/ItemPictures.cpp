#include "kit/chart/ItemPictures.h"

#include <QQuickWindow>

#include <algorithm>

namespace graph {

namespace {

// No frame comes for a window that has just been hidden.
constexpr int patience = 2000;

} // namespace

ItemPictures::ItemPictures(const QVector<QQuickItem *> &items, double scale, QObject *parent)
    : QObject(parent)
{
    for (QQuickItem *item : items) {
        const QSize size = (item->size() * scale).toSize();
        if (size.isEmpty() || !item->window() || !item->window()->isVisible())
            continue;
        if (const auto result = item->grabToImage(size)) {
            connect(result.data(), SIGNAL(ready()), this, SLOT(handleReady()));
            m_grabs.append({item, result});
        }
    }
    connect(&m_patience, SIGNAL(timeout()), this, SIGNAL(taken()));
    m_patience.setSingleShot(true);
    m_patience.start(m_grabs.isEmpty() ? 0 : patience);
}

QHash<QQuickItem *, QImage> ItemPictures::pictures() const
{
    QHash<QQuickItem *, QImage> pictures;
    for (const Grab &grab : m_grabs) {
        if (grab.item)
            pictures.insert(grab.item, grab.result->image());
    }
    return pictures;
}

void ItemPictures::handleReady()
{
    const auto isTaken = [](const Grab &grab) { return !grab.result->image().isNull(); };
    if (std::all_of(m_grabs.begin(), m_grabs.end(), isTaken))
        m_patience.start(0);
}

} // namespace graph
