#include "plugin/Plugin.h"

#include "axis/ValueAxis.h"
#include "cursors/GraphCursor.h"
#include "cursors/GraphCursorAttached.h"
#include "cursors/GraphCursorY.h"
#include "cursors/GraphMarker.h"
#include "data/PlotBands.h"
#include "data/PlotPoints.h"
#include "data/PlotRegion.h"
#include "data/PlotRegions.h"
#include "data/PlotSeries.h"
#include "painters/CrossPainter.h"
#include "painters/CustomPainter.h"
#include "painters/IntegralPainter.h"
#include "painters/SegmentPainter.h"
#include "painters/TextPainter.h"
#include "platform/bus/OrnData.h"
#include "platform/ui/BaseFormatter.h"
#include "plots/AreaPlot.h"
#include "plots/ChannelPlot.h"
#include "plots/ContainerPlot.h"
#include "plots/GraphBands.h"
#include "plots/GraphPlot.h"
#include "plots/GraphPointActiveMarker.h"
#include "plots/GraphPointPictogramMarker.h"
#include "plots/GraphPointReflections.h"
#include "plots/GraphPointShapes.h"
#include "plots/HeatmapPlot.h"
#include "plugin/Test.h"
#include "view/base/XYScale.h"
#include "view/frame/GraphView.h"
#include "view/frame/WorldPlot.h"
#include "view/frame/WorldView.h"
#include "view/zoom/ZoomRect.h"

#include <QByteArray>
#include <QtQml>

namespace {

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
void registerPainterInterface(const char *uri)
{
    qmlRegisterInterface<BasePainter>(uri, 1);
}
#else
// The form with a URI, which Qt recommends, would tie the interface to one module name.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
void registerPainterInterface(const char *)
{
    qmlRegisterInterface<BasePainter>("BasePainter");
}
QT_WARNING_POP
#endif

} // namespace

void Plugin::registerTypes(const char *uri)
{
    // The module's usual name, deliberately not compared with the URI: the types work under any name.
    const QByteArray moduleName("graph_plugin");
    Q_UNUSED(moduleName)

    // Types of properties that no document creates.
    qRegisterMetaType<BaseFormatter *>();
    qRegisterMetaType<OrnData *>();

    // The order is part of the interface: the attached type has to be known before the cursor that hands it out.
    qmlRegisterUncreatableType<AbstractPlot>(
        uri, 1, 0, "AbstractPlot",
        "Trying to create uncreatable: AbstractPlot. Use specific types of plots instead.");
    qmlRegisterType<AreaPlot>(uri, 1, 0, "AreaPlot");
    qmlRegisterType<ChannelPlot>(uri, 1, 0, "ChannelPlot");
    qmlRegisterType<GraphBands>(uri, 1, 0, "GraphBands");
    qmlRegisterAnonymousType<GraphCursorAttached>(uri, 1);
    qmlRegisterType<GraphCursor>(uri, 1, 0, "GraphCursor");
    qmlRegisterType<GraphCursorY>(uri, 1, 0, "GraphCursorY");
    qmlRegisterType<GraphMarker>(uri, 1, 0, "GraphMarker");
    qmlRegisterType<GraphPlot>(uri, 1, 0, "GraphPlot");
    qmlRegisterUncreatableType<GraphPoint>(
        uri, 1, 0, "GraphPoint",
        "Trying to create uncreatable: GraphPoint. Use specific types of points instead.");
    qmlRegisterType<GraphPointDot>(uri, 1, 0, "GraphPointDot");
    qmlRegisterType<GraphPointCircle>(uri, 1, 0, "GraphPointCircle");
    qmlRegisterType<GraphPointCross>(uri, 1, 0, "GraphPointCross");
    qmlRegisterType<GraphPointHorizontalLine>(uri, 1, 0, "GraphPointHorizontalLine");
    qmlRegisterType<GraphPointVerticalLine>(uri, 1, 0, "GraphPointVerticalLine");
    qmlRegisterType<GraphPointMarker>(uri, 1, 0, "GraphPointMarker");
    qmlRegisterType<GraphPointReflections>(uri, 1, 0, "GraphPointReflections");
    qmlRegisterType<GraphPointActiveMarker>(uri, 1, 0, "GraphPointActiveMarker");
    qmlRegisterType<GraphPointPictogramMarker>(uri, 1, 0, "GraphPointPictogramMarker");
    qmlRegisterType<GraphView>(uri, 1, 0, "GraphView");
    qmlRegisterType<HeatmapPlot>(uri, 1, 0, "HeatmapPlot");
    qmlRegisterType<WorldPlot>(uri, 1, 0, "WorldPlot");
    qmlRegisterType<WorldView>(uri, 1, 0, "WorldView");
    qmlRegisterType<ValueAxis>(uri, 1, 0, "ValueAxis");
    qmlRegisterType<XYScale>(uri, 1, 0, "XYScale");
    qmlRegisterType<ZoomRect>(uri, 1, 0, "ZoomRect");
    qmlRegisterType<Test>(uri, 1, 0, "Test");
    qmlRegisterUncreatableType<PlotData>(
        uri, 1, 0, "PlotData", "Trying to create uncreatable: PlotData. Use specific types of data instead.");
    qmlRegisterType<PlotSeries>(uri, 1, 0, "PlotSeries");
    qmlRegisterType<PlotPoints>(uri, 1, 0, "PlotPoints");
    qmlRegisterType<PlotBands>(uri, 1, 0, "PlotBands");
    qmlRegisterType<PlotRegion>(uri, 1, 0, "PlotRegion");
    qmlRegisterType<PlotRegions>(uri, 1, 0, "PlotRegions");
    registerPainterInterface(uri);
    qmlRegisterType<ContainerPlot>(uri, 1, 0, "ContainerPlot");
    qmlRegisterType<CrossPainter>(uri, 1, 0, "CrossPainter");
    qmlRegisterType<CustomPainter>(uri, 1, 0, "CustomPainter");
    qmlRegisterType<SegmentPainter>(uri, 1, 0, "SegmentPainter");
    qmlRegisterType<IntegralPainter>(uri, 1, 0, "IntegralPainter");
    qmlRegisterType<TextPainter>(uri, 1, 0, "TextPainter");
}
