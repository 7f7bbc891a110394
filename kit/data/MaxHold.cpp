#include "kit/data/MaxHold.h"

#include "kit/data/Computing.h"

namespace graph {

/*!
    \qmltype MaxHold
    \inherits PlotData
    \inqmlmodule graph_kit
    \brief The greatest value at each x since the beginning, of a trace that is measured again and again.

    \image computed.png A noisy trace, its average and the most it ever was

    Each change of the source is taken once, when its \c plotChanged() comes. A source with another number of
    samples, or with others x, starts again. NaN is passed over; where all were NaN the result is NaN.

    \code
    MaxHold { source: spectrum }
    \endcode

    \qmlproperty PlotData MaxHold::source
    What is held: a Trace or another plot, or any data. Null by default and once it is gone: there are no samples then. Another
    source starts again. A source that is computed from this trace is refused, with a line in \c graph.kit.

    \qmlproperty bool MaxHold::running
    While false, changes of the source are not taken. True again, the source's present trace is. True by
    default.

    \qmlmethod void MaxHold::clear()
    Forgets what is held; the next change of the source starts again.
*/
MaxHold::MaxHold(QObject *parent)
    : ComputedData(parent)
{
}

void MaxHold::compute(const double *values, double *result, int count, bool first)
{
    if (first)
        std::copy(values, values + count, result);
    else
        holdGreatest(result, values, count);
}

} // namespace graph
