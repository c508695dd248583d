// SPDX-License-Identifier: MIT
#include <ChartsLibrary/ArcNode.h>
#include <ChartsLibrary/GradientNode.h>
#include <ChartsLibrary/LineNode.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

using namespace Charts;

namespace {

QList<QPointF> wave(qsizetype count)
{
    QList<QPointF> points;
    points.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const auto x = static_cast<double>(i);
        points.append({x, 100.0 + 50.0 * std::sin(0.1 * x)});
    }
    return points;
}

void line(benchmark::State &state)
{
    LineNode node;
    for (auto _ : state)
        node.update(QLineF(0.0, 0.0, 800.0, 100.0), 1.0F, Qt::gray, state.range(0) != 0);
}
BENCHMARK(line)->ArgName("smooth")->Arg(0)->Arg(1);

void polyline(benchmark::State &state)
{
    LineNode node;
    const QList<QPointF> points = wave(state.range(0));
    for (auto _ : state)
        node.update(points, 1.0F, Qt::gray, true);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(polyline)->ArgName("points")->Arg(2)->Arg(100)->Arg(10000);

void arc(benchmark::State &state)
{
    ArcNode node;
    const ArcShape circle{
            {500.0, 500.0}, static_cast<double>(state.range(0)), 0.0, 2.0 * std::numbers::pi};
    for (auto _ : state)
        node.update(circle, 1.0F, Qt::gray, true);
}
BENCHMARK(arc)->ArgName("radius")->Arg(10)->Arg(100)->Arg(1000);

void gradient(benchmark::State &state)
{
    GradientNode node;
    const QList<QPointF> points = wave(state.range(0));
    const QList<double> heights(points.size(), 50.0);
    for (auto _ : state)
        node.update(points, Qt::red, true, heights);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(gradient)->ArgName("points")->Arg(2)->Arg(100)->Arg(10000);

} // namespace
