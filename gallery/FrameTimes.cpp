#include "FrameTimes.h"

#include <algorithm>

namespace gallery {

namespace {

const qint64 second = 1000000000;

double medianMilliseconds(QVector<qint64> *durations)
{
    if (durations->isEmpty())
        return qQNaN();
    const auto middle = durations->begin() + durations->size() / 2;
    std::nth_element(durations->begin(), middle, durations->end());
    return *middle * 1e-6;
}

} // namespace

bool FrameTimes::addFrame(qint64 time)
{
    if (m_begin < 0) {
        // The time before the first frame is not a frame.
        m_begin = time;
        m_paintings.clear();
        return false;
    }
    ++m_frames;
    if (time - m_begin < second)
        return false;
    m_framesPerSecond = m_frames * double(second) / (time - m_begin);
    m_paintTime = medianMilliseconds(&m_paintings);
    m_begin = time;
    m_frames = 0;
    m_paintings.clear();
    return true;
}

} // namespace gallery
