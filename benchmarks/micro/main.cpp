// SPDX-License-Identifier: MIT
#include <QtGui/QGuiApplication>

#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    // Items want an application; nothing is shown.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
