#pragma once

#include "benchmarks/Measurement.h"

#include <QByteArray>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QVector>

#include <memory>

class GraphCursor;
class PlotSeries;
class QQuickItem;

// The charts of this project that are measured, each in a window of its own.
namespace benchmark {

// A window with one item in it.
class Stage
{
public:
    Stage(const QSize &size, const QByteArray &document);

    QQuickItem *item() const { return m_item.get(); }
    // The object that a property of the item holds.
    QObject *object(const char *property) const;
    QQuickWindow *window() { return &m_window; }
    int frames() const { return m_frames; }
    void waitForFrame() const;

private:
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_item;
    int m_frames = 0;
};

// Traces over each other that fill the window, without anything else: what painting them costs.
class BareTraces : public Contender
{
public:
    explicit BareTraces(int count);
    ~BareTraces() override;

    void prepare(const Job &job, const QVector<QVector<double>> &sets) override;
    void useSet(int set) override;
    void setVisible(double first, double last) override;
    void moveCursor(int) override {}
    void frame() override { m_stage->waitForFrame(); }
    int frames() const { return m_stage->frames(); }

private:
    int m_count;
    double m_first = 0.0; // is visible at the begin
    QVector<QVector<double>> m_sets;
    std::unique_ptr<Stage> m_stage;
    QObject *m_axis = nullptr;
    QVector<PlotSeries *> m_series;
};

QByteArray screenDocument(int traces);
// With the look of a Chart of the second module and all that it shows of itself. What the forty types do not do is
// missing: readings keep to rows of their own instead of a place beside their traces, they do not share the prefix of
// their axis, and axes have no minor marks.
QByteArray chartByHand(int traces);

// A chart as people use it: Job::traces traces with a grid, labels on both axes, a legend, a cursor with a
// reading for each trace, and two markers.
class WholeScreen : public Contender
{
public:
    // Of such a document, with the properties `axis` and `cursor`, for that many traces.
    explicit WholeScreen(QByteArray (*document)(int traces) = screenDocument);
    ~WholeScreen() override;

    void prepare(const Job &job, const QVector<QVector<double>> &sets) override;
    void useSet(int set) override;
    void setVisible(double first, double last) override;
    void moveCursor(int pixel) override;
    void frame() override { m_stage->waitForFrame(); }

private:
    QByteArray (*m_document)(int traces);
    QVector<QVector<double>> m_sets;
    std::unique_ptr<Stage> m_stage;
    QObject *m_axis = nullptr;
    GraphCursor *m_cursor = nullptr;
    QVector<PlotSeries *> m_series;
};

// A heat map of columns x rows cells in a window.
class HeatmapStage
{
public:
    HeatmapStage(const QSize &size, int columns, int rows);

    // Paints it again.
    void frame();
    // The same with what another process has written in the meantime.
    void readAndFrame();

private:
    QTemporaryDir m_directory;
    QString m_path;
    std::unique_ptr<Stage> m_stage;
};

} // namespace benchmark
