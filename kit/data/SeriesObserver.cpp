#include "kit/data/SeriesObserver.h"

#include "kit/data/Telling.h"

#include <QQmlEngine>
#include <QTimer>
#include <QTimerEvent>

#include <utility>

namespace graph {

namespace {

constexpr int patience = 1000; // milliseconds

} // namespace

SeriesObserver::SeriesObserver(const QObject *owner, std::function<void()> look, std::function<void()> gone)
    : m_owner(owner)
    , m_look(std::move(look))
    , m_gone(std::move(gone))
{
    QTimer::singleShot(patience, this, [this] { tellOfNoSeries(); });
}

// Not of one that C++ made, which may give it data at any time.
void SeriesObserver::tellOfNoSeries() const
{
    if (!m_hasSeries && qmlContext(m_owner))
        tellOnce(m_owner, "series",
                 QStringLiteral("has no series and finds nothing: write series and the id of a trace or of "
                                "data"));
}

bool SeriesObserver::setSeries(PlotData *series)
{
    m_hasSeries = true;
    if (m_series == series)
        return false;
    if (m_series)
        m_series->disconnect(this);
    m_series = series;
    if (series) {
        connect(series, SIGNAL(plotChanged()), this, SLOT(lookAgain()));
        connect(series, SIGNAL(destroyed()), this, SLOT(handleDestroyed()));
    }
    lookAgain();
    return true;
}

void SeriesObserver::lookAgain()
{
    if (m_timer == 0)
        m_timer = startTimer(0, Qt::CoarseTimer);
}

void SeriesObserver::handleDestroyed()
{
    lookAgain();
    m_gone();
}

void SeriesObserver::timerEvent(QTimerEvent *event)
{
    killTimer(event->timerId());
    m_timer = 0;
    m_look();
}

} // namespace graph
