#pragma once

// The regional settings of the instrument, as they were when first asked for: from LC_ALL, else
// LC_MEASUREMENT, else LANG. Metric when none of them names a region.
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
