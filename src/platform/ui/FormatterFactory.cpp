#include "platform/ui/BaseFormatter.h"

#include "platform/ui/FeetFormatter.h"
#include "platform/ui/UnitFormatter.h"

BaseFormatter *getFormatter(const QString &unit)
{
    if (BaseFormatter *feet = FeetFormatter::create(unit))
        return feet;
    return UnitFormatter::create(unit);
}
