#include "QmlTypes.h"

#include "BusValue.h"
#include "FrameMeter.h"
#include "HeatmapFolder.h"
#include "NoisyTraces.h"
#include "TraceHold.h"

#include <QtQml>

namespace gallery {

void registerQmlTypes()
{
    const char *module = "gallery";
    // Known by name, so that a property of the base type takes the derived one.
    qmlRegisterAnonymousType<OrnData>(module, 1);
    qmlRegisterAnonymousType<HeatmapFolder>(module, 1);
    qmlRegisterType<BusValue>(module, 1, 0, "BusValue");
    qmlRegisterType<FrameMeter>(module, 1, 0, "FrameMeter");
    qmlRegisterType<NoisyTraces>(module, 1, 0, "NoisyTraces");
    qmlRegisterType<TraceHold>(module, 1, 0, "TraceHold");
}

} // namespace gallery
