#pragma once

#include "common/Export.h"
#include "kit/chart/LingeringSpan.h"
#include "kit/chart/LiveEnd.h"
#include "kit/chart/Span.h"

#include <QPointer>
#include <QString>
#include <QVector>

#include <optional>

class AbstractPlot;
class ValueAxis;

namespace graph {

class PlottedData;

// An axis of a chart, whose full range is what its data ask for, what a document wrote or where a hand moved it,
// and what is shown beyond that.
class GRAPH_CHARTS_EXPORT FittedAxis
{
public:
    // What a chart knows when it looks at its data.
    struct Look
    {
        const PlottedData &plotted;
        qint64 now = 0; // in milliseconds, of a clock that does not go back
        // In place of what the plots of the chart reach: that of all charts that share the axis.
        std::optional<Span> data;
        // What is to be visible; without it the whole range is.
        std::optional<Span> shown;
        // What is drawn around samples, as a share of the range.
        double reach = 0.0;
        // Whether data that go on growing get room to grow into: a window that follows them needs none.
        bool hasRoom = true;
    };

    // isOwn: it belongs to the chart, which draws it without a trace, too.
    FittedAxis(ValueAxis *axis, bool isOwn);

    // Null once it is destroyed.
    ValueAxis *axis() const;
    bool isOwn() const { return m_isOwn; }

    // Chooses the full range. True when it will be another one in a moment, without a change of the data.
    bool fit(const Look &look);

    // The same under a moving finger, where ranges stay but for a vertical one that fits what comes into view.
    void fitWhileMoved(const Look &look);

    // Somebody has written the range.
    void takeRange();

    // A hand moves the axis alone: its ends, fractions of what is the full range now, away from an anchor and by
    // a distance. False when there is no such range. fit() does the rest.
    bool moveByHand(double anchor, double factor, double distance);
    void leaveToData() { m_byHand.reset(); }

    // The unit of its first trace, where the document gives the axis none.
    void takeUnit(const QVector<QPointer<AbstractPlot>> &traces);

    // The trace that a vertical axis shows and no other; null where there are more, or none with a name.
    const AbstractPlot *onlyTrace(const QVector<QPointer<AbstractPlot>> &traces) const;

    // The name of its only trace, where the document gives the axis no title.
    void takeTitle(const AbstractPlot *onlyTrace);

private:
    Span fitted(const Look &look);

    QPointer<ValueAxis> m_axis;
    LiveEnd m_live;
    LingeringSpan m_lingering;
    Span m_base; // the full range without what is shown beyond it
    QString m_givenUnit;
    QString m_givenTitle;
    std::optional<Span> m_byHand;
    bool m_isOwn;
    bool m_isExtended = false;
    bool m_isUnsettled = false;
};

} // namespace graph
