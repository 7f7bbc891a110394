#include "kit/data/Statistics.h"

#include <cmath>

namespace graph {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double none = std::numeric_limits<double>::quiet_NaN();

} // namespace

/*!
    \qmltype Statistics
    \inqmlmodule graph_kit
    \brief What the samples of a stretch amount to.

    \image smoothed.png The mean of the last quarter of a trace, above it

    The values follow the data and the stretch, once in a pass of the event loop. Another stretch costs the
    sums of blocks, not a look at each sample; data that are appended to cost what is new. Values that are not
    finite are left out.

    \code
    Statistics { id: band; series: level; from: marker1.posValue; to: marker2.posValue }
    Text { text: "mean " + band.mean }
    \endcode

    \qmlproperty int Statistics::count
    \readonly
    How many samples there are in the stretch.

    \qmlproperty double Statistics::min
    \qmlproperty double Statistics::max
    \qmlproperty double Statistics::mean
    \qmlproperty double Statistics::rms
    \qmlproperty double Statistics::peakToPeak
    \readonly
    The least and the greatest value, their mean, the root of the mean of their squares, and greatest less
    least, in units of y; NaN without samples. The signal of all of them is \c valuesChanged().
*/
Statistics::Statistics(QObject *parent)
    : QObject(parent)
    , m_observer(
          this, [this] { look(); }, [this] { emit seriesChanged(); })
{
}

/*!
    \qmlproperty PlotData Statistics::series
    A Trace or another plot, or data of any kind. Null by default and once they are gone.
*/
void Statistics::useSeries(PlotData *series)
{
    if (!m_observer.setSeries(series))
        return;
    m_blocks = SampleSums();
    emit seriesChanged();
}

/*!
    \qmlproperty double Statistics::from
    \qmlproperty double Statistics::to
    The ends of the stretch in units of x, both included, in either order. By default all samples: from
    -Infinity to Infinity. NaN gives no samples.
*/
void Statistics::setFrom(double from)
{
    if (m_observer.ask(m_from, from))
        emit fromChanged();
}

void Statistics::setTo(double to)
{
    if (m_observer.ask(m_to, to))
        emit toChanged();
}

void Statistics::look()
{
    Sums sums;
    const double low = std::min(m_from, m_to);
    const double high = std::max(m_from, m_to);
    if (series() && low <= high) {
        const SampleSpan samples = series()->sampleSpan(-infinity, infinity);
        m_blocks.follow(samples, series()->history());
        const int first = samples.countBelow(low);
        sums = m_blocks.of(samples, first, std::max(first, samples.countUpTo(high, first)));
    }
    const bool isSame = sums.count == m_sums.count && sums.sum == m_sums.sum &&
                        sums.squares == m_sums.squares && sums.extremes.min == m_sums.extremes.min &&
                        sums.extremes.max == m_sums.extremes.max;
    m_sums = sums;
    if (!isSame)
        emit valuesChanged();
}

double Statistics::min() const
{
    return m_sums.count > 0 ? m_sums.extremes.min : none;
}

double Statistics::max() const
{
    return m_sums.count > 0 ? m_sums.extremes.max : none;
}

double Statistics::mean() const
{
    return m_sums.count > 0 ? m_sums.sum / double(m_sums.count) : none;
}

double Statistics::rms() const
{
    return m_sums.count > 0 ? std::sqrt(m_sums.squares / double(m_sums.count)) : none;
}

} // namespace graph
