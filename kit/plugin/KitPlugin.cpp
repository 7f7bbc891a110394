#include "kit/plugin/KitPlugin.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/Diagnosis.h"
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

#include <QtQml>

void KitPlugin::registerTypes(const char *uri)
{
    qmlRegisterModule(uri, 1, 0);
    qmlRegisterType<graph::Average>(uri, 1, 0, "Average");
    qmlRegisterType<graph::ChartAxis>(uri, 1, 0, "ChartAxis");
    qmlRegisterType<graph::ColorScale>(uri, 1, 0, "ColorScale");
    qmlRegisterType<graph::Diagnosis>(uri, 1, 0, "Diagnosis");
    qmlRegisterType<graph::Difference>(uri, 1, 0, "Difference");
    qmlRegisterType<graph::LimitLine>(uri, 1, 0, "LimitLine");
    qmlRegisterType<graph::MaxHold>(uri, 1, 0, "MaxHold");
    qmlRegisterType<graph::MinHold>(uri, 1, 0, "MinHold");
    qmlRegisterType<graph::PeakList>(uri, 1, 0, "PeakList");
    qmlRegisterType<graph::Smooth>(uri, 1, 0, "Smooth");
    qmlRegisterType<graph::Statistics>(uri, 1, 0, "Statistics");
    qmlRegisterType<graph::StreamPoints>(uri, 1, 0, "StreamPoints");
    qmlRegisterType<graph::StreamSeries>(uri, 1, 0, "StreamSeries");
    qmlRegisterType<graph::Trace>(uri, 1, 0, "Trace");
    qmlRegisterType<graph::WaterfallPlot>(uri, 1, 0, "WaterfallPlot");
}
