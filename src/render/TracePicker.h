// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEPICKER_H
#define CHARTS_TRACEPICKER_H

#include "AbstractTrace.h"
#include "MouseEventResponse.h"

#include <QtCore/QPointer>
#include <QtGui/QVector3D>

#include <cstddef>
#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QOpenGLFramebufferObject;
class QOpenGLFunctions;
QT_END_NAMESPACE

namespace Charts {

/*!
    \internal
    Answers which trace lies under a mouse event. Each trace of the selection image has a colour
    that is its number; one pixel read gives the number back. Queues the events until they are
    resolved and keeps the answers until they are taken. Render thread only.

    An image may show traces that exist no more, and another trace may have their address by now. So
    traces are guarded from the image to the answer: what is gone is not hit.
*/
class TracePicker
{
public:
    /*! The colour that stands for the \a index th trace drawn: 24 bits in red, green and blue,
        least significant first. */
    [[nodiscard]] static QVector3D colorOf(std::size_t index);

    // The selection image is drawn between begin() and the last record().
    void begin(std::size_t traceCount) { m_selectionTraces.resize(traceCount); }
    /*! Notes that the \a index th trace drawn is \a trace. */
    void record(std::size_t index, AbstractTrace *trace) { m_selectionTraces[index] = trace; }

    /*! The image is gone: what it showed must not be taken for what is there. */
    void forgetImage() { m_selectionTraces.clear(); }

    void push(std::vector<std::unique_ptr<QMouseEvent>> &&events);
    [[nodiscard]] bool hasEvents() const { return !m_events.empty(); }

    /*! The trace under \a event, whose position is in pixels from the top left of \a image. */
    [[nodiscard]] QPointer<AbstractTrace> findTrace(
            QOpenGLFunctions &gl, QOpenGLFramebufferObject *image, const QMouseEvent &event) const;
    /*! Answers the events queued so far, in their order: each with what \a find gives for it. */
    template<typename Find>
    void resolve(Find &&find)
    {
        for (auto &event : m_events) {
            m_hits.push_back(find(event.get()));
            m_responses.push_back({.event = std::move(event)});
        }
        m_events.clear();
    }
    /*! To be called while the GUI thread is blocked: the traces named exist until it goes on. */
    [[nodiscard]] std::vector<MouseEventResponse> takeResponses();

private:
    std::vector<QPointer<AbstractTrace>> m_selectionTraces;
    std::vector<std::unique_ptr<QMouseEvent>> m_events;
    std::vector<MouseEventResponse> m_responses;
    std::vector<QPointer<AbstractTrace>> m_hits; // one a response
};

} // namespace Charts

#endif
