#pragma once

#include "data/LazyPyramid.h"
#include "kit/data/DataInput.h"
#include "kit/data/SampledData.h"

#include <QPointer>

namespace graph {

// The values of a trace one after the other, of any data, in ascending order of x.
class Ordinates
{
public:
    explicit Ordinates(const PlotData *data);

    const SampleSpan &samples() const { return m_samples; }
    const double *values() const { return m_values; }
    int size() const { return m_samples.size(); }

private:
    SampleSpan m_samples;
    QVector<double> m_copy; // of values that do not lie so in memory
    const double *m_values = nullptr;
};

// A trace that is computed from another one, once for each change of it. It has the x of its source.
class GRAPH_CHARTS_EXPORT ComputedData : public SampledData
{
    Q_OBJECT
    Q_PROPERTY(QObject *source READ givenSource WRITE giveSource NOTIFY sourceChanged)
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY runningChanged)

public:
    explicit ComputedData(QObject *parent = nullptr);

    int size() const override { return m_isEven ? m_values.size() : m_points.size(); }
    SampleHistory history() const override { return {m_epoch, 0, size()}; }
    void clear() override;

    PlotData *source() const { return m_source; }
    // Whether a source was written, be it one that is not there yet.
    bool hasWrittenSource() const { return m_sourceInput.isWritten(); }
    bool isRunning() const { return m_running; }

    void setSource(PlotData *source) { giveSource(source); }
    // Data, or a plot.
    QObject *givenSource() const { return m_sourceInput.given(); }
    void giveSource(QObject *source) { m_sourceInput.give(source); }
    void setRunning(bool running);

signals:
    void sourceChanged();
    void runningChanged();

protected:
    SampleSpan allSamples() const override;
    void timerEvent(QTimerEvent *event) override;

    // What it is computed from, null where there is none.
    virtual QVector<PlotData *> inputs() const { return {m_source}; }
    // Of `count` values of the source; result is what was computed last, and holds as many values. first: for
    // the first time since a beginning, when it holds anything.
    virtual void compute(const double *values, double *result, int count, bool first) = 0;
    // Called before the trace starts again.
    virtual void forget() {}
    // How many of the source's values there is a result for.
    virtual int resultSize(int sourceSize) const { return sourceSize; }

    // Makes it an input, or leaves it out: false, with a line in the log, where it is computed from this one.
    bool connectInput(QPointer<PlotData> &input, PlotData *data);
    // Computes again when the event loop is reached, though the source may be the same.
    void computeAgain();

private slots:
    void handleSourceChanged();
    void handleInputChanged();
    void handleInputDestroyed();

private:
    bool useSource(PlotData *source);
    bool isComputedFrom(const PlotData *data) const;
    bool isUpToDate() const;
    void rememberInputs();
    void takeSource();
    // The x of the source; false where it is another one than before.
    bool takePositions(const SampleSpan &samples, int count);
    void announce(int formerSize);

    DataInput m_sourceInput{this, "source", [this](PlotData *source) { return useSource(source); }};
    QPointer<PlotData> m_source;
    QVector<double> m_values;
    QVector<QPointF> m_points; // where x is not equally spaced
    mutable LazyPyramid m_pyramid;
    QVector<SampleHistory> m_seen; // of the inputs
    double m_xFirst = 0.0;
    double m_xInterval = 1.0;
    qint64 m_epoch = 1;
    int m_count = 0; // of samples that were taken last
    int m_timer = 0;
    bool m_isEven = true;
    bool m_isBegun = false;
    bool m_isOutdated = false;
    bool m_running = true;
};

} // namespace graph
