// SPDX-License-Identifier: MIT
#include "LogarithmicCurveTransform.h"

#include "FuzzyCompare.h"
#include "ThreadCheck.h"

#include <algorithm>
#include <cmath>

namespace Charts {

namespace {

/*!
    From \a a at \a t = 0 to \a b at \a t = 1, exact at both and never turning back near the
    second. The one fused operation and the order of the comparisons, which lets a NaN end at \a b,
    are written out so that the line is the same with every standard library.
*/
double interpolated(double a, double b, double t)
{
    if ((a <= 0.0 && b >= 0.0) || (a >= 0.0 && b <= 0.0))
        return t * b + (1.0 - t) * a;
    if (t == 1.0)
        return b;
    const double value = std::fma(t, b - a, a);
    return (t > 1.0) == (b > a) ? std::max(b, value) : std::min(b, value);
}

} // namespace

LogarithmicCurveTransform::LogarithmicCurveTransform(QObject *parent)
    : AbstractCurveTransform(parent)
{
}

LogarithmicCurveTransform::~LogarithmicCurveTransform() = default;

void LogarithmicCurveTransform::setDecibel(double decibel)
{
    Q_ASSERT(isOnThreadOf(this));
    if (!isRelativelyDifferent(decibel, m_decibel))
        return;
    m_decibel = decibel;
    Q_EMIT decibelChanged();
}

void LogarithmicCurveTransform::setPointCount(int pointCount)
{
    Q_ASSERT(isOnThreadOf(this));
    if (pointCount == m_pointCount || pointCount <= 1)
        return;
    m_pointCount = pointCount;
    Q_EMIT pointCountChanged();
}

QList<QPointF> LogarithmicCurveTransform::points(QPointF p1, QPointF p2)
{
    QList<QPointF> points;
    points.reserve(m_pointCount);
    const double intervals = m_pointCount - 1;
    const double width = p2.x() - p1.x();
    const double xStep = width / intervals;
    if (xStep != 0.0) {
        const double whole = std::pow(10.0, width * m_decibel) - 1.0;
        for (int i = 0; i < m_pointCount; ++i) {
            const double distance = i * xStep;
            const double t = (std::pow(10.0, m_decibel * distance) - 1.0) / whole;
            points.append({p1.x() + distance, interpolated(p1.y(), p2.y(), t)});
        }
    } else {
        const double yStep = (p2.y() - p1.y()) / intervals;
        for (int i = 0; i < m_pointCount; ++i)
            points.append({p1.x(), p1.y() + yStep * i});
    }
    return points;
}

} // namespace Charts
