#include "kit/chart/PartChecks.h"

#include "axis/ValueAxis.h"
#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "kit/chart/DataChecks.h"
#include "kit/data/ItemName.h"
#include "kit/data/StreamData.h"
#include "kit/plots/ColorScale.h"
#include "kit/plots/DataExtent.h"
#include "kit/plots/WaterfallPlot.h"
#include "plots/HeatmapPlot.h"
#include "view/frame/GraphView.h"
#include "view/zoom/ZoomRect.h"

#include <QJSValue>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

QVariantList elementsOf(const QQuickItem &item, const char *property)
{
    const QVariant list = item.property(property);
    return list.userType() == qMetaTypeId<QJSValue>() ? list.value<QJSValue>().toVariant().toList()
                                                      : list.toList();
}

bool isPart(const QQuickItem &item, const char *type)
{
    const QByteArray name(item.metaObject()->className());
    return name.startsWith(type) && name.mid(int(qstrlen(type))).startsWith("_QML");
}

// A part that does nothing without what it is for.
QString withoutTarget(const QQuickItem &item)
{
    struct Need
    {
        const char *part;
        const char *property;
        const char *advice;
    };
    static const Need needs[] = {
        {"ZoomArea", "zoomRect",
         "and does not zoom: write zoomRect: view.zoomRect; a Chart needs no ZoomArea"},
        {"BoxZoom", "zoomRect", "and does not zoom: write zoomRect: view.zoomRect; a Chart needs no BoxZoom"},
        {"PeakButtons", "cursor", "and moves nothing: write cursor and the id of a GraphCursor"},
        {"CursorReadout", "plot", "and has nothing to read: write plot and the id of a trace"},
    };
    for (const Need &need : needs) {
        if (isPart(item, need.part) && !item.property(need.property).value<QObject *>())
            return QStringLiteral("has no %1 %2")
                .arg(QLatin1String(need.property), QLatin1String(need.advice));
    }
    const bool isNameless = isPart(item, "Legend") && !item.parentItem()->inherits("QQuickLoader") &&
                            !elementsOf(item, "plots").isEmpty() && elementsOf(item, "_named").isEmpty();
    return isNameless
               ? QStringLiteral("has no entries, because none of its plots has a name: write name: \"Level\" "
                                "in each Trace")
               : QString();
}

QString withoutLevels(const ColorScale &scale)
{
    const AbstractPlot *plot = scale.plot();
    if (!plot)
        return QStringLiteral("has no plot and shows nothing: write plot and the id of the plot");
    if (qobject_cast<const WaterfallPlot *>(plot) || qobject_cast<const HeatmapPlot *>(plot))
        return {};
    return QStringLiteral("shows nothing of %1, which has no colours for its levels: write the id of a "
                          "WaterfallPlot or a HeatmapPlot")
        .arg(nameOf(plot));
}

QString withoutView(const GraphCursor &cursor, bool isInView)
{
    const QQuickItem *parent = cursor.parentItem();
    if (isInView || (parent && parent->property("zoomRect").value<ZoomRect *>()))
        return {};
    return cursorInNoView();
}

QString outOfPlace(const QQuickItem &item, bool isInView)
{
    if (const auto *scale = qobject_cast<const ColorScale *>(&item))
        return withoutLevels(*scale);
    if (const auto *cursor = qobject_cast<const GraphCursor *>(&item))
        return withoutView(*cursor, isInView);
    if (qobject_cast<const GraphCursor *>(item.parentItem()))
        return withoutTarget(item);
    const bool isTag = isPart(item, "CursorTag") && !item.property("cursor").value<QObject *>();
    if (isTag || isPart(item, "CursorReadout"))
        return QStringLiteral(
            "is not in a cursor and has nothing to read: move it into the braces of a GraphCursor");
    return withoutTarget(item);
}

struct Look
{
    const GraphView &view;
    QVector<Finding> inside;
    QVector<Finding> outside; // of all views
};

void lookAt(const QQuickItem &item, const GraphView *around, Look *look)
{
    // A tag hides while it has nothing to say.
    if (!item.isVisible() && !isPart(item, "CursorTag"))
        return;
    if (const auto *view = qobject_cast<const GraphView *>(&item))
        around = view;
    const QString text = around && around != &look->view ? QString() : outOfPlace(item, around);
    if (!text.isEmpty())
        (around ? look->inside : look->outside).append({&item, text});
    const QList<QQuickItem *> children = item.childItems();
    for (const QQuickItem *child : children)
        lookAt(*child, around, look);
}

bool mayGrow(const PlotData &data)
{
    return qobject_cast<const StreamData *>(&data) || !data.dbusAddress().isEmpty();
}

// Of a line along x, whose value counts as the index of a sample, too.
QString atAnotherLevel(const GraphCursor &cursor)
{
    const PlotData *data = cursor.primarySeries();
    const ValueAxis *axis = cursor.followedAxis();
    if (!cursor.isHorizontal() || !cursor.writtenValue() || !axis || !data || !hasSamples(*data) ||
        mayGrow(*data))
        return {};
    const double written = *cursor.writtenValue();
    const QString is =
        QStringLiteral("has a posValue of %1 and is at %2, because ").arg(written).arg(cursor.posValue());
    const auto [lowest, highest] = std::minmax({axis->minValue(), axis->maxValue()});
    if (written < lowest || written > highest)
        return is + QStringLiteral("its axis goes from %1 to %2: write one of these values, or a wider range")
                        .arg(lowest)
                        .arg(highest);
    if (written >= data->size())
        return is + QStringLiteral("it has to be below the number of samples, of which %1 has %2: write "
                                   "LimitLine { values: %3 } for a line at that level")
                        .arg(nameOf(data))
                        .arg(data->size())
                        .arg(written);
    if (cursor.staysOnScreen() && written != std::trunc(written))
        return is + QStringLiteral("a horizontal cursor that stays on the screen is at whole numbers: write "
                                   "staysOnScreen: false");
    return {};
}

// Nothing where the data may still come as far.
QString beyondData(const GraphMarker &marker)
{
    const PlotData *data = marker.primarySeries();
    if (!marker.awaitedValue() || !data || !hasSamples(*data) || mayGrow(*data))
        return {};
    const MinMax x = extentX(*data);
    if (x.min > x.max)
        return {};
    return QStringLiteral(
               "has a posValue of %1, where %2 has no sample, and is not drawn: write one from %3 to %4")
        .arg(*marker.awaitedValue())
        .arg(nameOf(data))
        .arg(x.min)
        .arg(x.max);
}

// A marker is an object of the cursor whose list it is in.
void lookAtCursors(const GraphView &view, QVector<Finding> *findings)
{
    QVector<const GraphMarker *> taken;
    const auto isForgotten = [](const GraphMarker *marker) {
        return marker && !marker->isVisible() && !marker->hasWrittenVisible() && marker->posValue() != 0.0;
    };
    const auto cursors = view.findChildren<GraphCursor *>();
    for (GraphCursor *cursor : cursors) {
        if (const QString text = atAnotherLevel(*cursor); !text.isEmpty())
            findings->append({cursor, text});
        QQmlListProperty<GraphMarker> markers = cursor->markers();
        for (ListIndex i = 0; i < markers.count(&markers); ++i)
            taken.append(markers.at(&markers, i));
    }
    for (const GraphMarker *marker : qAsConst(taken)) {
        if (isForgotten(marker))
            findings->append(
                {marker, QStringLiteral("has a posValue and is not drawn: write visible: true in it, or "
                                        "visible: false if that is meant")});
        else if (const QString text = marker ? beyondData(*marker) : QString(); !text.isEmpty())
            findings->append({marker, text});
    }
    const auto tellOfOthers = [&](const QObject &parent, const QString &text) {
        const auto markers = parent.findChildren<GraphMarker *>(QString(), Qt::FindDirectChildrenOnly);
        for (const GraphMarker *marker : markers) {
            if (!taken.contains(marker))
                findings->append({marker, text});
        }
    };
    tellOfOthers(view, QStringLiteral("is in no cursor and is not drawn: write GraphCursor { markers: "
                                      "GraphMarker { ... } }"));
    for (const GraphCursor *cursor : cursors)
        tellOfOthers(*cursor,
                     QStringLiteral("is in a cursor, but not in its markers, and is not drawn: write "
                                    "markers: GraphMarker { ... }"));
}

} // namespace

QString cursorInNoView()
{
    return QStringLiteral("is in no view and has no plots: move it into the braces of a chart");
}

QVector<Finding> misplacedParts(const GraphView &view, bool withStrays)
{
    Look look{view, {}, {}};
    const QQuickItem *top = view.window() ? view.window()->contentItem() : nullptr;
    lookAt(top ? *top : static_cast<const QQuickItem &>(view), nullptr, &look);
    QVector<Finding> findings = look.inside;
    if (withStrays)
        findings += look.outside;
    lookAtCursors(view, &findings);
    return findings;
}

} // namespace graph
