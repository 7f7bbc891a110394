#include "kit/data/Smooth.h"

#include "kit/data/Telling.h"

#include "kit/data/Computing.h"

namespace graph {

/*!
    \qmltype Smooth
    \inherits PlotData
    \inqmlmodule graph_kit
    \brief Each sample becomes the mean of those around it.

    Samples that are not finite are passed over; where there are no others in the window the result is NaN.
    Near the ends the window has the samples that there are.

    \qmlproperty PlotData Smooth::source
    The trace that is smoothed, any data. Null by default and once it is gone: there are no samples then. A
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
    counts as the next odd one, less than 1 as 1, which leaves the trace as it is, with a line in
    \c graph.kit. The time that it takes does not depend on it.
*/
void Smooth::setWindow(int window)
{
    if (window < 1)
        tell(this, QStringLiteral("has a window of %1, which counts as 1: write an odd number of samples")
                       .arg(window));
    if (m_window == window)
        return;
    m_window = window;
    emit windowChanged();
    computeAgain();
}

void Smooth::compute(const double *values, double *result, int count, bool)
{
    smooth(result, values, count, m_window / 2);
}

} // namespace graph
