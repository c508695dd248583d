// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MODELTRACE_H
#define CHARTS_TEST_MODELTRACE_H

#include "ModelDomain.h"
#include "WalkData.h"

#include <QtCore/QString>

#include <cstdint>
#include <utility>
#include <vector>

/*!
    What a trace should hold, and what of it should have reached the graphics memory.

    Ranges are kept in the plainest way there is: a flag for each point.
*/
class ModelTrace
{
public:
    ModelTrace(QString traceName, const void *traceAddress)
        : name(std::move(traceName))
        , address(traceAddress)
    {
    }

    /*! What the trace does in updateData(). */
    void update();
    void perform(const std::vector<DataStep> &steps);

    /*! Something is there for the renderer to see. */
    [[nodiscard]] bool isDirty() const { return lookDirty || hasDirtyPoints(); }
    [[nodiscard]] bool hasDirtyPoints() const;
    /*! Brings the buffer up to date, as is due when a visible trace is drawn, and returns what is
        drawn then. */
    [[nodiscard]] Sketch draw();
    /*! The renderer gave up the buffer. */
    void dropBuffer() { m_buffer.clear(); }

    const QString name;
    const void *const address;

    // Properties
    double z = 0.0;
    bool isVisible = true;
    QColor color;
    double lineWidth = 1.5;
    /*! Its handlers pass mouse events on to the chart. */
    bool passesOn = false;
    ModelDomain domain;
    std::vector<DataStep> pending;

    /*! The chart and the test still hear zChanged and destroyed. */
    bool isHeardByChart = false;
    bool isHeard = false;

    Look look;
    bool lookDirty = false;
    int updateCount = 0;

    /*! The bytes that all uploads since the last call had to bring, and may have brought. */
    [[nodiscard]] Bounds takeUploads();

private:
    void perform(const DataStep &step);
    void mark(std::vector<bool> &flags, int first, int count);

    std::vector<Charts::TracePoint> m_points;
    std::vector<bool> m_dirty;
    std::vector<bool> m_filled;
    std::int64_t m_marked = 0;
    std::vector<Charts::TracePoint> m_buffer;
    Bounds m_uploads;
};

#endif
