#pragma once

// The regional settings of the instrument.
class SystemLocale
{
public:
    static SystemLocale &instance();

    // 0 = metric, any other value = imperial.
    int getMeasurementSystem() const;

private:
    SystemLocale();

    int m_measurementSystem = 0;
};
