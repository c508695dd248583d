// SPDX-License-Identifier: MIT
#include "TraceBuffers.h"

#include "TraceData.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Charts {

namespace {

constexpr int pointSize = sizeof(TracePoint);
// OpenGL through Qt counts the bytes of a buffer in an int.
constexpr std::size_t maxPointCount = std::numeric_limits<int>::max() / pointSize;

} // namespace

TraceBuffers::Buffer::Buffer()
    : m_buffer(QOpenGLBuffer::VertexBuffer)
{
    m_buffer.setUsagePattern(QOpenGLBuffer::DynamicDraw);
    m_buffer.create();
}

void TraceBuffers::Buffer::update(TraceData &data)
{
    m_buffer.bind();

    const auto &array = data.array();
    const int pointCount = static_cast<int>(std::min(array.size(), maxPointCount));
    if (pointCount != m_pointCount) {
        data.dirtyRange() = data.filledRange();
        m_buffer.allocate(nullptr, pointCount * pointSize);
        m_pointCount = pointCount;
    }

    while (!data.dirtyRange().isEmpty()) {
        const Range<int> range = data.dirtyRange().pop(false);
        // A writer that marks more than it has must not make the driver read past the array.
        const int first = std::max(range.start, 0);
        const auto end =
                std::min<std::int64_t>(std::int64_t{range.start} + range.length, pointCount);
        if (first < end) {
            m_buffer.write(first * pointSize, &array[static_cast<std::size_t>(first)],
                    static_cast<int>(end - first) * pointSize);
        }
    }
}

TraceBuffers::Buffer &TraceBuffers::bufferOf(const AbstractTrace *trace, std::size_t index)
{
    if (Buffer *known = m_inOrder[index])
        return *known;
    Entry &entry = m_buffers[trace];
    if (!entry.buffer)
        entry = {std::make_unique<Buffer>(), trace};
    m_inOrder[index] = entry.buffer.get();
    return *entry.buffer;
}

void TraceBuffers::retain(const std::vector<AbstractTrace *> &traces)
{
    forgetOrder(traces.size());
    decltype(m_buffers) retained;
    retained.reserve(traces.size());
    for (const AbstractTrace *trace : traces) {
        // A trace can be listed twice: its buffer has moved already then.
        const auto [slot, isNew] = retained.try_emplace(trace);
        const auto known = m_buffers.find(trace);
        if (isNew && known != m_buffers.end() && known->second.trace)
            slot->second = std::move(known->second);
    }
    m_buffers = std::move(retained);
}

} // namespace Charts
