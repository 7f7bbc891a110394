#pragma once

#include <QObject>
#include <QVector>

namespace gallery {

// Noisy sines to show as live traces, made in advance so that a frame costs only its drawing.
class NoisyTraces : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Trace `number` of ten that come round and round, from -1.4 to 1.4. Traces of one size are kept, and are
    // handed out without a copy. Empty unless there is at least one sample, and ten million at most.
    Q_INVOKABLE QVector<double> trace(int number, int samples);

private:
    QVector<QVector<double>> m_traces;
    int m_samples = 0;
};

} // namespace gallery
