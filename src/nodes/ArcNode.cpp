// SPDX-License-Identifier: MIT
#include "ArcNode.h"

#include "SmoothVertex.h"

#include <QtCore/QtGlobal>

#include <cmath>
#include <cstdint>
#include <numbers>

namespace Charts {

namespace {

constexpr double fullAngle = 2.0 * std::numbers::pi;
constexpr double segmentLength = 5.0; // pixels, along the middle of the band
// Five million pixels of arc, more than any screen shows; a smooth band takes a hundred megabytes
// there. An infinite radius would ask for more than the counts of a geometry, which are ints, hold.
constexpr int maximumSegmentCount = 1'000'000;

/*! The angle that \a arc covers, from 0 to a full circle. */
double spanOf(const ArcShape &arc)
{
    double span = std::fmod(arc.endAngle - arc.startAngle, fullAngle);
    if (span < 0.0)
        span = std::abs(span + fullAngle);
    // A full circle is written as 0 to 2 pi. Only the end tells it from no arc at all.
    if (std::abs(span) <= 1e-12 && qFuzzyCompare(arc.endAngle, fullAngle))
        span = fullAngle;
    return span;
}

int segmentCountOf(double arcLength)
{
    const double count = std::ceil(arcLength / segmentLength);
    if (!(count > 0.0)) // nor a NaN
        return 1;
    return count < maximumSegmentCount ? static_cast<int>(count) : maximumSegmentCount;
}

struct Direction
{
    double x = 0.0;
    double y = 0.0;
};

struct Offset
{
    float x = 0.0F;
    float y = 0.0F;

    Offset operator-() const { return {-x, -y}; }
};

SmoothVertex vertexAt(const QPointF &center, const Direction &direction, double radius,
        const PremultipliedColor &color, const Offset &offset)
{
    return {static_cast<float>(center.x() + direction.x * radius),
            static_cast<float>(center.y() + direction.y * radius), color, offset.x, offset.y};
}

/*! One strip: outer and inner point of each sample. */
void writeIndices(std::uint32_t *index, std::uint32_t sampleCount)
{
    for (std::uint32_t i = 0; i < 2 * sampleCount; ++i)
        *index++ = i;
}

/*!
    One strip in three runs: the core forwards, the outer fringe backwards, the inner fringe
    forwards. Where runs meet, all vertices lie on one radius: the triangles there have no area.
*/
void writeSmoothIndices(std::uint32_t *index, std::uint32_t sampleCount)
{
    for (std::uint32_t i = 0; i < sampleCount; ++i) {
        *index++ = 4 * i;
        *index++ = 4 * i + 1;
    }
    for (std::uint32_t i = sampleCount; i-- > 0;) {
        *index++ = 4 * i + 2;
        *index++ = 4 * i;
    }
    for (std::uint32_t i = 0; i < sampleCount; ++i) {
        *index++ = 4 * i + 1;
        *index++ = 4 * i + 3;
    }
}

} // namespace

ArcNode::ArcNode()
    : m_geometry(SmoothColorMaterial::attributeSet(), 0, 0, QSGGeometry::UnsignedIntType)
{
    m_geometry.setDrawingMode(QSGGeometry::DrawTriangleStrip);
    setGeometry(&m_geometry);
    setMaterial(&m_material);
}

ArcNode::~ArcNode() = default;

void ArcNode::update(const ArcShape &arc, float width, QColor color, bool antialiasing)
{
    const double span = spanOf(arc);
    const int segmentCount = segmentCountOf(span * arc.radius);
    const int sampleCount = segmentCount + 1;
    const double step = span / segmentCount;
    const double halfWidth = static_cast<double>(width) * 0.5;
    const double inner = arc.radius - halfWidth;
    const double outer = arc.radius + halfWidth;
    const auto opaque = PremultipliedColor::from(color);

    m_geometry.allocate(sampleCount * (antialiasing ? 4 : 2), sampleCount * (antialiasing ? 6 : 2));
    auto *vertex = static_cast<SmoothVertex *>(m_geometry.vertexData());
    const double reach = 0.4 * static_cast<double>(width);
    for (int i = 0; i < sampleCount; ++i) {
        const double angle = arc.startAngle + i * step;
        const Direction direction = {std::cos(angle), std::sin(angle)};
        Offset offset;
        if (antialiasing) {
            offset = {static_cast<float>(reach * direction.x),
                    static_cast<float>(reach * direction.y)};
        }
        *vertex++ = vertexAt(arc.center, direction, outer, opaque, -offset);
        *vertex++ = vertexAt(arc.center, direction, inner, opaque, offset);
        if (antialiasing) {
            *vertex++ = vertexAt(arc.center, direction, outer, {}, offset);
            *vertex++ = vertexAt(arc.center, direction, inner, {}, -offset);
        }
    }
    if (antialiasing)
        writeSmoothIndices(m_geometry.indexDataAsUInt(), static_cast<std::uint32_t>(sampleCount));
    else
        writeIndices(m_geometry.indexDataAsUInt(), static_cast<std::uint32_t>(sampleCount));
    markDirty(DirtyGeometry);
}

} // namespace Charts
