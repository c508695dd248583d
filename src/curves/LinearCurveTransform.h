// SPDX-License-Identifier: MIT
#ifndef CHARTS_LINEARCURVETRANSFORM_H
#define CHARTS_LINEARCURVETRANSFORM_H

#include "AbstractCurveTransform.h"
#include "ChartsExport.h"

#include <QtQml/qqmlregistration.h>

namespace Charts {

/*!
    \qmltype LinearCurveTransform
    \inqmlmodule zel.charts
    \inherits AbstractCurveTransform
    \brief A straight line between the two ends of a curve.
*/
/*!
    \class Charts::LinearCurveTransform
    \brief A straight line.

    Owned by QML or the application.
*/
class CHARTS_EXPORT LinearCurveTransform : public AbstractCurveTransform
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit LinearCurveTransform(QObject *parent = nullptr);
    ~LinearCurveTransform() override;

    /*! \a p1 and \a p2. */
    QList<QPointF> points(QPointF p1, QPointF p2) override;
};

} // namespace Charts

#endif
