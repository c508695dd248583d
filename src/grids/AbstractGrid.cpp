// SPDX-License-Identifier: MIT
#include "AbstractGrid.h"

#include "FuzzyCompare.h"
#include "ThreadCheck.h"

#include <utility>

namespace Charts {

AbstractGrid::AbstractGrid(QQuickItem *parent)
    : ChartItem(parent)
{
    setFlag(ItemHasContents);
    setAntialiasing(true);
}

AbstractGrid::~AbstractGrid() = default;

void AbstractGrid::setInnerGridLinesColor(QColor innerGridLinesColor)
{
    if (innerGridLinesColor == m_innerGridLinesColor)
        return;
    m_innerGridLinesColor = innerGridLinesColor;
    markDirty();
    Q_EMIT innerGridLinesColorChanged(m_innerGridLinesColor);
}

void AbstractGrid::setOuterGridLinesColor(QColor outerGridLinesColor)
{
    Q_ASSERT(isOnThreadOf(this));
    if (outerGridLinesColor == m_outerGridLinesColor)
        return;
    m_outerGridLinesColor = outerGridLinesColor;
    Q_EMIT outerGridLinesColorChanged(m_outerGridLinesColor);
}

void AbstractGrid::setLineWidth(double lineWidth)
{
    if (!isRelativelyDifferent(lineWidth, m_lineWidth))
        return;
    m_lineWidth = lineWidth;
    markDirty();
    Q_EMIT lineWidthChanged(m_lineWidth);
}

void AbstractGrid::geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    markDirty();
    ChartItem::geometryUpdate(newGeometry, oldGeometry);
}

void AbstractGrid::markDirty()
{
    Q_ASSERT(isOnThreadOf(this));
    m_dirty = true;
    update();
}

bool AbstractGrid::takeDirty()
{
    return std::exchange(m_dirty, false);
}

} // namespace Charts
