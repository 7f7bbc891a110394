#pragma once

class QDeadlineTimer;

// Is brought what came from the bus.
class BusRecipient
{
public:
    virtual ~BusRecipient() = default;

    // Hands it on until `end`; false when something is left.
    virtual bool deliver(const QDeadlineTimer &end) = 0;
};
