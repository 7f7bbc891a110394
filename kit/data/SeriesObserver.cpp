#include "kit/data/SeriesObserver.h"

#include <QTimerEvent>

#include <utility>

namespace graph {

SeriesObserver::SeriesObserver(std::function<void()> look, std::function<void()> gone)
    : m_look(std::move(look))
    , m_gone(std::move(gone))
{
}

bool SeriesObserver::setSeries(PlotData *series)
{
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
