#include "kit/plugin/KitPlugin.h"

#include <QtQml>

void KitPlugin::registerTypes(const char *uri)
{
    qmlRegisterModule(uri, 1, 0);
}
