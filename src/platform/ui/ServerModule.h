#pragma once

#include <QString>

class ServerModule
{
public:
    // The caller's stack, one symbolised frame a line.
    static QString getBacktrace();
};
