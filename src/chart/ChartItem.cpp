// SPDX-License-Identifier: MIT
#include "ChartItem.h"

namespace Charts {

ChartItem::ChartItem(QQuickItem *parent)
    : QQuickItem(parent)
{
}

ChartItem::~ChartItem() = default;

void ChartItem::geometryUpdate(const QRectF &, const QRectF &) {}

void ChartItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    geometryUpdate(newGeometry, oldGeometry);
    QQuickItem::geometryChange(newGeometry, oldGeometry);
}

} // namespace Charts
