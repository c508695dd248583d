// SPDX-License-Identifier: MIT
#include "TraceDomain.h"

#include "FuzzyCompare.h"
#include "ThreadCheck.h"

#include <algorithm>

namespace Charts {

TraceDomain::TraceDomain(QObject *parent)
    : QObject(parent)
{
    connect(this, &TraceDomain::yRangeChanged, this, [this] {
        if (m_isZoomed)
            return;
        m_baseYRange = m_yRange;
        Q_EMIT baseYRangeChanged();
    });
    connect(this, &TraceDomain::xRangeChanged, this, [this] {
        if (m_isZoomed)
            return;
        m_baseXRange = m_xRange;
        Q_EMIT baseXRangeChanged();
    });
}

TraceDomain::~TraceDomain() = default;

QRectF TraceDomain::geometry() const
{
    return {minX(), minY(), spanX(), spanY()};
}

void TraceDomain::setRangeX(Span range)
{
    Q_ASSERT(isOnThreadOf(this));
    if (range == m_xRange)
        return;
    m_xRange = range;
    Q_EMIT xRangeChanged();
}

void TraceDomain::setRangeX(double min, double max)
{
    Q_ASSERT(isOnThreadOf(this));
    setRangeX(Span(min, max));
}

void TraceDomain::setRangeY(Span range)
{
    Q_ASSERT(isOnThreadOf(this));
    if (range == m_yRange)
        return;
    m_yRange = range;
    Q_EMIT yRangeChanged();
}

void TraceDomain::setRangeY(double min, double max)
{
    Q_ASSERT(isOnThreadOf(this));
    setRangeY(Span(min, max));
}

void TraceDomain::setRangeXY(Span x, Span y)
{
    Q_ASSERT(isOnThreadOf(this));
    setRangeX(x);
    setRangeY(y);
}

void TraceDomain::setRangeXY(double minX, double maxX, double minY, double maxY)
{
    Q_ASSERT(isOnThreadOf(this));
    setRangeXY(Span(minX, maxX), Span(minY, maxY));
}

void TraceDomain::setBaseRangeX(double min, double max)
{
    Q_ASSERT(isOnThreadOf(this));
    if (!m_isZoomed) {
        setRangeX(min, max);
        return;
    }
    m_baseXRange = Span(min, max);
    Q_EMIT baseXRangeChanged();
}

void TraceDomain::setBaseRangeY(Span range)
{
    Q_ASSERT(isOnThreadOf(this));
    if (!m_isZoomed) {
        setRangeY(range);
        return;
    }
    m_baseYRange = range;
    Q_EMIT baseYRangeChanged();
}

void TraceDomain::setBaseRangeY(double min, double max)
{
    Q_ASSERT(isOnThreadOf(this));
    setBaseRangeY(Span(min, max));
}

void TraceDomain::setRangeArg(double min, double max)
{
    Q_ASSERT(isOnThreadOf(this));
    // No tolerance around zero here: an argument range starts at frequencies that may be far
    // below any absolute tolerance, so leaving 0 is always a change.
    if (isRelativelyEqual(m_argRange.max, max) && isRelativelyEqual(m_argRange.min, min))
        return;
    m_argRange = Span(min, max);
    Q_EMIT argRangeChanged();
}

void TraceDomain::setFormat(TraceFormat format)
{
    Q_ASSERT(isOnThreadOf(this));
    if (format == m_format)
        return;
    m_format = format;
    if (isRound() && m_isZoomed)
        zoomReset();
    Q_EMIT formatChanged(format);
}

void TraceDomain::setLeftSmith(bool isLeftSmith)
{
    Q_ASSERT(isOnThreadOf(this));
    if (isLeftSmith == m_isLeftSmith)
        return;
    m_isLeftSmith = isLeftSmith;
    Q_EMIT leftSmithChanged(isLeftSmith);
}

void TraceDomain::setIsLogX(bool isLogX)
{
    Q_ASSERT(isOnThreadOf(this));
    if (isLogX == m_isLogX)
        return;
    m_isLogX = isLogX;
    Q_EMIT isLogXChanged(isLogX);
}

void TraceDomain::setZoomed(bool isZoomed)
{
    Q_ASSERT(isOnThreadOf(this));
    if (isZoomed == m_isZoomed)
        return;
    m_isZoomed = isZoomed;
    Q_EMIT zoomedChanged(isZoomed);
}

void TraceDomain::setSize(const QSizeF &size)
{
    Q_ASSERT(isOnThreadOf(this));
    if (isFuzzyEqual(m_size.width(), size.width()) && isFuzzyEqual(m_size.height(), size.height()))
        return;
    m_size = size;
    Q_EMIT sizeChanged(size);
}

void TraceDomain::shiftYRange(double val)
{
    Q_ASSERT(isOnThreadOf(this));
    m_yRange.min += val;
    m_yRange.max += val;
    Q_EMIT yRangeChanged();
}

void TraceDomain::zoomIn(Span x, Span y)
{
    Q_ASSERT(isOnThreadOf(this));
    if (isRound())
        return;
    if (x == m_xRange && y == m_yRange)
        return;
    m_xRange = x;
    m_yRange = y;
    // The flag goes first: it stops the base ranges from following the zoomed ones.
    setZoomed(true);
    Q_EMIT xRangeChanged();
    Q_EMIT yRangeChanged();
}

void TraceDomain::zoomIn(const QRectF &rect)
{
    Q_ASSERT(isOnThreadOf(this));
    if (isRound())
        return;
    const auto [x, y] = transformGeometryToDomain(rect);
    zoomIn(x, y);
}

void TraceDomain::zoomReset()
{
    Q_ASSERT(isOnThreadOf(this));
    if (!m_isZoomed)
        return;
    setZoomed(false);
    // Read only now: a listener of the signal may have changed the ranges to return to.
    setRangeXY(m_baseXRange, m_baseYRange);
}

double TraceDomain::geometryToDomainX(double geometryX) const
{
    const double width = m_size.width();
    if (!isRound())
        return minX() + geometryX / (width / spanX());
    const double side = std::min(width, m_size.height());
    return (geometryX - (width - side) * 0.5) / (side / spanX()) + minX();
}

double TraceDomain::geometryToDomainY(double geometryY) const
{
    const double height = m_size.height();
    if (!isRound())
        return maxY() - geometryY / (height / spanY());
    // Not the mirror image of the X mapping: a round format counts y downwards from the lower end,
    // which is also its unit.
    const double side = std::min(m_size.width(), height);
    return (geometryY - (height - side) * 0.5) / (side / minY()) + minY();
}

QPointF TraceDomain::domainPoint(const QPointF &point) const
{
    if (!isRound())
        return {geometryToDomainX(point.x()), geometryToDomainY(point.y())};
    const double centreX = m_size.width() * 0.5;
    const double centreY = m_size.height() * 0.5;
    const double radius = std::min(centreX, centreY) * m_radiusScale;
    return {(point.x() - centreX) / radius, (point.y() - centreY) / radius};
}

std::pair<Span, Span> TraceDomain::transformGeometryToDomain(const QRectF &rect) const
{
    const double scaleX = spanX() / m_size.width();
    const double scaleY = spanY() / m_size.height();
    return {Span(minX() + rect.x() * scaleX, minX() + (rect.x() + rect.width()) * scaleX),
            Span(maxY() - (rect.y() + rect.height()) * scaleY, maxY() - rect.y() * scaleY)};
}

} // namespace Charts
