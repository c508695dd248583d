// SPDX-License-Identifier: MIT
#include "DecimatedTrace.h"

#include <span>

using namespace Charts;

DecimatedTrace::DecimatedTrace(const BenchmarkOptions &options, int index, QObject *parent)
    : AbstractTrace(parent)
    , m_source(options, index)
    , m_columnCount(options.size.width())
    , m_samples(static_cast<std::size_t>(options.points))
    , m_pyramid(m_samples.size())
    , m_isBlinking(options.mode == BenchmarkOptions::Mode::Static && index == 0)
{
    m_data.setDrawType(DrawType::LineStrip);
    m_data.setColor(SignalSource::colorOf(index, false));
    m_data.setWidth(SignalSource::lineWidth);
    apply(m_source.begin());
}

void DecimatedTrace::updateData()
{
    if (m_isBlinking) {
        m_isOther = !m_isOther;
        m_data.setColor(SignalSource::colorOf(0, m_isOther));
    }
    const SignalSource::Frame frame = m_source.next();
    const bool isNew = frame.written[0].length > 0 || frame.visibleFirst != m_visibleFirst;
    if (isNew)
        apply(frame);
}

void DecimatedTrace::apply(const SignalSource::Frame &frame)
{
    for (const SignalSource::Piece &piece : frame.written) {
        const std::span samples(
                m_samples.data() + piece.first, static_cast<std::size_t>(piece.length));
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = m_source.valueAt(piece.sample + static_cast<qint64>(i));
        m_pyramid.append(samples);
    }
    m_visibleFirst = frame.visibleFirst;
    fill(frame);
}

void DecimatedTrace::fill(const SignalSource::Frame &frame)
{
    const double first = static_cast<double>(m_pyramid.begin()) + frame.visibleFirst;
    m_line.fill(m_pyramid, m_samples, {first, first + frame.visibleLength, m_columnCount});

    const auto &vertices = m_line.vertices();
    const int count = static_cast<int>(vertices.size());
    auto &array = m_data.array();
    constexpr float hidden = -1e6F;
    array.resize(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i)
        array[i] = {vertices[i].x, vertices[i].y, vertices[i].isGap ? hidden : 1.0F};
    m_data.dirtyRange().setSize(count);
    m_data.filledRange().setSize(count);
    m_data.dirtyRange().push({0, count});
    m_data.filledRange().push({0, count});
    m_data.setViewPort({static_cast<float>(first - m_line.origin()), -1.0F,
            static_cast<float>(frame.visibleLength), 2.0F});
}
