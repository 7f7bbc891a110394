#include "benchmarks/OwnCharts.h"

#include "cursors/GraphCursor.h"
#include "cursors/GraphMarker.h"
#include "data/PlotSeries.h"
#include "kit/axis/ChartAxis.h"
#include "plots/GraphPlot.h"
#include "simulator/Heatmap.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <iostream>

namespace benchmark {

namespace {

const char bareTraces[] = R"(
    Item {
        id: root
        property int count: 1
        property alias axis: horizontal
        %1 { id: horizontal }
        ValueAxis { id: vertical; alignment: Qt.AlignLeft; minValue: -50; maxValue: 50; minVisible: -50; maxVisible: 50 }
        Repeater {
            model: root.count
            GraphPlot {
                anchors.fill: parent
                axisX: horizontal; axisY: vertical
                plotStyle: GraphPlot.LinePlot
                plotData: PlotSeries {}
            }
        }
    })";

const char wholeScreen[] = R"(
    Item {
        id: root
        property alias axis: horizontal
        property alias cursor: cursor
        property var colours: ["black", "blue", "green", "purple"]
        GraphView {
            zoomRect { minWidth: 1e-9 }
            anchors.fill: parent
            axes: [
                ValueAxis {
                    id: horizontal
                    margin: requiredMargin; unit: "s"; lineColor: "lightgray"
                    linesPlane: grid; labelsPlane: labels
                },
                ValueAxis {
                    id: vertical
                    alignment: Qt.AlignLeft
                    minValue: -50; maxValue: 50; minVisible: -50; maxVisible: 50
                    margin: requiredMargin; unit: "V"; lineColor: "lightgray"
                    linesPlane: grid; labelsPlane: labels
                }
            ]
            XYScale { id: grid; z: -1 }
            XYScale { id: labels; z: 1 }
            %1
            GraphCursor {
                id: cursor
                z: 2
                markers: [
                    GraphMarker { visible: true; color: "teal"; showDelta: false },
                    GraphMarker { visible: true; color: "brown"; showDelta: false }
                ]
                %2
            }
        }
        Column { anchors { right: parent.right; top: parent.top } %3 }
    })";

const char screenPlot[] = R"(
    GraphPlot {
        id: plot%1
        penColor: root.colours[%1 % 4]
        plotStyle: GraphPlot.LinePlot
        plotData: PlotSeries { axisX: horizontal; axisY: vertical }
    })";

const char screenReading[] = R"(
    Text {
        GraphCursor.plot: plot%1
        text: GraphCursor.formattedYValue
        color: root.colours[%1 % 4]
        x: GraphCursor.xPosOnScreen + 8; y: 20 * %1
    })";

const char legendEntry[] = R"(
    Row {
        spacing: 4
        Rectangle { width: 16; height: 16; color: root.colours[%1 % 4] }
        Text { text: "Trace %1"; font.pixelSize: 16 }
    })";

} // namespace

QByteArray screenDocument(int traces)
{
    const auto repeated = [traces](const char *part) {
        QString all;
        for (int i = 0; i < traces; ++i)
            all += QString::fromLatin1(part).replace(QLatin1String("%1"), QString::number(i));
        return all;
    };
    return QString::fromLatin1(wholeScreen)
        .replace(QLatin1String("%1"), repeated(screenPlot))
        .replace(QLatin1String("%2"), repeated(screenReading))
        .replace(QLatin1String("%3"), repeated(legendEntry))
        .toLatin1();
}

namespace {

void setVisibleOf(QObject *axis, double first, double last)
{
    axis->setProperty("maxVisible", last);
    axis->setProperty("minVisible", first);
}

// The data of all plots below the item, whose lines get the pen's width.
QVector<PlotSeries *> seriesBelow(QQuickItem *item, int pen)
{
    QVector<PlotSeries *> all;
    const auto children = item->childItems();
    for (QQuickItem *child : children) {
        if (auto *plot = qobject_cast<GraphPlot *>(child)) {
            plot->setMinLineWidth(pen);
            plot->setMaxLineWidth(pen);
            all.append(qobject_cast<PlotSeries *>(plot->plotData()));
        }
        all += seriesBelow(child, pen);
    }
    return all;
}

} // namespace

Stage::Stage(const QSize &size, const QByteArray &document)
{
    QQmlComponent component(&m_engine);
    component.setData("import QtQuick 2.15\nimport charts 1.0\n" + document, QUrl());
    m_item.reset(qobject_cast<QQuickItem *>(component.create()));
    if (!m_item)
        qFatal("%s", qPrintable(component.errorString()));
    m_window.resize(size);
    m_item->setParentItem(m_window.contentItem());
    m_item->setSize(size);
    QObject::connect(&m_window, &QQuickWindow::frameSwapped, &m_window, [this] { ++m_frames; });
    m_window.show();
    waitForFrame();
}

QObject *Stage::object(const char *property) const
{
    return m_item->property(property).value<QObject *>();
}

void Stage::waitForFrame() const
{
    for (const int before = m_frames; m_frames == before;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // One more frame that the same change asks for is part of what it costs.
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

BareTraces::BareTraces(int count)
    : m_count(count)
{
}

BareTraces::~BareTraces() = default;

void BareTraces::prepare(const Job &job, const QVector<QVector<double>> &sets)
{
    m_sets = sets;
    QByteArray document(bareTraces);
    document.replace("%1", job.logarithmic ? "ChartAxis" : "ValueAxis");
    m_stage = std::make_unique<Stage>(job.size, document);
    m_stage->item()->setProperty("count", m_count);
    m_axis = m_stage->object("axis");
    m_axis->setProperty("maxValue", 1.2 * job.samples);
    if (job.logarithmic) {
        // Three decades, most of the samples in the last of them.
        m_first = job.samples / 1000.0;
        m_axis->setProperty("minValue", m_first);
        m_axis->setProperty("scale", graph::ChartAxis::Logarithmic);
    }
    m_series = seriesBelow(m_stage->item(), job.pen);
    if (m_series.size() != m_count)
        qFatal("%d traces instead of %d", int(m_series.size()), m_count);
}

void BareTraces::useSet(int set)
{
    for (PlotSeries *series : qAsConst(m_series))
        series->setYData(m_sets.at(set));
}

void BareTraces::setVisible(double first, double last)
{
    setVisibleOf(m_axis, m_first + first, last);
}

WholeScreen::WholeScreen(QByteArray (*document)(int traces))
    : m_document(document)
{
}

WholeScreen::~WholeScreen() = default;

void WholeScreen::prepare(const Job &job, const QVector<QVector<double>> &sets)
{
    m_sets = sets;
    m_stage = std::make_unique<Stage>(job.size, m_document(job.traces));
    m_axis = m_stage->object("axis");
    // Beyond it nothing moves, and no frame comes; the first set may be the longest.
    m_axis->setProperty("maxValue", 1.2 * std::max(job.samples, int(sets.first().size())));
    m_cursor = qobject_cast<GraphCursor *>(m_stage->object("cursor"));
    m_series = seriesBelow(m_stage->item(), job.pen);
    if (m_series.size() != job.traces)
        qFatal("%d traces instead of %d", int(m_series.size()), job.traces);
}

void WholeScreen::useSet(int set)
{
    const QVector<double> &values = m_sets.at(set);
    const bool fits = m_series.first()->size() == values.size();
    for (PlotSeries *series : qAsConst(m_series))
        series->setYData(values);
    if (fits)
        return;
    m_cursor->setPosIndex(values.size() / 2);
    auto markers = m_cursor->markers();
    for (int i = 0; i < markers.count(&markers); ++i)
        markers.at(&markers, i)->setPosIndex((i + 1) * values.size() / 5);
}

void WholeScreen::setVisible(double first, double last)
{
    setVisibleOf(m_axis, first, last);
}

void WholeScreen::moveCursor(int pixel)
{
    const int before = m_cursor->posIndex();
    m_cursor->setPosOnScreen(pixel);
    // It stays where there is no other sample to move to, and asks for no frame.
    if (m_cursor->posIndex() == before)
        m_stage->item()->window()->update();
}

HeatmapStage::HeatmapStage(const QSize &size, int columns, int rows)
{
    simulation::Heatmap heatmap;
    heatmap.columnCount = columns;
    heatmap.rowCount = rows;
    heatmap.rowStep = 0.2;
    for (int i = 0; i < columns; ++i)
        heatmap.columnFrequencies.push_back(5000000u + unsigned(82e6 / columns) * unsigned(i));
    const QVector<double> noise = noisyTrace(columns * rows, 1);
    for (double value : noise)
        heatmap.cells.push_back(static_cast<unsigned char>(int(value + 50) % 8));
    m_path = m_directory.filePath(QStringLiteral("map.heatmap"));
    QString error;
    if (!simulation::writeHeatmapFile(m_path, heatmap, &error))
        qFatal("%s", qPrintable(error));

    // The plot tells how long it took; that is not the result.
    std::cout.rdbuf(nullptr);
    m_stage = std::make_unique<Stage>(size, R"(
        HeatmapPlot {
            dataDirectory: ""
            axisX: ValueAxis { minValue: 5; maxValue: 87; minVisible: 5; maxVisible: 87 }
            axisY: ValueAxis {
                alignment: Qt.AlignLeft; minValue: -103; maxValue: 0; minVisible: -103; maxVisible: 0
            }
        })");
    readAndFrame();
}

void HeatmapStage::frame()
{
    m_stage->item()->update();
    m_stage->waitForFrame();
}

void HeatmapStage::readAndFrame()
{
    m_stage->item()->setProperty("dataFilePath", m_path);
    m_stage->waitForFrame();
}

} // namespace benchmark
