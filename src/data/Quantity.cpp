#include "data/Quantity.h"

#include <QVariant>

QString Quantity::units() const
{
    return formatter ? formatter->getType() : QString();
}

QString Quantity::formatted(double value) const
{
    return formatter ? formatter->formatValue(QVariant(value)) : QString::number(value, 'g', 6);
}

void Quantity::replaceFormatter(const QString &units, QObject *owner)
{
    if (formatter) {
        owner->disconnect(formatter);
        formatter->disconnect(owner);
        formatter->deleteLater(); // not at once: the text it gave may still be on its way to a label
    }
    formatter = getFormatter(units);
    if (!formatter)
        return;
    formatter->setParent(owner);
    formatter->setSigDigs(sigDigs);
    formatter->setPrecision(precision);
}
