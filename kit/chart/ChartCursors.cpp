#include "kit/chart/ChartCursors.h"

#include "cursors/GraphCursor.h"
#include "kit/chart/ChartTheme.h"

namespace graph {

namespace {

template <typename Visit> void forEachCursor(const QQuickItem &chart, const Visit &visit)
{
    const QList<QQuickItem *> children = chart.childItems();
    for (QQuickItem *child : children) {
        if (auto *cursor = qobject_cast<GraphCursor *>(child))
            visit(cursor);
    }
}

} // namespace

void dressCursors(const QQuickItem &chart, const ChartTheme &theme,
                  const std::function<QString(const ValueAxis *, double)> &distanceText)
{
    forEachCursor(chart, [&](GraphCursor *cursor) {
        const auto text = [distanceText, cursor](double distance) {
            return distanceText(cursor->followedAxis(), distance);
        };
        cursor->setLook(CursorLook{theme.cursorColor(), theme.font(), theme.colorsOfMarkers(), text});
    });
}

void undressCursors(const QQuickItem &chart)
{
    forEachCursor(chart, [](GraphCursor *cursor) { cursor->setLook({}); });
}

void placeWaitingCursors(const QQuickItem &chart)
{
    forEachCursor(chart, [](GraphCursor *cursor) {
        if (cursor->posIndex() < 0 || cursor->awaitedValue())
            cursor->setPosValue(cursor->awaitedValue().value_or(cursor->posValue()));
    });
}

} // namespace graph
