#pragma once

#include "data/PlotData.h"
#include "kit/data/Store.h"

#include <QObject>
#include <QPointer>

#include <functional>

namespace graph {

// Looks at data for an object of a document, again after their changes and after changes of what is asked about them:
// once for all of them within one pass of the event loop.
class GRAPH_CHARTS_EXPORT SeriesObserver : public QObject
{
    Q_OBJECT

public:
    // gone: the data were destroyed.
    SeriesObserver(const QObject *owner, std::function<void()> look, std::function<void()> gone);

    PlotData *series() const { return m_series; }
    // False when they are the same.
    bool setSeries(PlotData *series);
    // Stores what is asked about the data. False when it is the same.
    template <typename Value> bool ask(Value &member, const Value &value)
    {
        if (!store(member, value))
            return false;
        lookAgain();
        return true;
    }

public slots:
    void lookAgain();

protected:
    void timerEvent(QTimerEvent *event) override;

private slots:
    void handleDestroyed();

private:
    void tellOfNoSeries() const;

    const QObject *m_owner;
    bool m_hasSeries = false; // or null, written
    std::function<void()> m_look;
    std::function<void()> m_gone;
    QPointer<PlotData> m_series;
    int m_timer = 0;
};

} // namespace graph
