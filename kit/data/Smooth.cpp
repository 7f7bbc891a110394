#include "kit/data/Smooth.h"

#include "kit/data/Computing.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"

namespace graph {

/*!
    \qmltype Smooth
    \inherits PlotData
    \inqmlmodule graph_kit
    \brief Each sample becomes the mean of those around it.

    \image smoothed.png A noisy trace and its means

    \code
    Trace { id: smoothed; series: Smooth { source: measured; window: 25 } }
    \endcode

    Samples that are not finite are passed over; where there are no others in the window the result is NaN.
    Near the ends the window has the samples that there are.

    \qmlproperty PlotData Smooth::source
    What is smoothed: a Trace or another plot, or any data. Null by default and once it is gone: there are no samples then. A
    source that is computed from this trace is refused, with a line in \c graph.kit.

    \qmlproperty bool Smooth::running
    While false, changes of the source are not taken. True by default.

    \qmlmethod void Smooth::clear()
    Leaves no samples until the source changes.
*/
Smooth::Smooth(QObject *parent)
    : ComputedData(parent)
{
}

/*!
    \qmlproperty int Smooth::window
    How many samples the mean is taken of, the sample itself in their middle. Default: 5. An even number
    counts as the next odd one; 1, the least, leaves the trace as it is. The time that it takes does not depend on it.
*/
void Smooth::setWindow(int window)
{
    if (!store(m_window, bounded(this, "window", window, 1)))
        return;
    emit windowChanged();
    computeAgain();
}

void Smooth::compute(const double *values, double *result, int count, bool)
{
    smooth(result, values, count, m_window / 2);
}

} // namespace graph
