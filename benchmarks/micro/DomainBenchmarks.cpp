// SPDX-License-Identifier: MIT
#include <ChartsLibrary/DomainUtils.h>
#include <ChartsLibrary/TraceDomain.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>

using namespace Charts;

namespace {

void niceStep(benchmark::State &state)
{
    const DomainUtils domain;
    // From a step that is found at once to the far ends of the exponents.
    constexpr std::array<double, 4> widths{10.0, 0.37, 4.2e9, 7.7e-12};
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(domain.niceStep({0.0, widths[i++ % widths.size()]}));
}
BENCHMARK(niceStep);

void mapping(benchmark::State &state)
{
    TraceDomain domain;
    domain.setFormat(static_cast<TraceDomain::TraceFormat>(state.range(0)));
    domain.setSize({1000.0, 600.0});
    domain.setRangeXY(-1.0, 1.0, -1.0, 1.0);
    double x = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(domain.domainPoint({x, 300.0}));
        x = x < 1000.0 ? x + 1.0 : 0.0;
    }
}
BENCHMARK(mapping)
        ->ArgName("format")
        ->Arg(TraceDomain::XYFormat)
        ->Arg(TraceDomain::SmithFormat)
        ->Arg(TraceDomain::PolarFormat);

void logarithmicMapping(benchmark::State &state)
{
    TraceDomain domain;
    domain.setIsLogX(true);
    domain.setSize({1000.0, 600.0});
    domain.setRangeXY(10.0, 1e6, -1.0, 1.0);
    double x = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(domain.domainPoint({x, 300.0}));
        x = x < 1000.0 ? x + 1.0 : 0.0;
    }
}
BENCHMARK(logarithmicMapping);

/*! To pixels and back, as QML asks for it. */
void valueToPixels(benchmark::State &state)
{
    const DomainUtils domain;
    double value = 0.0;
    for (auto _ : state) {
        const double pixels = domain.mapToGeometry({0.0, 1000.0}, {-1.0, 1.0}, value);
        benchmark::DoNotOptimize(domain.mapFromGeometry({0.0, 1000.0}, {-1.0, 1.0}, pixels));
        value = value < 1.0 ? value + 0.001 : -1.0;
    }
}
BENCHMARK(valueToPixels);

void rectangleToRanges(benchmark::State &state)
{
    TraceDomain domain;
    domain.setSize({1000.0, 600.0});
    domain.setRangeXY(0.0, 10.0, -1.0, 1.0);
    for (auto _ : state)
        benchmark::DoNotOptimize(domain.transformGeometryToDomain({100.0, 50.0, 300.0, 200.0}));
}
BENCHMARK(rectangleToRanges);

} // namespace
