// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_TESTTRACE_H
#define CHARTS_TEST_TESTTRACE_H

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <atomic>
#include <functional>
#include <vector>

/*! A trace whose data the test writes directly, between two frames or in \c onUpdate. */
class TestTrace : public Charts::AbstractTrace
{
    Q_OBJECT

public:
    using AbstractTrace::AbstractTrace;

    Charts::TraceData *traceData() override { return &data; }
    void updateData() override
    {
        ++updateCount;
        if (onUpdate)
            onUpdate();
    }

    /*! Replaces all points and marks them changed and filled. */
    void setPoints(const std::vector<Charts::TracePoint> &points)
    {
        data.array() = points;
        const int count = static_cast<int>(points.size());
        data.dirtyRange().setSize(count);
        data.filledRange().setSize(count);
        data.dirtyRange().push({0, count});
        data.filledRange().push({0, count});
    }

    Charts::TraceData data;
    std::function<void()> onUpdate;
    std::atomic<int> updateCount = 0;
};

#endif
