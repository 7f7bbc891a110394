#include "platform/ui/ServerModule.h"

QString ServerModule::getBacktrace()
{
    return {};
}
