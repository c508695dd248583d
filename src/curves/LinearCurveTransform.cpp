// SPDX-License-Identifier: MIT
#include "LinearCurveTransform.h"

namespace Charts {

LinearCurveTransform::LinearCurveTransform(QObject *parent)
    : AbstractCurveTransform(parent)
{
}

LinearCurveTransform::~LinearCurveTransform() = default;

QList<QPointF> LinearCurveTransform::points(QPointF p1, QPointF p2)
{
    return {p1, p2};
}

} // namespace Charts
