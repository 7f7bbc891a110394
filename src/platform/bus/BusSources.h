#pragma once

class BusCourier;
class QString;
struct BusItems;

// Where clients get their items from.
class BusSources
{
public:
    virtual ~BusSources() = default;

    // The way to the bus, made when first asked for.
    virtual BusCourier &courier() = 0;
    // Those of a publisher in this process; null without one.
    virtual const BusItems *itemsInProcess(const QString &serviceName) const = 0;
};
