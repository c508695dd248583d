// SPDX-License-Identifier: MIT
#include "ChartItem.h"

#include "ThreadCheck.h"

#include <QtCore/QPointer>

namespace Charts {

ChartItem::ChartItem(QQuickItem *parent)
    : QQuickItem(parent)
{
}

ChartItem::~ChartItem() = default;

void ChartItem::geometryUpdate(const QRectF &, const QRectF &) {}

void ChartItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    Q_ASSERT(isOnThreadOf(this));
    // Handlers of what it emits may destroy the item.
    const QPointer<ChartItem> guard(this);
    geometryUpdate(newGeometry, oldGeometry);
    if (!guard)
        return;
    QQuickItem::geometryChange(newGeometry, oldGeometry);
}

} // namespace Charts
