// SPDX-License-Identifier: MIT
#include "SignalTrace.h"

#include "SignalVertices.h"

SignalTrace::SignalTrace(const BenchmarkOptions &options, int index, QObject *parent)
    : AbstractTrace(parent)
    , m_source(options, index)
    , m_isBlinking(options.mode == BenchmarkOptions::Mode::Static && index == 0)
{
    m_data.array().resize(static_cast<std::size_t>(options.points));
    m_data.dirtyRange().setSize(options.points);
    m_data.filledRange().setSize(options.points);
    m_data.setDrawType(Charts::DrawType::LineStrip);
    m_data.setColor(SignalVertices::colorOf(index, false));
    m_data.setWidth(SignalVertices::lineWidth);
    apply(m_source.begin());
}

void SignalTrace::updateData()
{
    apply(m_source.next());
    if (m_isBlinking)
        m_data.setColor(m_data.color() == SignalVertices::colorOf(0, false)
                                ? SignalVertices::colorOf(0, true)
                                : SignalVertices::colorOf(0, false));
}

void SignalTrace::apply(const SignalSource::Frame &frame)
{
    for (const SignalSource::Piece &piece : frame.written) {
        SignalVertices::write(m_data.array(), piece, m_source);
        m_data.dirtyRange().push({piece.first, piece.length});
        m_data.filledRange().push({piece.first, piece.length});
    }
    m_data.setViewPort({static_cast<float>(frame.visibleFirst), -1.0F,
            static_cast<float>(frame.visibleLength), 2.0F});
}
