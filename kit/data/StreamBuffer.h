#pragma once

#include "data/PlotData.h"
#include "kit/data/StreamArray.h"

#include <algorithm>
#include <memory>

namespace graph {

// A stretch of an array, which stays as it is while a view of it is kept.
template <typename Sample> struct StreamView
{
    std::shared_ptr<StreamArray<Sample>> array;
    int first = 0;
    int size = 0;
    qint64 number = 0; // of the first sample, counted from the beginning of the epoch
    qint64 epoch = 1;

    const Sample *samples() const { return array ? array->samples() + first : nullptr; }
    SampleHistory history() const { return {epoch, number, size}; }
    SampleSpan::Stretch<Sample> stretch(double countedFrom = 0.0) const
    {
        return {array, array ? array->samples() : nullptr, first, size, double(number) - countedFrom};
    }
    std::shared_ptr<const MinMaxPyramid> pyramid() const
    {
        return {array, array ? &array->pyramid : nullptr};
    }
};

// The newest samples of a stream, at most `capacity`, one after the other in memory. Those that are appended
// come behind the others, where nobody looks yet; at the end of the array the samples move to its beginning,
// or to a new array where views share this one. It is half as long again as they are, so that a sample is
// moved twice at most while it passes.
template <typename Sample> class StreamBuffer
{
public:
    static constexpr int greatestCapacity = 1 << 30;

    const StreamView<Sample> &view() const { return m_view; }
    int capacity() const { return m_capacity; }

    // 1 to greatestCapacity.
    void setCapacity(int capacity)
    {
        m_capacity = capacity;
        drop(m_view.size - capacity);
        if (m_view.array && m_view.array->capacity() / 2 > arraySize(m_view.size))
            moveTo(m_view.size);
    }

    // fill(Sample *to, int first, int count) writes some of the new samples.
    template <typename Fill> void append(int count, Fill fill)
    {
        const int kept = std::min(count, m_capacity);
        drop(m_view.size + kept - m_capacity);
        m_view.number += count - kept; // which fell out at once
        if (!m_view.array || m_view.first + m_view.size + kept > m_view.array->capacity())
            makeRoom(m_view.size + kept);
        StreamArray<Sample> &array = *m_view.array;
        fill(array.samples() + m_view.first + m_view.size, count - kept, kept);
        m_view.size += kept;
        array.pyramid.extend(array.samples(), m_view.first + m_view.size);
        if (m_view.array.use_count() == 1)
            array.letGo(beginOfBlock());
    }

    // Samples that were lost: there is a gap between those before and those behind.
    void skip(qint64 count, const Sample &gap)
    {
        if (count >= m_capacity)
            drop(m_view.size);
        if (m_view.size == 0)
            m_view.number += count;
        else
            append(int(count), [&](Sample *to, int, int n) { std::fill(to, to + n, gap); });
    }

    void clear() { m_view = {nullptr, 0, 0, 0, m_view.epoch + 1}; }

private:
    // Arrays are not shorter than this.
    static constexpr int fewest = 1 << 10;
    // Samples that are moved at a time; what lies behind them is let go at once.
    static constexpr int portion = 1 << 17;

    static int arraySize(int size) { return std::max(fewest, size + size / 2); }

    // Blocks of the pyramid keep their places.
    int beginOfBlock() const { return m_view.first - m_view.first % MinMaxPyramid::blockSize; }

    void drop(int count)
    {
        if (count <= 0)
            return;
        m_view.first += count;
        m_view.number += count;
        m_view.size -= count;
    }

    // Behind the samples. Small arrays that nobody shares are used again: new pages cost more time than the
    // memory is worth.
    void makeRoom(int size)
    {
        if (!m_view.array || m_view.array.use_count() > 1 || !m_view.array->isSmall() ||
            m_view.array->capacity() < arraySize(size)) {
            moveTo(size);
            return;
        }
        const int begin = beginOfBlock();
        Sample *samples = m_view.array->samples();
        std::copy(samples + begin, samples + m_view.first + m_view.size, samples);
        m_view.array->pyramid.removeFront(begin / MinMaxPyramid::blockSize);
        m_view.first -= begin;
    }

    void moveTo(int size)
    {
        // Doubled while it grows.
        auto array = std::make_shared<StreamArray<Sample>>(
            arraySize(int(std::max<qint64>(size, std::min(2 * qint64(size), qint64(m_capacity))))) +
            MinMaxPyramid::blockSize);
        if (m_view.array) {
            const int begin = beginOfBlock();
            const int count = m_view.first + m_view.size - begin;
            const bool isShared = m_view.array.use_count() > 1;
            for (int done = 0; done < count; done += portion) {
                const Sample *from = m_view.array->samples() + begin + done;
                std::copy(from, from + std::min(portion, count - done), array->samples() + done);
                if (!isShared)
                    m_view.array->letGo(begin + std::min(done + portion, count));
            }
            if (isShared)
                array->pyramid = m_view.array->pyramid;
            else
                array->pyramid = std::move(m_view.array->pyramid);
            array->pyramid.removeFront(begin / MinMaxPyramid::blockSize);
            m_view.first -= begin;
        }
        array->pyramid.reserve(array->capacity());
        m_view.array = std::move(array);
    }

    StreamView<Sample> m_view;
    int m_capacity = 100000;
};

} // namespace graph
