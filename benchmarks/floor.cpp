// The least that a frame can cost: one pass over the samples where they lie, a cleared layer, strokes written straight
// into it, one blit to the window's image. No scene, no painter for the strokes, no generality.

#include "benchmarks/Measurement.h"
#include "common/VectorRegisters.h"
#include "data/MinMaxPyramid.h"

#include <QFile>
#include <QImage>
#include <QLine>
#include <QPainter>
#include <QTemporaryFile>

#include <algorithm>
#include <memory>

using benchmark::Job;

namespace {

class Floor : public benchmark::Contender
{
public:
    void prepare(const Job &job, const QVector<QVector<double>> &sets) override
    {
        m_sets = sets;
        m_pen = job.pen;
        m_pans = job.work == QLatin1String("pan") || job.work == QLatin1String("window");
        m_layer = QImage(job.size, QImage::Format_ARGB32_Premultiplied);
        m_window = QImage(job.size, QImage::Format_RGB32);
        m_window.fill(Qt::white);
    }

    void useSet(int set) override
    {
        m_samples = m_sets.at(set);
        m_pyramid.reset();
    }

    void setVisible(double first, double last) override
    {
        m_first = first;
        m_last = last;
        if (m_pans && !m_pyramid)
            m_pyramid = std::make_unique<graph::MinMaxPyramid>(m_samples.constData(), m_samples.size());
    }

    void moveCursor(int) override {}

    void frame() override
    {
        m_layer.fill(Qt::transparent);
        graph::clearWideRegisters();
        const int columns = m_layer.width();
        const double samplesPerPixel = (m_last - m_first) / (columns - 1);
        const auto firstSampleOf = [&](int column) {
            return std::min(int(m_samples.size()), std::max(0, int(m_first + column * samplesPerPixel + 1)));
        };
        graph::MinMax before;
        int begin = std::max(0, int(m_first));
        for (int column = 0; column < columns; ++column) {
            const int end = firstSampleOf(column + 1);
            graph::MinMax extremes = m_pyramid ? m_pyramid->minMax(m_samples.constData(), begin, end)
                                               : graph::minMax(m_samples.constData() + begin, end - begin);
            begin = end;
            if (extremes.isEmpty())
                continue;
            const graph::MinMax own = extremes;
            if (!before.isEmpty()) {
                extremes.min = std::min(extremes.min, before.max);
                extremes.max = std::max(extremes.max, before.min);
            }
            before = own;
            m_strokes.append(QLine(column, row(extremes.max), column, row(extremes.min)));
        }
        // Afterwards: the pass over the samples would push the layer out of the cache again and again.
        for (const QLine &stroke : qAsConst(m_strokes))
            writeStroke(stroke.x1(), stroke.y1(), stroke.y2());
        m_strokes.clear();
        QPainter painter(&m_window);
        painter.drawImage(0, 0, m_layer);
    }

private:
    int row(double value) const { return int((50.0 - value) * (m_layer.height() - 1) / 100.0); }

    void writeStroke(int column, int top, int bottom)
    {
        const int left = std::max(0, column - m_pen / 2);
        const int right = std::min(m_layer.width(), column - m_pen / 2 + m_pen);
        top = std::max(0, top);
        bottom = std::min(m_layer.height(), std::max(bottom, top + m_pen));
        const int stride = m_layer.bytesPerLine() / int(sizeof(QRgb));
        QRgb *line = reinterpret_cast<QRgb *>(m_layer.bits()) + top * stride;
        for (int y = top; y < bottom; ++y, line += stride) {
            for (int x = left; x < right; ++x)
                line[x] = 0xff000000;
        }
    }

    QVector<QVector<double>> m_sets;
    QVector<double> m_samples;
    std::unique_ptr<graph::MinMaxPyramid> m_pyramid;
    bool m_pans = false;
    int m_pen = 2;
    double m_first = 0.0;
    double m_last = 1.0;
    QVector<QLine> m_strokes;
    QImage m_layer;
    QImage m_window;
};

// The file of a heat map read once, the largest code of each row looked for, each pixel looked up in a palette and
// written into the window's image: as if every pixel had one cell.
int runHeatmap(const Job &job)
{
    constexpr int columns = 4096;
    constexpr int rows = 512;
    QTemporaryFile file;
    if (!file.open() || file.write(QByteArray(columns * rows, 3)) != columns * rows || !file.flush())
        qFatal("no file");
    const QRgb palette[] = {0, 1, 2, 0xff000003, 4, 5, 6, 7};
    QByteArray cells(columns * rows, 0);
    QImage window(job.size, QImage::Format_RGB32);
    return benchmark::run("floor", job, [&](int) {
        window.fill(Qt::white);
        QFile again(file.fileName());
        if (!again.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
            again.read(cells.data(), cells.size()) != cells.size())
            qFatal("the file has gone");
        unsigned char largest = 0;
        for (int line = 0; line < window.height(); ++line) {
            const char *codes = cells.constData() + line * rows / window.height() * columns;
            for (int column = 0; column < columns; ++column)
                largest = std::max(largest, static_cast<unsigned char>(codes[column]));
            QRgb *pixels = reinterpret_cast<QRgb *>(window.scanLine(line));
            const int width = std::min(window.width(), 650); // as many as the plot has
            for (int x = 0; x < width; ++x)
                pixels[x] = palette[static_cast<unsigned char>(codes[x])];
        }
        if (largest != 3)
            qFatal("other cells");
    });
}

} // namespace

int main(int argc, char **argv)
{
    const Job job = Job::fromArguments(argc, argv);
    if (job.work == QLatin1String("heat"))
        return runHeatmap(job);
    Floor contender;
    return benchmark::run("floor", job, contender);
}
