#pragma once

#include "platform/ui/Export.h"

// The regional settings of the instrument, as they were when first asked for: from LC_ALL, else
// LC_MEASUREMENT, else LANG. Metric when none of them names a region.
class GRAPH_UI_EXPORT SystemLocale
{
public:
    static SystemLocale &instance();

    // 0 = metric, any other value = imperial.
    int getMeasurementSystem() const;

private:
    SystemLocale();

    int m_measurementSystem = 0;
};
