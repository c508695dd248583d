// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_EXPECTEDCURVE_H
#define CHARTS_TEST_EXPECTEDCURVE_H

#include "ItemPicture.h"

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QColor>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

/*!
    What a curve looks like, pixel by pixel, worked out from its points and the heights of its fill.

    The line is moved by half a pixel in both directions, so that a level or upright one runs through
    the middle of its pixels; the fill is not. The fill lies over the line.
*/
struct ExpectedCurve
{
    QList<QPointF> points;
    double lineWidth = 1.0;
    QColor color;
    /*! One for each point, negative downwards. None at all: no fill. */
    QList<double> heights = {};
    double opacity = 1.0;
    QColor background = Qt::white;

    [[nodiscard]] QColor colorAt(const QPointF &place) const;
    /*! The share of the colour in segment number \a index of the fill. */
    [[nodiscard]] double strengthAt(const QPointF &place, qsizetype index) const;
    /*! Whether one of the lines ends, and perhaps the next one begins, as near as \a slack. */
    [[nodiscard]] bool isAtAnEnd(const QPointF &place, double slack) const;
    /*! Rectangles that hold all that is drawn. */
    [[nodiscard]] std::vector<QRectF> bounds() const;
    /*! Where \a picture differs. Empty if it does not. */
    [[nodiscard]] QString differenceFrom(const ItemPicture &picture) const;
};

/*! A corner of a triangle. */
struct Corner
{
    QPointF place;
    double value = 0.0;
};

/*! The value at a place inside a triangle, from those at its corners. */
inline std::optional<double> interpolated(
        const QPointF &place, const std::array<Corner, 3> &corners)
{
    const auto area = [](const QPointF &a, const QPointF &b, const QPointF &c) {
        const QPointF ab = b - a;
        const QPointF ac = c - a;
        return ab.x() * ac.y() - ab.y() * ac.x();
    };
    const auto &[a, b, c] = corners;
    const double whole = area(a.place, b.place, c.place);
    if (whole == 0.0)
        return {};
    const double weightA = area(place, b.place, c.place) / whole;
    const double weightB = area(a.place, place, c.place) / whole;
    const double weightC = area(a.place, b.place, place) / whole;
    if (std::min({weightA, weightB, weightC}) < 0.0)
        return {};
    return weightA * a.value + weightB * b.value + weightC * c.value;
}

/*!
    The two triangles of a segment from p to q meet in the line from p', the far side over its first
    point, to q, whatever their directions:

        p'---q'   nothing
        |  / |
        p ---q    the colour
*/
inline double ExpectedCurve::strengthAt(const QPointF &place, qsizetype index) const
{
    const QPointF p = points[index];
    const QPointF q = points[index + 1];
    // Neighbours share their edge: it belongs to one of them.
    if (place.x() <= std::min(p.x(), q.x()) || place.x() > std::max(p.x(), q.x()))
        return 0.0;
    const QPointF pFar = p - QPointF(0.0, heights[index]);
    const QPointF qFar = q - QPointF(0.0, heights[index + 1]);
    const auto first = interpolated(place, {{{p, 1.0}, {pFar, 0.0}, {q, 1.0}}});
    return first ? *first
                 : interpolated(place, {{{pFar, 0.0}, {q, 1.0}, {qFar, 0.0}}}).value_or(0.0);
}

/*! A place as seen from a line, which is moved by half a pixel. */
struct PlaceAtLine
{
    PlaceAtLine(const QPointF &place, const QPointF &begin, const QPointF &end)
    {
        const QPointF way = end - begin;
        const QPointF from = place - (begin + QPointF(0.5, 0.5));
        length = std::hypot(way.x(), way.y());
        along = QPointF::dotProduct(from, way) / length;
        across = (way.x() * from.y() - way.y() * from.x()) / length;
    }

    double length;
    double along;
    double across;
};

inline QColor ExpectedCurve::colorAt(const QPointF &place) const
{
    PixelBlend blend(background);
    for (qsizetype i = 0; i + 1 < points.size(); ++i) {
        const PlaceAtLine at(place, points[i], points[i + 1]);
        // Ends are cut straight.
        if (at.along > 0.0 && at.along <= at.length)
            blend.add(color, opacity * smoothCoverage(at.across, lineWidth));
    }
    for (qsizetype i = 0; i + 1 < heights.size(); ++i)
        blend.addPremultiplied(color, opacity * strengthAt(place, i));
    return blend.color();
}

inline bool ExpectedCurve::isAtAnEnd(const QPointF &place, double slack) const
{
    for (qsizetype i = 0; i + 1 < points.size(); ++i) {
        const PlaceAtLine at(place, points[i], points[i + 1]);
        if (std::abs(at.across) < 0.9 * lineWidth
                && (std::abs(at.along) < slack || std::abs(at.along - at.length) < slack))
            return true;
    }
    return false;
}

inline std::vector<QRectF> ExpectedCurve::bounds() const
{
    std::vector<QRectF> bounds;
    const double margin = lineWidth + 1.0;
    for (qsizetype i = 0; i + 1 < points.size(); ++i) {
        bounds.push_back(QRectF(points[i], points[i + 1])
                                 .normalized()
                                 .adjusted(-margin, -margin, margin, margin));
    }
    for (qsizetype i = 0; i + 1 < heights.size(); ++i) {
        QRectF &rect = bounds[std::size_t(i)];
        for (qsizetype k : {i, i + 1}) {
            rect.setTop(std::min(rect.top(), points[k].y() - heights[k] - margin));
            rect.setBottom(std::max(rect.bottom(), points[k].y() - heights[k] + margin));
        }
    }
    return bounds;
}

inline QString ExpectedCurve::differenceFrom(const ItemPicture &picture) const
{
    if (!picture.isComplete())
        return QStringLiteral("no picture");
    // Graphics round the corners of triangles to fractions of a pixel. A pixel may look as it would
    // about that far away, and two levels differ by rounding and by cutting off colour bytes.
    constexpr double slack = 0.01;
    constexpr double rounding = 2.0;
    const auto toleranceAt = [this](const QPointF &place, const QColor &expected) {
        int change = 0;
        for (const QPointF &away : {QPointF(-slack, -slack), QPointF(slack, -slack),
                     QPointF(-slack, slack), QPointF(slack, slack)})
            change = std::max(change, distanceOf(expected, colorAt(place + away)));
        return rounding + 1.1 * change;
    };

    Mismatches mismatches;
    int doubtful = 0;
    const std::vector<QRectF> bounded = bounds();
    picture.forEachPixel([&](QPoint pixel, const QPointF &place) {
        const QColor actual = picture.image().pixelColor(pixel);
        const auto holdsIt = [&place](const QRectF &rect) { return rect.contains(place); };
        if (std::none_of(bounded.begin(), bounded.end(), holdsIt)) {
            mismatches.check(pixel, actual, background, 0.0);
        } else if (isAtAnEnd(place, 2.0 * slack)) {
            ++doubtful;
        } else {
            const QColor expected = colorAt(place);
            const bool isRight = distanceOf(actual, expected) <= rounding;
            const double tolerance = isRight ? rounding : toleranceAt(place, expected);
            mismatches.check(pixel, actual, expected, tolerance);
            doubtful += tolerance > 20.0;
        }
    });
    // So many that the others would say little.
    if (doubtful > mismatches.checked() / 100)
        return QStringLiteral("%1 pixels are in doubt").arg(doubtful);
    return mismatches.text();
}

#endif
