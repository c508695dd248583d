// SPDX-License-Identifier: MIT
#include "SignalTrace.h"

#include "SignalPoints.h"

SignalTrace::SignalTrace(const BenchmarkOptions &options, int index, QObject *parent)
    : AbstractTrace(parent)
    , m_source(options, index)
    , m_isBlinking(options.mode == BenchmarkOptions::Mode::Static && index == 0)
{
    m_data.array().resize(static_cast<std::size_t>(options.points));
    m_data.dirtyRange().setSize(options.points);
    m_data.filledRange().setSize(options.points);
    m_data.setDrawType(Charts::DrawType::LineStrip);
    m_data.setColor(SignalSource::colorOf(index, false));
    m_data.setWidth(SignalSource::lineWidth);
    apply(m_source.begin());
}

void SignalTrace::updateData()
{
    apply(m_source.next());
    if (m_isBlinking)
        m_data.setColor(m_data.color() == SignalSource::colorOf(0, false)
                                ? SignalSource::colorOf(0, true)
                                : SignalSource::colorOf(0, false));
}

void SignalTrace::apply(const SignalSource::Frame &frame)
{
    for (const SignalSource::Piece &piece : frame.written) {
        writePoints(m_data.array(), piece, m_source);
        m_data.dirtyRange().push({piece.first, piece.length});
        m_data.filledRange().push({piece.first, piece.length});
    }
    m_data.setViewPort({static_cast<float>(frame.visibleFirst), -1.0F,
            static_cast<float>(frame.visibleLength), 2.0F});
}
