// A chart that a program builds: the document has nothing but the chart itself.
#include <kit/axis/ChartAxis.h>
#include <kit/chart/ChartView.h>
#include <kit/chart/CursorSwitches.h>
#include <kit/data/PeakList.h>
#include <kit/plots/Trace.h>

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>

#include <cmath>
#include <memory>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QQuickView view;
    QQmlComponent component(view.engine());
    component.setData("import graph_kit 1.0\nChart {}", QUrl());
    auto *chart = qobject_cast<graph::ChartView *>(component.create());
    if (!chart)
        return 1;
    view.setContent(QUrl(), &component, chart);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(800, 480);

    // Its axes are there; further ones are made in the document.
    chart->setTitle("Ring");
    chart->axisX()->setUnit("s");
    chart->axisX()->range(0, 10);

    // A trace is in the chart as long as the chart is its parent item, and leaves it when it is deleted.
    const auto trace = std::make_unique<graph::Trace>();
    trace->setName("Voltage");
    trace->setUnit("V");
    trace->setInterval(0.01);
    trace->setParentItem(chart);
    QVector<double> values(1001);
    for (int i = 0; i < values.size(); ++i)
        values[i] = std::exp(-0.003 * i) * std::sin(0.04 * i);
    trace->setValues(values);
    chart->showRange(0, 5);

    graph::PeakList peaks;
    peaks.giveSeries(trace.get());
    peaks.setProminence(0.1);
    QObject::connect(&peaks, &graph::PeakList::peaksChanged, [&] {
        if (peaks.count() == 0)
            return;
        const QModelIndex highest = peaks.index(0);
        const double x = peaks.data(highest, graph::PeakList::PositionRole).toDouble();
        const double y = peaks.data(highest, graph::PeakList::ValueRole).toDouble();
        view.setTitle(chart->formatY(trace.get(), y) + " at " + chart->formatX(x));
    });

    // Where a tap places the cursor: NaN while there is none.
    QObject::connect(chart->cursor(), &graph::CursorSwitches::posValueChanged, [&] {
        const PlotData *data = trace->plotData();
        const int sample = data->indexOf(chart->cursor()->posValue());
        if (sample >= 0 && sample < data->size())
            view.setTitle(chart->formatX(data->x(sample)) + ": " +
                          chart->formatY(trace.get(), data->y(sample)));
    });

    view.show();
    return QGuiApplication::exec();
}
