// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_WALKTRACE_H
#define CHARTS_TEST_WALKTRACE_H

#include "WalkData.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

/*! A trace as an application writes it: it carries its properties into its data with each update,
    and does then what it has been told to. */
class WalkTrace : public Charts::AbstractTrace
{
    Q_OBJECT

public:
    /*! \a visits notes whose data the renderer asks for. */
    explicit WalkTrace(std::vector<const void *> &visits)
        : m_visits(visits)
    {
    }

    Charts::TraceData *traceData() override
    {
        m_visits.push_back(this);
        return &data;
    }

    void updateData() override
    {
        ++updateCount;
        perform(std::exchange(pending, {}));
        data.setVisible(isVisible());
        data.setColor(color());
        data.setWidth(static_cast<float>(lineWidth()));
    }

    void perform(const std::vector<DataStep> &steps)
    {
        for (const DataStep &step : steps)
            perform(step);
    }

    Charts::TraceData data;
    std::vector<DataStep> pending;
    std::atomic<int> updateCount = 0;

private:
    void perform(const DataStep &step)
    {
        switch (step.kind) {
        case DataStep::Resize:
            data.dirtyRange().setSize(step.count);
            data.filledRange().setSize(step.count);
            [[fallthrough]];
        case DataStep::ResizeSilently:
            data.array().resize(static_cast<std::size_t>(step.count));
            break;
        case DataStep::Write:
            std::copy(step.points.begin(), step.points.end(), data.array().begin() + step.first);
            break;
        case DataStep::MarkDirty:
            data.dirtyRange().push({step.first, step.count});
            break;
        case DataStep::MarkFilled:
            data.filledRange().push({step.first, step.count});
            break;
        case DataStep::Unfill:
            data.filledRange().pop(true);
            break;
        case DataStep::Restyle:
            data.setDrawType(step.look.drawType);
            data.setSquaredViewPort(step.look.isSquared);
            data.setViewPort(step.look.viewPort);
            data.setBoundingX(step.look.boundingX);
            data.setBoundingY(step.look.boundingY);
            break;
        }
    }

    std::vector<const void *> &m_visits;
};

#endif
