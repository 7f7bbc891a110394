#include "kit/data/PeakList.h"

#include "kit/data/Telling.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double none = std::numeric_limits<double>::quiet_NaN();

} // namespace

/*!
    \qmltype PeakList
    \inqmlmodule graph_kit
    \brief The peaks of a trace between two x, the highest first: a list model for tables and labels.

    \image peaks.png A spectrum and the table of its peaks

    A peak is a sample that is higher than its neighbours; of equal samples beside each other the middle one
    is. The first and the last sample are no peaks, nor are those beside a gap, which bounds like an end.

    Roles: \c position (x) and \c value (y) of the peak, its \c prominence and \c width, and \c index, that of
    the sample in the data. The prominence is how far the peak rises above the higher one of two points: the
    lowest to its left and the lowest to its right, each before a higher sample comes or the data end. The
    width is taken at half the prominence, in units of x. All the data count for both, not only those between
    \c from and \c to.

    In a delegate \c index is the role; the row is not to be had under that name. The list follows the data
    once in a pass of the event loop; one look at all samples for each change of them.

    \code
    ListView {
        model: PeakList { series: spectrum; prominence: 6; limit: 5 }
        delegate: Text { text: position + " Hz: " + value + " dB" }
    }
    \endcode

    \qmlproperty int PeakList::count
    \readonly
    The number of rows.

    \qmlsignal PeakList::peaksChanged()
    The rows have changed, or what \c next and \c previous find.
*/
PeakList::PeakList(QObject *parent)
    : QAbstractListModel(parent)
    , m_observer(
          this, [this] { look(); }, [this] { emit seriesChanged(); })
{
}

/*!
    \qmlproperty PlotData PeakList::series
    A Trace or another plot, or data of any kind. Null by default and once they are gone.
*/
void PeakList::useSeries(PlotData *series)
{
    if (!m_observer.setSeries(series))
        return;
    m_seen = {};
    emit seriesChanged();
}

/*!
    \qmlproperty double PeakList::from
    \qmlproperty double PeakList::to
    Where peaks are listed, in units of x, both ends included, in either order. By default everywhere: from
    -Infinity to Infinity. NaN lists none.
*/
void PeakList::setFrom(double from)
{
    if (m_observer.ask(m_from, from))
        emit fromChanged();
}

void PeakList::setTo(double to)
{
    if (m_observer.ask(m_to, to))
        emit toChanged();
}

/*!
    \qmlproperty double PeakList::prominence
    The least prominence of a peak that counts, in units of y. Default: 0, which lists every local maximum.
*/
void PeakList::setProminence(double prominence)
{
    if (m_observer.ask(m_prominence, bounded(this, "prominence", prominence, 0.0)))
        emit prominenceChanged();
}

/*!
    \qmlproperty int PeakList::limit
    The most rows that are listed; the highest peaks are. Default: 10; 0 lists none.
*/
void PeakList::setLimit(int limit)
{
    if (m_observer.ask(m_limit, bounded(this, "limit", limit, 0)))
        emit limitChanged();
}

int PeakList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant PeakList::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= m_rows.size())
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case PositionRole:
        return row.position;
    case ValueRole:
        return row.value;
    case ProminenceRole:
        return row.prominence;
    case WidthRole:
        return row.width;
    case IndexRole:
        return row.index;
    default:
        return {};
    }
}

QHash<int, QByteArray> PeakList::roleNames() const
{
    return {{PositionRole, "position"},
            {ValueRole, "value"},
            {ProminenceRole, "prominence"},
            {WidthRole, "width"},
            {IndexRole, "index"}};
}

/*!
    \qmlmethod double PeakList::next(double x)
    \qmlmethod double PeakList::previous(double x)
    The position of the nearest peak right or left of x, NaN where there is none. All peaks between \c from
    and \c to that are prominent enough count, not only those that are listed.
*/
double PeakList::next(double x) const
{
    const auto found = std::upper_bound(m_positions.begin(), m_positions.end(), x);
    return std::isnan(x) || found == m_positions.end() ? none : *found;
}

double PeakList::previous(double x) const
{
    const auto found = std::lower_bound(m_positions.begin(), m_positions.end(), x);
    return std::isnan(x) || found == m_positions.begin() ? none : *std::prev(found);
}

void PeakList::look()
{
    SampleSpan samples;
    SampleHistory history;
    if (series()) {
        samples = series()->sampleSpan(-infinity, infinity);
        history = series()->history();
    }
    if (!history.isSame(m_seen))
        m_peaks = findPeaks(samples);
    m_seen = history;
    const double low = std::min(m_from, m_to);
    const double high = std::max(m_from, m_to);
    QVector<Peak> peaks;
    m_positions.clear();
    for (const Peak &peak : qAsConst(m_peaks)) {
        // Data whose interval has become NaN have no positions.
        if (peak.index >= samples.size() || peak.prominence < m_prominence)
            continue;
        const double position = samples.x(peak.index);
        if (!(low <= position && position <= high) || std::isnan(m_from) || std::isnan(m_to))
            continue;
        peaks.append(peak);
        m_positions.append(position);
    }
    showRows(highest(samples, peaks));
    emit peaksChanged();
}

QVector<PeakList::Row> PeakList::highest(const SampleSpan &samples, QVector<Peak> peaks) const
{
    const int count = std::min(m_limit, int(peaks.size()));
    std::partial_sort(peaks.begin(), peaks.begin() + count, peaks.end(), [](const Peak &a, const Peak &b) {
        return a.value != b.value ? a.value > b.value : a.index < b.index;
    });
    QVector<Row> rows;
    for (int i = 0; i < count; ++i) {
        const Peak &peak = peaks.at(i);
        rows.append({samples.x(peak.index), peak.value, peak.prominence, peakWidth(samples, peak),
                     samples.dataIndex(peak.index)});
    }
    return rows;
}

// Rows that stay are changed in place, so that views keep their delegates.
void PeakList::showRows(const QVector<Row> &rows)
{
    const int formerCount = m_rows.size();
    const int kept = std::min(formerCount, int(rows.size()));
    if (rows.size() < formerCount) {
        beginRemoveRows({}, rows.size(), formerCount - 1);
        m_rows.resize(rows.size());
        endRemoveRows();
    } else if (rows.size() > formerCount) {
        beginInsertRows({}, formerCount, rows.size() - 1);
        m_rows = rows;
        endInsertRows();
    }
    m_rows = rows;
    if (kept > 0)
        emit dataChanged(index(0), index(kept - 1));
    if (formerCount != rows.size())
        emit countChanged();
}

} // namespace graph
