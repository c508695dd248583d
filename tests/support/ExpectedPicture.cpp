// SPDX-License-Identifier: MIT
#include "ExpectedPicture.h"

#include <algorithm>
#include <cmath>

namespace {

QString describe(QRgb color)
{
    return QColor(color).name();
}

double dot(const QPointF &a, const QPointF &b)
{
    return a.x() * b.x() + a.y() * b.y();
}

} // namespace

ExpectedPicture::ExpectedPicture(const QSize &size, const QColor &background)
    : m_size(size)
    , m_colors(static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()),
              {background.rgb()})
{
}

void ExpectedPicture::setSlack(double beside, double beyondEnds)
{
    m_slack = beside;
    m_endSlack = beyondEnds;
}

std::size_t ExpectedPicture::indexOf(QPoint pixel) const
{
    return static_cast<std::size_t>(pixel.y()) * static_cast<std::size_t>(m_size.width())
           + static_cast<std::size_t>(pixel.x());
}

template<typename RelationOf>
void ExpectedPicture::add(const QColor &color, RelationOf &&relationOf)
{
    for (int row = 0; row < m_size.height(); ++row) {
        for (int column = 0; column < m_size.width(); ++column) {
            auto &colors = m_colors[indexOf({column, row})];
            switch (relationOf(QPointF(column + 0.5, m_size.height() - row - 0.5))) {
            case Relation::Inside:
                colors = {color.rgb()};
                break;
            case Relation::AtTheEdge:
                if (!colors.empty())
                    colors.push_back(color.rgb());
                break;
            case Relation::Outside:
                break;
            }
        }
    }
}

void ExpectedPicture::addPoint(const QPointF &centre, double diameter, const QColor &color)
{
    add(color, [&](const QPointF &pixel) {
        const QPointF offset = pixel - centre;
        // The smallest shape is a disc, the largest one the square around it.
        if (std::hypot(offset.x(), offset.y()) < diameter / 2.0 - m_slack)
            return Relation::Inside;
        const double distance = std::max(std::abs(offset.x()), std::abs(offset.y()));
        return distance > diameter / 2.0 + m_slack ? Relation::Outside : Relation::AtTheEdge;
    });
}

void ExpectedPicture::addLine(
        const QPointF &from, const QPointF &to, double width, const QColor &color)
{
    const QPointF span = to - from;
    const double length = std::hypot(span.x(), span.y());
    const QPointF along = length > 0.0 ? span / length : QPointF(1.0, 0.0);
    const QPointF across(-along.y(), along.x());
    add(color, [&](const QPointF &pixel) {
        const double beside = std::abs(dot(pixel - from, across)) - width / 2.0;
        const double beyond =
                std::max(-dot(pixel - from, along), dot(pixel - from, along) - length);
        if (beside > m_slack || beyond > m_endSlack)
            return Relation::Outside;
        return beside < -m_slack && beyond < -m_endSlack ? Relation::Inside : Relation::AtTheEdge;
    });
    if (width <= 2.0 * m_slack)
        expectUnbroken(from, to, width, color.rgb());
}

void ExpectedPicture::addLineStrip(
        const std::vector<QPointF> &points, double width, const QColor &color)
{
    for (std::size_t i = 1; i < points.size(); ++i)
        addLine(points[i - 1], points[i], width, color);
}

void ExpectedPicture::expectUnbroken(
        const QPointF &from, const QPointF &to, double width, QRgb color)
{
    const QPointF span = to - from;
    const bool isSteep = std::abs(span.y()) > std::abs(span.x());
    const auto major = [isSteep](const QPointF &point) { return isSteep ? point.y() : point.x(); };
    const auto minor = [isSteep](const QPointF &point) { return isSteep ? point.x() : point.y(); };
    const double start = std::min(major(from), major(to)) + m_endSlack;
    const double end = std::max(major(from), major(to)) - m_endSlack;
    const double reach = width / 2.0 + m_slack;

    for (int step = static_cast<int>(std::ceil(start)); step + 0.5 < end; ++step) {
        const double fraction = (step + 0.5 - major(from)) / major(span);
        const double middle = minor(from) + fraction * minor(span);
        Unbroken unbroken = {{}, color};
        for (int other = static_cast<int>(std::floor(middle - reach)); other < middle + reach;
                ++other) {
            const QPoint upwards = isSteep ? QPoint(other, step) : QPoint(step, other);
            const QPoint pixel(upwards.x(), m_size.height() - 1 - upwards.y());
            if (QRect(QPoint(0, 0), m_size).contains(pixel))
                unbroken.oneOf.push_back(pixel);
        }
        if (!unbroken.oneOf.empty())
            m_unbroken.push_back(std::move(unbroken));
    }
}

void ExpectedPicture::ignore(const QRectF &rect)
{
    for (int row = 0; row < m_size.height(); ++row) {
        for (int column = 0; column < m_size.width(); ++column) {
            if (rect.contains(QPointF(column + 0.5, m_size.height() - row - 0.5)))
                m_colors[indexOf({column, row})].clear();
        }
    }
}

bool ExpectedPicture::isAccepted(QPoint pixel, QRgb color) const
{
    const auto &colors = m_colors[indexOf(pixel)];
    if (colors.empty() || std::find(colors.begin(), colors.end(), color) != colors.end())
        return true;
    if (!m_isBlended || colors.size() == 1)
        return false;
    for (const int shift : {0, 8, 16}) {
        const auto channel = [shift](QRgb mixed) {
            return static_cast<int>(mixed >> shift & 0xFFU);
        };
        const auto [least, greatest] = std::minmax_element(colors.begin(), colors.end(),
                [channel](QRgb a, QRgb b) { return channel(a) < channel(b); });
        // Rounding may take a mixture beyond by one.
        if (channel(color) < channel(*least) - 1 || channel(color) > channel(*greatest) + 1)
            return false;
    }
    return true;
}

QString ExpectedPicture::compare(const QImage &picture) const
{
    if (picture.size() != m_size) {
        return QStringLiteral("the picture is %1 x %2 pixels large")
                .arg(picture.width())
                .arg(picture.height());
    }
    int count = 0;
    QString first;
    for (int row = 0; row < m_size.height(); ++row) {
        for (int column = 0; column < m_size.width(); ++column) {
            const QRgb color = picture.pixel(column, row) | 0xFF000000U;
            if (isAccepted({column, row}, color))
                continue;
            if (++count == 1) {
                first = QStringLiteral("column %1, row %2 from the top is %3, not %4")
                                .arg(column)
                                .arg(row)
                                .arg(describe(color),
                                        describe(m_colors[indexOf({column, row})].front()));
            }
        }
    }
    if (count > 0)
        return QStringLiteral("%1 (%2 pixels differ)").arg(first).arg(count);

    for (const Unbroken &unbroken : m_unbroken) {
        const bool isFound =
                std::any_of(unbroken.oneOf.begin(), unbroken.oneOf.end(), [&](QPoint pixel) {
                    return (picture.pixel(pixel) | 0xFF000000U) == unbroken.color;
                });
        if (!isFound) {
            const QPoint pixel = unbroken.oneOf.front();
            return QStringLiteral("the line in %1 is broken at column %2, row %3 from the top")
                    .arg(describe(unbroken.color))
                    .arg(pixel.x())
                    .arg(pixel.y());
        }
    }
    return {};
}
