#pragma once

#include "platform/ui/Export.h"

#include <QObject>
#include <QString>
#include <QVariant>

// Turns a value into text with its unit. Obtained by unit name from getFormatter.
class GRAPH_UI_EXPORT BaseFormatter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual QString formatValue(const QVariant &value) const = 0;
    // The unit name that getFormatter was asked for.
    virtual QString getType() const = 0;

public slots:
    // Significant digits at most, and decimals at most; both 6 when not set.
    virtual void setSigDigs(int sigDigs) = 0;
    virtual void setPrecision(int precision) = 0;
};

// A new formatter for the unit, owned by the caller; null for an unknown unit. Units with SI prefixes chosen
// by the value's size: Hz, s, m, V, A, W, ohm, bit/s, B, count. Without: dB, dBm, dBmV, dBuV, dB/km, %, degC,
// ppm. "FeetFormatter" and "FeetFormatterScaled" take feet and show metres in a metric region. Texts are the
// same in every language ("." before the decimals), have no trailing zeros, and "---" for what is no number.
GRAPH_UI_EXPORT BaseFormatter *getFormatter(const QString &unit);
