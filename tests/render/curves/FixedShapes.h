// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_FIXEDSHAPES_H
#define CHARTS_TEST_FIXEDSHAPES_H

#include <ChartsLibrary/AbstractCurveTransform.h>
#include <ChartsLibrary/GradientProvider.h>

/*! The same points for all ends. */
class FixedPoints : public Charts::AbstractCurveTransform
{
public:
    QList<QPointF> points(QPointF, QPointF) override { return list; }

    QList<QPointF> list;
};

/*! The same heights for all points. */
class FixedHeights : public Charts::GradientProvider
{
public:
    QList<double> gradientHeights(const QList<QPointF> &, const QRect &, bool) override
    {
        return list;
    }

    QList<double> list;
};

#endif
