#include "data/DataStreams.h"
#include "data/PlotBands.h"
#include "data/PlotRegions.h"
#include "data/PlotSeries.h"
#include "fuzz/FuzzInput.h"

#include <QCoreApplication>

#include <memory>

namespace {

void ignoreMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

std::unique_ptr<PlotData> newData(int kind)
{
    switch (kind % 4) {
    case 0:
        return std::make_unique<PlotSeries>();
    case 1:
        return std::make_unique<PlotPoints>();
    case 2:
        return std::make_unique<PlotBands>();
    default:
        return std::make_unique<PlotRegions>();
    }
}

// What plots and cursors ask of data.
void use(PlotData &data, double xMin, double xMax)
{
    data.boundingRect();
    data.toString();
    for (bool segments : {false, true}) {
        data.setUsePointsAsSegments(segments);
        const graph::SampleSpan span = data.sampleSpan(QRectF(xMin, 0.0, xMax - xMin, 1.0));
        FUZZ_CHECK(span.size() <= data.size());
        span.minMax(0, span.size());
        for (int i = 0; i < span.size(); ++i)
            FUZZ_CHECK(span.dataIndex(i) >= 0 && span.dataIndex(i) < data.size());
        data.containsPoint(xMin);
        data.formattedYValueByPosIndex(data.indexOf(xMin));
    }
    if (auto *points = qobject_cast<PlotPoints *>(&data))
        points->sort();
    if (const auto *bands = qobject_cast<const PlotBands *>(&data))
        bands->names(QRectF(xMin, 0.0, xMax - xMin, 0.0));
    if (auto *regions = qobject_cast<PlotRegions *>(&data)) {
        regions->sort();
        for (int i = 0; i < regions->size(); ++i)
            regions->region(i)->color().lighter().rgba();
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv); // for the timers
    qInstallMessageHandler(ignoreMessage);
    return 0;
}

// The class, a range of x, then the bytes of a stream.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, std::size_t size)
{
    FuzzInput input(bytes, size);
    const int kind = input.take<unsigned char>();
    const double xMin = input.take<float>(), xMax = input.take<float>();
    const std::unique_ptr<PlotData> data = newData(kind);
    const QByteArray before = written(*data);
    if (!isRead(input.rest(), *data)) {
        FUZZ_CHECK(written(*data) == before);
        return 0;
    }
    const QByteArray after = written(*data);
    const std::unique_ptr<PlotData> copy = newData(kind);
    FUZZ_CHECK(isRead(after, *copy) && written(*copy) == after);
    use(*data, xMin, xMax);
    return 0;
}
