// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_SMITHREFERENCE_H
#define CHARTS_TEST_SMITHREFERENCE_H

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QSize>

/*! A circle in whole pixels of which something lies inside the chart's boundary. */
struct ReferenceCircle
{
    qint64 x = 0;
    qint64 y = 0;
    qint64 radius = 0;
    bool isWhole = false; // inside the boundary, or cut by it

    friend bool operator==(const ReferenceCircle &, const ReferenceCircle &) = default;
};

inline QByteArray textOf(const ReferenceCircle &circle)
{
    return QByteArray::number(circle.x) + ' ' + QByteArray::number(circle.y) + ' '
           + QByteArray::number(circle.radius) + (circle.isWhole ? " whole" : " cut");
}

/*! Where a Smith chart of \a size has its centre and how large it is. */
struct ReferenceFrame
{
    explicit ReferenceFrame(const QSize &size);

    qint64 x = 0;
    qint64 y = 0;
    qint64 radius = 0;
    qint64 side = 0;
};

/*!
    The inner circles of a Smith chart in the order of their drawing: from the points that they go
    through, not from the formulas for their radii, and clipped by comparing whole numbers.
*/
QList<ReferenceCircle> referenceCircles(const QSize &size, double scale, bool isFlipped);

#endif
