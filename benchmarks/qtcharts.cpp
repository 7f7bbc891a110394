// Qt Charts in QML: points replaced by points made beforehand, no axes shown unless it is a whole screen. There the
// cursor and the markers are rectangles over the chart, which it is spared from drawing. On OpenGL its series are drawn
// by the graphics processor, as its documentation advises for speed.

#include "benchmarks/Measurement.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QtCharts/QValueAxis>
#include <QtCharts/QXYSeries>

#include <algorithm>
#include <memory>

using benchmark::Job;

namespace {

const char document[] = R"(
    import QtQuick 2.15
    import QtCharts 2.3
    ChartView {
        property alias axis: horizontal
        property alias yAxis: vertical
        property alias cursor: cursor
        property alias reading: reading
        property bool whole: false
        legend.visible: whole
        antialiasing: false
        backgroundRoundness: 0
        plotAreaColor: "white"
        margins { top: 0; bottom: 0; left: 0; right: 0 }
        ValueAxis { id: horizontal; visible: whole }
        ValueAxis { id: vertical; visible: whole; min: -50; max: 50 }
        Repeater {
            model: whole ? 2 : 0
            Rectangle { x: parent.width * (index + 1) / 4; width: 1; height: parent.height; color: "teal" }
        }
        Rectangle {
            id: cursor
            visible: whole; width: 1; height: parent.height; color: "red"
            Text { id: reading; x: 8 }
        }
    })";
const Qt::GlobalColor colours[] = {Qt::black, Qt::blue, Qt::darkGreen, Qt::darkMagenta};

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
        m_item->setProperty("whole", job.traces > 0);
        const bool onProcessor =
            m_window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software;
        for (int i = 0; i < std::max(1, job.traces); ++i) {
            QtCharts::QAbstractSeries *series = nullptr;
            QMetaObject::invokeMethod(m_item.get(), "createSeries",
                                      Q_RETURN_ARG(QtCharts::QAbstractSeries *, series), Q_ARG(int, 0),
                                      Q_ARG(QString, QStringLiteral("Trace %1").arg(i)),
                                      Q_ARG(QtCharts::QAbstractAxis *, m_axis),
                                      Q_ARG(QtCharts::QAbstractAxis *,
                                            m_item->property("yAxis").value<QtCharts::QAbstractAxis *>()));
            m_series.append(qobject_cast<QtCharts::QXYSeries *>(series));
            m_series.last()->setUseOpenGL(onProcessor);
            m_series.last()->setPen(QPen(colours[i % 4], job.pen));
        }
        m_window.resize(job.size);
        m_item->setParentItem(m_window.contentItem());
        m_item->setSize(job.size);
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, [this] { ++m_frames; });
        m_window.show();
        frame();
    }

    void useSet(int set) override
    {
        m_values = m_sets.at(set);
        for (QtCharts::QXYSeries *series : qAsConst(m_series))
            series->replace(m_values);
    }

    void moveCursor(int pixel) override
    {
        m_item->property("cursor").value<QObject *>()->setProperty("x", pixel);
        const int index =
            qBound(0, int(pixel * m_values.size() / m_window.width()), int(m_values.size()) - 1);
        QStringList readings;
        for (int i = 0; i < m_series.size(); ++i)
            readings.append(QString::number(m_values.at(index).y()));
        m_item->property("reading").value<QObject *>()->setProperty("text", readings.join(QLatin1Char('\n')));
    }

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
    QVector<QtCharts::QXYSeries *> m_series;
    QVector<QPointF> m_values;
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
