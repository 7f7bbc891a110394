#include "kit/axis/TimeTicks.h"

#include "kit/axis/RoundIntervals.h"

#include <QDate>
#include <QLocale>

#include <algorithm>

namespace graph {

namespace {

constexpr double day = 86400.0;
constexpr qint64 julianDay1970 = 2440588;
constexpr int firstMonday = 4; // days after 1970-01-01
// Beyond, some 300 000 years away, there is no calendar.
constexpr double farthest = 1e13;
constexpr double finest = 1e-6;
// Of less than that, in seconds, only fractions of a second are written.
constexpr double shortest = 0.01;
constexpr int mostTicks = 1000;
constexpr double minorSpacing = 5.0; // pixels

enum class Unit { Second, Day, Month, Year };

struct Step
{
    Unit unit;
    double count;

    double seconds() const
    {
        switch (unit) {
        case Unit::Second:
            return count;
        case Unit::Day:
            return count * day;
        case Unit::Month:
            return count * 30.44 * day;
        case Unit::Year:
            break;
        }
        return count * 365.25 * day;
    }
};

struct StepPair
{
    Step major;
    Step minor;
};

// clang-format off
constexpr StepPair clockSteps[] = {
    {{Unit::Second, 1}, {Unit::Second, 0.2}},       {{Unit::Second, 2}, {Unit::Second, 0.5}},
    {{Unit::Second, 5}, {Unit::Second, 1}},         {{Unit::Second, 10}, {Unit::Second, 2}},
    {{Unit::Second, 15}, {Unit::Second, 5}},        {{Unit::Second, 30}, {Unit::Second, 5}},
    {{Unit::Second, 60}, {Unit::Second, 10}},       {{Unit::Second, 120}, {Unit::Second, 30}},
    {{Unit::Second, 300}, {Unit::Second, 60}},      {{Unit::Second, 600}, {Unit::Second, 120}},
    {{Unit::Second, 900}, {Unit::Second, 300}},     {{Unit::Second, 1800}, {Unit::Second, 300}},
    {{Unit::Second, 3600}, {Unit::Second, 600}},    {{Unit::Second, 7200}, {Unit::Second, 1800}},
    {{Unit::Second, 10800}, {Unit::Second, 3600}},  {{Unit::Second, 21600}, {Unit::Second, 3600}},
    {{Unit::Second, 43200}, {Unit::Second, 10800}}, {{Unit::Day, 1}, {Unit::Second, 21600}},
    {{Unit::Day, 2}, {Unit::Day, 1}},               {{Unit::Day, 7}, {Unit::Day, 1}},
    {{Unit::Day, 14}, {Unit::Day, 7}},              {{Unit::Month, 1}, {Unit::Day, 7}},
    {{Unit::Month, 3}, {Unit::Month, 1}},           {{Unit::Month, 6}, {Unit::Month, 1}},
    {{Unit::Year, 1}, {Unit::Month, 3}},
};
// clang-format on

// All steps that are not finer than `least`, up to a span.
QVector<StepPair> stepsBetween(double least, double span)
{
    QVector<StepPair> steps;
    for (RoundIntervals interval(std::max(least, finest)); interval.value() < 0.9; interval.next()) {
        const double seconds = interval.value();
        steps.append(StepPair{{Unit::Second, seconds}, {Unit::Second, seconds / interval.parts()}});
    }
    std::copy_if(std::begin(clockSteps), std::end(clockSteps), std::back_inserter(steps),
                 [least](const StepPair &step) { return step.major.seconds() >= least; });
    for (RoundIntervals years(2.0); years.value() * 365.25 * day <= std::max(span, least); years.next()) {
        const double count = years.value();
        const double part = count < 10.0 ? 1.0 : count / years.parts();
        if (count * 365.25 * day >= least)
            steps.append(StepPair{{Unit::Year, count}, {Unit::Year, part}});
    }
    return steps;
}

// The year 0 is that before the year 1, which has another number in QDate.
QDate dateOf(double year, int month)
{
    const int counted = int(year);
    return QDate(counted > 0 ? counted : counted - 1, month, 1);
}

double yearOf(const QDate &date)
{
    return date.year() > 0 ? date.year() : date.year() + 1;
}

// The times of a place's clocks: seconds as if its days all had 24 hours.
class Clock
{
public:
    explicit Clock(const ClockOffset &offset)
        : m_offset(offset)
    {
    }

    double local(double utc) const { return utc + m_offset(utc); }
    // Of a time that the clocks show twice, or skip, one that is near.
    double utc(double local) const
    {
        const double guess = local - m_offset(local);
        return local - m_offset(guess);
    }

    static QDate date(double local)
    {
        return QDate::fromJulianDay(julianDay1970 + qint64(std::floor(local / day)));
    }
    static double midnight(const QDate &date) { return double(date.toJulianDay() - julianDay1970) * day; }

private:
    const ClockOffset &m_offset;
};

// The round local times of a step, one after the other, from one at or before `local` on.
class LocalTimes
{
public:
    LocalTimes(const Step &step, double local)
        : m_step(step)
    {
        const QDate date = Clock::date(local);
        const double today = Clock::midnight(date);
        const double months = yearOf(date) * 12.0 + date.month() - 1.0;
        switch (step.unit) {
        case Unit::Second:
            // Counted from midnight, so that each is rounded once.
            m_origin = today;
            m_index = std::floor((local - today) / step.count);
            break;
        case Unit::Day:
            m_origin = step.count >= 7.0 ? firstMonday * day : 0.0;
            m_index = std::floor((today - m_origin) / step.seconds());
            break;
        case Unit::Month:
            m_index = std::floor(months / step.count);
            break;
        case Unit::Year:
            m_index = std::floor(yearOf(date) / step.count);
            break;
        }
    }

    double next()
    {
        const double index = m_index++;
        if (m_step.unit == Unit::Second) {
            const double part =
                m_step.count < 1.0 ? index / std::round(1.0 / m_step.count) : index * m_step.count;
            return m_origin + part;
        }
        if (m_step.unit == Unit::Day)
            return m_origin + index * m_step.seconds();
        const double months = index * m_step.count * (m_step.unit == Unit::Year ? 12.0 : 1.0);
        const double year = std::floor(months / 12.0);
        return Clock::midnight(dateOf(year, int(months - year * 12.0) + 1));
    }

private:
    Step m_step;
    double m_origin = 0.0;
    double m_index = 0.0;
};

QVector<double> timesOf(const Step &step, const TickRequest &request, const Clock &clock)
{
    QVector<double> times;
    LocalTimes locals(step, clock.local(request.lowest));
    if ((request.highest - request.lowest) / step.seconds() > mostTicks)
        return times;
    for (int i = 0; i < mostTicks + 2; ++i) {
        const double time = clock.utc(locals.next());
        if (time > request.highest)
            break;
        if (time >= request.lowest && (times.isEmpty() || time > times.last()))
            times.append(time);
    }
    return times;
}

QString padded(double number)
{
    return QStringLiteral("%1").arg(int(number), 2, 10, QLatin1Char('0'));
}

// Of a day, as finely as an interval asks for.
QString clockText(double local, double interval)
{
    const int decimals = interval < 1.0 ? int(std::ceil(-std::log10(interval) - 1e-9)) : 0;
    const double scale = std::pow(10.0, decimals);
    const double ofDay = std::floor((local - std::floor(local / day) * day) * scale + 0.5) / scale;
    const double seconds = std::fmod(ofDay, 60.0);
    QString text = padded(std::floor(ofDay / 3600.0)) + QLatin1Char(':') +
                   padded(std::fmod(std::floor(ofDay / 60.0), 60.0));
    if (interval < 60.0)
        text += QLatin1Char(':') + QStringLiteral("%1").arg(seconds, decimals > 0 ? 3 + decimals : 2, 'f',
                                                            decimals, QLatin1Char('0'));
    return text;
}

QString monthName(const QDate &date)
{
    return QLocale::c().toString(date, QStringLiteral("MMM"));
}

QString dayText(const QDate &date)
{
    return QString::number(date.day()) + QLatin1Char(' ') + monthName(date);
}

QString yearText(const QDate &date)
{
    return QString::number(yearOf(date), 'f', 0);
}

// How often texts of times of a day carry the date, and those of days and months the year.
enum class Dates {
    First,   // the first one, and where another begins
    Changes, // only where another begins, if one does
    Short,   // there, instead of midnight
    None
};

QString textOf(double local, const QDate &date, const Step &step, bool isNew, Dates dates)
{
    const QString year = isNew ? QLatin1Char(' ') + yearText(date) : QString();
    switch (step.unit) {
    case Unit::Second:
        if (isNew && dates == Dates::Short && std::abs(local - Clock::midnight(date)) < step.count / 4.0)
            return dayText(date);
        return (isNew ? dayText(date) + QLatin1Char(' ') : QString()) + clockText(local, step.count);
    case Unit::Day:
        return dayText(date) + year;
    case Unit::Month:
        return monthName(date) + year;
    case Unit::Year:
        break;
    }
    return yearText(date);
}

QStringList textsOf(const QVector<double> &times, const Step &step, const Clock &clock,
                    Dates dates = Dates::First)
{
    QVector<QDate> days;
    for (const double time : times) {
        const double local = clock.local(time);
        days.append(Clock::date(step.unit == Unit::Second ? local + step.count / 4.0 : local + 1.0));
    }
    const auto areOther = [&step](const QDate &a, const QDate &b) {
        return step.unit == Unit::Second ? a != b : a.year() != b.year();
    };
    const bool hasChange = !days.isEmpty() && areOther(days.first(), days.last());
    QStringList texts;
    for (int i = 0; i < times.size(); ++i) {
        const bool isNew = i == 0 ? dates == Dates::First || (dates != Dates::None && !hasChange)
                                  : dates != Dates::None && areOther(days.at(i), days.at(i - 1));
        texts.append(textOf(clock.local(times.at(i)), days.at(i), step, isNew, dates));
    }
    return texts;
}

// So many in each interval, also in those at the ends of which only one tick is visible.
QVector<double> evenMinors(const QVector<double> &majors, int count, const TickRequest &request)
{
    QVector<double> minors;
    if (majors.size() < 2 || (majors.size() - 1.0) * count > mostTicks)
        return minors;
    QVector<double> edges = majors;
    edges.prepend(2.0 * majors.at(0) - majors.at(1));
    edges.append(2.0 * majors.last() - majors.at(majors.size() - 2));
    for (int i = 1; i < edges.size(); ++i) {
        for (int k = 1; k <= count; ++k) {
            const double minor = edges.at(i - 1) + (edges.at(i) - edges.at(i - 1)) * k / (count + 1.0);
            if (minor >= request.lowest && minor <= request.highest)
                minors.append(minor);
        }
    }
    return minors;
}

QVector<double> minorsOf(const QVector<double> &majors, const Step &step, const TickRequest &request,
                         const Clock &clock)
{
    if (request.minorTicks >= 0)
        return evenMinors(majors, request.minorTicks, request);
    if (step.seconds() < finest || request.places().density() * step.seconds() < minorSpacing)
        return {};
    QVector<double> minors = timesOf(step, request, clock);
    const auto isMajor = [&](double minor) {
        return std::any_of(majors.begin(), majors.end(),
                           [&](double major) { return std::abs(major - minor) < step.seconds() / 4.0; });
    };
    minors.erase(std::remove_if(minors.begin(), minors.end(), isMajor), minors.end());
    return minors;
}

// Of stretches so short that the texts of times would be longer than the distance between them: fractions of
// a second, to be added to a time that is written once.
TickPlan fractionTicks(const TickRequest &request, const Clock &clock)
{
    const double within = std::ceil(request.lowest);
    const double base = within <= request.highest ? within : std::floor(request.lowest);
    TickRequest rests = request;
    rests.lowest -= base;
    rests.highest -= base;
    rests.unit = QStringLiteral("s");
    rests.resolution = std::max(numberStep(request.highest), finest / 4.0);
    // Their places will be off by that.
    const double rounding = rests.resolution * request.length / (request.highest - request.lowest);
    rests.spacing += rounding;
    rests.gap += rounding;
    rests.extent = [&request](const QString &text) { return request.extent(text + QStringLiteral(" ms")); };
    TickPlan plan = linearTicks(rests);
    for (QVector<double> *times : {&plan.majors, &plan.minors}) {
        for (double &time : *times)
            time = std::clamp(base + time, request.lowest, request.highest);
    }
    for (QString &text : plan.texts)
        text += QLatin1Char(' ') + plan.unit;
    plan.unit.clear();
    plan.prefix.reset();
    const double local = clock.local(base);
    plan.common =
        dayText(Clock::date(local)) + QLatin1Char(' ') + clockText(local, 1.0) + QLatin1String(" +");
    return plan;
}

// With shorter texts, closer to each other, where else there would be no more than one: nobody can read a scale from that.
// Two of them at least, or nothing.
TickPlan shorterTicks(TickRequest request, const Clock &clock)
{
    if (request.leastSpacing > 0.0)
        request.spacing = request.leastSpacing;
    const double span = request.highest - request.lowest;
    const auto steps = stepsBetween(span * std::min(request.spacing / request.length, 1.0), span);
    for (const Dates dates : {Dates::First, Dates::Changes, Dates::Short, Dates::None}) {
        for (const StepPair &step : steps) {
            TickPlan plan;
            plan.majors = timesOf(step.major, request, clock);
            plan.texts = textsOf(plan.majors, step.major, clock, dates);
            if (plan.majors.size() < 2 || !request.hasRoomFor(plan))
                continue;
            plan.minors = minorsOf(plan.majors, step.minor, request, clock);
            return plan;
        }
    }
    return {};
}

} // namespace

TickPlan timeTicks(const TickRequest &request, const ClockOffset &offset)
{
    if (!request.isUsable() || std::max(std::abs(request.lowest), std::abs(request.highest)) > farthest)
        return linearTicks(request);
    const Clock clock(offset);
    const double span = request.highest - request.lowest;
    TickPlan plan;
    for (const StepPair &step : stepsBetween(span * std::min(request.spacing / request.length, 1.0), span)) {
        TickPlan found;
        found.majors = timesOf(step.major, request, clock);
        // One tick is too little to go on to, where more of them had just no room.
        if (found.majors.isEmpty() && !plan.majors.isEmpty())
            break;
        found.texts = textsOf(found.majors, step.major, clock);
        found.minors = minorsOf(found.majors, step.minor, request, clock);
        plan = found;
        if (request.hasRoomFor(plan))
            break;
    }
    const bool isShort = span < shortest || (span < 1.0 && plan.majors.size() < 2);
    const TickPlan fractions = isShort ? fractionTicks(request, clock) : TickPlan();
    if (!fractions.majors.isEmpty())
        return fractions;
    const bool isReadable = plan.majors.size() > 1 && request.hasRoomFor(plan);
    const TickPlan shorter = isReadable ? TickPlan() : shorterTicks(request, clock);
    return shorter.majors.isEmpty() ? plan : shorter;
}

QString readingOfTime(double seconds, double span, const ClockOffset &offset)
{
    if (!(std::abs(seconds) <= farthest))
        return QStringLiteral("---");
    constexpr double steps = 1000.0;
    constexpr double year = 366.0 * day;
    // Half of what the last digit counts, which is written rounded down.
    const double lastDigit =
        span < 60.0 ? std::pow(10.0, std::floor(std::log10(std::max(span / steps, 1e-6)))) : 1.0;
    const double local = seconds + offset(seconds);
    const QDate date = Clock::date(local);
    QString text = dayText(date);
    if (span > year / 2.0)
        text += QLatin1Char(' ') + yearText(date);
    if (span > year)
        return text;
    return text + QLatin1Char(' ') + clockText(local, span < 60.0 ? lastDigit : span < day ? 1.0 : 60.0);
}

QString timeText(double seconds, const ClockOffset &offset)
{
    if (!(std::abs(seconds) <= farthest))
        return QString::number(seconds);
    const double local = seconds + offset(seconds);
    const QDate date = Clock::date(local);
    QString clock = clockText(local, 1e-3);
    while (clock.endsWith(QLatin1Char('0')))
        clock.chop(1);
    if (clock.endsWith(QLatin1Char('.')))
        clock.chop(1);
    // A whole minute has lost its zeros.
    clock = clock.size() < 8 ? clockText(local, 1.0) : clock;
    return yearText(date) + QLatin1Char('-') + padded(date.month()) + QLatin1Char('-') + padded(date.day()) +
           QLatin1Char(' ') + clock;
}

} // namespace graph
