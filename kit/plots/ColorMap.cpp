#include "kit/plots/ColorMap.h"

#include <QJSValue>

#include <algorithm>
#include <array>
#include <cmath>

namespace graph {

namespace {

// A map as polynomials in the place from 0 to 1, one for each of red, green and blue, the constant term
// first.
struct Polynomials
{
    std::array<std::array<double, 7>, 3> channels;
};

// The maps of N. Smith and S. van der Walt (released to the public domain, CC0), in the fit of degree 6
// published by M. Zucker (CC0 as well).
constexpr Polynomials viridis{{{
    {0.2777273272, 0.1050930431, -0.3308618287, -4.6342304990, 6.2282699363, 4.7763849977, -5.4354558559},
    {0.0054073445, 1.4046135299, 0.2148475595, -5.7991009734, 14.1799333668, -13.7451453777, 4.6458526122},
    {0.3340998053, 1.3845901626, 0.0950951630, -19.3324409563, 56.6905526007, -65.3530326334, 26.3124352496},
}}};
constexpr Polynomials inferno{{{
    {0.0002189404, 0.1065134195, 11.6024930825, -41.7039961314, 77.1629356994, -71.3194282450, 25.1311262248},
    {0.0016510046, 0.5639564368, -3.9728539657, 17.4363988821, -33.4023589421, 32.6260642640, -12.2426689524},
    {-0.0194808984, 3.9327123889, -15.9423941063, 44.3541451987, -81.8073092574, 73.2095198580,
     -23.0703250029},
}}};
// The map of A. Mikhailov, in the fit of degree 5 that he published with it.
constexpr Polynomials turbo{{{
    {0.13572138, 4.61539260, -42.66032258, 132.13108234, -152.94239396, 59.28637943, 0.0},
    {0.09140261, 2.19418839, 4.84296658, -14.18503333, 4.27729857, 2.82956604, 0.0},
    {0.10667330, 12.64194608, -60.58204836, 110.36276771, -89.90310912, 27.34824973, 0.0},
}}};

int channelAt(const std::array<double, 7> &terms, double place)
{
    double value = 0.0;
    for (auto term = terms.rbegin(); term != terms.rend(); ++term)
        value = value * place + *term;
    return int(std::lround(255.0 * std::min(std::max(value, 0.0), 1.0)));
}

double placeOf(int index)
{
    return double(index) / (colorMapSize - 1);
}

ColorMap fromPolynomials(const Polynomials &polynomials)
{
    ColorMap map(colorMapSize);
    for (int i = 0; i < colorMapSize; ++i) {
        const auto channel = [&](std::size_t c) { return channelAt(polynomials.channels[c], placeOf(i)); };
        map[i] = qRgb(channel(0), channel(1), channel(2));
    }
    return map;
}

ColorMap fromColors(const QVector<QColor> &colors)
{
    ColorMap map(colorMapSize);
    for (int i = 0; i < colorMapSize; ++i) {
        const double place = placeOf(i) * (colors.size() - 1);
        const int first = int(place);
        const QColor &low = colors.at(first);
        const QColor &high = colors.at(std::min(first + 1, int(colors.size()) - 1));
        const auto between = [&](int from, int to) {
            return int(std::lround(from + (to - from) * (place - first)));
        };
        map[i] = qRgb(between(low.red(), high.red()), between(low.green(), high.green()),
                      between(low.blue(), high.blue()));
    }
    return map;
}

std::optional<ColorMap> named(const QString &name)
{
    if (name == QLatin1String("viridis"))
        return fromPolynomials(viridis);
    if (name == QLatin1String("turbo"))
        return fromPolynomials(turbo);
    if (name == QLatin1String("inferno"))
        return fromPolynomials(inferno);
    if (name == QLatin1String("grey"))
        return fromColors({Qt::black, Qt::white});
    return std::nullopt;
}

} // namespace

QStringList colorMapNames()
{
    return {QStringLiteral("viridis"), QStringLiteral("turbo"), QStringLiteral("inferno"),
            QStringLiteral("grey")};
}

std::optional<ColorMap> colorMap(const QVariant &description)
{
    if (description.userType() == qMetaTypeId<QJSValue>())
        return colorMap(description.value<QJSValue>().toVariant());
    if (description.userType() == QMetaType::QString)
        return named(description.toString());
    QVector<QColor> colors;
    for (const QVariant &element : description.toList()) {
        const auto color = element.value<QColor>();
        if (!color.isValid())
            return std::nullopt;
        colors.append(color);
    }
    if (colors.isEmpty())
        return std::nullopt;
    return fromColors(colors);
}

} // namespace graph
