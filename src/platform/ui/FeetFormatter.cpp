#include "platform/ui/FeetFormatter.h"

#include "platform/ui/SystemLocale.h"

#include <limits>

FeetFormatter *FeetFormatter::create(const QString &name)
{
    if (name == QLatin1String("FeetFormatter"))
        return new FeetFormatter(name, QString(), graph::PrefixRange{});
    if (name == QLatin1String("FeetFormatterScaled"))
        return new FeetFormatter(name, QString(), graph::PrefixRange{0, 3});
    return nullptr;
}

QString FeetFormatter::formatValue(const QVariant &value) const
{
    bool isNumber = false;
    double feet = value.toDouble(&isNumber);
    if (!isNumber)
        feet = std::numeric_limits<double>::quiet_NaN();
    const bool isMetric = SystemLocale::instance().getMeasurementSystem() == 0;
    return isMetric ? text(feet * 0.3048, QStringLiteral("m")) : text(feet, QStringLiteral("ft"));
}
