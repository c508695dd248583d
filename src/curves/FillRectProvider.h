// SPDX-License-Identifier: MIT
#ifndef CHARTS_FILLRECTPROVIDER_H
#define CHARTS_FILLRECTPROVIDER_H

#include "ChartsExport.h"
#include "GradientProvider.h"

#include <QtQml/qqmlregistration.h>

namespace Charts {

/*!
    \qmltype FillRectProvider
    \inqmlmodule zel.charts
    \inherits GradientProvider
    \brief Fills a GradientCurve up to the item's top or bottom edge.
*/
/*!
    \class Charts::FillRectProvider
    \brief A fill that reaches to the edge of the item.

    Owned by QML or the application.
*/
class CHARTS_EXPORT FillRectProvider : public GradientProvider
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit FillRectProvider(QObject *parent = nullptr);
    ~FillRectProvider() override;

    /*!
        For each of \a points the larger distance of the two ends of the segment that starts there
        from the edge, never below 0, so that the fill reaches the edge everywhere; the last point
        repeats the last segment's. The edge is y = 0 if \a up, else y = the height of \a rect.
        Empty for fewer than two points.
    */
    QList<double> gradientHeights(
            const QList<QPointF> &points, const QRect &rect, bool up) override;
};

} // namespace Charts

#endif
