// SPDX-License-Identifier: MIT
#include "SmithGeometry.h"

#include "Rounding.h"

#include <QtCore/QtMath>

#include <algorithm>
#include <array>
#include <numbers>

namespace Charts {

namespace {

// By how much a resistance circle's radius exceeds half the unit circle's, in parts of the
// boundary's: the circles cross the real axis at the same pixels whatever the scale.
constexpr std::array<double, 7> resistances = {
        1.0, 0.5, 1.0 / 3.0, 1.0 / 6.0, 0.0, -1.0 / 6.0, -1.0 / 3.0};
constexpr int reactanceCount = 6;
constexpr double fullAngle = 2.0 * std::numbers::pi;

} // namespace

SmithGeometry::SmithGeometry(const QSize &size, double scale, bool isFlipped)
    : m_scale(std::max(scale, 0.001))
    , m_sign(isFlipped ? -1.0 : 1.0)
{
    const int side = std::min(size.width(), size.height());
    m_boundary = {QPoint(size.width() / 2, size.height() / 2), side / 2};
    m_unitRadius = m_boundary.radius / m_scale;
    m_meetingX = m_boundary.center.x() + m_sign * m_unitRadius;
    // Smaller circles would only smear the place where all of them meet.
    m_leastRadius = side / 12; // NOLINT(bugprone-integer-division): whole pixels
}

std::vector<ArcShape> SmithGeometry::innerArcs() const
{
    std::vector<ArcShape> arcs;
    addResistances(arcs);
    addReactances(arcs);
    if (m_scale >= 1.0) {
        addClipped(arcs, m_boundary.center.x() + m_sign * 2.0 * m_unitRadius, m_boundary.center.y(),
                m_unitRadius);
    }
    return arcs;
}

std::vector<ArcShape> SmithGeometry::outerArcs() const
{
    const QPointF center = m_boundary.center;
    std::vector<ArcShape> arcs = {{center, static_cast<double>(m_boundary.radius), 0.0, fullAngle}};
    if (m_scale >= 1.0)
        arcs.push_back({center, static_cast<float>(m_unitRadius), 0.0, fullAngle});
    return arcs;
}

QLineF SmithGeometry::marker() const
{
    const int x = qRoundSaturated(m_meetingX);
    const int y = m_boundary.center.y();
    return circledLine(QLine(x, y - m_boundary.radius, x, y + m_boundary.radius), m_boundary);
}

QLineF SmithGeometry::realAxis() const
{
    const int x = m_boundary.center.x();
    const int y = m_boundary.center.y();
    return circledLine(QLine(x - m_boundary.radius, y, x + m_boundary.radius, y), m_boundary);
}

void SmithGeometry::addClipped(std::vector<ArcShape> &arcs, double x, double y, double radius) const
{
    const Circle circle = {QPoint(qRoundSaturated(x), qRoundSaturated(y)), qRoundSaturated(radius)};
    const ArcShape arc = circledCircle(circle, m_boundary);
    if (arc.radius != 0.0)
        arcs.push_back(arc);
}

void SmithGeometry::addResistances(std::vector<ArcShape> &arcs) const
{
    const double x = m_boundary.center.x();
    const double y = m_boundary.center.y();
    for (const double resistance : resistances) {
        const double radius = resistance * m_boundary.radius + m_unitRadius * 0.5;
        if (radius < m_leastRadius)
            continue;
        addClipped(arcs, x + m_sign * (radius - 2.0 * resistance * m_boundary.radius), y, radius);
        // Beyond the unit circle lie the negative resistances.
        if (m_scale > 1.0)
            addClipped(arcs, m_meetingX + m_sign * radius, y, radius);
    }
}

void SmithGeometry::addReactances(std::vector<ArcShape> &arcs) const
{
    // The first pair has an unbounded radius: it is the real axis.
    for (int i = 1; i < reactanceCount; ++i) {
        const std::optional<double> radius = reactanceRadius(i);
        if (!radius)
            continue;
        addClipped(arcs, m_meetingX, m_boundary.center.y() - *radius, *radius);
        addClipped(arcs, m_meetingX, m_boundary.center.y() + *radius, *radius);
    }
}

std::optional<double> SmithGeometry::reactanceRadius(int index) const
{
    const double radius = m_boundary.radius;
    // The arcs of the smallest reactances would leave the chart, or crowd at its rim, as the scale
    // grows or shrinks. Fitted curves keep them where there is room.
    if (index == 4) {
        if (m_scale > 2.0) {
            const double x = m_scale - 2.92;
            return (7.0 / (x * x + 7.0) + 3.0) * radius * 0.1111111;
        }
        if (m_scale < 0.3)
            return {};
    } else if (index == 5) {
        if (m_scale > 1.45) {
            const double x = m_scale - 1.45;
            return (0.228866 / (x * x + 2.0) + 0.1666666) * radius;
        }
        if (m_scale < 0.6)
            return {};
    }
    // Meets the boundary every 30 degrees when the scale is 1.
    const double angle = std::numbers::pi / 2.0 - index * (std::numbers::pi / 6.0);
    const double cosine = qFastCos(angle);
    const double reach = 1.0 / m_scale + qFastSin(angle);
    return radius * (reach * reach / (2.0 * cosine) + cosine * 0.5);
}

} // namespace Charts
