// Qt Charts in QML, in a window of the software scene graph: no axes shown, points replaced by points made beforehand.

#include "benchmarks/Measurement.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtCharts/QValueAxis>
#include <QtCharts/QXYSeries>

#include <memory>

using benchmark::Job;

namespace {

const char document[] = R"(
    import QtQuick 2.15
    import QtCharts 2.3
    ChartView {
        property alias axis: horizontal
        property alias series: line
        legend.visible: false
        antialiasing: false
        backgroundRoundness: 0
        plotAreaColor: "white"
        margins { top: 0; bottom: 0; left: 0; right: 0 }
        ValueAxis { id: horizontal; visible: false }
        ValueAxis { id: vertical; visible: false; min: -50; max: 50 }
        LineSeries { id: line; axisX: horizontal; axisY: vertical; color: "black" }
    })";

class Peer : public benchmark::Contender
{
public:
    void prepare(const Job &job, const QVector<QVector<double>> &sets) override
    {
        for (const QVector<double> &values : sets) {
            QVector<QPointF> points(values.size());
            for (int i = 0; i < values.size(); ++i)
                points[i] = QPointF(i, values.at(i));
            m_sets.append(points);
        }
        QQmlComponent component(&m_engine);
        component.setData(document, QUrl());
        m_item.reset(qobject_cast<QQuickItem *>(component.create()));
        if (!m_item)
            qFatal("%s", qPrintable(component.errorString()));
        m_axis = m_item->property("axis").value<QtCharts::QValueAxis *>();
        m_series = m_item->property("series").value<QtCharts::QXYSeries *>();
        m_series->setPen(QPen(Qt::black, job.pen));
        m_window.resize(job.size);
        m_item->setParentItem(m_window.contentItem());
        m_item->setSize(job.size);
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, [this] { ++m_frames; });
        m_window.show();
        frame();
    }

    void useSet(int set) override { m_series->replace(m_sets.at(set)); }
    void setVisible(double first, double last) override { m_axis->setRange(first, last); }

    void frame() override
    {
        for (const int before = m_frames; m_frames == before;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    QVector<QVector<QPointF>> m_sets;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_item;
    QtCharts::QValueAxis *m_axis = nullptr;
    QtCharts::QXYSeries *m_series = nullptr;
    int m_frames = 0;
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    const Job job = Job::fromArguments(argc, argv);
    QApplication application(argc, argv);
    Peer contender;
    return benchmark::run("qtcharts", job, contender);
}
