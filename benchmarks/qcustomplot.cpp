// QCustomPlot on a raster widget, set up for speed: no axes, no antialiasing, fast lines, values written in place.

#include "benchmarks/Measurement.h"

#include <QApplication>

#include <qcustomplot.h>

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
        m_graph = m_plot.addGraph(m_x, area->axis(QCPAxis::atLeft));
        m_graph->setPen(QPen(Qt::black, job.pen));
        m_plot.setNotAntialiasedElements(QCP::aeAll);
        m_plot.setPlottingHints(QCP::phFastPolylines | QCP::phImmediateRefresh);
        m_plot.show();
        QApplication::processEvents();
    }

    void useSet(int set) override
    {
        const QVector<double> &values = m_sets.at(set);
        if (m_graph->dataCount() != values.size()) {
            QVector<QCPGraphData> data(values.size());
            for (int i = 0; i < values.size(); ++i)
                data[i].key = i;
            m_graph->data()->set(data, true);
            m_graph->data()->squeeze();
        }
        QCPGraphData *samples = &*m_graph->data()->begin();
        for (int i = 0; i < values.size(); ++i)
            samples[i].value = values.at(i);
    }

    void setVisible(double first, double last) override { m_x->setRange(first, last); }
    void frame() override { m_plot.replot(QCustomPlot::rpImmediateRefresh); }

private:
    QVector<QVector<double>> m_sets;
    QCustomPlot m_plot;
    QCPAxis *m_x = nullptr;
    QCPGraph *m_graph = nullptr;
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    const Job job = Job::fromArguments(argc, argv);
    QApplication application(argc, argv);
    Peer contender;
    return benchmark::run("qcustomplot", job, contender);
}
