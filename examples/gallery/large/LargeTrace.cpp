// SPDX-License-Identifier: MIT
#include "LargeTrace.h"

#include <QtCore/QMetaObject>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace Gallery {

namespace {

// Far below 0 the interpolated opacity falls under the limit at once, so that nothing is seen of the
// lines to and from a gap.
constexpr float hiddenOpacity = -1e6F;

Charts::TracePoint toPoint(const Charts::Decimation::LineVertex &vertex)
{
    return {.x = vertex.x, .y = vertex.y, .opacity = vertex.isGap ? hiddenOpacity : 1.0F};
}

} // namespace

LargeTrace::LargeTrace(QObject *parent)
    : AbstractTrace(parent)
{
    m_data.setDrawType(Charts::DrawType::LineStrip);
}

void LargeTrace::setRecording(std::shared_ptr<const Recording> recording)
{
    m_recording = std::move(recording);
    m_columns = {};
}

void LargeTrace::updateData()
{
    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));
    m_data.setVisible(isVisible());
    // A hidden trace uploads nothing: it is filled when it is shown again.
    if (!m_recording || !isVisible())
        return;

    // The chart's picture has whole pixels, as many as its width rounded.
    const double width = std::clamp(domain()->size().width(), 1.0, 1e6);
    const Charts::Decimation::PixelColumns columns(
            domain()->minX(), domain()->maxX(), static_cast<int>(std::lround(width)));
    if (columns != m_columns || m_recording->end() != m_end)
        fill(columns);

    m_data.setViewPort({.x = static_cast<float>(domain()->minX() - m_line.origin()),
            .y = static_cast<float>(domain()->minY()),
            .width = static_cast<float>(domain()->spanX()),
            .height = static_cast<float>(domain()->spanY())});
}

void LargeTrace::fill(const Charts::Decimation::PixelColumns &columns)
{
    const auto start = std::chrono::steady_clock::now();
    m_columns = columns;
    m_end = m_recording->end();
    m_line.fill(m_recording->pyramid(), m_recording->storage(), columns);
    takeVertices();
    const std::size_t begin = m_recording->begin();
    m_visibleSamples = static_cast<double>(columns.firstSample(columns.count(), begin, m_end)
                                           - columns.firstSample(0, begin, m_end));
    const std::chrono::duration<double, std::milli> duration =
            std::chrono::steady_clock::now() - start;
    m_fillTime = duration.count();
    // This is a thread of the pool, and whoever shows the numbers lives on the GUI thread.
    QMetaObject::invokeMethod(this, "filled", Qt::QueuedConnection);
}

void LargeTrace::takeVertices()
{
    const auto &vertices = m_line.vertices();
    auto &array = m_data.array();
    std::size_t first = 0;
    std::size_t last = vertices.size();
    if (array.size() == vertices.size()) {
        const auto isSame = [&](std::size_t i) { return array[i] == toPoint(vertices[i]); };
        while (first < last && isSame(first))
            ++first;
        while (first < last && isSame(last - 1))
            --last;
    } else {
        array.resize(vertices.size());
        m_data.dirtyRange().setSize(static_cast<int>(array.size()));
        m_data.filledRange().setSize(static_cast<int>(array.size()));
    }
    for (std::size_t i = first; i < last; ++i)
        array[i] = toPoint(vertices[i]);
    const Charts::Range<int> changed = {static_cast<int>(first), static_cast<int>(last - first)};
    m_data.dirtyRange().push(changed);
    m_data.filledRange().push(changed);
}

} // namespace Gallery
