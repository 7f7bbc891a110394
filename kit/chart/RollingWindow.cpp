#include "kit/chart/RollingWindow.h"

#include <QDateTime>

namespace graph {

Span rollingWindow(const Span &data, double seconds, bool isTime)
{
    if (!data.isEmpty())
        return data.length() < seconds ? Span{data.from, data.from + seconds}
                                       : Span{data.to - seconds, data.to};
    if (!isTime)
        return {0.0, seconds};
    const double now = QDateTime::currentMSecsSinceEpoch() / 1000.0;
    return {now - seconds, now};
}

} // namespace graph
