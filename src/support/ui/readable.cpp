#include "readable.h"

#include <algorithm>
#include <cmath>

namespace {

/// How light a colour is to the eye, from 0 to 1.
double Luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// `share` of the first colour over the other.
QColor Mixed(const QColor &one, const QColor &other, double share)
{
    const auto part = [share](int first, int second) { return qRound(first * share + second * (1 - share)); };
    return {part(one.red(), other.red()), part(one.green(), other.green()), part(one.blue(), other.blue())};
}

} // namespace

QColor ReadableColour(const QPalette &palette, QPalette::ColorRole role)
{
    constexpr double kReadable = 4.5;
    constexpr int kSteps = 8;
    const QColor base = palette.color(QPalette::Base);
    const QColor wanted = palette.color(role);
    QColor colour = Mixed(wanted, base, wanted.alphaF());
    for (int step = 0; step < kSteps && Contrast(colour, base) < kReadable; ++step)
        colour = Mixed(colour, palette.color(QPalette::Text), 0.75);
    return colour;
}
