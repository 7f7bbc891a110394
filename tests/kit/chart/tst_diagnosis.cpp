#include "support/QmlDocument.h"

#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartTheme.h"
#include "kit/chart/ChartView.h"
#include "kit/chart/Diagnosis.h"
#include "kit/data/Difference.h"
#include "kit/data/MaxHold.h"
#include "kit/data/StreamSeries.h"
#include "kit/plots/ColorScale.h"
#include "kit/plots/LimitLine.h"
#include "kit/plots/Trace.h"
#include "kit/plots/WaterfallPlot.h"
#include "platform/bus/BusPublisher.h"
#include "plots/GraphPlot.h"
#include "view/frame/GraphView.h"
#include "support/Table.h"

#include <QLoggingCategory>
#include <QQuickWindow>

namespace {

// A chart that is sound, with room for mistakes.
struct Chart
{
    QString body;
    QString time = {};
    QString level = {};
    QString view = QStringLiteral("width: 200; height: 100");

    QByteArray document() const
    {
        return QStringLiteral(R"(
            Item {
                GraphView {
                    id: view; %4
                    axes: [
                        ValueAxis { id: time; maxValue: 10; labelsPlane: plane; linesPlane: plane; %2 },
                        ValueAxis { id: level; alignment: Qt.AlignLeft; maxValue: 10; labelsPlane: plane; linesPlane: plane; %3 }
                    ]
                    XYScale { id: plane }
                    Diagnosis { id: diagnosis }
                    %1
                }
            })")
            .arg(body, time, level, view)
            .toUtf8();
    }
};

QString trace(const QString &data, const QString &plot = {})
{
    return QStringLiteral("GraphPlot { id: trace; plotStyle: GraphPlot.LinePlot; %2\nplotData: %1 }")
        .arg(data, plot);
}

const QString sound = QStringLiteral("PlotSeries { axisX: time; axisY: level; yData: [1, 5, 3] }");
const QString fed = QStringLiteral("PlotSeries { id: data; axisX: time; axisY: level; dbusAddress: %1 }");

// What the diagnosis says of a document, in order.
class Bench
{
public:
    explicit Bench(const QByteArray &text)
        : m_document(text)
    {
        auto *root = qobject_cast<QQuickItem *>(m_document.root());
        root->setParentItem(m_window.contentItem());
        QCoreApplication::processEvents();
    }

    QmlDocument &document() { return m_document; }
    QStringList look()
    {
        QCoreApplication::processEvents();
        auto *diagnosis = m_document.object<graph::Diagnosis>("diagnosis");
        diagnosis->look();
        return diagnosis->messages();
    }

private:
    QQuickWindow m_window;
    QmlDocument m_document;
};

// Sentences about a Chart and what it holds.
void addKitRows()
{
    const auto row = [](const char *name, const char *expected, const QByteArray &body) {
        QTest::newRow(name) << QByteArray("Item { Chart { id: view; width: 400; height: 300\n"
                                          "Diagnosis { id: diagnosis }\n" +
                                          body + "} }")
                            << QString(expected);
    };
    row("trace of an empty address", "Trace \"t\" has an empty address: write the name",
        "Trace { id: t; address: '' }");
    row("too many intervals", "has a customInterval of 1e-09, of which the range from 0 to 4 has more",
        "axisX.customInterval: 1e-9; Trace { values: [1, 5, 3, 8, 2] }");
    row("too small steps", "has samples 1 apart at x = 1e+16, where numbers are 2 apart: write a start",
        "Trace { start: 1e16; values: [1, 5, 3, 8, 2] }");
    row("too large", "has 2 of 3 values beyond 7e+307, which have no place",
        "Trace { values: [1.7e308, 1, -1.7e308] }");
    row("one level", "has from and to both at -50",
        "WaterfallPlot { from: -50; to: -50; Component.onCompleted: addRow([1, 2]) }");
    row("few positions", "Trace \"t\" has 5 values and 3 positions",
        "Trace { id: t; values: [1, 5, 3, 8, 2]; positions: [0, 1, 2] }");
    row("no positions yet", "Trace \"t\" has 5 values and 0 positions",
        "Trace { id: t; values: [1, 5, 3, 8, 2]; positions: [] }");
    row("limit without positions", "LimitLine \"Top\" has 2 values and 0 positions",
        "LimitLine { name: 'Top'; values: [1, 2] }");
    row("no logarithm of values", "has 3 of 6 values at 0 or below",
        "axisY.scale: ChartAxis.Logarithmic; Trace { values: [0, -1, 10, 100, 0, 5] }");
    row("no logarithm of positions", "has 2 of 3 positions at 0 or below",
        "axisX.scale: ChartAxis.Logarithmic; Trace { start: -1; values: [1, 5, 3] }");
    row("infinite", "has 2 of 4 values infinite", "Trace { values: [1, Infinity, 3, -Infinity] }");
    row("milliseconds", "has a time of 1700000002000, in the year 5138 or later",
        "axisX.scale: ChartAxis.Time; Trace { start: 1700000000000; interval: 1000; values: [1, 2, 3] }");
    row("no calendar", "has times from -1e+300 to -1e+300 s, of which 1e+13 s are the farthest",
        "axisX.scale: ChartAxis.Time; Trace { start: -1e300; interval: 1; values: [1] }");
    row("two units",
        "Trace \"b\" is in A on the axis of Trace \"a\", which is in V: write ChartAxis { id: axisOfA; ",
        "Trace { name: 'a'; values: [1, 2]; unit: 'V' } Trace { name: 'b'; values: [3, 4]; unit: 'A' }");
    row("another unit than the axis",
        "Trace \"a\" is in V and its axis in A, so that readings differ from the numbers of the axis: write "
        "axisY.unit",
        "axisY.unit: 'A'; Trace { name: 'a'; values: [1, 2]; unit: 'V' } Trace { values: [3, 4]; unit: 'A' "
        "}");
    row("two references", "is in dBV on the axis of Trace \"a\", which is in dBm",
        "Trace { name: 'a'; values: [1, 2]; unit: 'dBm' } Trace { values: [3, 4]; unit: 'dBV' }");
    row("colours backwards", "WaterfallPlot \"fall\" has a from of -20 above its to of -120",
        "WaterfallPlot { id: fall; from: -20; to: -120; Component.onCompleted: addRow([-90, -30]) }");
    row("interval without effect", "has a customInterval of 2, which counts on a linear axis only",
        "axisX { scale: ChartAxis.Logarithmic; customInterval: 2 } Trace { start: 1; values: [1, 2, 3] }");
    row("theme in quotes", "\"view\" has the text \"Light\" as its theme",
        "theme: 'Light'; Trace { values: [1, 2] }");
    row("colour of the ground", "has the colour of the background, #",
        "theme: ChartTheme { plotBackground: '#202122' } Trace { values: [1, 2]; color: '#212121' }");
    row("trace without colour", "without any opacity: give it another color",
        "Trace { values: [1, 2]; color: 'transparent' }");
    row("trace without interval", "samples at x = 0: write an interval",
        "Trace { values: [1, 2, 3]; interval: 0 }");
    row("interval that is no number",
        "has no places for its 2 values, from 0 on with an interval of nan: write numbers",
        "Trace { values: [1, 2]; interval: NaN }");
    row("trace elsewhere", "set the range of its horizontal axis, or start and interval",
        "axisX { minValue: 10; maxValue: 20 } Trace { values: [1, 2, 3] }");
    row("range of one value", "has no range, it goes from 5 to 5",
        "Component.onCompleted: axisY.range(5, 5); Trace { values: [1, 2, 3] }");
    row("scale of nothing", "ColorScale \"scale\" has no plot",
        "ColorScale { id: scale; width: 20; height: 100 }");
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    // With Qt 6 such a cursor is hidden as an item, and that of an item is not told.
    row("cursor in no view", "GraphCursor \"cursor\" is in no view",
        "Trace { values: [1, 2] } } GraphCursor { id: cursor } Item {");
#endif
    row("marker in no cursor", "GraphMarker \"marker\" is in no cursor",
        "Trace { values: [1, 2] } GraphMarker { id: marker } ");
    row("marker beside markers", "GraphMarker \"marker\" is in a cursor, but not in its markers",
        "Trace { values: [1, 2] } GraphCursor { GraphMarker { id: marker } }");
    row("axis at no side", "ChartAxis \"middle\" has an alignment that is no side",
        "Trace { values: [1, 2]; axisY: middle } ChartAxis { id: middle; alignment: Qt.AlignHCenter }");
    row("hold of nothing", "MaxHold \"hold\" has no source", "Trace { series: MaxHold { id: hold } }");
    row("little capacity",
        "StreamSeries \"data\" keeps 5 samples, that is 0.5 s, where follow shows 10 s: write "
        "a capacity of 100",
        "follow: 10; Trace { series: StreamSeries { id: data; interval: 0.1; capacity: 5 } "
        "Component.onCompleted: data.append([1, 2]) }");

    row("positions only", "Trace \"t\" has positions and no values", "Trace { id: t; positions: [1, 2] }");
    row("infinite positions", "has 1 of 2 positions infinite, which have no place in a chart: write numbers",
        "Trace { positions: [1, Infinity]; values: [3, 4] }");
    row("interval of the trace", "count for values and addresses only: write those of StreamSeries \"data\"",
        "Trace { interval: 0.1; series: StreamSeries { id: data } }");
    row("stream without interval", "StreamSeries \"data\" has all its 3 samples at x = 0: write an interval",
        "Trace { series: StreamSeries { id: data; interval: 0 } Component.onCompleted: data.append([1, 2, "
        "3]) }");
    row("stream of no places", "has no places for its 2 values, from nan on",
        "Trace { series: StreamSeries { id: data; interval: NaN } Component.onCompleted: data.append([1, 2]) "
        "}");
    row("nothing to subtract", "Difference \"d\" has no reference to subtract",
        "Trace { id: a; values: [1] } Trace { series: Difference { id: d; source: a.plotData } }");
    row("pairs of two lengths", "Difference \"d\" subtracts 1 samples of its reference from 3 of its source",
        "Trace { id: a; values: [1, 2, 3] } Trace { id: b; values: [1] } "
        "Trace { series: Difference { id: d; source: a; reference: b } }");
    row("pairs at other places", "subtracts samples at x = 0 to 1 from others at 5 to 6, one by one",
        "Trace { id: a; start: 5; values: [1, 2] } Trace { id: b; values: [1, 2] } "
        "Trace { series: Difference { source: a; reference: b } }");
    row("pairs", "",
        "Trace { id: a; values: [1, 2] } Trace { id: b; values: [1, 2]; start: 1e-9 } "
        "Trace { series: Difference { source: a; reference: b } }");
    row("samples for seconds", "StreamSeries \"data\" has no interval, so that its samples are 1 s apart",
        "axisX.unit: 's'; Trace { series: StreamSeries { id: data } Component.onCompleted: data.append([1, "
        "2]) "
        "}");
    row("samples", "",
        "Trace { series: StreamSeries { id: data } Component.onCompleted: data.append([1, 2]) } "
        "Trace { series: StreamSeries { id: later; interval: 2 } Component.onCompleted: later.append([1, 2]) "
        "}");
    row("waterfall of a wrong prefix", "PlotSeries \"data\" gets no values: the service \"meter\" does not",
        "WaterfallPlot { series: PlotSeries { id: data; dbusAddress: 'meter,levle' } }");
    row("hold of a service that is not there", "PlotSeries \"data\" waits for the service \"absent\"",
        "Trace { series: MaxHold { source: PlotSeries { id: data; dbusAddress: 'absent,level' } } }");
    row("hold of a trace that waits", "Trace \"t\" waits for the service \"absent\"",
        "Trace { id: t; address: 'absent,level' } Trace { series: MaxHold { source: t } }");
    row("verdict on nothing", "LimitLine \"limit\" has no series to judge",
        "LimitLine { id: limit; values: [3] } Text { text: limit.passed }");
    row("ends beside a window", "has minValue or maxValue written, and the chart shows the newest 10 of its",
        "follow: 10; axisX.maxValue: 5; Trace { values: [1, 2] }");
    const QByteArray level =
        "Trace { name: 'level'; values: [1, 5, 3, 8, 2] } GraphCursorY { id: line; posValue: %1 }";
    row("level beyond the axis",
        "GraphCursorY \"line\" has a posValue of -1e+308 and is at 0, because its axis goes from 0 to 8.5: "
        "write",
        QByteArray(level).replace("%1", "-1e308"));
    row("level beyond the samples",
        "of 7 and is at 0, because it has to be below the number of samples, of which PlotSeries of Trace "
        "\"level\" has 5: "
        "write LimitLine { values: 7 }",
        QByteArray(level).replace("%1", "7"));
    row("level between whole numbers",
        "of 0.5 and is at 0, because a horizontal cursor that stays on the screen is at whole",
        QByteArray(level).replace("%1", "0.5"));
    row("level", "", QByteArray(level).replace("%1", "0.5; staysOnScreen: false"));
    row("level by hand", "", QByteArray(level).replace("%1", "0.5; Component.onCompleted: posOnScreen = 40"));
    row("marker that is not drawn", "GraphMarker \"m\" has a posValue and is not drawn: write visible: true",
        "Trace { values: [1, 2] } GraphCursor { markers: GraphMarker { id: m; posValue: 1 } }");
    row("marker beyond the data",
        "GraphMarker \"m\" has a posValue of 99, where PlotSeries of Trace \"level\" has no sample, and is "
        "not drawn: write one from 0 to 1",
        "Trace { name: 'level'; values: [1, 2] } GraphCursor { markers: GraphMarker { id: m; posValue: 99; "
        "visible: true } }");
    row("marker before the data", "",
        "Trace { series: PlotSeries {} } GraphCursor { markers: GraphMarker { posValue: 9; visible: true } "
        "}");
    row("marker that is hidden", "",
        "Trace { values: [1, 2] } GraphCursor { markers: GraphMarker { posValue: 1; visible: false } }");
    row("axis of another chart", "Trace \"b\" has axisX of ChartView \"other\" as its axis",
        "Chart { id: other } Trace { id: b; values: [1, 2]; axisX: other.axisX }");
    row("misspelled theme", "\"view\" has undefined as its theme",
        "theme: Chart.Lite; Trace { values: [1, 2] }");
    row("scale of a trace", "ColorScale \"scale\" shows nothing of Trace \"t\"",
        "Trace { id: t; values: [1, 2] } ColorScale { id: scale; plot: t }");

    row("legend that is not asked for", "", "Trace { values: [1, 2] } Trace { values: [1, 2] }");
    row("limit everywhere", "", "Trace { values: [1, 5, 3] } LimitLine { values: [3] }");
    row("limit out of reach", "", "LimitLine { positions: [0, 1, 2]; values: [1, Infinity, 2] }");
    row("spectrum",
        "has its first sample at x = 0, which has no place on a logarithmic axis, and leaves it out: "
        "write start: 1",
        "axisX.scale: ChartAxis.Logarithmic; Trace { values: [1, 5, 3] }");
    row("levels", "",
        "Trace { values: [1, 2]; unit: 'dBm' } Trace { values: [3, 4]; unit: 'dB' } Trace { values: [1] }");
    row("parts in their places", "",
        "Trace { id: t; values: [1, 2] } GraphCursor { markers: GraphMarker {} }");
    row("to come", "", "Trace { id: t } Trace { series: MaxHold { source: t.plotData } }");
    row("chart in chart", "",
        "Trace { values: [1, 2] } Chart { width: 150; height: 100; Trace { values: [3, 4] } }");
    row("of two axes", "",
        "ChartAxis { id: right; alignment: Qt.AlignRight } Trace { values: [1, 2]; unit: 'V' }"
        "Trace { values: [3, 4]; unit: 'A'; axisY: right }");
}

} // namespace

class tst_diagnosis : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const auto add = [](auto *type, const char *name) {
            qmlRegisterType<std::remove_pointer_t<decltype(type)>>("charts", 1, 0, name);
        };
        add(static_cast<graph::Diagnosis *>(nullptr), "Diagnosis");
        add(static_cast<graph::ChartView *>(nullptr), "Chart");
        add(static_cast<graph::ChartAxis *>(nullptr), "ChartAxis");
        add(static_cast<graph::ChartTheme *>(nullptr), "ChartTheme");
        add(static_cast<graph::Trace *>(nullptr), "Trace");
        add(static_cast<graph::WaterfallPlot *>(nullptr), "WaterfallPlot");
        add(static_cast<graph::LimitLine *>(nullptr), "LimitLine");
        add(static_cast<graph::ColorScale *>(nullptr), "ColorScale");
        add(static_cast<graph::StreamSeries *>(nullptr), "StreamSeries");
        add(static_cast<graph::MaxHold *>(nullptr), "MaxHold");
        add(static_cast<graph::Difference *>(nullptr), "Difference");
        QLoggingCategory::setFilterRules("toskorn.*=false\ndefault.debug=false\ngraph.kit=false");
    }

    void sentence_data()
    {
        columns<QByteArray, QString>({"document", "expected"});
        const auto row = [](const char *name, const char *expected, const Chart &chart) {
            QTest::newRow(name) << chart.document() << expected;
        };
        row("no size", "GraphView \"view\" has no size (it is 200 x 0): write width",
            {trace(sound), {}, {}, "width: 200"});
        row("no room", "GraphView \"view\" has no room for its plots: the margins",
            {trace(sound), "margin: 100", {}});
        row("axis beside the list", "does not draw ValueAxis \"extra\", which is not in its list of axes",
            {"ValueAxis { id: extra; alignment: Qt.AlignLeft }",
             {},
             "Component.onCompleted: alignment = Qt.AlignBottom"});
        row("data that no plot shows",
            "holds PlotSeries \"data\", which no plot shows, and GraphPlot \"trace\" without data",
            {"GraphPlot { id: trace; axisX: time; axisY: level }",
             {},
             {},
             "width: 200; height: 100; series: PlotSeries { id: data; yData: [1, 2] }"});
        row("range from > to", "ValueAxis \"time\" has a minValue of 20 above its maxValue of 10: exchange",
            {trace(sound), "minValue: 20", {}});
        row("range without extent", "ValueAxis \"level\" has no range, it goes from 10 to 10",
            {trace(sound), {}, "minValue: 10"});
        row("range that is none", "ValueAxis \"level\" has no range, it goes from nan to 10",
            {trace(sound), {}, "minValue: NaN"});
        row("in an item", "GraphPlot \"trace\" is a child of Item \"box\" instead of GraphView \"view\"",
            {"Item { id: box; " + trace(sound) + "}"});
        row("beside the view", "GraphPlot \"trace\" is outside of GraphView \"view\", whose axes it uses",
            {"} " + trace(sound) + " Item {"});
        row("no axes",
            "GraphPlot \"trace\" has no axisX and axisY: write axisX and axisY in its plotData or in the "
            "plot",
            {"GraphPlot { id: trace }"});
        row("no axes in the data", "GraphPlot \"trace\" has no axisY: write axisY in PlotSeries \"data\"",
            {trace("PlotSeries { id: data; axisX: time; yData: [1, 2] }")});
        row("overview of nothing", "WorldPlot \"world\" shows no plot: write graphPlot",
            {"WorldPlot { id: world }"});
        row("overview of nothing elsewhere", "WorldPlot \"world\" shows no plot",
            {trace(sound) + "} WorldPlot { id: world } Item {"});
        row("points without a form", "GraphPlot \"trace\" has points without a form",
            {trace(sound, "Component.onCompleted: plotStyle = GraphPlot.ScatterPlot")});
        row("swapped",
            "GraphPlot \"trace\" has its axes swapped: write axisX for ValueAxis \"time\", which is "
            "horizontal",
            {trace("PlotSeries { axisX: level; axisY: time; yData: [1, 2] }")});
        row("twice the same",
            "GraphPlot \"trace\" has no vertical axis: ValueAxis \"time\", given as axisY, is horizontal",
            {trace("PlotSeries { axisX: time; axisY: time; yData: [1, 2] }")});
        row("x is vertical", "has no horizontal axis: ValueAxis \"level\", given as axisX, is vertical",
            {trace("PlotSeries { axisX: level; axisY: level; yData: [1, 2] }")});
        row("alignment too late",
            "GraphPlot \"trace\" takes no vertical axis for its axisY, because the alignment of "
            "ValueAxis \"late\" was not known in time",
            {trace("PlotSeries { axisX: time; axisY: late; yData: [1, 2] }"),
             {},
             {},
             "width: 200; height: 100; Timer { id: flag; Component.onCompleted: repeat = true } ValueAxis { "
             "id: late; "
             "labelsPlane: plane; linesPlane: plane; alignment: flag.repeat ? Qt.AlignLeft : Qt.AlignBottom "
             "}"});
        row("size of its own", "GraphPlot \"trace\" has no size (it is 0 x 100)",
            {trace(sound,
                   "anchors.fill: null; Component.onCompleted: { anchors.fill = undefined; width = 0 }")});
        row("no colour", "GraphPlot \"trace\" is drawn in a colour without any opacity",
            {trace(sound, "penColor: 'transparent'")});
        row("empty address", "PlotSeries \"data\" has an empty address: write", {trace(fed.arg("''"))});
        row("address without a comma",
            "PlotSeries \"data\" cannot use the address \"meter\", which has no comma",
            {trace(fed.arg("'meter'"))});
        row("address with a blank", "the address \"meter, level\", which has a blank",
            {trace(fed.arg("'meter, level'"))});
        row("address without a service", "the address \",level\", which names no service",
            {trace(fed.arg("',level'"))});
        row("address without a prefix", "the address \"meter,\", which has no prefix",
            {trace(fed.arg("'meter,'"))});
        row("address of three parts", "the address \"a,b,c\", which has more than one comma",
            {trace(fed.arg("'a,b,c'"))});
        row("impossible service", "the address \"a/b,c\", which has a name that no service can have",
            {trace(fed.arg("'a/b,c'"))});
        row("no service",
            "PlotSeries \"data\" waits for the service \"absent\", which is not on the bus: start it on the "
            "same "
            "session bus, which dbus-run-session opens where there is none, or correct the address "
            "\"absent,level\"",
            {trace(fed.arg("'absent,level'"))});
        row("no item",
            "PlotSeries \"data\" gets no values: the service \"meter\" does not publish "
            "\"levle_yData:doubleARRAY:\"",
            {trace(fed.arg("'meter,levle'"))});
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        // Qt 6 itself says so, and hands over zeros.
        row("texts", "PlotSeries \"data\" has 2 values and no number among them",
            {trace("PlotSeries { id: data; axisX: time; axisY: level; yData: ['a', 'b'] }")});
#endif
        row("no xData", "PlotPoints \"data\" has all its 3 samples at x = 0: write xData",
            {trace("PlotPoints { id: data; axisX: time; axisY: level; yData: [1, 2, 3] }")});
        row("no interval", "has all its 3 samples at x = 0: write an xInterval",
            {trace("PlotSeries { axisX: time; axisY: level; yData: [1, 2, 3]; xInterval: 0 }")});
        row("x outside",
            "PlotSeries of GraphPlot \"trace\" has no sample in the visible range: its x values go from 0 to "
            "2, and 5 to 10 is visible",
            {trace(sound), "minValue: 5", {}});
        row("y outside", "its values go from 1 to 5, and 6 to 10 is visible",
            {trace(sound), {}, "minValue: 6"});
        row("area above", "its values go from 0 to 5, and 6 to 10 is visible",
            {trace(sound, "Component.onCompleted: plotStyle = GraphPlot.BarPlot"), {}, "minValue: 6"});

        // Charts that are sound, and what is merely empty or hidden.
        row("right", "", {trace(sound)});
        row("axes only", "", {"GraphPlot { axisX: time; axisY: level }"});
        row("no samples", "", {trace("PlotSeries { axisX: time; axisY: level }")});
        row("gaps", "", {trace("PlotSeries { axisX: time; axisY: level; yData: [NaN, 1, NaN] }")});
        row("hidden", "", {trace("PlotSeries { yData: [1, 2] }", "visible: false")});
        row("hidden view", "", {trace("PlotSeries { yData: [1, 2] }"), {}, {}, "visible: false"});
        row("bars that fill the view", "",
            {trace("PlotSeries { axisX: time; axisY: level; yData: [100, 100] }",
                   "Component.onCompleted: plotStyle = GraphPlot.BarPlot")});
        row("range of data to come", "",
            {trace("PlotSeries { axisX: time; axisY: level }"), {}, "minValue: 10"});
        row("decreasing", "", {trace(sound), "rangeOrder: ValueAxis.Decreasing", {}});
        row("from a service", "", {trace(fed.arg("'meter,level'"))});
        row("address once there", "",
            {trace(fed.arg("''").replace("id: data;", "id: data; yData: [1, 2];"))});
        row("scale that is not drawn", "", {"ValueAxis { alignment: Qt.AlignLeft }" + trace(sound)});
        row("plot in reserve", "", {"GraphPlot {}" + trace(sound)});
        row("figures", "", {"ContainerPlot {}"});
        row("values on the baseline", "",
            {trace("PlotSeries { axisX: time; axisY: level; yData: [0, 0, 0] }")});
        row("overview outside", "",
            {trace(sound) + "} WorldPlot { width: 100; height: 20; graphPlot: trace } Item {"});
        addKitRows();
        row("another chart", "",
            {trace(sound) +
             "} GraphView { axes: ValueAxis { labelsPlane: p; linesPlane: p } XYScale { id: p } "
             "GraphPlot { plotData: PlotSeries { yData: [1] } } } Item {"});
    }
    void sentence()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, expected);
        BusPublisher meter("meter");
        meter.setVector("level_yData:doubleARRAY:", {1.0, 2.0});
        Bench bench(document);
        QStringList messages = bench.look();
        if (expected.isEmpty()) {
            QCOMPARE(messages, QStringList());
            return;
        }
        QVERIFY2(messages.size() == 1 && messages.at(0).contains(expected),
                 qPrintable('\n' + messages.join('\n')));
        QCOMPARE(bench.look().size(), 1); // once
    }

    void createdLater()
    {
        Bench bench(Chart{"Component { id: maker; " + trace(sound) + "}"}.document());
        QCOMPARE(bench.look(), QStringList());
        auto *maker = bench.document().object<QQmlComponent>("maker");
        auto *view = bench.document().object<GraphView>("view");
        std::unique_ptr<QObject> plot(maker->create(qmlContext(view)));
        qobject_cast<QQuickItem *>(plot.get())->setParentItem(view);
        const QStringList messages = bench.look();
        QCOMPARE(messages.size(), 1);
        QVERIFY2(messages.at(0).contains("was created after GraphView \"view\""), qPrintable(messages.at(0)));
    }

    // A chart takes them at the end of the turn of the event loop, which may be after the look.
    void createdJustBefore()
    {
        Bench bench(
            "Item { Chart { id: view; width: 400; height: 300; Diagnosis { id: diagnosis }\n"
            "Item { id: inner; anchors.fill: parent } Component { id: maker; Trace { values: [8, 9] } } } }");
        QCOMPARE(bench.look(), QStringList());
        for (const char *parent : {"view", "inner"}) {
            auto *maker = bench.document().object<QQmlComponent>("maker");
            QObject *trace = maker->create(qmlContext(bench.document().object("view")));
            trace->setParent(bench.document().object(parent));
            static_cast<QQuickItem *>(trace)->setParentItem(bench.document().object<QQuickItem>(parent));
            auto *diagnosis = bench.document().object<graph::Diagnosis>("diagnosis");
            diagnosis->look();
            QCOMPARE(diagnosis->messages(), QStringList());
        }
    }

    // Samples are compared with what is visible when they arrive, not when the user has moved away from them.
    void onlyNewSamplesAreCompared()
    {
        for (const bool isEarly : {false, true}) {
            Bench bench(Chart{trace("PlotSeries { id: data; axisX: time; axisY: level }")}.document());
            auto *data = bench.document().object("data");
            auto *level = bench.document().object("level");
            if (isEarly)
                data->setProperty("yData", QVariant::fromValue(QVector<double>{1.0, 2.0}));
            QCOMPARE(bench.look(), QStringList());
            level->setProperty("maxValue", 100);
            level->setProperty("minValue", 50);
            data->setProperty("yData", QVariant::fromValue(QVector<double>{1.0, 2.0, 3.0}));
            QCOMPARE(bench.look().size(), isEarly ? 0 : 1);
        }
    }

    // In the log after a second, with the place in the document, also for those who listen to the engine.
    void namesThePlace()
    {
        registerTypes();
        QQmlEngine engine;
        QList<QQmlError> heard;
        connect(&engine, &QQmlEngine::warnings,
                [&heard](const QList<QQmlError> &errors) { heard += errors; });
        QQmlComponent component(&engine);
        component.setData("import QtQuick 2.15\nimport charts 1.0\n" +
                              Chart{"GraphPlot {\nobjectName: 'second' }"}.document(),
                          QUrl("file:///charts/level.qml"));
        std::unique_ptr<QObject> root(component.create());
        QQuickWindow window;
        qobject_cast<QQuickItem *>(root.get())->setParentItem(window.contentItem());
        QLoggingCategory::setFilterRules("");
        QElapsedTimer clock;
        clock.start();
        QTest::ignoreMessage(
            QtWarningMsg,
            "GraphPlot \"second\" (level.qml:13) has no axisX and axisY: write axisX and axisY in "
            "its plotData or in the plot itself, with the id of an axis of the view.");
        QTRY_COMPARE(heard.size(), 1);
        QVERIFY(clock.elapsed() > 900);
        QCOMPARE(heard.at(0).line(), 13);
        QTest::qWait(1100);
        QCOMPARE(heard.size(), 1);
        QLoggingCategory::setFilterRules("graph.kit=false");
    }

    // A document may be loaded before there is a window; its renderer takes nothing of a framebuffer's shift back.
    void plotsAndCursorsAreImages()
    {
        QmlDocument document(
            "Item { Chart { id: chart; GraphPlot { id: plot } GraphCursor { id: cursor } } }");
        QQuickWindow window;
        document.object<QQuickItem>("chart")->setParentItem(window.contentItem());
        for (const char *id : {"plot", "cursor"})
            QCOMPARE(document.object<QQuickPaintedItem>(id)->renderTarget(), QQuickPaintedItem::Image);
    }

    void writesOverTheChart()
    {
        Bench bench(Chart{"GraphPlot {}"}.document());
        auto *diagnosis = bench.document().object<graph::Diagnosis>("diagnosis");
        auto *view = bench.document().object<GraphView>("view");
        diagnosis->setOverlay(true);
        bench.look();
        QQuickPaintedItem *paper = nullptr;
        for (auto *item : view->findChildren<QQuickPaintedItem *>()) {
            if (item->inherits("graph::DiagnosisOverlay"))
                paper = item;
        }
        QVERIFY(paper);
        QVERIFY(!inkBox(painted(paper), [](const QColor &color) { return color.alpha() > 200; }).isEmpty());
    }
};

QTEST_MAIN(tst_diagnosis)
#include "tst_diagnosis.moc"
