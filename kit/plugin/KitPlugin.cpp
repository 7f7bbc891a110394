#include "kit/plugin/KitPlugin.h"

#include "kit/plots/Trace.h"

#include <QtQml>

void KitPlugin::registerTypes(const char *uri)
{
    qmlRegisterModule(uri, 1, 0);
    qmlRegisterType<graph::Trace>(uri, 1, 0, "Trace");
}
