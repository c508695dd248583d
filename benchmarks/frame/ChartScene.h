// SPDX-License-Identifier: MIT
#ifndef CHARTS_CHARTSCENE_H
#define CHARTS_CHARTSCENE_H

#include "WindowRun.h"

#include <vector>

namespace Charts {
class AbstractTrace;
class Chart;
} // namespace Charts

/*! A chart with the benchmark's traces. */
class ChartScene : public WindowScene
{
public:
    /*! With \a decimated, the traces draw the smallest and the largest sample of each column. */
    ChartScene(const BenchmarkOptions &options, bool decimated, QQuickWindow &window);

    void advance() override;
    [[nodiscard]] bool prepare(QuickFrames &frames) override;

private:
    const BenchmarkOptions &m_options;
    QQuickWindow &m_window;
    Charts::Chart *m_chart;
    std::vector<Charts::AbstractTrace *> m_traces;
    int m_step = 0;
};

#endif
