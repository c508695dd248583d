// SPDX-License-Identifier: MIT
#ifndef CHARTS_ABSTRACTCURVETRANSFORM_H
#define CHARTS_ABSTRACTCURVETRANSFORM_H

#include "ChartsExport.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtQml/qqmlregistration.h>

namespace Charts {

/*!
    \qmltype AbstractCurveTransform
    \inqmlmodule zel.charts
    \brief The shape of a Curve between its two ends.

    Documents create \l LinearCurveTransform or \l LogarithmicCurveTransform; other shapes are
    written in C++. One transform may serve any number of curves.
*/
/*!
    \class Charts::AbstractCurveTransform
    \brief Turns the two ends of a curve into the points of its line.

    Owned by QML or the application; one may serve any number of curves. They do not listen to it: a
    new value of a property shows when a curve is drawn anew for another reason.
*/
class CHARTS_EXPORT AbstractCurveTransform : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

public:
    explicit AbstractCurveTransform(QObject *parent = nullptr);
    ~AbstractCurveTransform() override;

    /*!
        The line from \a p1 to \a p2, in pixels of the item; fewer than two points draw nothing.

        Render thread while the GUI thread is blocked, for drawing; GUI thread, for
        GradientCurve::contains().
    */
    virtual QList<QPointF> points(QPointF p1, QPointF p2) = 0;
};

} // namespace Charts

#endif
