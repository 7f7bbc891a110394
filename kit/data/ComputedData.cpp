#include "kit/data/ComputedData.h"

#include "kit/data/ItemName.h"
#include "kit/data/Telling.h"

#include <QTimerEvent>

#include <algorithm>
#include <limits>

namespace graph {

Ordinates::Ordinates(const PlotData *data)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (data)
        m_samples = data->sampleSpan(-infinity, infinity);
    if (m_samples.values() && !m_samples.isBackwards()) {
        m_values = m_samples.values();
        return;
    }
    m_copy.resize(m_samples.size());
    double *copy = m_copy.data();
    for (int i = 0; i < m_samples.size(); ++i)
        copy[i] = m_samples.y(i);
    m_values = copy;
}

ComputedData::ComputedData(QObject *parent)
    : SampledData(parent)
{
}

bool ComputedData::useSource(PlotData *source)
{
    if (m_source == source)
        return true;
    if (!connectInput(m_source, source))
        return false;
    clear();
    emit sourceChanged();
    computeAgain();
    return true;
}

void ComputedData::setRunning(bool running)
{
    if (m_running == running)
        return;
    m_running = running;
    emit runningChanged();
    handleInputChanged();
}

void ComputedData::clear()
{
    const int formerSize = size();
    forget();
    m_isBegun = false;
    m_values.clear();
    m_points.clear();
    announce(formerSize);
}

bool ComputedData::connectInput(QPointer<PlotData> &input, PlotData *data)
{
    if (data && (data == this || isComputedFrom(data))) {
        tell(this,
             QStringLiteral(
                 "is the source of %1, directly or through others, and does not take it as its own source")
                 .arg(nameOf(data)));
        return false;
    }
    PlotData *former = input;
    input = data;
    if (former && !inputs().contains(former))
        former->disconnect(this);
    if (data) {
        connect(data, SIGNAL(plotChanged()), this, SLOT(handleSourceChanged()), Qt::UniqueConnection);
        connect(data, SIGNAL(destroyed()), this, SLOT(handleInputDestroyed()), Qt::UniqueConnection);
    }
    return true;
}

// Whether the data need this one, directly or through others.
bool ComputedData::isComputedFrom(const PlotData *data) const
{
    const auto *computed = qobject_cast<const ComputedData *>(data);
    if (!computed)
        return false;
    const QVector<PlotData *> inputs = computed->inputs();
    return std::any_of(inputs.begin(), inputs.end(),
                       [this](const PlotData *input) { return input == this || isComputedFrom(input); });
}

void ComputedData::computeAgain()
{
    m_isOutdated = true;
    handleInputChanged();
}

// At once for the source: each of its changes counts, and by the next pass of the event loop there may be
// another one.
void ComputedData::handleSourceChanged()
{
    if (sender() == m_source.data())
        takeSource();
    else
        handleInputChanged();
}

void ComputedData::handleInputChanged()
{
    if (m_timer == 0)
        m_timer = startTimer(0, Qt::CoarseTimer);
}

void ComputedData::handleInputDestroyed()
{
    if (!m_source) {
        clear();
        emit sourceChanged();
    }
    computeAgain();
}

void ComputedData::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer) {
        SampledData::timerEvent(event);
        return;
    }
    killTimer(m_timer);
    m_timer = 0;
    takeSource();
}

bool ComputedData::isUpToDate() const
{
    const QVector<PlotData *> now = inputs();
    return !m_isOutdated && m_seen.size() == now.size() &&
           std::equal(now.begin(), now.end(), m_seen.begin(),
                      [](const PlotData *input, const SampleHistory &seen) {
                          return input && input->history().isSame(seen);
                      });
}

void ComputedData::rememberInputs()
{
    m_seen.clear();
    const QVector<PlotData *> used = inputs();
    for (const PlotData *input : used)
        m_seen.append(input ? input->history() : SampleHistory());
    m_isOutdated = false;
}

void ComputedData::takeSource()
{
    if (!m_running || !m_source)
        return;
    const Ordinates source(m_source);
    const int count = resultSize(source.size());
    const int formerSize = size();
    const bool isSameX = takePositions(source.samples(), count);
    m_count = count;
    if (isSameX && isUpToDate())
        return;
    if (!isSameX || formerSize != count || !m_isBegun) {
        forget();
        m_isBegun = false;
    }
    rememberInputs();
    m_values.resize(count);
    if (count > 0) {
        compute(source.values(), m_values.data(), count, !m_isBegun);
        m_isBegun = true;
    }
    for (int i = 0; i < m_points.size(); ++i)
        m_points[i].ry() = m_values.at(i);
    announce(formerSize);
}

bool ComputedData::takePositions(const SampleSpan &samples, int count)
{
    const bool wasEven = m_isEven;
    m_isEven = samples.isEquallySpaced();
    if (m_isEven) {
        m_points.clear();
        const double first = count > 0 ? samples.x(0) : 0.0;
        const double interval = count > 0 ? samples.interval() : 1.0;
        const bool isSame = wasEven && m_xFirst == first && m_xInterval == interval;
        m_xFirst = first;
        m_xInterval = interval;
        return isSame && m_count == count;
    }
    bool isSame = !wasEven && m_points.size() == count;
    m_points.resize(count);
    QPointF *points = m_points.data();
    for (int i = 0; i < count; ++i) {
        const double x = samples.x(i);
        isSame = isSame && points[i].x() == x;
        points[i].rx() = x;
    }
    return isSame;
}

void ComputedData::announce(int formerSize)
{
    m_pyramid.reset();
    ++m_epoch;
    if (size() != formerSize)
        emit sizeChanged(size());
    emitPlotChanged();
}

SampleSpan ComputedData::allSamples() const
{
    SampleSpan span = m_isEven ? SampleSpan(m_values, m_xFirst, m_xInterval) : SampleSpan(m_points);
    span.setPyramid(m_pyramid.forView(span.size()));
    return span;
}

} // namespace graph
