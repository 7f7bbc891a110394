#pragma once

#include "platform/ui/Export.h"

#include <QString>

class GRAPH_UI_EXPORT ServerModule
{
public:
    // The caller's stack, one symbolised frame a line.
    static QString getBacktrace();
};
