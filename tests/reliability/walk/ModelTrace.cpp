// SPDX-License-Identifier: MIT
#include "ModelTrace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace {

constexpr std::int64_t bytesOfPoint = 12;

template<typename Value>
void assign(Value &value, const Value &newValue, bool &changed)
{
    changed = changed || !(value == newValue);
    value = newValue;
}

bool hasAny(const std::vector<bool> &flags)
{
    return std::find(flags.begin(), flags.end(), true) != flags.end();
}

} // namespace

void ModelTrace::update()
{
    ++updateCount;
    perform(std::exchange(pending, {}));
    assign(look.color, color, lookDirty);
    assign(look.isVisible, isVisible, lookDirty);
    // A change of less than one part in 100 000 is none.
    const float width = float(lineWidth);
    if (std::abs(width - look.width) * 100000.0F > std::min(width, look.width))
        assign(look.width, width, lookDirty);
}

void ModelTrace::perform(const std::vector<DataStep> &steps)
{
    for (const DataStep &step : steps)
        perform(step);
}

void ModelTrace::perform(const DataStep &step)
{
    const auto size = static_cast<std::size_t>(step.count);
    switch (step.kind) {
    case DataStep::Resize:
        if (size != m_filled.size()) {
            m_dirty.assign(size, false);
            m_filled.assign(size, false);
            m_marked = 0;
        }
        [[fallthrough]];
    case DataStep::ResizeSilently:
        m_points.resize(size);
        break;
    case DataStep::Write:
        std::copy(step.points.begin(), step.points.end(), m_points.begin() + step.first);
        break;
    case DataStep::MarkDirty:
        mark(m_dirty, step.first, step.count);
        if (step.first + step.count <= static_cast<int>(m_dirty.size()))
            m_marked += step.count;
        break;
    case DataStep::MarkFilled:
        mark(m_filled, step.first, step.count);
        break;
    case DataStep::Unfill:
        m_filled.assign(m_filled.size(), false);
        break;
    case DataStep::Restyle:
        // The draw type alone is no reason to draw.
        look.drawType = step.look.drawType;
        assign(look.isSquared, step.look.isSquared, lookDirty);
        assign(look.viewPort, step.look.viewPort, lookDirty);
        assign(look.boundingX, step.look.boundingX, lookDirty);
        assign(look.boundingY, step.look.boundingY, lookDirty);
        break;
    }
}

void ModelTrace::mark(std::vector<bool> &flags, int first, int count)
{
    // What ends beyond the array is not taken at all.
    if (first + count <= static_cast<int>(flags.size()))
        std::fill_n(flags.begin() + first, count, true);
}

bool ModelTrace::hasDirtyPoints() const
{
    return hasAny(m_dirty);
}

Sketch ModelTrace::draw()
{
    if (m_buffer.size() != m_points.size()) {
        constexpr float undefined = std::numeric_limits<float>::quiet_NaN();
        m_buffer.assign(m_points.size(), {undefined, undefined, undefined});
        m_dirty = m_filled;
        m_marked = std::count(m_filled.begin(), m_filled.end(), true);
    }
    const std::size_t count = std::min(m_points.size(), m_dirty.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (!m_dirty[i])
            continue;
        m_buffer[i] = m_points[i];
        m_uploads.least += bytesOfPoint;
    }
    m_uploads.most += m_marked * bytesOfPoint;
    m_dirty.assign(m_dirty.size(), false);
    m_marked = 0;

    const std::size_t drawn = hasAny(m_filled) ? std::min(m_points.size(), m_filled.size()) : 0;
    return {address, {m_buffer.begin(), m_buffer.begin() + static_cast<std::ptrdiff_t>(drawn)},
            look};
}

Bounds ModelTrace::takeUploads()
{
    return std::exchange(m_uploads, {});
}
