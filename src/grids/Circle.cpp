// SPDX-License-Identifier: MIT
#include "Circle.h"

#include <cmath>
#include <cstdint>
#include <numbers>

namespace Charts {

namespace {

// Sums and differences of pixels wrap around, as 32-bit arithmetic does; a signed overflow would be
// undefined.
int wrappingSum(int a, int b)
{
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

int wrappingDifference(int a, int b)
{
    return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

double distance(const QPoint &a, const QPoint &b)
{
    return std::hypot(static_cast<double>(wrappingDifference(a.x(), b.x())),
            static_cast<double>(wrappingDifference(a.y(), b.y())));
}

double dot(const QPointF &a, const QPointF &b)
{
    return a.x() * b.x() + a.y() * b.y();
}

} // namespace

bool Circle::include(const Circle &other) const
{
    return other.radius + distance(center, other.center) <= radius;
}

bool Circle::exclude(const Circle &other) const
{
    return wrappingSum(radius, other.radius) <= distance(center, other.center);
}

QLineF circledLine(QLine line, Circle circle)
{
    const QPointF start = line.p1();
    const QPointF direction = QPointF(line.p2()) - start;
    const QPointF center = circle.center;
    const double radius = circle.radius;

    // |start + t direction - center|^2 = radius^2, a quadratic equation in t.
    const double a = dot(direction, direction);
    const double b = 2.0 * dot(start - center, direction);
    const double c =
            dot(center, center) + dot(start, start) - 2.0 * dot(center, start) - radius * radius;
    const double discriminant = b * b - 4.0 * a * c;
    if (discriminant < 0.0)
        return {};
    const double root = std::sqrt(discriminant);
    const double t1 = (root - b) / (2.0 * a);
    const double t2 = (-b - root) / (2.0 * a);
    return {start + t1 * direction, start + t2 * direction};
}

ArcShape circledCircle(Circle a, Circle b)
{
    if (a == b || b.exclude(a))
        return {};
    const QPointF center = a.center;
    const double ra = a.radius;
    if (b.include(a))
        return {center, ra, 0.0, 2.0 * std::numbers::pi};
    if (a.include(b))
        return {};

    const double rb = b.radius;
    const double dx = b.center.x() - center.x();
    const double dy = b.center.y() - center.y();
    const double d = std::hypot(dx, dy);
    if (d > ra + rb || d < std::abs(ra - rb))
        return {};
    // The common chord stands on the line between the centres, l from a, and reaches h to each side.
    const double l = (d * d + ra * ra - rb * rb) / (2.0 * d);
    const double h = std::sqrt(ra * ra - l * l);
    const QPointF foot(center.x() + dx * l / d, center.y() + dy * l / d);
    const double k = h / d;
    const QPointF end(foot.x() - dy * k, foot.y() + dx * k);
    const QPointF start(foot.x() + dy * k, foot.y() - dx * k);
    return {center, ra, std::atan2(start.y() - center.y(), start.x() - center.x()),
            std::atan2(end.y() - center.y(), end.x() - center.x())};
}

} // namespace Charts
