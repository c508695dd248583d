// SPDX-License-Identifier: MIT
#include "XYGrid.h"

#include "GridColumns.h"
#include "GridNode.h"
#include "Rounding.h"
#include "ThreadCheck.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace Charts {

namespace {

// In the order of their drawing: the border over the inner lines.
enum Container : std::size_t {
    InnerLines,
    OuterLines,
    ContainerCount,
};

using XYGridNode = GridNode<ContainerCount>;

/*! The item in whole pixels: its lines start at its corner. */
QRect roundedRect(const QRectF &rect)
{
    return toRectSaturated({QPointF(), rect.size()});
}

/*! Ascending, with each NaN behind all numbers: sorting needs an order among them, too. */
bool isBefore(double a, double b)
{
    if (std::isnan(b))
        return !std::isnan(a);
    return a < b;
}

} // namespace

XYGrid::XYGrid(QQuickItem *parent)
    : AbstractGrid(parent)
{
}

XYGrid::~XYGrid() = default;

void XYGrid::setXLayout(GridLayoutMode xLayout)
{
    if (xLayout == m_xLayout)
        return;
    m_xLayout = xLayout;
    markDirty();
    // The published labels stay as they are until the range changes.
    updateGeomerty();
    Q_EMIT xLayoutChanged(m_xLayout);
}

void XYGrid::setXRange(const Span &xRange)
{
    if (xRange == m_xRange)
        return;
    m_xRange = xRange;
    markDirty();
    updateGeomerty();
    Q_EMIT xRangeChanged(m_xRange);
    updateLabels();
}

void XYGrid::setYCount(int yCount)
{
    if (yCount == m_yCount)
        return;
    m_yCount = yCount;
    markDirty();
    updateGeomerty();
    Q_EMIT yCountChanged(m_yCount);
}

void XYGrid::geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    AbstractGrid::geometryUpdate(newGeometry, oldGeometry);
    updateGeomerty();
}

void XYGrid::updateGeomerty()
{
    Q_ASSERT(isOnThreadOf(this));
    const QRect rect = roundedRect(boundingRect());
    std::tie(m_innerLines, m_labelValues) = innerLines(rect);
    m_outerLines = outerLines(rect);
}

void XYGrid::updateLabels()
{
    Q_ASSERT(isOnThreadOf(this));
    m_xLabels.clear();
    std::sort(m_labelValues.begin(), m_labelValues.end(), isBefore);
    for (const double value : m_labelValues)
        m_xLabels.append(m_xLayout == LogGrid ? std::log10(value) : value);
    Q_EMIT xLabelsChanged();
}

std::pair<std::vector<QLine>, std::vector<double>> XYGrid::innerLines(const QRect &rect) const
{
    const int width = rect.width();
    const int height = rect.height();
    GridColumns columns(m_xRange, width);
    switch (m_xLayout) {
    case EquidistantGrid:
        columns.addEquidistant(m_xDivisions);
        break;
    case CenteredLinGrid:
        columns.addCentered(m_xDivisions);
        break;
    case NiceLabelsLinGrid:
        columns.addNice();
        break;
    case LogGrid:
        columns.addLogarithmic();
        break;
    }

    std::vector<QLine> lines;
    for (const int x : columns.pixels())
        lines.emplace_back(x, 0, x, height);
    // One less than the height: the last row, not the border below it, is divided.
    const double pitch = static_cast<double>(rect.bottom() - rect.top()) / m_yCount;
    for (int i = 1; i < m_yCount; ++i) {
        const int y = truncateToInt(i * pitch + 0.5);
        lines.emplace_back(0, y, width, y);
    }
    return {std::move(lines), columns.values()};
}

std::vector<QLine> XYGrid::outerLines(const QRect &rect) const
{
    const int width = rect.width();
    const int height = rect.height();
    return {{0, 0, 0, height}, {0, height, width, height}, {width, 0, width, height},
            {width, 0, 0, 0}};
}

QSGNode *XYGrid::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    if (roundedRect(boundingRect()).isEmpty()) {
        delete oldNode;
        return nullptr;
    }
    const bool isNew = !oldNode;
    auto *node = isNew ? new XYGridNode : static_cast<XYGridNode *>(oldNode);
    // A new node has to be filled even when nothing changed: the one before may have gone with its
    // window.
    if (takeDirty() || isNew) {
        drawLines(node->container(OuterLines), m_outerLines, {*this, outerGridLinesColor()});
        drawLines(node->container(InnerLines), m_innerLines, {*this, innerGridLinesColor()});
    }
    return node;
}

} // namespace Charts
