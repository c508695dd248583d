// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEBUFFERS_H
#define CHARTS_TRACEBUFFERS_H

#include "AbstractTrace.h"

#include <QtCore/QPointer>
#include <QtOpenGL/QOpenGLBuffer>

#include <memory>
#include <unordered_map>
#include <vector>

namespace Charts {

class TraceData;

/*!
    \internal
    One vertex buffer per trace, brought up to date range by range. Lives on the render thread;
    used and destroyed with the OpenGL context current.
*/
class TraceBuffers
{
public:
    class Buffer
    {
    public:
        Buffer();

        /*! Uploads what \a data marks as changed and leaves the buffer bound. Allocates anew, and
            uploads all that is filled, when the number of points is not the one before. */
        void update(TraceData &data);
        void release() { m_buffer.release(); }
        /*! Number of points that the buffer holds. */
        [[nodiscard]] int pointCount() const { return m_pointCount; }

    private:
        QOpenGLBuffer m_buffer;
        int m_pointCount = 0;
    };

    /*! The buffer of \a trace, made on first use. */
    [[nodiscard]] Buffer &bufferOf(const AbstractTrace *trace);
    /*! Keeps the buffers of \a traces as they are and deletes all others. */
    void retain(const std::vector<AbstractTrace *> &traces);

private:
    struct Entry
    {
        std::unique_ptr<Buffer> buffer;
        // Null once the trace is gone: another one may have its address by now.
        QPointer<const AbstractTrace> trace;
    };

    std::unordered_map<const AbstractTrace *, Entry> m_buffers;
};

} // namespace Charts

#endif
