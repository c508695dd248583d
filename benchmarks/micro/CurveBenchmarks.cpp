// SPDX-License-Identifier: MIT
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <benchmark/benchmark.h>

using namespace Charts;

namespace {

void linearPoints(benchmark::State &state)
{
    LinearCurveTransform transform;
    for (auto _ : state)
        benchmark::DoNotOptimize(transform.points({0.0, 100.0}, {1000.0, 500.0}));
}
BENCHMARK(linearPoints);

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

enum Where { Far, OnTheEnd };

/*! A point far from the line, or at its end: nearly all segments are looked at for both. */
void contains(benchmark::State &state)
{
    LogarithmicCurveTransform transform;
    transform.setDecibel(0.002);
    transform.setPointCount(static_cast<int>(state.range(0)));
    const QPointF end = {1000.0, 500.0};
    GradientCurve curve;
    curve.setP1({0.0, 100.0});
    curve.setP2(end);
    curve.setGeometryTransform(&transform);
    const QPointF point = state.range(1) == Far ? QPointF(500.0, 5000.0) : end;
    for (auto _ : state)
        benchmark::DoNotOptimize(curve.contains(point));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(contains)->ArgNames({"points", "where"})->ArgsProduct({{100, 10000}, {Far, OnTheEnd}});

} // namespace
