// QCustomPlot on a raster widget, set up for speed: no antialiasing, fast lines, values written in place, no axes unless
// it is a whole screen. There the cursor, its readings and the markers have a layer with a buffer of its own, which is
// all that a moved cursor draws again.

#include "benchmarks/Measurement.h"

#include <QApplication>

#include <qcustomplot.h>

#include <algorithm>

using benchmark::Job;

namespace {

class Peer : public benchmark::Contender
{
public:
    void prepare(const Job &job, const QVector<QVector<double>> &sets) override
    {
        m_sets = sets;
        m_plot.resize(job.size);
        m_plot.plotLayout()->clear();
        auto *area = new QCPAxisRect(&m_plot, false);
        area->addAxes(QCPAxis::atLeft | QCPAxis::atBottom);
        m_plot.plotLayout()->addElement(0, 0, area);
        m_plot.plotLayout()->setRowSpacing(0);
        area->setAutoMargins(QCP::msNone);
        area->setMargins(QMargins());
        for (QCPAxis *axis : area->axes()) {
            axis->setVisible(false);
            axis->grid()->setVisible(false);
        }
        m_x = area->axis(QCPAxis::atBottom);
        area->axis(QCPAxis::atLeft)->setRange(-50, 50);
        addGraphs(area, std::max(1, job.traces), job.pen);
        if (job.traces > 0)
            addScreen(area);
        m_plot.setNotAntialiasedElements(QCP::aeAll);
        m_plot.setPlottingHints(QCP::phFastPolylines | QCP::phImmediateRefresh);
        m_plot.show();
        QApplication::processEvents();
    }

    void useSet(int set) override
    {
        for (QCPGraph *graph : qAsConst(m_graphs))
            setValues(graph, m_sets.at(set));
        m_values = m_sets.at(set);
        placeMarkers();
    }

    void setVisible(double first, double last) override { m_x->setRange(first, last); }

    void moveCursor(int pixel) override
    {
        m_cursorOnly = true;
        const int index = qBound(0, qRound(m_x->pixelToCoord(pixel)), int(m_values.size()) - 1);
        setLine(m_cursor, index);
        for (int i = 0; i < m_readings.size(); ++i) {
            m_readings.at(i)->setText(QString::number(m_values.at(index)));
            m_readings.at(i)->position->setCoords(index, 45 - 4 * i);
        }
    }

    // A frame of a chart that rolls: new samples at the end, and as many less at the begin.
    void roll(const QVector<double> &values)
    {
        QCPGraph *graph = m_graphs.first();
        QVector<double> keys(values.size());
        double last = graph->dataCount() > 0 ? (graph->data()->constEnd() - 1)->key : -1.0;
        const int full = int(m_sets.last().size());
        for (double &key : keys)
            key = ++last;
        graph->addData(keys, values, true);
        graph->data()->removeBefore(last - full + 1);
        setVisible(last - full + 1, last);
    }

    void frame() override
    {
        if (m_cursorOnly)
            m_plot.layer(QStringLiteral("overlay"))->replot();
        else
            m_plot.replot(QCustomPlot::rpImmediateRefresh);
        m_cursorOnly = false;
        QApplication::processEvents();
    }

private:
    void addGraphs(QCPAxisRect *area, int count, int pen)
    {
        static const Qt::GlobalColor colours[] = {Qt::black, Qt::blue, Qt::darkGreen, Qt::darkMagenta};
        for (int i = 0; i < count; ++i) {
            m_graphs.append(m_plot.addGraph(m_x, area->axis(QCPAxis::atLeft)));
            m_graphs.last()->setPen(QPen(colours[i % 4], pen));
            m_graphs.last()->setName(QStringLiteral("Trace %1").arg(i));
        }
    }

    void addScreen(QCPAxisRect *area)
    {
        area->setAutoMargins(QCP::msAll);
        for (QCPAxis *axis : area->axes()) {
            axis->setVisible(true);
            axis->grid()->setVisible(true);
        }
        auto *legend = new QCPLegend;
        area->insetLayout()->addElement(legend, Qt::AlignRight | Qt::AlignTop);
        legend->setLayer(QStringLiteral("legend"));
        for (QCPGraph *graph : qAsConst(m_graphs))
            graph->addToLegend(legend);
        for (QCPItemStraightLine *&line : m_markers)
            line = newLine(Qt::darkCyan);
        m_cursor = newLine(Qt::red);
        for (int i = 0; i < m_graphs.size(); ++i) {
            m_readings.append(new QCPItemText(&m_plot));
            m_readings.last()->setLayer(QStringLiteral("overlay"));
            m_readings.last()->setPositionAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        }
    }

    QCPItemStraightLine *newLine(const QColor &color)
    {
        auto *line = new QCPItemStraightLine(&m_plot);
        line->setLayer(QStringLiteral("overlay"));
        line->setPen(QPen(color, 1));
        return line;
    }

    static void setLine(QCPItemStraightLine *line, double x)
    {
        line->point1->setCoords(x, 0);
        line->point2->setCoords(x, 1);
    }

    void placeMarkers()
    {
        if (!m_cursor)
            return;
        for (int i = 0; i < 2; ++i)
            setLine(m_markers[i], (i + 1) * m_values.size() / 5);
    }

    static void setValues(QCPGraph *graph, const QVector<double> &values)
    {
        if (graph->dataCount() != values.size()) {
            QVector<QCPGraphData> data(values.size());
            for (int i = 0; i < values.size(); ++i)
                data[i].key = i;
            graph->data()->set(data, true);
            graph->data()->squeeze();
        }
        QCPGraphData *samples = &*graph->data()->begin();
        for (int i = 0; i < values.size(); ++i)
            samples[i].value = values.at(i);
    }

    QVector<QVector<double>> m_sets;
    QVector<double> m_values;
    QCustomPlot m_plot;
    QCPAxis *m_x = nullptr;
    QVector<QCPGraph *> m_graphs;
    QCPItemStraightLine *m_markers[2] = {};
    QCPItemStraightLine *m_cursor = nullptr;
    QVector<QCPItemText *> m_readings;
    bool m_cursorOnly = false;
};

int roll(Job job, Peer &contender)
{
    job.work = QStringLiteral("stream");
    const QVector<double> noise = benchmark::noisyTrace(job.samples, 1);
    contender.prepare(job, {noise});
    contender.roll(noise);
    contender.frame();
    const QVector<double> added = noise.mid(0, std::max(job.samples / 10000, 1));
    return benchmark::run("QCustomPlot, added and removed", job, [&](int) {
        contender.roll(added);
        contender.frame();
    });
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    const Job job = Job::fromArguments(argc, argv);
    QApplication application(argc, argv);
    Peer contender;
    if (job.work == QLatin1String("roll"))
        return roll(job, contender);
    return benchmark::run("qcustomplot", job, contender);
}
