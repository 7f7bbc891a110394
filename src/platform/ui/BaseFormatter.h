#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

// Turns a value into text with its unit. Obtained by unit name from getFormatter.
class BaseFormatter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual QString formatValue(const QVariant &value) const = 0;
    // The unit name that getFormatter was asked for.
    virtual QString getType() const = 0;

public slots:
    // Significant digits at most, and decimals at most.
    virtual void setSigDigs(int sigDigs) = 0;
    virtual void setPrecision(int precision) = 0;
};

// A new formatter for the unit, owned by the caller; null for an unknown unit.
BaseFormatter *getFormatter(const QString &unit);
