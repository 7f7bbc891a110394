#include "kit/data/Difference.h"

#include "kit/data/Computing.h"

#include <algorithm>

namespace graph {

/*!
    \qmltype Difference
    \inherits PlotData
    \inqmlmodule graph_kit
    \brief A trace minus another one, sample by sample.

    \image smoothed.png A trace, its smoothed form, and the difference of the two

    \code
    Trace { series: Difference { source: measured; reference: smoothed } }
    \endcode

    It has the x of the source. Samples are paired by their places in ascending order of x, whichever x the
    reference has; the shorter trace counts. Where one of the two is NaN, so is the result.

    \qmlproperty PlotData Difference::source
    What is subtracted from: a Trace or another plot, or any data. Null by default and once it is gone: there are no samples then. A
    source that is computed from this trace is refused, with a line in \c graph.kit.

    \qmlproperty bool Difference::running
    While false, changes of source and reference are not taken. True by default.

    \qmlmethod void Difference::clear()
    Leaves no samples until one of the two changes.
*/
Difference::Difference(QObject *parent)
    : ComputedData(parent)
{
}

/*!
    \qmlproperty PlotData Difference::reference
    What is subtracted, as \c source is given.
*/
bool Difference::useReference(PlotData *reference)
{
    if (m_reference == reference)
        return true;
    if (!connectInput(m_reference, reference))
        return false;
    emit referenceChanged();
    computeAgain();
    return true;
}

int Difference::resultSize(int sourceSize) const
{
    return m_reference ? std::min(sourceSize, Ordinates(m_reference).size()) : 0;
}

void Difference::compute(const double *values, double *result, int count, bool)
{
    subtract(result, values, Ordinates(m_reference).values(), count);
}

} // namespace graph
