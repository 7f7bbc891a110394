#pragma once

#include "cursors/CursorDirection.h"

#include <optional>

class PlotData;

namespace graph {

struct CursorPlace
{
    int index;
    double value;
    // Null where there are no samples.
    const PlotData *data;
};

// Where a cursor can be: on the samples of the data or, as a horizontal line, on the values of the axis,
// where the value counts as the index. All but NaN is accepted as a value or an index.
class CursorPlaces
{
public:
    // Data and axis may be null; there is no place then.
    CursorPlaces(const CursorDirection &direction, const PlotData *data, const ValueAxis *axis,
                 bool staysOnScreen)
        : m_direction(direction)
        , m_data(data)
        , m_axis(axis)
        , m_staysOnScreen(staysOnScreen)
    {
    }

    // Of an index that no sample has there is a place only if the screen ends among the samples.
    std::optional<CursorPlace> ofIndex(double index) const;
    // That of the nearest sample.
    std::optional<CursorPlace> ofValue(double value) const;
    // -1 when there is none.
    int nearestSample(double value) const;
    // The value of a place on these data; they may no longer have its sample.
    std::optional<double> valueOf(int index, double formerValue) const;

private:
    std::optional<CursorPlace> ofLevel(double value) const;

    const CursorDirection &m_direction;
    const PlotData *m_data;
    const ValueAxis *m_axis;
    bool m_staysOnScreen;
};

} // namespace graph
