#include "axis/AxisLook.h"

namespace graph {

AxisSide AxisLook::side() const
{
    if (alignment & (isHorizontal() ? Qt::AlignBottom : Qt::AlignRight))
        return AxisSide::End;
    return alignment & (isHorizontal() ? Qt::AlignTop : Qt::AlignLeft) ? AxisSide::Begin : AxisSide::Middle;
}

bool AxisLook::hasBand() const
{
    const bool plain = alignment == Qt::AlignLeft || alignment == Qt::AlignRight ||
                       alignment == Qt::AlignTop || alignment == Qt::AlignBottom;
    return plain && margin > 0;
}

QColor AxisLook::unitColor() const
{
    return !isHorizontal() && verticalUnitColor.isValid() ? verticalUnitColor : labelColor;
}

} // namespace graph
