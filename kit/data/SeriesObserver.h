#pragma once

#include "data/PlotData.h"

#include <QObject>
#include <QPointer>

#include <functional>

namespace graph {

// Looks at data again after their changes and after changes of what is asked about them: once for all of them
// within one pass of the event loop.
class GRAPH_CHARTS_EXPORT SeriesObserver : public QObject
{
    Q_OBJECT

public:
    // gone: the data were destroyed.
    SeriesObserver(std::function<void()> look, std::function<void()> gone);

    PlotData *series() const { return m_series; }
    // False when they are the same.
    bool setSeries(PlotData *series);

public slots:
    void lookAgain();

protected:
    void timerEvent(QTimerEvent *event) override;

private slots:
    void handleDestroyed();

private:
    std::function<void()> m_look;
    std::function<void()> m_gone;
    QPointer<PlotData> m_series;
    int m_timer = 0;
};

} // namespace graph
