// SPDX-License-Identifier: MIT
#include "SmithReference.h"

#include <QtCore/QtMath>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace {

using Real = long double;

class Collector
{
public:
    explicit Collector(const ReferenceFrame &frame)
        : m_frame(frame)
    {
    }

    /*! \a x and \a y seen from the centre of the chart. */
    void add(Real x, Real y, Real radius)
    {
        ReferenceCircle circle = {
                rounded(Real(m_frame.x) + x), rounded(Real(m_frame.y) + y), rounded(radius)};
        const qint64 dx = circle.x - m_frame.x;
        const qint64 dy = circle.y - m_frame.y;
        const qint64 square = dx * dx + dy * dy;
        const qint64 sum = circle.radius + m_frame.radius;
        const qint64 difference = circle.radius - m_frame.radius;
        const bool isWithoutCrossing = square <= difference * difference;
        const bool isSame = square == 0 && difference == 0;
        if (circle.radius == 0 || isSame || square >= sum * sum)
            return;
        if (isWithoutCrossing && difference > 0)
            return; // around the chart
        circle.isWhole = isWithoutCrossing;
        m_circles.append(circle);
    }

    [[nodiscard]] QList<ReferenceCircle> circles() const { return m_circles; }

private:
    /*! Halves away from zero. */
    static qint64 rounded(Real value)
    {
        return value < 0 ? -qint64(std::floor(0.5L - value)) : qint64(std::floor(0.5L + value));
    }

    ReferenceFrame m_frame;
    QList<ReferenceCircle> m_circles;
};

/*! The flattest arcs have radii of their own, fitted to the scale. */
std::optional<Real> fittedRadius(int index, Real scale, Real boundary)
{
    const auto square = [](Real value) { return value * value; };
    if (index == 4 && scale > 2.0L)
        return boundary * 0.1111111L * (3.0L + 7.0L / (7.0L + square(scale - 2.92L)));
    if (index == 5 && scale > 1.45L)
        return boundary * (0.1666666L + 0.228866L / (2.0L + square(scale - 1.45L)));
    return {};
}

} // namespace

ReferenceFrame::ReferenceFrame(const QSize &size)
    : x(size.width() / 2)
    , y(size.height() / 2)
    , radius(std::min(size.width(), size.height()) / 2)
    , side(std::min(size.width(), size.height()))
{
}

QList<ReferenceCircle> referenceCircles(const QSize &size, double scale, bool isFlipped)
{
    const ReferenceFrame frame(size);
    Collector collector(frame);
    const Real boundary = Real(frame.radius);
    const Real s = scale < 0.001 ? Real(0.001) : Real(scale);
    const Real unit = boundary / s;
    const Real side = isFlipped ? -1.0L : 1.0L;

    // A resistance circle crosses the real axis at the point that all circles share and at a third,
    // two thirds, ... of the boundary's radius. Its mirror image lies beyond the shared point.
    for (const int thirds : {-6, -3, -2, -1, 0, 1, 2}) {
        const Real crossing = Real(frame.radius * thirds) / 3.0L;
        const Real diameter = unit - crossing;
        if (diameter < 2.0L * Real(frame.side / 12))
            continue;
        collector.add(side * (unit + crossing) / 2.0L, 0.0L, diameter / 2.0L);
        if (s > 1.0L)
            collector.add(side * (unit + diameter / 2.0L), 0.0L, diameter / 2.0L);
    }

    // A reactance arc touches the real axis at the shared point and goes through a point of the
    // boundary, one each 30 degrees, whatever the scale. The circle that touches an axis and goes
    // through a point has the radius (distance of the two points)^2 / (2 height of the point).
    for (int i = 1; i < 6; ++i) {
        if (s < (i == 5 ? 0.6 : i == 4 ? 0.3 : 0.0))
            continue;
        // In the precision that the library has: the radii grow to millions of pixels.
        const double angle = std::numbers::pi / 2.0 - i * std::numbers::pi / 6.0;
        const Real x = -boundary * Real(qFastSin(angle));
        const Real height = boundary * Real(qFastCos(angle));
        const Real distance = std::hypot(unit - x, height);
        const Real radius =
                fittedRadius(i, s, boundary).value_or(distance * distance / (2.0L * height));
        if (std::isnan(radius))
            continue;
        collector.add(side * unit, -radius, radius);
        collector.add(side * unit, radius, radius);
    }

    if (s >= 1.0L)
        collector.add(side * 2.0L * unit, 0.0L, unit);
    return collector.circles();
}
