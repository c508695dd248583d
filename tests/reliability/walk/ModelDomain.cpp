// SPDX-License-Identifier: MIT
#include "ModelDomain.h"

#include <algorithm>
#include <cmath>

using Charts::Span;

namespace {

bool isSameSpan(const Span &a, const Span &b)
{
    return isSame(a.min, b.min) && isSame(a.max, b.max);
}

/*! The part of \a range from \a first to \a last, fractions of its length. */
Span partOf(const Span &range, long double first, long double last)
{
    const long double min = range.min;
    const long double length = range.max < range.min ? 0.0L : range.max - min;
    return {double(min + first * length), double(min + last * length)};
}

/*! The same, counted down from the upper end. */
Span partFromTop(const Span &range, long double first, long double last)
{
    const long double max = range.max;
    const long double length = range.max < range.min ? 0.0L : max - range.min;
    return {double(max - last * length), double(max - first * length)};
}

bool isNear(double a, double b, double unit)
{
    return (std::isnan(a) && std::isnan(b)) || a == b || std::abs(a - b) <= 1e-9 * unit;
}

QString text(const char *what, const Span &real, const Span &expected)
{
    return QStringLiteral("%1 is (%2, %3), not (%4, %5)")
            .arg(QString::fromLatin1(what))
            .arg(real.min, 0, 'g', 17)
            .arg(real.max, 0, 'g', 17)
            .arg(expected.min, 0, 'g', 17)
            .arg(expected.max, 0, 'g', 17);
}

bool takeOver(Span &expected, const Span &real)
{
    const double unit = std::max({std::abs(real.min), std::abs(real.max), 1e-300});
    if (!isNear(real.min, expected.min, unit) || !isNear(real.max, expected.max, unit))
        return false;
    expected = real;
    return true;
}

} // namespace

bool isSame(double a, double b)
{
    const double difference = std::abs(a - b);
    if (a == 0.0 || b == 0.0)
        return difference <= 1e-12;
    return difference * 1e12 <= std::min(std::abs(a), std::abs(b));
}

void ModelDomain::setSize(const QSizeF &size)
{
    if (!isSame(size.width(), m_size.width()) || !isSame(size.height(), m_size.height()))
        m_size = size;
}

void ModelDomain::setRange(bool isX, const Span &range, const QString &name, QStringList &log)
{
    Span &visible = isX ? m_x : m_y;
    if (isSameSpan(range, visible))
        return;
    visible = range;
    if (!m_isZoomed)
        (isX ? m_baseX : m_baseY) = range;
    log.append(name + (isX ? QStringLiteral(" x") : QStringLiteral(" y")));
}

void ModelDomain::setFormat(bool isRound, const QString &name, QStringList &log)
{
    if (isRound == m_isRound)
        return;
    m_isRound = isRound;
    if (isRound)
        zoomReset(name, log);
}

void ModelDomain::zoomIn(const QRectF &rect, const QString &name, QStringList &log)
{
    if (m_isRound)
        return;
    const long double width = m_size.width();
    const long double height = m_size.height();
    const Span x = partOf(m_x, rect.x() / width, (rect.x() + rect.width()) / width);
    const Span y = partFromTop(m_y, rect.y() / height, (rect.y() + rect.height()) / height);
    if (isSameSpan(x, m_x) && isSameSpan(y, m_y))
        return;
    m_x = x;
    m_y = y;
    if (!m_isZoomed)
        log.append(name + QStringLiteral(" zoomed"));
    m_isZoomed = true;
    log.append({name + QStringLiteral(" x"), name + QStringLiteral(" y")});
}

void ModelDomain::zoomReset(const QString &name, QStringList &log)
{
    if (!m_isZoomed)
        return;
    m_isZoomed = false;
    log.append(name + QStringLiteral(" reset"));
    setRange(true, Span(m_baseX), name, log);
    setRange(false, Span(m_baseY), name, log);
}

QString ModelDomain::compare(const Charts::TraceDomain &real)
{
    if (real.size() != m_size)
        return QStringLiteral("the size is %1 x %2")
                .arg(real.size().width())
                .arg(real.size().height());
    if (real.isZoomed() != m_isZoomed)
        return QStringLiteral("zoomed is %1").arg(real.isZoomed());
    if (!takeOver(m_x, real.xRange()))
        return text("the x range", real.xRange(), m_x);
    if (!takeOver(m_y, real.yRange()))
        return text("the y range", real.yRange(), m_y);
    if (!takeOver(m_baseX, real.baseXRange()))
        return text("the base of x", real.baseXRange(), m_baseX);
    if (!takeOver(m_baseY, real.baseYRange()))
        return text("the base of y", real.baseYRange(), m_baseY);
    return {};
}
