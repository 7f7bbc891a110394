// Measures the numeric units that a frame is made of, one after the other: milliseconds of the processor, the median of
// many rounds. Arguments as those of the other programs; --samples and --size count.

#include "benchmarks/Measurement.h"
#include "data/MinMaxPyramid.h"
#include "raster/Strokes.h"
#include "plots/ColumnEnvelope.h"

#include <QGuiApplication>
#include <QPainter>

#include <memory>

using benchmark::Job;

namespace {

// Keeps the compiler from leaving out what nobody looks at.
volatile double seen;

void runUnits(const Job &job)
{
    const QVector<double> samples = benchmark::noisyTrace(job.samples, 1);
    QVector<QPointF> points(job.samples);
    for (int i = 0; i < job.samples; ++i)
        points[i] = QPointF(i, samples.at(i));
    const int columns = job.size.width();
    const double begin = job.logarithmic ? job.samples / 1000.0 : 0.0;
    const double end = job.samples - 1;
    const graph::PixelScale along(job.logarithmic ? graph::ScaleKind::Logarithmic : graph::ScaleKind::Linear,
                                  {begin, end}, end - begin, job.size.width());
    const graph::PixelMapping mapping(along, graph::PixelScale(50, -100, job.size.height()), job.size);
    const graph::SampleSpan series(samples, 0, 1);
    const auto pyramid = std::make_shared<const graph::MinMaxPyramid>(samples.constData(), samples.size());
    graph::SampleSpan withPyramid = series;
    withPyramid.setPyramid(pyramid);
    const graph::SampleSpan explicitPoints(points);

    benchmark::run("minMax of the values", job,
                   [&](int) { seen = graph::minMax(samples.constData(), samples.size()).max; });
    benchmark::run("minMax of the points", job,
                   [&](int) { seen = graph::minMax(points.constData(), points.size()).max; });
    benchmark::run("build the pyramid", job, [&](int) {
        seen = graph::MinMaxPyramid(samples.constData(), samples.size())
                   .minMax(samples.constData(), 0, samples.size())
                   .max;
    });
    const auto envelope = [&](const char *name, const graph::SampleSpan &span) {
        benchmark::run(name, job, [&](int) {
            seen = graph::columnEnvelope(span, mapping, columns, 0.0, false).firstColumn;
        });
    };
    envelope("columns of a series", series);
    envelope("columns from the pyramid", withPyramid);
    envelope("columns of points", explicitPoints);

    graph::ColumnEnvelope filled = graph::columnEnvelope(series, mapping, columns, 0.0, false);
    benchmark::run("join columns", job, [&](int) {
        graph::joinColumns(filled, 0.0, false);
        seen = filled.firstColumn;
    });
    QVector<QLine> strokes;
    benchmark::run("make strokes", job, [&](int) {
        strokes = graph::envelopeStrokes(filled, mapping, job.pen / mapping.scaleY(), 0.0, false);
    });
    QImage image(job.size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QPen pen(Qt::black, job.pen);
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    benchmark::run("draw strokes", job, [&](int) { graph::drawUprightLines(&painter, strokes); });
    benchmark::run("draw strokes as lines", job, [&](int) { painter.drawLines(strokes); });
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::chooseSoftwareRendering();
    Job job = Job::fromArguments(argc, argv);
    job.work = QStringLiteral("unit");
    QGuiApplication application(argc, argv);
    runUnits(job);
}
