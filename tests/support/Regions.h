#pragma once

#include "data/PlotRegion.h"

inline PlotRegion *region(double begin, double end, double value, QObject *parent, const QString &name = {})
{
    auto *made = new PlotRegion(parent);
    made->setBegin(begin);
    made->setEnd(end);
    made->setValue(value);
    made->setName(name);
    return made;
}
