#include "kit/data/MinHold.h"

#include "kit/data/Computing.h"

namespace graph {

/*!
    \qmltype MinHold
    \inherits PlotData
    \inqmlmodule graph_kit
    \brief The least value at each x since the beginning, of a trace that is measured again and again.

    \image smoothed.png The least of a trace below it

    \code
    Trace { series: MinHold { source: measured } }
    \endcode

    As \l MaxHold in everything else.

    \qmlproperty PlotData MinHold::source
    What is held, see \l MaxHold::source.

    \qmlproperty bool MinHold::running
    While false, changes of the source are not taken. True by default.

    \qmlmethod void MinHold::clear()
    Forgets what is held; the next change of the source starts again.
*/
MinHold::MinHold(QObject *parent)
    : ComputedData(parent)
{
}

void MinHold::compute(const double *values, double *result, int count, bool first)
{
    if (first)
        std::copy(values, values + count, result);
    else
        holdLeast(result, values, count);
}

} // namespace graph
