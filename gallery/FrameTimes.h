#pragma once

#include <QVector>
#include <QtGlobal>

namespace gallery {

// Frame rate and painting time of one second after the other. Takes nanoseconds of a clock that never goes
// back; the figures are NaN until a second is over, the painting time also without any painting in it.
class FrameTimes
{
public:
    void addPainting(qint64 duration) { m_paintings.append(duration); }
    // A frame that was shown at this time. True when it ends a second, and the figures are those of that
    // second.
    bool addFrame(qint64 time);
    void reset() { *this = FrameTimes(); }

    double framesPerSecond() const { return m_framesPerSecond; }
    // The median, in milliseconds: one slow frame is not what painting takes.
    double paintTime() const { return m_paintTime; }

private:
    qint64 m_begin = -1;
    int m_frames = 0;
    QVector<qint64> m_paintings;
    double m_framesPerSecond = qQNaN();
    double m_paintTime = qQNaN();
};

} // namespace gallery
