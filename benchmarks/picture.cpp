// Draws the cost of a frame over the number of samples with the chart items themselves:
//   benchmark_picture RESULTS PICTURE.png
// Both axes are logarithmic: the data holds the logarithms, the labels of the fixed ticks say the values.

#include "benchmarks/Measurement.h"
#include "data/PlotPoints.h"
#include "plugin/Plugin.h"

#include <QFile>
#include <QGuiApplication>
#include <QMap>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

const char document[] = R"(
    import QtQuick 2.15
    import charts 1.0
    Rectangle {
        id: root
        readonly property var names: ["items", "floor", "qcustomplot", "qwt", "qtcharts"]
        readonly property var titles: ["graph_plugin", "the floor", "QCustomPlot", "Qwt", "Qt Charts"]
        readonly property var colors: ["#0050c8", "#909090", "#d06000", "#208020", "#a02070"]
        property list<PlotPoints> traces: [
            PlotPoints { axisX: samples; axisY: cost },
            PlotPoints { axisX: samples; axisY: cost },
            PlotPoints { axisX: samples; axisY: cost },
            PlotPoints { axisX: samples; axisY: cost },
            PlotPoints { axisX: samples; axisY: cost }
        ]
        width: 800; height: 500
        Text {
            id: title
            anchors { left: parent.left; leftMargin: 12; top: parent.top; topMargin: 6 }
            text: "A new trace, 800x480, pen 2: milliseconds a frame over the number of samples"
            font { family: "Roboto"; pixelSize: 15 }
        }
        GraphView {
            anchors { fill: parent; topMargin: 34; rightMargin: 16 }
            axes: [
                ValueAxis {
                    id: samples
                    minValue: 3; maxValue: 7; margin: 34
                    tickInterval: ValueAxis.FixedTicks
                    ticks: [3, 4, 5, 6, 7]
                    tickLabels: ["1000", "10 000", "100 000", "1 million", "10 million"]
                    lineColor: "#d8d8d8"; labelFont { family: "Roboto"; pixelSize: 14 }
                    labelsPlane: plane; linesPlane: plane
                },
                ValueAxis {
                    id: cost
                    alignment: Qt.AlignLeft
                    minValue: -1.3; maxValue: 3.3; margin: 64; baseline: -9
                    tickInterval: ValueAxis.FixedTicks
                    ticks: [-1, 0, 1, 2, 3]
                    tickLabels: ["0.1 ms", "1 ms", "10 ms", "100 ms", "1 s"]
                    lineColor: "#d8d8d8"; labelFont { family: "Roboto"; pixelSize: 14 }
                    labelsPlane: plane; linesPlane: plane
                }
            ]
            XYScale { id: plane }
            Repeater {
                model: root.names.length
                GraphPlot {
                    plotData: root.traces[index]
                    plotStyle: GraphPlot.LinePlot
                    penColor: root.colors[index]
                    minLineWidth: index === 0 ? 4 : 2
                    maxLineWidth: minLineWidth
                }
            }
        }
        Column {
            x: 84; y: 54; spacing: 4
            Repeater {
                model: root.names.length
                Row {
                    spacing: 8
                    visible: root.traces[index].size > 0
                    Rectangle { width: 18; height: 4; color: root.colors[index]; anchors.verticalCenter: name.verticalCenter }
                    Text { id: name; text: root.titles[index]; font { family: "Roboto"; pixelSize: 14 } }
                }
            }
        }
    })";

// The medians over the rounds of the new traces: milliseconds by samples by name.
QMap<QString, QMap<int, double>> newTraces(QFile &results)
{
    QMap<QString, QMap<int, QVector<double>>> all;
    while (!results.atEnd()) {
        const QStringList fields = QString::fromUtf8(results.readLine()).split('\t');
        if (fields.size() > 8 && fields.at(0) == QLatin1String("new"))
            all[fields.at(3)][fields.at(4).toInt()].append(fields.at(8).toDouble());
    }
    QMap<QString, QMap<int, double>> medians;
    for (auto name = all.begin(); name != all.end(); ++name) {
        for (auto size = name->begin(); size != name->end(); ++size) {
            std::sort(size->begin(), size->end());
            medians[name.key()][size.key()] = size->at(size->size() / 2);
        }
    }
    return medians;
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    QGuiApplication application(argc, argv);
    Plugin().registerTypes("charts");
    QFile results(application.arguments().value(1));
    const QString picture = application.arguments().value(2);
    if (picture.isEmpty() || !results.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "Usage: benchmark_picture RESULTS PICTURE.png\n");
        return 2;
    }

    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(document, QUrl());
    const std::unique_ptr<QObject> object(component.create());
    auto *item = qobject_cast<QQuickItem *>(object.get());
    if (!item)
        qFatal("%s", qPrintable(component.errorString()));
    const QStringList names = item->property("names").toStringList();
    const QMap<QString, QMap<int, double>> traces = newTraces(results);
    QQmlListReference data(item, "traces");
    for (int i = 0; i < names.size(); ++i) {
        QVector<double> x;
        QVector<double> y;
        const QMap<int, double> costs = traces.value(names.at(i));
        for (auto cost = costs.begin(); cost != costs.end(); ++cost) {
            x.append(std::log10(cost.key()));
            y.append(std::log10(cost.value()));
        }
        auto *points = static_cast<PlotPoints *>(data.at(i));
        points->setXData(x);
        points->setYData(y);
    }

    QQuickWindow window;
    window.resize(int(item->width()), int(item->height()));
    item->setParentItem(window.contentItem());
    window.show();
    for (int i = 0; i < 20; ++i)
        application.processEvents();
    const QSharedPointer<QQuickItemGrabResult> grab = item->grabToImage();
    QObject::connect(grab.data(), &QQuickItemGrabResult::ready, &application, [&] {
        application.exit(grab->image().convertToFormat(QImage::Format_RGB32).save(picture) ? 0 : 1);
    });
    const int status = application.exec();
    item->setParentItem(nullptr);
    return status;
}
