// SPDX-License-Identifier: MIT
#include "GradientCurve.h"

#include "AbstractCurveTransform.h"
#include "GradientNode.h"
#include "GradientProvider.h"
#include "LineNode.h"
#include "ShowUpdated.h"
#include "ThreadCheck.h"

#include <cmath>

namespace Charts {

namespace {

/*! The item's paint node: the line, and over it the fill. */
class LimitLineNode : public QSGNode
{
public:
    LimitLineNode()
    {
        appendChildNode(m_line);
        appendChildNode(m_fill);
    }

    [[nodiscard]] LineNode &line() { return *m_line; }
    [[nodiscard]] GradientNode &fill() { return *m_fill; }

private:
    // Owned as children.
    LineNode *m_line = new LineNode;
    GradientNode *m_fill = new GradientNode;
};

double length(const QPointF &vector)
{
    return std::hypot(vector.x(), vector.y());
}

/*! From \a point to the segment from \a a to \a b; NaN where these are one point. */
double distanceToSegment(const QPointF &point, const QPointF &a, const QPointF &b)
{
    const QPointF segment = b - a;
    const QPointF fromA = point - a;
    const QPointF fromB = point - b;
    if (QPointF::dotProduct(segment, fromB) > 0.0)
        return length(fromB);
    if (QPointF::dotProduct(segment, fromA) < 0.0)
        return length(fromA);
    const double cross = segment.x() * fromA.y() - segment.y() * fromA.x();
    return std::abs(cross) / length(segment);
}

} // namespace

GradientCurve::GradientCurve(QQuickItem *parent)
    : Curve(parent)
{
}

GradientCurve::~GradientCurve() = default;

void GradientCurve::setUpDirection(bool upDirection)
{
    if (upDirection == m_upDirection)
        return;
    m_upDirection = upDirection;
    markDirty();
    Q_EMIT upGradientChanged();
}

GradientProvider *GradientCurve::shape() const
{
    return m_shape;
}

void GradientCurve::setShape(GradientProvider *shape)
{
    if (shape == m_shape)
        return;
    m_shape = shape;
    markDirty();
    Q_EMIT shapeChanged();
}

void GradientCurve::setContainsMouseMargin(int containsMouseMargin)
{
    Q_ASSERT(isOnThreadOf(this));
    if (containsMouseMargin == m_containsMouseMargin)
        return;
    m_containsMouseMargin = containsMouseMargin;
    Q_EMIT containsMouseMarginChanged();
}

bool GradientCurve::contains(const QPointF &point) const
{
    Q_ASSERT(isOnThreadOf(this));
    if (!geometryTransform())
        return false;
    const QList<QPointF> points = geometryTransform()->points(p1(), p2());
    const double reach = containsMouseMargin() + lineWidth() * 0.5;
    for (qsizetype i = 0; i + 1 < points.size(); ++i) {
        if (distanceToSegment(point, points[i], points[i + 1]) < reach)
            return true;
    }
    return false;
}

QSGNode *GradientCurve::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    const QRect rect = pixelRect();
    if (rect.isEmpty()) {
        delete oldNode;
        return nullptr;
    }
    const bool isNew = !oldNode;
    auto *node = isNew ? new LimitLineNode : static_cast<LimitLineNode *>(oldNode);
    // A new node has to be filled even when nothing changed: the one before may have gone with its
    // window.
    const bool isDirty = takeDirty() || isNew;
    if (isDirty && geometryTransform() && m_shape) {
        const QList<QPointF> points = geometryTransform()->points(p1(), p2());
        showUpdated(node->line(), points, static_cast<float>(lineWidth()), color(), true);
        showUpdated(node->fill(), points, color(), m_upDirection,
                m_shape->gradientHeights(points, rect, m_upDirection));
    }
    return node;
}

} // namespace Charts
