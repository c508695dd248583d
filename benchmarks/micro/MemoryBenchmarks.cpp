// SPDX-License-Identifier: MIT
#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/TraceData.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>
#include <vector>

using namespace Charts;

namespace {

class EmptyTrace : public AbstractTrace
{
public:
    TraceData *traceData() override { return &m_data; }
    void updateData() override {}

private:
    TraceData m_data;
};

double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/*! Bytes of a trace without points: of the object with its data, its domain and what Qt keeps for both,
    and of its place in a chart. */
void traceMemory(benchmark::State &state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    double objects = 0.0;
    double places = 0.0;
    for (auto _ : state) {
        Chart chart;
        std::vector<std::unique_ptr<EmptyTrace>> traces(count);
        const double before = heapBytes();
        for (auto &trace : traces)
            trace = std::make_unique<EmptyTrace>();
        const double made = heapBytes();
        for (auto &trace : traces)
            chart.addTrace(trace.get());
        objects = (made - before) / static_cast<double>(count);
        places = (heapBytes() - made) / static_cast<double>(count);
    }
    state.counters["objectBytes"] = objects;
    state.counters["placeBytes"] = places;
}
BENCHMARK(traceMemory)->ArgName("traces")->Arg(100)->Arg(1000)->Iterations(1);

} // namespace
