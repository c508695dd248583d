// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_GRIDSHAPES_H
#define CHARTS_TEST_GRIDSHAPES_H

#include "PaintedItem.h"
#include "SmoothVertices.h"

#include <QtCore/QLineF>
#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtQuick/QSGGeometryNode>
#include <QtQuick/QSGNode>

#include <algorithm>
#include <cmath>

/*! Whether all children of \a parent are of the type \a Node. */
template<typename Node>
bool holdsOnly(const QSGNode *parent)
{
    const QList<QSGNode *> children = childrenOf(parent);
    return std::all_of(children.begin(), children.end(),
            [](const QSGNode *child) { return dynamic_cast<const Node *>(child) != nullptr; });
}

inline QPointF middleOf(const Vertex &a, const Vertex &b)
{
    return {(double(a.x) + double(b.x)) / 2.0, (double(a.y) + double(b.y)) / 2.0};
}

inline double distanceOf(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/*! What the vertices of one LineNode show. */
struct DrawnLine
{
    explicit DrawnLine(const QSGNode *node)
    {
        const QList<Vertex> v = verticesOf(*static_cast<const QSGGeometryNode *>(node));
        isSmooth = v.size() == 8;
        // Both edges of the line at its two ends; a smooth line lies half a pixel further.
        const qsizetype first = isSmooth ? 2 : 0;
        const QPointF shift = isSmooth ? QPointF(0.5, 0.5) : QPointF();
        line = QLineF(middleOf(v[first], v[first + 2]) - shift,
                middleOf(v[first + 1], v[first + 3]) - shift);
        width = std::hypot(double(v[first].x) - double(v[first + 2].x),
                double(v[first].y) - double(v[first + 2].y));
        color = v[first].color;
    }

    QLineF line;
    double width = 0.0;
    ColorBytes color = {};
    bool isSmooth = false;
};

/*! What the vertices of one ArcNode show. */
struct DrawnArc
{
    explicit DrawnArc(const QSGNode *node)
    {
        const auto *geometryNode = static_cast<const QSGGeometryNode *>(node);
        const QList<Vertex> v = verticesOf(*geometryNode);
        // Plain: outer and inner point of a sample; the same twice and three entries of the index
        // list for each of the two when smooth.
        isSmooth = geometryNode->geometry()->indexCount() != v.size();
        for (qsizetype i = 0; i < v.size(); i += isSmooth ? 4 : 2) {
            outer.append(QPointF(double(v[i].x), double(v[i].y)));
            inner.append(QPointF(double(v[i + 1].x), double(v[i + 1].y)));
            middle.append(middleOf(v[i], v[i + 1]));
        }
        color = v[0].color;
        width = distanceOf(outer.first(), inner.first());
    }

    /*! Whether it ends where it began, after one turn. */
    [[nodiscard]] bool isClosed() const
    {
        return middle.size() > 2 && distanceOf(middle.first(), middle.last()) < 1e-3
               && distanceOf(middle.first(), middle.at(middle.size() / 2)) > 1e-3;
    }
    /*! The centre of a closed arc, whose samples are spread evenly over it. */
    [[nodiscard]] QPointF center() const
    {
        QPointF sum;
        for (qsizetype i = 0; i + 1 < middle.size(); ++i)
            sum += middle.at(i);
        return sum / double(middle.size() - 1);
    }
    /*! The radius of a closed arc through \a points. */
    [[nodiscard]] double radius(const QList<QPointF> &points) const
    {
        double sum = 0.0;
        for (qsizetype i = 0; i + 1 < points.size(); ++i)
            sum += distanceOf(points.at(i), center());
        return sum / double(points.size() - 1);
    }
    /*! By how much the band's middle leaves the circle of \a radius around \a center at most. */
    [[nodiscard]] double deviation(const QPointF &circleCenter, double circleRadius) const
    {
        double greatest = 0.0;
        for (const QPointF &point : middle) {
            const double distance = std::abs(distanceOf(point, circleCenter) - circleRadius);
            if (std::isnan(distance))
                return distance;
            greatest = std::max(greatest, distance);
        }
        return greatest;
    }

    QList<QPointF> outer;
    QList<QPointF> inner;
    QList<QPointF> middle;
    double width = 0.0;
    ColorBytes color = {};
    bool isSmooth = false;
};

#endif
