// SPDX-License-Identifier: MIT
#include "AbstractCurveTransform.h"

namespace Charts {

AbstractCurveTransform::AbstractCurveTransform(QObject *parent)
    : QObject(parent)
{
}

AbstractCurveTransform::~AbstractCurveTransform() = default;

} // namespace Charts
