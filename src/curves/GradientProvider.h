// SPDX-License-Identifier: MIT
#ifndef CHARTS_GRADIENTPROVIDER_H
#define CHARTS_GRADIENTPROVIDER_H

#include "ChartsExport.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtQml/qqmlregistration.h>

namespace Charts {

/*!
    \qmltype GradientProvider
    \inqmlmodule zel.charts
    \brief How far the fill of a GradientCurve reaches.

    Documents create a \l FillRectProvider; others are written in C++. One may serve any number of
    curves.
*/
/*!
    \class Charts::GradientProvider
    \brief Gives the height of a gradient fill for each point of a curve.

    Owned by QML or the application; one may serve any number of curves.
*/
class CHARTS_EXPORT GradientProvider : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

public:
    explicit GradientProvider(QObject *parent = nullptr);
    ~GradientProvider() override;

    /*!
        The height of the fill at each of \a points, in pixels of the item whose bounding rectangle
        is \a rect; upwards from the point if \a up, else downwards. Nothing is filled unless there
        are as many heights as points.

        Render thread, while the GUI thread is blocked.
    */
    virtual QList<double> gradientHeights(
            const QList<QPointF> &points, const QRect &rect, bool up) = 0;
};

} // namespace Charts

#endif
