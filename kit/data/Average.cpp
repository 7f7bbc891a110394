#include "kit/data/Average.h"

#include "kit/data/Store.h"
#include "kit/data/Telling.h"

namespace graph {

/*!
    \qmltype Average
    \inherits PlotData
    \inqmlmodule graph_kit
    \brief The mean at each x of a trace that is measured again and again.

    \image computed.png A noisy trace, its average and the most it ever was

    Each change of the source is taken once, when its \c plotChanged() comes. A source with another number of
    samples, or with others x, starts again. Values that are not finite are passed over; where there were no
    others the result is NaN.

    \code
    Average { source: spectrum; count: 32; power: true }
    \endcode

    \qmlproperty PlotData Average::source
    What is averaged: a Trace or another plot, or any data. Null by default and once it is gone: there are no samples then.
    Another source starts again. A source that is computed from this trace is refused, with a line in \c
    graph.kit.

    \qmlproperty bool Average::running
    While false, changes of the source are not taken. True again, the source's present trace is. True by
    default.

    \qmlmethod void Average::clear()
    Forgets all traces; the next change of the source starts again.
*/
Average::Average(QObject *parent)
    : ComputedData(parent)
{
}

/*!
    \qmlproperty int Average::count
    Of how many traces the mean is. Until there are as many it is that of all. Default: 16; at least 1. A change starts again, as one of \c mode and \c power does.
*/
void Average::setCount(int count)
{
    if (!store(m_count, bounded(this, "count", count, 1)))
        return;
    emit countChanged();
    beginAgain();
}

/*!
    \qmlproperty enumeration Average::mode
    Average.Linear (default): the last \c count traces count alike, for which all of them are kept.
    Average.Exponential: the newest counts 1 / \c count, those before it less and less; the first ones, up to
    \c count, count alike.
*/
void Average::setMode(Mode mode)
{
    if (!store(m_mode, bounded(this, "mode", mode, Linear, Exponential)))
        return;
    emit modeChanged();
    beginAgain();
}

/*!
    \qmlproperty bool Average::power
    The values are levels in dB whose powers are averaged: the mean of 0 dB and 10 dB is 7.4 dB. Default:
    false.
*/
void Average::setPower(bool power)
{
    if (m_power == power)
        return;
    m_power = power;
    emit powerChanged();
    beginAgain();
}

void Average::beginAgain()
{
    clear();
    computeAgain();
}

void Average::forget()
{
    m_average.reset(m_count, m_power ? TraceAverage::Powers : TraceAverage::Values);
}

void Average::compute(const double *values, double *result, int count, bool)
{
    if (m_mode == Exponential)
        m_average.addExponential(values, result, count);
    else
        m_average.addLinear(values, result, count);
}

} // namespace graph
