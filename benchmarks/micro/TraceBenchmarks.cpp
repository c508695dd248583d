// SPDX-License-Identifier: MIT
#include <ChartsLibrary/BoundRange.h>

#include <benchmark/benchmark.h>

using namespace Charts;

namespace {

constexpr int size = 100000;

/*! A ring of new points: one growing range, which the renderer takes once a frame. */
void appendAndTake(benchmark::State &state)
{
    const int added = static_cast<int>(state.range(0));
    BoundRange ranges;
    ranges.setSize(size);
    int start = 0;
    for (auto _ : state) {
        ranges.push({start, added});
        start = start + 2 * added <= size ? start + added : 0;
        benchmark::DoNotOptimize(ranges.pop(false));
    }
}
BENCHMARK(appendAndTake)->ArgName("points")->Arg(1)->Arg(1000);

/*! Ranges that touch nothing: each push looks at all that are stored. */
void scattered(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    BoundRange ranges;
    ranges.setSize(size);
    for (auto _ : state) {
        for (int i = 0; i < count; ++i)
            ranges.push({i * (size / count), 1});
        while (!ranges.isEmpty())
            benchmark::DoNotOptimize(ranges.pop(false));
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(scattered)->ArgName("ranges")->Arg(1)->Arg(10)->Arg(100)->Arg(1000);

/*! Ranges with gaps between them, and then the gaps: each of these joins its neighbours. */
void joined(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    const int length = size / (2 * count);
    BoundRange ranges;
    ranges.setSize(size);
    for (auto _ : state) {
        for (int i = 0; i < count; ++i)
            ranges.push({2 * i * length, length});
        for (int i = 0; i < count; ++i)
            ranges.push({(2 * i + 1) * length, length});
        while (!ranges.isEmpty())
            benchmark::DoNotOptimize(ranges.pop(false));
    }
    state.SetItemsProcessed(state.iterations() * 2 * count);
}
BENCHMARK(joined)->ArgName("ranges")->Arg(1)->Arg(10)->Arg(100)->Arg(1000);

/*! Everything, each frame. */
void rewrite(benchmark::State &state)
{
    BoundRange ranges;
    ranges.setSize(size);
    for (auto _ : state) {
        ranges.push({0, size});
        benchmark::DoNotOptimize(ranges.pop(true));
    }
}
BENCHMARK(rewrite);

} // namespace
