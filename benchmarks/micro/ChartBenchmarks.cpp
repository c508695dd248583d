// SPDX-License-Identifier: MIT
#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/TraceData.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace Charts;

namespace {

/*! A trace without points, whose update does next to nothing: what is left is the chart's. */
class IdleTrace : public AbstractTrace
{
public:
    TraceData *traceData() override { return &m_data; }
    void updateData() override { ++m_updates; }

private:
    TraceData m_data;
    int m_updates = 0;
};

using Traces = std::vector<std::unique_ptr<IdleTrace>>;

Traces makeTraces(qint64 count)
{
    Traces traces(static_cast<std::size_t>(count));
    for (std::unique_ptr<IdleTrace> &trace : traces)
        trace = std::make_unique<IdleTrace>();
    return traces;
}

void addAll(Chart &chart, const Traces &traces)
{
    for (const std::unique_ptr<IdleTrace> &trace : traces)
        chart.addTrace(trace.get());
}

/*! Before the traces, which would take their leave of it one by one. */
void endOf(std::unique_ptr<Chart> &chart, benchmark::State &state)
{
    state.PauseTiming();
    chart.reset();
    state.ResumeTiming();
}

/*! One tick: the traces are handed to the threads, and the GUI thread waits for these. The processor
    time is the GUI thread's. */
void updateTraces(benchmark::State &state)
{
    const Traces traces = makeTraces(state.range(0));
    Chart chart;
    addAll(chart, traces);
    for (auto _ : state)
        chart.updateTraces();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(updateTraces)->ArgName("traces")->RangeMultiplier(10)->Range(1, 10000)->UseRealTime();

/*! All of them, to a chart that has none yet. */
void addTraces(benchmark::State &state)
{
    const Traces traces = makeTraces(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto chart = std::make_unique<Chart>();
        state.ResumeTiming();
        addAll(*chart, traces);
        endOf(chart, state);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(addTraces)->ArgName("traces")->RangeMultiplier(10)->Range(100, 10000);

enum Order { FirstFirst, LastFirst };

/*! All of them, until the chart has none. */
void removeTraces(benchmark::State &state)
{
    const Traces traces = makeTraces(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto chart = std::make_unique<Chart>();
        addAll(*chart, traces);
        state.ResumeTiming();
        if (state.range(1) == FirstFirst) {
            for (auto trace = traces.begin(); trace != traces.end(); ++trace)
                chart->removeTrace(trace->get());
        } else {
            for (auto trace = traces.rbegin(); trace != traces.rend(); ++trace)
                chart->removeTrace(trace->get());
        }
        endOf(chart, state);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(removeTraces)
        ->ArgNames({"traces", "lastFirst"})
        ->ArgsProduct({{100, 1000, 10000}, {FirstFirst, LastFirst}});

enum Sought { First, Last, Foreign };

void includes(benchmark::State &state)
{
    const Traces traces = makeTraces(state.range(0));
    Chart chart;
    addAll(chart, traces);
    IdleTrace foreign;
    AbstractTrace *sought = &foreign;
    if (state.range(1) != Foreign)
        sought = (state.range(1) == First ? traces.front() : traces.back()).get();
    for (auto _ : state)
        benchmark::DoNotOptimize(chart.includes(sought));
}
BENCHMARK(includes)
        ->ArgNames({"traces", "sought"})
        ->ArgsProduct({{1, 100, 10000}, {First, Last, Foreign}});

} // namespace
