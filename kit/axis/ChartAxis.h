#pragma once

#include "axis/ValueAxis.h"
#include "common/Export.h"
#include "kit/axis/AxisRows.h"
#include "kit/axis/AutoRange.h"
#include "kit/axis/PlannedTicks.h"

#include <atomic>
#include <optional>
#include <tuple>

namespace graph {

// An axis that scales by itself: linear, logarithmic or in time, with minor ticks, a title and a margin of its own, and
// with a range that follows the data where it is told of them.
class GRAPH_CHARTS_EXPORT ChartAxis : public ValueAxis
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(ScaleType scale READ scale WRITE setScale NOTIFY scaleChanged)
    Q_PROPERTY(int minorTicks READ minorTicks WRITE setMinorTicks NOTIFY minorTicksChanged)
    Q_PROPERTY(bool minorGrid READ minorGrid WRITE setMinorGrid NOTIFY minorGridChanged)
    Q_PROPERTY(QColor minorGridColor READ minorGridColor WRITE setMinorGridColor NOTIFY minorGridColorChanged)
    Q_PROPERTY(bool utc READ utc WRITE setUtc NOTIFY utcChanged)
    Q_PROPERTY(AutoRange autoRange READ autoRange WRITE setAutoRange NOTIFY autoRangeChanged)
    // The range that a document writes here is left alone by autoRange.
    Q_PROPERTY(double minValue READ minValue WRITE setMinValue NOTIFY beginChanged)
    Q_PROPERTY(double maxValue READ maxValue WRITE setMaxValue NOTIFY endChanged)
    // The margin that a document writes here no longer follows the labels.
    Q_PROPERTY(int margin READ margin WRITE setMargin RESET resetMargin NOTIFY roomChanged)

public:
    enum ScaleType : int { Linear, Logarithmic, Time };
    Q_ENUM(ScaleType)
    enum AutoRange : int { Off, Grow, Fit, FitVisible };
    Q_ENUM(AutoRange)

    explicit ChartAxis(QObject *parent = nullptr);

    QString title() const { return m_title; }
    ScaleType scale() const { return m_scale; }
    int minorTicks() const { return m_minorTicks; }
    bool minorGrid() const { return m_minorGrid; }
    QColor minorGridColor() const;
    bool utc() const { return m_utc; }
    AutoRange autoRange() const { return m_autoRange; }
    int requiredMargin() const override;

    // Both ends of the full range at once, which autoRange then leaves alone. From the greater to the smaller: the
    // axis is reversed.
    Q_INVOKABLE void range(double from, double to);
    Q_INVOKABLE void range(const QVariant &from, const QVariant &to);

    // A value with its unit, or as a date and time, as a readout writes it: with the digits that the visible range
    // tells apart.
    Q_INVOKABLE QString valueText(double value) const;

    // The same for the difference of two values.
    QString differenceText(double difference) const;

    // The decimal exponent of the prefix that the numbers of a linear axis have now; none where they have none, or a
    // formatter writes them.
    std::optional<int> numberPrefix() const;

    // Tells what data there is, for autoRange: all of it, or with FitVisible what the visible part of the other axis
    // shows. The owner of the data calls this when they change; it is cheap, and without effect while autoRange is
    // Off or where the document has written the range. leastPositive: the smallest value above 0, for a
    // logarithmic axis of data that reach down to 0; 0 if not known.
    void setDataExtent(double lowest, double highest, double leastPositive = 0.0);
    // An invalid colour, the default, is that of the labels.
    void setTitleColor(const QColor &color);
    // Whether a vertical axis keeps some room around the data, true by default.
    void setHeadRoom(bool on) { m_hasHeadRoom = on; }
    // What is drawn around the samples, as a share of the range; 0 by default.
    void setReach(double share) { m_reach = share; }
    // Whether bars or areas of the data begin at the baseline, beyond which no room is kept then; false by default.
    void setRestsOnBaseline(bool on) { m_restsOnBaseline = on; }

    // Whether customInterval gives more ticks than a screen has room for, so that other ones are chosen.
    bool hasTooSmallInterval() const;
    bool hasTooManyTicks() const;

    void resetMargin();
    bool hasWrittenRange() const { return m_writtenMin || m_writtenMax; }
    bool hasWrittenAutoRange() const { return m_hasWrittenAutoRange; }

    // Pixels between the labels and what is beyond them, where the document writes no margin.
    void setRoomBeyond(int pixels);
    // Those that there is room for. A vertical axis keeps its title and its numbers, which take none of the height.
    void setRows(AxisRows rows);
    // Whether a vertical axis has no room above its numbers for its unit, so that there is some behind the highest one.
    void setUnitBehind(bool behind);
    // The margin of a horizontal axis with these.
    int marginWith(AxisRows rows) const;
    // Where a row of other labels is above a vertical axis, its unit is behind the highest number.
    void setLabelsAbove(bool above);

    using ValueAxis::setFitsWhileMoved;
    bool hasOwnMargin() const override { return true; }
    AxisLook look() const override;
    QString formattedValue(double value) const override;
    void paintLabels(QPainter *painter, const QRectF &rect, const LabelSurroundings &surroundings) override;

public slots:
    void setTitle(const QString &title);
    void setScale(ScaleType scale);
    void setMinorTicks(int count);
    void setMinorGrid(bool on);
    void setMinorGridColor(const QColor &color);
    void setUtc(bool utc);
    void setAutoRange(AutoRange mode);
    void setMinValue(double minValue);
    void setMaxValue(double maxValue);
    void setMargin(int margin);

signals:
    void titleChanged();
    void scaleChanged();
    void minorTicksChanged();
    void minorGridChanged();
    void minorGridColorChanged();
    void utcChanged();
    void autoRangeChanged();
    // minValueChanged() and maxValueChanged() for the properties of this class, which cannot name those.
    void beginChanged();
    void endChanged();
    // marginChanged(), as well.
    void roomChanged();
    // That of the last repaint, which has a say in numberPrefix(); from the event loop.
    void lengthChanged();

protected:
    TickSet tickSet(const QRectF &rect) override;

private:
    void moveRange(double from, double to);
    void leaveEnd();
    void takeDirection();
    void followMargin();
    void checkRange();
    void measureAgain();
    void followFormatter();
    bool hasOwnTicks() const;
    AxisNumbering numbering() const;
    void updatePlan(double length);
    QString shownUnit() const;
    double writtenInterval() const;
    int titleHeight() const;
    int horizontalMargin(AxisRows rows) const;
    bool hasTitle() const;

    QString m_title;
    QColor m_titleColor;
    ScaleType m_scale = Linear;
    int m_minorTicks = -1;
    bool m_minorGrid = false;
    QColor m_minorGridColor;
    bool m_utc = false;
    AutoRange m_autoRange = Off;
    std::optional<double> m_writtenMin;
    std::optional<double> m_writtenMax;
    bool m_isReversed = false; // as the last two written ends were
    bool m_hasWrittenAutoRange = false;
    bool m_hasFollowedData = false;
    bool m_hasHeadRoom = true;
    bool m_restsOnBaseline = false;
    double m_reach = 0.0;
    bool m_hasComplained = false;
    QPointer<BaseFormatter> m_followedFormatter;
    // The margin follows the required one until the document writes another.
    bool m_hasWrittenMargin = false;
    int m_followedMargin = 0;
    int m_roomBeyond = 0;
    AxisRows m_rows = AxisRows::All;
    bool m_isUnitBehind = false;
    bool m_hasLabelsAbove = false;
    mutable FoundPlan m_found;
    PlannedTicks m_planned; // of the last repaint
    using PrefixKey = std::tuple<double, double, double, QString>;
    mutable std::optional<PrefixKey> m_prefixKey;
    mutable std::optional<int> m_prefix;
    std::atomic<double> m_length{0.0}; // of the axis in the last repaint, perhaps in another thread
};

} // namespace graph
