// SPDX-License-Identifier: MIT
#include "FillRectProvider.h"

#include <algorithm>

namespace Charts {

FillRectProvider::FillRectProvider(QObject *parent)
    : GradientProvider(parent)
{
}

FillRectProvider::~FillRectProvider() = default;

QList<double> FillRectProvider::gradientHeights(
        const QList<QPointF> &points, const QRect &rect, bool up)
{
    if (points.size() < 2)
        return {};
    QList<double> heights;
    heights.reserve(points.size());
    const double bottom = rect.height();
    for (qsizetype i = 0; i + 1 < points.size(); ++i) {
        const double y1 = points[i].y();
        const double y2 = points[i + 1].y();
        const double height = up ? std::max(y1, y2) : std::max(bottom - y1, bottom - y2);
        heights.append(height < 0.0 ? 0.0 : height);
    }
    heights.append(heights.constLast());
    return heights;
}

} // namespace Charts
