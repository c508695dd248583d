// SPDX-License-Identifier: MIT
#include "GridColumns.h"

#include "DomainUtils.h"
#include "Rounding.h"

#include <algorithm>
#include <cmath>

namespace Charts {

namespace {

/*! 10^floor(log10(value)), of the decade below where value is a power of ten itself: the step at
    which the lines of a logarithmic grid go down from value. */
double decadeBelow(double value)
{
    return std::pow(10.0, value <= 1e-300 ? -301.0 : std::floor(std::log10(value) - 1e-6));
}

double roundedToFourDigits(double value)
{
    constexpr double digits = 4.0;
    const double size = std::abs(value);
    if (size <= 1e-12)
        return 0.0;
    const double exponent = std::floor(std::log10(size)) - digits + 1.0;
    const double unit = std::pow(10.0, exponent);
    return unit * std::floor(value / unit + 0.5);
}

} // namespace

GridColumns::GridColumns(Span range, int width)
    : m_range(range)
    , m_span(range.max - range.min)
    , m_width(width)
{
}

void GridColumns::add(double column, double value)
{
    m_pixels.push_back(qRoundSaturated(column));
    m_values.push_back(value);
}

void GridColumns::addValue(double value)
{
    const double valuePerPixel = m_span / m_width;
    add((value - m_range.min) / valuePerPixel, value);
}

void GridColumns::addEquidistant(int divisions)
{
    for (int i = 1; i < divisions; ++i) {
        // Always tenths of the width, whereas the values follow the divisions.
        add(i * ((m_width - 1) / 10.0), m_range.min + i * m_span / divisions);
    }
}

void GridColumns::addCentered(int divisions)
{
    const double center = m_range.min + m_span * 0.5;
    const double step = roundedToFourDigits(m_span / divisions);
    addValue(center);
    if (divisions <= 3)
        return;
    for (int i = 1; i < divisions / 2; ++i)
        addValue(center - i * step);
    for (int i = 1; i < divisions / 2; ++i)
        addValue(center + i * step);
}

void GridColumns::addNice()
{
    const double step = DomainUtils().niceStep(m_range);
    const double first = std::ceil(m_range.min / step);
    const double end = std::ceil(m_range.max / step);
    // Beyond it, multiples cannot be counted any more: the range is empty, or the step too small
    // for where the range lies.
    if (first > 18446744073709551616.0)
        return;
    // Counted from the first, since above 2^53 a double does not change when 1 is added to it.
    const double count = end - first;
    // NOLINTNEXTLINE(clang-analyzer-security.FloatLoopCounter): whole numbers, and more than an int has
    for (double i = 0.0; i < count; ++i)
        addValue((first + i) * step);
}

void GridColumns::addLogarithmic()
{
    const double low = std::pow(10.0, std::max(m_range.min, 0.0));
    const double high = std::pow(10.0, std::max(m_range.max, 0.0));
    const double lowDecade = std::log10(low);
    const double pixelsPerDecade = m_width / (std::log10(high) - lowDecade);
    const double highest = decadeBelow(high);
    // NOLINTNEXTLINE(clang-analyzer-security.FloatLoopCounter): the rounding of each step is wanted
    for (double value = std::trunc(high / highest) * highest; low < value;
            value -= decadeBelow(value))
        add((std::log10(value) - lowDecade) * pixelsPerDecade, value);
}

} // namespace Charts
