// Qwt on a raster widget, set up for speed: no axes, no backing store of its own, the arrays used where they lie.

#include "benchmarks/Measurement.h"

#include <QApplication>

#include <numeric>

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_layout.h>

using benchmark::Job;

namespace {

class Peer : public benchmark::Contender
{
public:
    void prepare(const Job &job, const QVector<QVector<double>> &sets) override
    {
        m_sets = sets;
        auto *canvas = new QwtPlotCanvas;
        canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, false);
        canvas->setPaintAttribute(QwtPlotCanvas::Opaque, true);
        canvas->setPaintAttribute(QwtPlotCanvas::ImmediatePaint, true);
        canvas->setFrameStyle(QFrame::NoFrame);
        m_plot.setCanvas(canvas);
        m_plot.setAutoReplot(false);
        m_plot.enableAxis(QwtPlot::yLeft, false);
        m_plot.enableAxis(QwtPlot::xBottom, false);
        m_plot.plotLayout()->setCanvasMargin(0);
        m_plot.plotLayout()->setAlignCanvasToScales(true);
        m_plot.setContentsMargins(0, 0, 0, 0);
        m_plot.setAxisScale(QwtPlot::yLeft, -50, 50);
        m_curve.setPen(QPen(Qt::black, job.pen));
        m_curve.setRenderHint(QwtPlotItem::RenderAntialiased, false);
        m_curve.setPaintAttribute(QwtPlotCurve::ClipPolygons);
        m_curve.setPaintAttribute(QwtPlotCurve::FilterPoints);
        m_curve.attach(&m_plot);
        m_plot.resize(job.size);
        m_plot.show();
        QApplication::processEvents();
    }

    void useSet(int set) override
    {
        const QVector<double> &values = m_sets.at(set);
        if (m_x.size() != values.size()) {
            m_x.resize(values.size());
            std::iota(m_x.begin(), m_x.end(), 0.0);
        }
        m_curve.setRawSamples(m_x.constData(), values.constData(), values.size());
    }

    void setVisible(double first, double last) override { m_plot.setAxisScale(QwtPlot::xBottom, first, last); }
    void frame() override { m_plot.replot(); }

private:
    QVector<QVector<double>> m_sets;
    QVector<double> m_x;
    QwtPlot m_plot;
    QwtPlotCurve m_curve;
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    const Job job = Job::fromArguments(argc, argv);
    QApplication application(argc, argv);
    Peer contender;
    return benchmark::run("qwt", job, contender);
}
