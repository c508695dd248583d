// SPDX-License-Identifier: MIT
#include "ChartScene.h"

#include "DecimatedTrace.h"
#include "QuickFrames.h"
#include "SignalTrace.h"

#include <ChartsLibrary/Chart.h>

#include <QtCore/QTimer>
#include <QtQuick/QQuickWindow>

using namespace Charts;

ChartScene::ChartScene(const BenchmarkOptions &options, bool decimated, QQuickWindow &window)
    : m_options(options)
    , m_window(window)
    , m_chart(new Chart(window.contentItem()))
{
    m_chart->setSize(options.size);
    m_chart->setAntialiasing(options.samples);
    // The benchmark ticks itself.
    m_chart->findChild<QTimer *>()->stop();
    m_traces.reserve(static_cast<std::size_t>(options.traces));
    for (int i = 0; i < options.traces; ++i) {
        if (decimated)
            m_traces.push_back(new DecimatedTrace(options, i, m_chart));
        else
            m_traces.push_back(new SignalTrace(options, i, m_chart));
        m_chart->addTrace(m_traces.back());
    }
}

void ChartScene::advance()
{
    if (m_options.mode == BenchmarkOptions::Mode::Hover)
        movePointer(m_window, ++m_step);
    m_chart->updateTraces();
}

bool ChartScene::prepare(QuickFrames &frames)
{
    using Mode = BenchmarkOptions::Mode;
    if (m_traces.empty() || (m_options.mode != Mode::Idle && m_options.mode != Mode::Hover))
        return true;
    // Each picture settles the attributes of one trace only: thousands of traces would be drawn
    // thousands of times before they rest.
    for (AbstractTrace *trace : m_traces)
        trace->traceData()->clearDirty();
    if (m_options.mode == Mode::Idle)
        return true;
    // An event and a change have to come together for the picture that picking reads.
    m_traces.front()->traceData()->dirtyRange().push({0, 1});
    advance();
    return frames.draw();
}
