// SPDX-License-Identifier: MIT
#include "PolarGrid.h"

#include "GridNode.h"
#include "Rounding.h"

#include <QtCore/QtMath>

#include <algorithm>
#include <numbers>

namespace Charts {

namespace {

// In the order of their drawing: axes and boundary over the inner lines.
enum Container : std::size_t {
    Spokes,
    Rings,
    Axes,
    Boundary,
    ContainerCount,
};

using PolarNode = GridNode<ContainerCount>;

constexpr double fullAngle = 2.0 * std::numbers::pi;
constexpr float quarter = 0.25F;

/*! The diagram's place in the item. */
struct Frame
{
    QPointF center;
    float radius = 0.0F;

    [[nodiscard]] ArcShape circle(double circleRadius) const
    {
        return {center, circleRadius, 0.0, fullAngle};
    }
};

std::vector<ArcShape> boundary(const Frame &frame, double scale)
{
    const int reference = qRoundSaturated(frame.radius / std::max(scale, 0.001));
    std::vector<ArcShape> circles;
    if (frame.radius > static_cast<float>(reference))
        circles.push_back(frame.circle(reference));
    circles.push_back(frame.circle(frame.radius));
    return circles;
}

std::vector<QLine> axes(const Frame &frame)
{
    const double x = frame.center.x();
    const double y = frame.center.y();
    const auto line = [](double x1, double y1, double x2, double y2) {
        return QLine(truncateToInt(x1), truncateToInt(y1), truncateToInt(x2), truncateToInt(y2));
    };
    return {line(x, y - frame.radius, x, y + frame.radius),
            line(x - frame.radius, y, x + frame.radius, y)};
}

/*! From each ring outwards, twice as many as from the ring inside it, in between the ones there. */
std::vector<QLine> spokes(const Frame &frame)
{
    std::vector<QLine> lines;
    for (int ring = 1; ring <= 3; ++ring) {
        const int count = 2 << ring;
        const double start = truncateToInt(static_cast<float>(ring) * frame.radius * quarter);
        const double step = fullAngle / count;
        double angle = step * 0.5;
        for (int i = 0; i < count; ++i, angle += step) {
            // Qt's table is fine enough for whole pixels.
            const double cosine = qFastCos(angle);
            const double sine = qFastSin(angle);
            lines.emplace_back(qRoundSaturated(frame.center.x() + start * cosine),
                    qRoundSaturated(frame.center.y() + start * sine),
                    qRoundSaturated(frame.center.x() + cosine * frame.radius),
                    qRoundSaturated(frame.center.y() + sine * frame.radius));
        }
    }
    return lines;
}

/*! The first has no radius and shows nothing: the number of rings is that of the quarters. */
std::vector<ArcShape> rings(const Frame &frame)
{
    std::vector<ArcShape> circles;
    for (int ring = 0; ring <= 3; ++ring)
        circles.push_back(frame.circle(static_cast<float>(ring) * frame.radius * quarter));
    return circles;
}

} // namespace

PolarGrid::PolarGrid(QQuickItem *parent)
    : AbstractGrid(parent)
{
}

PolarGrid::~PolarGrid() = default;

void PolarGrid::setScale(double scale)
{
    if (qFuzzyCompare(scale, m_scale))
        return;
    m_scale = scale;
    markDirty();
    Q_EMIT scaleChanged(m_scale);
}

QSGNode *PolarGrid::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    const QSizeF size = boundingRect().size();
    if (size.width() <= 0.0 || size.height() <= 0.0) {
        delete oldNode;
        return nullptr;
    }
    const bool isNew = !oldNode;
    auto *node = isNew ? new PolarNode : static_cast<PolarNode *>(oldNode);
    // A new node has to be filled even when nothing changed: the one before may have gone with its
    // window.
    if (!takeDirty() && !isNew)
        return node;

    const Frame frame = {{size.width() * 0.5, size.height() * 0.5},
            static_cast<float>(std::min(size.width(), size.height()) * 0.5)};
    const GridPen inner(*this, innerGridLinesColor());
    const GridPen outer(*this, outerGridLinesColor());
    drawArcs(node->container(Boundary), boundary(frame, m_scale), outer);
    drawLines(node->container(Axes), axes(frame), outer);
    drawLines(node->container(Spokes), spokes(frame), inner);
    drawArcs(node->container(Rings), rings(frame), inner);
    return node;
}

} // namespace Charts
