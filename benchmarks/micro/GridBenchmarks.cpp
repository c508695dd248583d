// SPDX-License-Identifier: MIT
#include <ChartsLibrary/Circle.h>
#include <ChartsLibrary/PolarGrid.h>
#include <ChartsLibrary/SmithGrid.h>
#include <ChartsLibrary/XYGrid.h>

#include <QtQuick/QSGNode>

#include <benchmark/benchmark.h>

#include <memory>

using namespace Charts;

namespace {

/*! A grid whose nodes are written without a window. */
template<typename Grid>
class PaintedGrid : public Grid
{
public:
    PaintedGrid() { this->setSize({1000.0, 600.0}); }

    void paint()
    {
        this->markDirty();
        m_node.reset(this->updatePaintNode(m_node.release(), nullptr));
    }

private:
    std::unique_ptr<QSGNode> m_node;
};

void layout(benchmark::State &state)
{
    XYGrid grid;
    grid.setSize({1000.0, 600.0});
    grid.setXLayout(static_cast<XYGrid::GridLayoutMode>(state.range(0)));
    grid.setXRange({1.0, 4.0});
    for (auto _ : state) {
        grid.updateGeomerty();
        grid.updateLabels();
    }
}
BENCHMARK(layout)
        ->ArgName("mode")
        ->Arg(XYGrid::EquidistantGrid)
        ->Arg(XYGrid::CenteredLinGrid)
        ->Arg(XYGrid::LogGrid)
        ->Arg(XYGrid::NiceLabelsLinGrid);

void cartesianNodes(benchmark::State &state)
{
    PaintedGrid<XYGrid> grid;
    grid.setYCount(static_cast<int>(state.range(0)));
    for (auto _ : state)
        grid.paint();
}
BENCHMARK(cartesianNodes)->ArgName("rows")->Arg(10)->Arg(90);

void polarNodes(benchmark::State &state)
{
    PaintedGrid<PolarGrid> grid;
    for (auto _ : state)
        grid.paint();
}
BENCHMARK(polarNodes);

void smithNodes(benchmark::State &state)
{
    PaintedGrid<SmithGrid> grid;
    for (auto _ : state)
        grid.paint();
}
BENCHMARK(smithNodes);

void clippedCircle(benchmark::State &state)
{
    const Circle chart{{500, 500}, 400};
    int x = 100;
    for (auto _ : state) {
        benchmark::DoNotOptimize(circledCircle({{x, 500}, 300}, chart));
        x = x < 900 ? x + 1 : 100;
    }
}
BENCHMARK(clippedCircle);

} // namespace
