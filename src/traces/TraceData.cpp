// SPDX-License-Identifier: MIT
#include "TraceData.h"

#include <algorithm>
#include <cmath>

namespace Charts {

namespace {

template<typename Value>
void assign(Value &member, const Value &value, bool &dirty)
{
    if (member == value)
        return;
    member = value;
    dirty = true;
}

} // namespace

void TraceData::setColor(const QColor &color)
{
    assign(m_color, color, m_dirty);
}

void TraceData::setWidth(float width)
{
    if (std::abs(m_width - width) * 100000.0F > std::min(std::abs(m_width), std::abs(width))) {
        m_width = width;
        m_dirty = true;
    }
}

void TraceData::setVisible(bool visible)
{
    assign(m_visible, visible, m_dirty);
}

void TraceData::setSquaredViewPort(bool squaredViewPort)
{
    assign(m_squaredViewPort, squaredViewPort, m_dirty);
}

void TraceData::setViewPort(const ViewPort &viewPort)
{
    assign(m_viewPort, viewPort, m_dirty);
}

void TraceData::setBoundingY(BoundingMethod method)
{
    assign(m_boundingY, method, m_dirty);
}

void TraceData::setBoundingX(BoundingMethod method)
{
    assign(m_boundingX, method, m_dirty);
}

} // namespace Charts
