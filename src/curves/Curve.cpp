// SPDX-License-Identifier: MIT
#include "Curve.h"

#include "AbstractCurveTransform.h"
#include "FuzzyCompare.h"
#include "LineNode.h"
#include "Rounding.h"
#include "ShowUpdated.h"
#include "ThreadCheck.h"

#include <utility>

namespace Charts {

namespace {

/*! The curve's paint node; the line in it is its only child. */
class CurveNode : public QSGNode
{
public:
    CurveNode() { appendChildNode(m_line); }

    [[nodiscard]] LineNode &line() { return *m_line; }

private:
    LineNode *m_line = new LineNode; // owned as a child
};

bool isSamePoint(const QPointF &a, const QPointF &b)
{
    return isFuzzyEqual(a.x(), b.x()) && isFuzzyEqual(a.y(), b.y());
}

} // namespace

Curve::Curve(QQuickItem *parent)
    : ChartItem(parent)
{
    setFlag(ItemHasContents);
    setAntialiasing(true);
}

Curve::~Curve() = default;

AbstractCurveTransform *Curve::geometryTransform() const
{
    return m_geometryTransform;
}

void Curve::setGeometryTransform(AbstractCurveTransform *geometryTransform)
{
    if (geometryTransform == m_geometryTransform)
        return;
    m_geometryTransform = geometryTransform;
    markDirty();
    Q_EMIT geometryTransformChanged();
}

void Curve::setP1(QPointF p1)
{
    if (isSamePoint(p1, m_p1))
        return;
    m_p1 = p1;
    markDirty();
    Q_EMIT p1Changed();
}

void Curve::setP2(QPointF p2)
{
    if (isSamePoint(p2, m_p2))
        return;
    m_p2 = p2;
    markDirty();
    Q_EMIT p2Changed();
}

void Curve::setLineWidth(double lineWidth)
{
    if (!isRelativelyDifferent(lineWidth, m_lineWidth))
        return;
    m_lineWidth = lineWidth;
    markDirty();
    Q_EMIT lineWidthChanged();
}

void Curve::setColor(QColor color)
{
    if (color == m_color)
        return;
    m_color = color;
    markDirty();
    Q_EMIT colorChanged();
}

void Curve::geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    markDirty();
    ChartItem::geometryUpdate(newGeometry, oldGeometry);
}

QSGNode *Curve::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    if (pixelRect().isEmpty()) {
        delete oldNode;
        return nullptr;
    }
    const bool isNew = !oldNode;
    auto *node = isNew ? new CurveNode : static_cast<CurveNode *>(oldNode);
    // A new node has to be filled even when nothing changed: the one before may have gone with its
    // window.
    const bool isDirty = takeDirty() || isNew;
    if (isDirty && m_geometryTransform) {
        showUpdated(node->line(), m_geometryTransform->points(m_p1, m_p2),
                static_cast<float>(m_lineWidth), m_color, true);
    }
    return node;
}

void Curve::markDirty()
{
    Q_ASSERT(isOnThreadOf(this));
    m_dirty = true;
    update();
}

bool Curve::takeDirty()
{
    return std::exchange(m_dirty, false);
}

QRect Curve::pixelRect() const
{
    return toRectSaturated(boundingRect());
}

} // namespace Charts
