#include "kit/plugin/KitPlugin.h"

#include "axis/ValueAxis.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartTexts.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/ChartView.h"
#include "kit/chart/CursorPosition.h"
#include "kit/chart/CursorReading.h"
#include "kit/chart/CursorSwitches.h"
#include "kit/chart/Diagnosis.h"
#include "kit/chart/Formatter.h"
#include "kit/chart/LegendSwitches.h"
#include "kit/chart/LegendValue.h"
#include "kit/chart/ZoomSwitches.h"
#include "kit/data/Average.h"
#include "kit/data/Difference.h"
#include "kit/data/MaxHold.h"
#include "kit/data/MinHold.h"
#include "kit/data/PeakList.h"
#include "kit/data/Smooth.h"
#include "kit/data/Statistics.h"
#include "kit/data/StreamPoints.h"
#include "kit/data/StreamSeries.h"
#include "kit/plots/ColorScale.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "platform/bus/OrnData.h"
#include "platform/ui/BaseFormatter.h"
#include "view/zoom/ZoomRect.h"

#include <QtQml>

void KitPlugin::registerTypes(const char *uri)
{
    qmlRegisterModule(uri, 1, 0);
    // The types of properties, for documents that import no other module.
    qmlRegisterAnonymousType<AbstractPlot>(uri, 1);
    qmlRegisterAnonymousType<BaseFormatter>(uri, 1);
    qmlRegisterAnonymousType<PlotData>(uri, 1);
    qmlRegisterAnonymousType<ValueAxis>(uri, 1);
    qmlRegisterAnonymousType<ZoomRect>(uri, 1);
    qmlRegisterType<graph::Average>(uri, 1, 0, "Average");
    qmlRegisterType<graph::ChartAxis>(uri, 1, 0, "ChartAxis");
    qmlRegisterAnonymousType<graph::ChartTexts>(uri, 1);
    qmlRegisterType<graph::ChartTheme>(uri, 1, 0, "ChartTheme");
    qmlRegisterType<graph::ChartView>(uri, 1, 0, "ChartView");
    qmlRegisterType<graph::ColorScale>(uri, 1, 0, "ColorScale");
    qmlRegisterType<graph::CursorPosition>(uri, 1, 0, "CursorPosition");
    qmlRegisterType<graph::CursorReading>(uri, 1, 0, "CursorReading");
    qmlRegisterAnonymousType<graph::CursorSwitches>(uri, 1);
    qmlRegisterType<graph::Diagnosis>(uri, 1, 0, "Diagnosis");
    qmlRegisterType<graph::Difference>(uri, 1, 0, "Difference");
    qmlRegisterType<graph::Formatter>(uri, 1, 0, "Formatter");
    qmlRegisterAnonymousType<graph::LegendSwitches>(uri, 1);
    qmlRegisterType<graph::LegendValue>(uri, 1, 0, "LegendValue");
    qmlRegisterType<graph::LimitLine>(uri, 1, 0, "LimitLine");
    qmlRegisterType<graph::MaxHold>(uri, 1, 0, "MaxHold");
    qmlRegisterType<graph::MinHold>(uri, 1, 0, "MinHold");
    qmlRegisterType<OrnData>(uri, 1, 0, "OrnData");
    qmlRegisterType<graph::PeakList>(uri, 1, 0, "PeakList");
    qmlRegisterType<graph::Smooth>(uri, 1, 0, "Smooth");
    qmlRegisterType<graph::Statistics>(uri, 1, 0, "Statistics");
    qmlRegisterType<graph::StreamPoints>(uri, 1, 0, "StreamPoints");
    qmlRegisterType<graph::StreamSeries>(uri, 1, 0, "StreamSeries");
    qmlRegisterType<graph::Trace>(uri, 1, 0, "Trace");
    qmlRegisterType<graph::WaterfallPlot>(uri, 1, 0, "WaterfallPlot");
    qmlRegisterAnonymousType<graph::ZoomSwitches>(uri, 1);
}
