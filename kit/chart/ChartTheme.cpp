#include "kit/chart/ChartTheme.h"

#include "kit/data/Telling.h"
#include "kit/plots/TraceStrokes.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace graph {

namespace {

constexpr int widestGrid = 16;
constexpr int largestFont = 1000;

// The colours of M. Okabe and K. Ito, "Color Universal Design" (2008), which people with any of the common
// kinds of colour blindness tell apart. In the order of their contrast with the background: yellow is
// of no use on white and dark blue of little on black. Grey replaces black. On white, those that are too light for it are
// darker, and the others moved away from them.
constexpr std::initializer_list<const char *> colorsOnDark = {"#56b4e9", "#e69f00", "#009e73", "#f0e442",
                                                              "#cc79a7", "#d55e00", "#0072b2", "#bbbbbb"};
constexpr std::initializer_list<const char *> colorsOnLight = {"#0072b2", "#be4600", "#009e73", "#c27dac",
                                                               "#c58700", "#3f96f4", "#666666"};
constexpr double leastContrast = 3.0; // that WCAG 2 asks of lines

QVariantList colorList(std::initializer_list<const char *> names)
{
    QVariantList colors;
    for (const char *name : names)
        colors.append(QColor(QLatin1String(name)));
    return colors;
}

QColor mixed(const QColor &color, const QColor &other, double part)
{
    const auto between = [part](double a, double b) { return a + (b - a) * part; };
    return QColor::fromRgbF(between(color.redF(), other.redF()), between(color.greenF(), other.greenF()),
                            between(color.blueF(), other.blueF()), color.alphaF());
}

// As WCAG 2 defines it, and the contrast of two colours.
double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &color, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(color), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

// Lists from a document hold colours or their names.
QColor colorOf(const QVariant &value)
{
    return value.canConvert<QColor>() ? value.value<QColor>() : QColor(value.toString());
}

} // namespace

/*!
    \qmltype ChartTheme
    \inqmlmodule graph_kit
    \brief The colours and the font of a Chart and of everything in it.

    A theme of one's own starts with the values of \c Chart.Dark: write only what differs.

    \code
    Chart {
        theme: ChartTheme { background: "black"; traceColors: ["lime", "orange"] }
    }
    \endcode
*/
ChartTheme::ChartTheme(QObject *parent)
    : QObject(parent)
    , m_background("#12171c")
    , m_plotBackground("#171d24")
    , m_gridColor("#2c353e")
    , m_minorGridColor("#212930")
    , m_textColor("#c6ced6")
    , m_traceColors(colorList(colorsOnDark))
    , m_cursorColor("#e8edf2")
    , m_markerColors(colorList({"#b197fc", "#a9e34b", "#ff8787", "#63e6be"}))
    , m_fontFamily(QStringLiteral("Roboto"))
{
}

ChartTheme *ChartTheme::light(QObject *parent)
{
    auto *theme = new ChartTheme(parent);
    theme->m_background = QColor("#f6f7f8");
    theme->m_plotBackground = QColor("#ffffff");
    theme->m_gridColor = QColor("#dde1e5");
    theme->m_minorGridColor = QColor("#eef0f2");
    theme->m_textColor = QColor("#3a434c");
    theme->m_traceColors = colorList(colorsOnLight);
    theme->m_cursorColor = QColor("#20272e");
    theme->m_markerColors = colorList({"#6741d9", "#5c940d", "#c2255c", "#7c4a03"});
    return theme;
}

QFont ChartTheme::font() const
{
    QFont font(m_fontFamily);
    font.setPixelSize(m_fontSize);
    return font;
}

// When the colours are used up, they come again stronger against the background, then greyer.
QColor ChartTheme::traceColor(int index) const
{
    const int count = m_traceColors.size();
    QColor color = count == 0 ? QColor() : colorOf(m_traceColors.at(index % count));
    if (!color.isValid())
        return m_textColor;
    const int round = index / count % 3;
    if (round == 0)
        return color;
    const QColor strongest = m_plotBackground.lightnessF() < 0.5 ? Qt::white : Qt::black;
    QColor again = mixed(color, round == 1 ? strongest : QColor("#8c8c8c"), 0.5);
    constexpr int mostSteps = 40;
    for (int step = 0; step < mostSteps && contrast(again, m_plotBackground) < leastContrast; ++step)
        again = mixed(again, strongest, 0.05);
    return again;
}

QVector<QColor> ChartTheme::colorsOfMarkers() const
{
    QVector<QColor> colors;
    for (const QVariant &color : m_markerColors)
        colors.append(colorOf(color).isValid() ? colorOf(color) : m_textColor);
    return colors;
}

void ChartTheme::checkColors(const char *property, const QVariantList &colors) const
{
    for (const QVariant &color : colors) {
        if (!colorOf(color).isValid())
            tellOnce(
                this, property,
                QStringLiteral("has \"%1\" among its %2, which is no colour: write names of colours, such as "
                               "\"orange\" or \"#e69f00\"")
                    .arg(color.toString(), QLatin1String(property)));
    }
}

template <typename T> void ChartTheme::store(T &member, const T &value)
{
    if (member == value)
        return;
    member = value;
    emit changed();
}

/*!
    \qmlproperty color ChartTheme::background
    \qmlproperty color ChartTheme::plotBackground
    Behind the whole chart, and behind the plot area. A translucent colour shows what is below the chart.
*/
void ChartTheme::setBackground(const QColor &color)
{
    store(m_background, color);
}

void ChartTheme::setPlotBackground(const QColor &color)
{
    store(m_plotBackground, color);
}

/*!
    \qmlproperty color ChartTheme::gridColor
    \qmlproperty color ChartTheme::minorGridColor
    The grid lines, and those at minor ticks.
*/
void ChartTheme::setGridColor(const QColor &color)
{
    store(m_gridColor, color);
}

void ChartTheme::setMinorGridColor(const QColor &color)
{
    store(m_minorGridColor, color);
}

/*!
    \qmlproperty int ChartTheme::gridWidth
    The width of the grid lines in pixels, from 0 to 16; 1 by default.
*/
void ChartTheme::setGridWidth(int pixels)
{
    store(m_gridWidth, bounded(this, "gridWidth", pixels, 0, widestGrid));
}

/*!
    \qmlproperty color ChartTheme::textColor
    The colour of all texts of the chart: title, numbers, legend, readings.
*/
void ChartTheme::setTextColor(const QColor &color)
{
    store(m_textColor, color);
}

/*!
    \qmlproperty string ChartTheme::fontFamily
    The font of all texts, Roboto by default; where it is not installed the system chooses another one.
*/
void ChartTheme::setFontFamily(const QString &family)
{
    store(m_fontFamily, family);
}

/*!
    \qmlproperty int ChartTheme::fontSize
    The height of the texts in pixels, 14 by default, 1 to 1000; the title is a little larger.
*/
void ChartTheme::setFontSize(int pixels)
{
    store(m_fontSize, bounded(this, "fontSize", pixels, 1, largestFont));
}

/*!
    \qmlproperty list<color> ChartTheme::traceColors
    The colours of the traces that name none, in the order of the traces. Of more traces the next ones have them
    lighter on a dark and darker on a light background, those after them greyer, and then they start again.
    By default colours that colour-blind people can tell apart.
*/
void ChartTheme::setTraceColors(const QVariantList &colors)
{
    checkColors("traceColors", colors);
    store(m_traceColors, colors);
}

/*!
    \qmlproperty int ChartTheme::lineWidth
    The width in pixels of the traces that name none, 1 by default.
*/
void ChartTheme::setLineWidth(int pixels)
{
    store(m_lineWidth, bounded(this, "lineWidth", pixels, 1, TraceStrokes::widestLine));
}

/*!
    \qmlproperty color ChartTheme::cursorColor
    The line of a cursor that names no colour.
*/
void ChartTheme::setCursorColor(const QColor &color)
{
    store(m_cursorColor, color);
}

/*!
    \qmlproperty list<color> ChartTheme::markerColors
    The lines of markers that name no colour, in the order of the markers; by default none of them is the colour of a
    trace.
*/
void ChartTheme::setMarkerColors(const QVariantList &colors)
{
    checkColors("markerColors", colors);
    store(m_markerColors, colors);
}

} // namespace graph
