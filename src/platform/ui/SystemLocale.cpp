#include "platform/ui/SystemLocale.h"

#include <QLocale>

SystemLocale &SystemLocale::instance()
{
    static SystemLocale locale;
    return locale;
}

SystemLocale::SystemLocale()
    : m_measurementSystem(QLocale::system().measurementSystem())
{
}

int SystemLocale::getMeasurementSystem() const
{
    return m_measurementSystem;
}
