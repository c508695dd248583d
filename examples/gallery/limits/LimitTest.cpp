// SPDX-License-Identifier: MIT
#include "LimitTest.h"

#include <ChartsLibrary/AbstractCurveTransform.h>
#include <ChartsLibrary/TraceData.h>
#include <ChartsLibrary/TraceDomain.h>

#include <algorithm>
#include <chrono>
#include <limits>

namespace Gallery {

namespace {

// As often as a reading of numbers that move can be followed.
constexpr std::chrono::milliseconds interval(150);

} // namespace

LimitTest::LimitTest(QObject *parent)
    : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &LimitTest::update);
    m_timer.start(interval);
}

QPointF LimitTest::place() const
{
    return m_reading ? QPointF(m_reading->x, m_reading->y) : QPointF();
}

double LimitTest::limitAt(double x) const
{
    return valueAt(limit(), x).value_or(std::numeric_limits<double>::quiet_NaN());
}

void LimitTest::update()
{
    // On the GUI thread: neither updateData() nor the renderer is at work now.
    m_reading =
            m_trace ? limitReading(m_trace->traceData()->array(), limit(), m_side) : std::nullopt;
    Q_EMIT updated();
}

QList<QPointF> LimitTest::limit() const
{
    if (!m_trace || !m_curve || !m_curve->geometryTransform())
        return {};
    QList<QPointF> points = m_curve->geometryTransform()->points(m_curve->p1(), m_curve->p2());
    for (QPointF &point : points)
        point = m_trace->domain()->domainPoint(point);
    if (points.size() > 1 && points.constFirst().x() > points.constLast().x())
        std::reverse(points.begin(), points.end());
    return points;
}

} // namespace Gallery
