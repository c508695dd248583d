// SPDX-License-Identifier: MIT
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <benchmark/benchmark.h>

using namespace Charts;

namespace {

void logarithmicPoints(benchmark::State &state)
{
    LogarithmicCurveTransform transform;
    transform.setDecibel(0.002);
    transform.setPointCount(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(transform.points({0.0, 100.0}, {1000.0, 500.0}));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(logarithmicPoints)->ArgName("points")->Arg(100)->Arg(10000);

/*! A point far from the line, for which every segment is looked at. */
void contains(benchmark::State &state)
{
    LogarithmicCurveTransform transform;
    transform.setDecibel(0.002);
    transform.setPointCount(static_cast<int>(state.range(0)));
    GradientCurve curve;
    curve.setP1({0.0, 100.0});
    curve.setP2({1000.0, 500.0});
    curve.setGeometryTransform(&transform);
    for (auto _ : state)
        benchmark::DoNotOptimize(curve.contains({500.0, 5000.0}));
}
BENCHMARK(contains)->ArgName("points")->Arg(100)->Arg(10000);

} // namespace
