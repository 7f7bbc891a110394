// Qwt on a raster widget, set up for speed: the arrays used where they lie, no axes and no backing store unless it is a
// whole screen. There the canvas keeps its picture, and the cursor with its readings is an overlay above it.

#include "benchmarks/Measurement.h"

#include <QApplication>

#include <algorithm>
#include <numeric>

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_marker.h>
#include <qwt_widget_overlay.h>

using benchmark::Job;

namespace {

class Cursor : public QwtWidgetOverlay
{
public:
    using QwtWidgetOverlay::QwtWidgetOverlay;

    int column = 0;
    QStringList readings;

protected:
    void drawOverlay(QPainter *painter) const override
    {
        painter->setPen(Qt::red);
        painter->drawLine(column, 0, column, height());
        painter->setPen(Qt::black);
        for (int i = 0; i < readings.size(); ++i)
            painter->drawText(column + 8, 20 * (i + 1), readings.at(i));
    }
    QRegion maskHint() const override { return QRect(column - 2, 0, 100, height()); }
};

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
        addCurves(std::max(1, job.traces), job.pen);
        if (job.traces > 0)
            addScreen(canvas);
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
        for (QwtPlotCurve *curve : qAsConst(m_curves))
            curve->setRawSamples(m_x.constData(), values.constData(), values.size());
        m_values = values;
        for (int i = 0; m_cursor && i < 2; ++i)
            m_markers[i].setXValue((i + 1) * values.size() / 5);
    }

    void setVisible(double first, double last) override
    {
        m_plot.setAxisScale(QwtPlot::xBottom, first, last);
    }

    void moveCursor(int pixel) override
    {
        m_cursorOnly = true;
        const int index =
            qBound(0, qRound(m_plot.invTransform(QwtPlot::xBottom, pixel)), int(m_values.size()) - 1);
        m_cursor->column = qRound(m_plot.transform(QwtPlot::xBottom, index));
        m_cursor->readings.clear();
        for (int i = 0; i < m_curves.size(); ++i)
            m_cursor->readings.append(QString::number(m_values.at(index)));
    }

    void frame() override
    {
        if (m_cursorOnly)
            m_cursor->updateOverlay();
        else
            m_plot.replot();
        m_cursorOnly = false;
        QApplication::processEvents();
    }

private:
    void addCurves(int count, int pen)
    {
        static const Qt::GlobalColor colours[] = {Qt::black, Qt::blue, Qt::darkGreen, Qt::darkMagenta};
        for (int i = 0; i < count; ++i) {
            auto *curve = new QwtPlotCurve(QStringLiteral("Trace %1").arg(i));
            curve->setPen(QPen(colours[i % 4], pen));
            curve->setRenderHint(QwtPlotItem::RenderAntialiased, false);
            curve->setPaintAttribute(QwtPlotCurve::ClipPolygons);
            curve->setPaintAttribute(QwtPlotCurve::FilterPoints);
            curve->attach(&m_plot);
            m_curves.append(curve);
        }
    }

    void addScreen(QwtPlotCanvas *canvas)
    {
        canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, true);
        m_plot.enableAxis(QwtPlot::yLeft, true);
        m_plot.enableAxis(QwtPlot::xBottom, true);
        auto *grid = new QwtPlotGrid;
        grid->setPen(QPen(Qt::lightGray));
        grid->attach(&m_plot);
        m_plot.insertLegend(new QwtLegend, QwtPlot::TopLegend);
        for (QwtPlotMarker &marker : m_markers) {
            marker.setLineStyle(QwtPlotMarker::VLine);
            marker.setLinePen(QPen(Qt::darkCyan));
            marker.attach(&m_plot);
        }
        m_cursor = new Cursor(canvas);
    }

    QVector<QVector<double>> m_sets;
    QVector<double> m_x;
    QwtPlot m_plot;
    QVector<QwtPlotCurve *> m_curves;
    QVector<double> m_values;
    QwtPlotMarker m_markers[2];
    Cursor *m_cursor = nullptr;
    bool m_cursorOnly = false;
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
