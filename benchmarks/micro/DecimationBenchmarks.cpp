// SPDX-License-Identifier: MIT
#include "decimation/LineDecimation.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <span>
#include <vector>

using namespace Charts::Decimation;

namespace {

constexpr std::size_t count = 10'000'000;

const std::vector<float> &noise()
{
    static const std::vector<float> samples = [] {
        std::mt19937 random(1);
        std::vector<float> made(count);
        for (float &sample : made)
            sample = static_cast<float>(random() % 1'000'000);
        return made;
    }();
    return samples;
}

const MinMaxPyramid &pyramidOfNoise()
{
    static const MinMaxPyramid pyramid = [] {
        MinMaxPyramid made;
        made.append(noise());
        return made;
    }();
    return pyramid;
}

void buildPyramid(benchmark::State &state)
{
    const std::vector<float> &samples = noise();
    for (auto _ : state) {
        MinMaxPyramid pyramid;
        pyramid.append(samples);
        benchmark::DoNotOptimize(pyramid.end());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(count * sizeof(float)));
}
BENCHMARK(buildPyramid)->Unit(benchmark::kMillisecond);

/*! A ring that is continued piece by piece. */
void appendSamples(benchmark::State &state)
{
    const auto length = static_cast<std::size_t>(state.range(0));
    const std::span<const float> samples = noise();
    MinMaxPyramid pyramid(count);
    std::size_t next = 0;
    for (auto _ : state) {
        pyramid.append(samples.subspan(next, length));
        next = next + 2 * length <= count ? next + length : 0;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(appendSamples)->ArgName("samples")->Arg(1)->Arg(100)->Arg(10'000);

/*! Anywhere among all samples, so that most of what is read is not in the processor's cache. */
void queryRange(benchmark::State &state)
{
    const auto length = static_cast<std::size_t>(state.range(0));
    std::mt19937 random(2);
    std::vector<std::size_t> starts(1024);
    for (std::size_t &start : starts)
        start = random() % (count - length + 1);
    std::size_t i = 0;
    for (auto _ : state) {
        const std::size_t first = starts[i++ % starts.size()];
        benchmark::DoNotOptimize(pyramidOfNoise().query(noise(), first, first + length));
    }
}
BENCHMARK(queryRange)->ArgName("samples")->Arg(10)->Arg(1000)->Arg(100'000)->Arg(count);

/*! The whole width of a chart, at another place each time unless all of it is visible. */
void fillColumns(benchmark::State &state)
{
    constexpr int columnCount = 1920;
    const auto visible = static_cast<double>(state.range(0));
    LineDecimation line;
    double first = 0.0;
    for (auto _ : state) {
        line.fill(pyramidOfNoise(), noise(), PixelColumns(first, first + visible, columnCount));
        benchmark::DoNotOptimize(line.vertices().data());
        first += 12'345.6;
        if (first + visible > static_cast<double>(count))
            first = 0.0;
    }
    state.counters["vertices"] = static_cast<double>(line.vertices().size());
}
BENCHMARK(fillColumns)
        ->ArgName("visible")
        ->Arg(count)
        ->Arg(1'000'000)
        ->Arg(100'000)
        ->Arg(10'000)
        ->Arg(3'841)
        ->Arg(1000)
        ->Arg(10)
        ->Unit(benchmark::kMicrosecond);

} // namespace
