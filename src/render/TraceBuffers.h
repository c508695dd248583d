// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEBUFFERS_H
#define CHARTS_TRACEBUFFERS_H

#include "AbstractTrace.h"

#include <QtCore/QPointer>
#include <QtOpenGL/QOpenGLBuffer>

#include <cstddef>
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
        /*! Number of points that the buffer holds. */
        [[nodiscard]] int pointCount() const { return m_pointCount; }

    private:
        QOpenGLBuffer m_buffer;
        int m_pointCount = 0;
    };

    /*! The buffer of \a trace, which is the \a index th of the list; made on first use. */
    [[nodiscard]] Buffer &bufferOf(const AbstractTrace *trace, std::size_t index);
    /*! To be called when the list, now of \a count traces, is in another order. */
    void forgetOrder(std::size_t count) { m_inOrder.assign(count, nullptr); }
    /*! Leaves no buffer bound. */
    static void releaseAny() { QOpenGLBuffer::release(QOpenGLBuffer::VertexBuffer); }
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
    // Those that have been looked up, so that a frame need not do it again.
    std::vector<Buffer *> m_inOrder;
};

} // namespace Charts

#endif
