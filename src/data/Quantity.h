#pragma once

#include "platform/ui/BaseFormatter.h"

#include <QPointer>
#include <QString>

class QObject;

// One of the two quantities of a trace: its name, its nominal range, and how its values become text.
struct Quantity
{
    QString label;
    int sigDigs = 4;
    int precision = 2;
    double rangeBegin = 0.0;
    double rangeEnd = 0.0;
    QPointer<BaseFormatter> formatter; // null without a unit

    // The unit is not kept but asked of the formatter; empty without one.
    QString units() const;
    QString formatted(double value) const;
    // Lets go of the formatter and takes the one for the unit, which becomes a child of `owner`.
    void replaceFormatter(const QString &units, QObject *owner);
};
