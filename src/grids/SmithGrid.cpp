// SPDX-License-Identifier: MIT
#include "SmithGrid.h"

#include "GridNode.h"
#include "Rounding.h"
#include "SmithGeometry.h"

namespace Charts {

namespace {

// In the order of their drawing: boundary and real axis over the inner lines.
enum Container : std::size_t {
    InnerArcs,
    Marker,
    OuterArcs,
    RealAxis,
    ContainerCount,
};

using SmithNode = GridNode<ContainerCount>;

} // namespace

SmithGrid::SmithGrid(QQuickItem *parent)
    : AbstractGrid(parent)
{
}

SmithGrid::~SmithGrid() = default;

void SmithGrid::setScale(double scale)
{
    if (qFuzzyCompare(scale, m_scale))
        return;
    m_scale = scale;
    markDirty();
    Q_EMIT scaleChanged(m_scale);
}

void SmithGrid::setFlip(bool flip)
{
    if (flip == m_flip)
        return;
    m_flip = flip;
    markDirty();
    Q_EMIT flipChanged(m_flip);
}

QSGNode *SmithGrid::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    const QSizeF size = boundingRect().size();
    if (size.width() <= 0.0 || size.height() <= 0.0) {
        delete oldNode;
        return nullptr;
    }
    const bool isNew = !oldNode;
    auto *node = isNew ? new SmithNode : static_cast<SmithNode *>(oldNode);
    // A new node has to be filled even when nothing changed: the one before may have gone with its
    // window.
    if (!takeDirty() && !isNew)
        return node;

    const SmithGeometry geometry(
            {qRoundSaturated(size.width()), qRoundSaturated(size.height())}, m_scale, m_flip);
    const GridPen inner(*this, innerGridLinesColor());
    const GridPen outer(*this, outerGridLinesColor());
    drawArcs(node->container(InnerArcs), geometry.innerArcs(), inner);
    drawArcs(node->container(OuterArcs), geometry.outerArcs(), outer);
    drawLines(node->container(Marker), std::vector<QLineF>{geometry.marker()}, inner);
    drawLines(node->container(RealAxis), std::vector<QLineF>{geometry.realAxis()}, outer);
    return node;
}

} // namespace Charts
