// SPDX-License-Identifier: MIT
#ifndef CHARTS_MOUSEEVENTRESPONSE_H
#define CHARTS_MOUSEEVENTRESPONSE_H

#include <QtGui/QMouseEvent>

#include <cstdint>
#include <memory>

namespace Charts {

class AbstractTrace;

/*!
    \class Charts::MouseEventResponse
    \brief The renderer's answer to one queued mouse event: what lies under it.

    Owns the event, points to the trace. Move only.
*/
struct MouseEventResponse
{
    /*! \enum Charts::MouseEventResponse::Target
        What lies under the event.
        \value Trace A trace, which \l trace names.
        \value Background No trace. */
    enum class Target : std::int32_t {
        Trace = 0,
        Background = 1,
    };

    /*! The event that was queued. */
    std::unique_ptr<QMouseEvent> event;
    /*! What lies under it. */
    Target target = Target::Background;
    /*! The trace that was hit, or null. It exists when the answer is taken; it may have been
        removed before, and be destroyed afterwards: guard it, and look it up in the chart before
        using it. */
    AbstractTrace *trace = nullptr;
};

} // namespace Charts

#endif
