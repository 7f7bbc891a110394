#include "axis/AxisLabels.h"

#include "axis/LabelChoice.h"
#include "common/SafeInteger.h"

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

// Distances of the texts from the plot area, in pixels.
constexpr int rowDistance = 2;
constexpr int bandDistance = 4;
constexpr int marginSlack = 6;

double clampedPlace(double wanted, double lowest, double highest)
{
    return std::max(std::min(wanted, highest), lowest);
}

QString withUnit(const QString &number, const QString &unit)
{
    return number + QLatin1Char(' ') + unit;
}

// What the layouts along both directions have in common.
class LabelsLayout
{
public:
    LabelsLayout(const LabelSource &source, const QRectF &plot, const LabelSurroundings &surroundings)
        : m_look(source.look)
        , m_marks(source.marks)
        , m_plot(plot)
        , m_surroundings(surroundings)
        , m_metrics(m_look.labelFont)
        , m_widths(source.texts)
        , m_band(m_look.hasBand())
        , m_side(m_look.side())
        , m_height(m_metrics.height())
        , m_unitWidth(width(m_look.unit))
        , m_choice(m_marks, source.texts, source.format, m_metrics, m_look.isHorizontal() || m_band)
    {
    }

protected:
    const QString &number(const PlacedLabel &label)
    {
        return m_choice.text(m_marks.set().ticks.at(label.index)).text;
    }
    int numberWidth(const PlacedLabel &label)
    {
        return m_choice.text(m_marks.set().ticks.at(label.index)).width;
    }
    int width(const QString &text) const { return m_widths.width(text, m_metrics); }
    // Of any number with the unit behind it.
    int joinedWidth() const
    {
        const int rounding = 1;
        return m_choice.widest() + width(withUnit(QString(), m_look.unit)) + rounding;
    }

    void add(double left, double top, const QString &text)
    {
        m_texts.append({QPointF(left, top), text, false});
    }
    void addUnit(double left, double top) { m_texts.append({QPointF(left, top), m_look.unit, true}); }
    // In one piece, unless the unit has a colour of its own.
    void addJoined(double left, double top, const QString &number)
    {
        if (m_look.unitColor() == m_look.labelColor) {
            add(left, top, withUnit(number, m_look.unit));
            return;
        }
        add(left, top, number);
        addUnit(left + width(withUnit(number, QString())), top);
    }

    const AxisLook &m_look;
    const TickMarks &m_marks;
    const QRectF m_plot;
    const LabelSurroundings &m_surroundings;
    const QFontMetrics m_metrics;
    LabelTexts &m_widths;
    const bool m_band;
    const AxisSide m_side;
    const int m_height;
    const int m_unitWidth;
    LabelChoice m_choice;
    QVector<PlacedText> m_texts;
};

class HorizontalLayout : private LabelsLayout
{
public:
    using LabelsLayout::LabelsLayout;

    QVector<PlacedText> laidOut()
    {
        m_bounds = m_band ? boundsOfBand() : m_plot;
        if (m_height > m_bounds.height())
            return {};
        const bool hasRoomForTwo = fits(1, m_bounds);
        m_rows = m_look.staggered && hasRoomForTwo ? 2 : 1;
        m_room.begin = roundedPixel(m_bounds.left() - m_plot.left());
        m_room.end = roundedPixel(m_bounds.right() - m_plot.left());
        m_room.gap = m_metrics.horizontalAdvance(QLatin1Char('0'));

        QVector<PlacedLabel> labels =
            placedLabels(m_choice.spans(m_marks.visible(), m_rows, m_room.gap), m_room);
        if (m_unitWidth > 0)
            placeUnit(labels, m_band && hasRoomForTwo && m_rows == 1);
        for (const PlacedLabel &label : qAsConst(labels))
            add(m_plot.left() + label.start, rowTop(label.row), number(label));
        return m_texts;
    }

private:
    // The bounds end where the columns of numbers beside the plot area begin: two texts that touch in a
    // corner read as one. An axis with more room between its rows and the plot area enters the corner.
    QRectF boundsOfBand() const
    {
        QRectF bounds = m_surroundings.bounds.united(m_plot);
        if (m_look.entersCorners)
            return bounds;
        for (const AxisLook &other : m_surroundings.axes) {
            if (other.isHorizontal() || !other.hasLabels || !other.hasBand())
                continue;
            if (other.side() == AxisSide::Begin)
                bounds.setLeft(std::max(bounds.left(), m_plot.left() - bandDistance));
            else
                bounds.setRight(std::min(bounds.right(), m_plot.right() + bandDistance));
        }
        return bounds;
    }

    // Rows follow each other away from the plot area in a margin, and into it inside.
    double wantedTop(int row) const
    {
        const bool downwards = (m_side == AxisSide::End) == m_band || m_side == AxisSide::Middle;
        double top = std::floor(m_plot.center().y()) + rowDistance;
        if (m_side == AxisSide::Begin)
            top = m_band ? m_plot.top() - m_look.offset - rowDistance - m_height : m_plot.top() + rowDistance;
        else if (m_side == AxisSide::End)
            top = m_band ? m_plot.bottom() + m_look.offset + rowDistance
                         : m_plot.bottom() - rowDistance - m_height;
        return downwards ? top + row * m_height : top - row * m_height;
    }
    double rowTop(int row) const
    {
        return clampedPlace(wantedTop(row), m_bounds.top(), m_bounds.bottom() - m_height);
    }
    bool fits(int row, const QRectF &room) const
    {
        return wantedTop(row) >= room.top() && wantedTop(row) + m_height <= room.bottom();
    }

    void placeUnit(QVector<PlacedLabel> &labels, bool hasRow)
    {
        if (!(hasRow ? placeUnitInRow(1, m_plot.right()) : placeUnitBeside(labels)))
            placeUnitInside();
    }

    // Ending at `right` where there is room for it.
    bool placeUnitInRow(int row, double right)
    {
        if (m_unitWidth > m_bounds.width())
            return false;
        addUnit(std::max(right - m_unitWidth, m_bounds.left()), rowTop(row));
        return true;
    }

    // In the outer row of numbers: behind the reach of all of them, or joined to the last one. Whether that
    // goes does not depend on where exactly the numbers are, so that panning does not move the unit back and
    // forth.
    bool placeUnitBeside(QVector<PlacedLabel> &labels)
    {
        const double reach = m_marks.length() - 1.0 + m_choice.widest() / 2.0;
        if (labels.isEmpty() || m_room.end - m_unitWidth - m_room.gap >= reach)
            return placeUnitInRow(m_rows - 1, m_bounds.right());
        const auto last =
            std::max_element(labels.begin(), labels.end(),
                             [](const PlacedLabel &a, const PlacedLabel &b) { return a.start < b.start; });
        if (m_room.end - joinedWidth() - m_room.gap < endOfOthers(labels, *last))
            return false;
        const int start = std::min(last->start, m_room.end - width(withUnit(number(*last), m_look.unit)));
        addJoined(m_plot.left() + start, rowTop(last->row), number(*last));
        labels.erase(last);
        return true;
    }

    // How far the numbers in the row of the last one may reach.
    double endOfOthers(const QVector<PlacedLabel> &labels, const PlacedLabel &last)
    {
        if (m_choice.distance() > 0.0) {
            // One at the near end may have been moved in, and then reaches farther than its tick suggests.
            const double reach = m_marks.length() - 1.0 - m_choice.distance() + m_choice.widest() / 2.0;
            return std::max(reach, double(m_room.begin + m_choice.widest()));
        }
        double end = m_room.begin - m_room.gap;
        for (const PlacedLabel &label : labels) {
            if (label.row == last.row && label.index != last.index)
                end = std::max(end, double(label.start + numberWidth(label)));
        }
        return end;
    }

    // In the plot area, in a row of its own. A narrow margin may have pushed the numbers in there as well.
    bool placeUnitInside()
    {
        double top = wantedTop(m_rows);
        if (m_band && m_side == AxisSide::Begin)
            top = std::max(m_plot.top() + rowDistance, rowTop(0) + m_height);
        else if (m_band)
            top = std::min(m_plot.bottom() - rowDistance, rowTop(0)) - m_height;
        const double left = m_plot.right() - rowDistance - m_unitWidth;
        if (left < m_plot.left() || top < m_plot.top() || top + m_height > m_plot.bottom())
            return false;
        addUnit(left, top);
        return true;
    }

    QRectF m_bounds;
    LabelRoom m_room;
    int m_rows = 1;
};

class VerticalLayout : private LabelsLayout
{
public:
    using LabelsLayout::LabelsLayout;

    QVector<PlacedText> laidOut()
    {
        m_bounds = bounds(m_band);
        LabelRoom room;
        room.begin = roundedPixel(m_bounds.top() - m_plot.top());
        room.end = roundedPixel(m_bounds.bottom() - m_plot.top());
        room.gap = m_height / 4;
        QVector<PlacedLabel> labels = placedLabels(m_choice.spans(marksWithin(room), 1, room.gap), room);
        const auto isTooWide = [this](const PlacedLabel &label) {
            return numberWidth(label) > m_bounds.width();
        };
        labels.erase(std::remove_if(labels.begin(), labels.end(), isTooWide), labels.end());

        if (m_unitWidth > 0 && !placeUnitAbove(labels, room) && !joinUnit(labels, widthBeside()) &&
            !placeUnitInside())
            joinUnit(labels, m_bounds.width());
        for (const PlacedLabel &label : qAsConst(labels))
            add(left(numberWidth(label)), m_plot.top() + label.start, number(label));
        return m_texts;
    }

private:
    // The numbers of horizontal axes have their rows to themselves, or those of both would meet in the
    // corner. Outside the plot area rows may be entered as far as they and the digits leave free.
    QRectF bounds(bool band) const
    {
        QRectF bounds = band ? m_surroundings.bounds.united(m_plot) : m_plot;
        const int free = m_metrics.descent() + m_metrics.ascent() - m_metrics.capHeight();
        for (const AxisLook &other : m_surroundings.axes) {
            if (!other.isHorizontal() || !other.hasLabels || other.hasBand() != band)
                continue;
            const int rows = other.staggered ? 2 : 1;
            const int inset = band ? -free : rows * QFontMetrics(other.labelFont).height() + rowDistance;
            if (other.side() == AxisSide::End)
                bounds.setBottom(std::min(bounds.bottom(), m_plot.bottom() - inset));
            else if (other.side() == AxisSide::Begin)
                bounds.setTop(std::max(bounds.top(), m_plot.top() + inset));
        }
        return bounds;
    }

    QVector<TickMarks::Mark> marksWithin(const LabelRoom &room) const
    {
        QVector<TickMarks::Mark> marks = m_marks.visible();
        const auto isOutside = [&room](const TickMarks::Mark &mark) {
            return mark.place < room.begin || mark.place > room.end;
        };
        marks.erase(std::remove_if(marks.begin(), marks.end(), isOutside), marks.end());
        return marks;
    }

    double left(int width) const
    {
        double wanted = std::floor(m_plot.center().x()) - bandDistance - width;
        if (m_side == AxisSide::Begin)
            wanted =
                m_band ? m_plot.left() - m_look.offset - bandDistance - width : m_plot.left() + rowDistance;
        else if (m_side == AxisSide::End)
            wanted =
                m_band ? m_plot.right() + m_look.offset + bandDistance : m_plot.right() - rowDistance - width;
        return clampedPlace(wanted, m_bounds.left(), m_bounds.right() - width);
    }

    // Above the highest place that a number can have, or where there are none.
    bool placeUnitAbove(const QVector<PlacedLabel> &labels, const LabelRoom &room)
    {
        int top = -m_height / 2 - room.gap - m_height;
        if (labels.isEmpty())
            top = std::max(top, room.begin);
        if (top < room.begin || top + m_height > room.end || m_unitWidth > m_bounds.width())
            return false;
        addUnit(left(m_unitWidth), m_plot.top() + top);
        return true;
    }

    // The room of the labels, in a margin without reaching into the plot area.
    double widthBeside() const
    {
        if (!m_band)
            return m_bounds.width();
        const bool atLeft = m_side == AxisSide::Begin;
        const double room = atLeft ? m_plot.left() - m_bounds.left() : m_bounds.right() - m_plot.right();
        return room - m_look.offset - bandDistance;
    }

    // Behind the highest number, where any of them would have room for that.
    bool joinUnit(QVector<PlacedLabel> &labels, double room)
    {
        if (labels.isEmpty() || joinedWidth() > room)
            return false;
        const PlacedLabel highest = labels.takeFirst();
        addJoined(left(width(withUnit(number(highest), m_look.unit))), m_plot.top() + highest.start,
                  number(highest));
        return true;
    }

    // In the plot area, beside the end of the band. A narrow margin may have pushed the numbers in there as
    // well.
    bool placeUnitInside()
    {
        QRectF inside = bounds(false).adjusted(rowDistance, rowDistance, -rowDistance, -rowDistance);
        const int widest = m_choice.widest();
        if (m_side == AxisSide::Begin)
            inside.setLeft(std::max(inside.left(), left(widest) + widest + rowDistance));
        else
            inside.setRight(std::min(inside.right(), left(widest) - rowDistance));
        if (!m_band || m_unitWidth > inside.width() || m_height > inside.height())
            return false;
        addUnit(m_side == AxisSide::Begin ? inside.left() : inside.right() - m_unitWidth, inside.top());
        return true;
    }

    QRectF m_bounds;
};

} // namespace

QVector<PlacedText> layOutLabels(const LabelSource &source, const QRectF &plot,
                                 const LabelSurroundings &surroundings)
{
    return source.look.isHorizontal() ? HorizontalLayout(source, plot, surroundings).laidOut()
                                      : VerticalLayout(source, plot, surroundings).laidOut();
}

int requiredMargin(const AxisLook &look, const QList<qreal> &values, const LabelTexts::Format &format)
{
    const QFontMetrics metrics(look.labelFont);
    if (look.isHorizontal()) {
        const bool twoRows = look.staggered || !look.unit.isEmpty();
        return (twoRows ? 2 : 1) * metrics.height() + marginSlack;
    }
    int widest = metrics.horizontalAdvance(look.unit);
    for (const double value : values)
        widest = std::max(widest, metrics.horizontalAdvance(format(value)));
    return widest + marginSlack;
}

} // namespace graph
