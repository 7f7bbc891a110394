#include "fuzz/FuzzInput.h"
#include "simulator/RecordedInstrument.h"
#include "simulator/RecordingReader.h"

#include <QBuffer>

// The bytes of a recording. What is accepted is played, too.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    QByteArray bytes = FuzzInput(data, size).rest();
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    simulation::ReadingError error;
    const std::optional<simulation::Recording> recording = simulation::recordingFrom(file, &error);
    FUZZ_CHECK(recording || (!error.message.isEmpty() && error.message.size() < 1000));
    if (!recording)
        return 0;
    const simulation::RecordedInstrument instrument({*recording}, 0.0);
    instrument.traces();
    instrument.times();
    for (quint64 number : {quint64(0), quint64(1), std::numeric_limits<quint64>::max()}) {
        for (const simulation::SweptTrace &trace : instrument.sweep(number))
            FUZZ_CHECK(std::size_t(trace.y.size()) <= size);
    }
    return 0;
}
