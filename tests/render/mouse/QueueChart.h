// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_QUEUECHART_H
#define CHARTS_TEST_QUEUECHART_H

#include "ChartWindow.h"
#include "PixelTrace.h"

#include <ChartsLibrary/AbstractRenderNode.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/ChartNode.h>

#include <QtCore/QList>
#include <QtCore/QTimer>
#include <QtCore/QtGlobal>
#include <QtGui/QMouseEvent>

#include <utility>

/*!
    A chart that does not get the answers to its mouse events: the test takes them out of the
    renderer before the chart does, with the events as they were queued.
*/
class QueueChart : public Charts::Chart
{
public:
    struct Queued
    {
        QEvent::Type type = QEvent::None;
        QPointF position;
        Qt::MouseButton button = Qt::NoButton;
        Qt::MouseButtons buttons;
        Qt::KeyboardModifiers modifiers;
        Qt::MouseEventFlags flags;
        /*! Only to be compared. */
        const QInputDevice *device = nullptr;
        Charts::MouseEventResponse::Target target = Charts::MouseEventResponse::Target::Background;
        Charts::AbstractTrace *trace = nullptr;
    };

    /*! Fills \a window. */
    explicit QueueChart(ChartWindow &window)
        : Chart(window.contentItem())
        , m_window(window)
    {
        setSize(window.size());
        findChild<QTimer *>()->stop();
    }

    /*! What was queued since the last call, in the order in which it is answered. */
    [[nodiscard]] QList<Queued> takeQueued()
    {
        for (int i = 0; i < 2; ++i) {
            updateTraces();
            if (!m_window.plainFrame())
                qFatal("%s", m_window.error());
        }
        return std::exchange(m_queued, {});
    }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override
    {
        if (const auto *node = static_cast<Charts::ChartNode *>(oldNode)) {
            for (const auto &response : node->renderNode()->takeMouseEventResponses()) {
                const QMouseEvent &event = *response.event;
                m_queued.append({event.type(), event.position(), event.button(), event.buttons(),
                        event.modifiers(), event.flags(), event.device(), response.target,
                        response.trace});
            }
        }
        return Chart::updatePaintNode(oldNode, data);
    }

private:
    ChartWindow &m_window;
    // Written on the render thread while the GUI thread is blocked.
    QList<Queued> m_queued;
};

/*! A window with such a chart and one trace across its middle, not attached yet. */
struct QueueScene
{
    QueueScene()
        : chart(*new QueueChart(window))
        , trace({200, 100}, Charts::DrawType::LineStrip, 5.0F, Qt::red)
    {
        trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
        trace.onUpdate = [this] { trace.data.dirtyRange().push({0, 2}); };
    }

    /*! With the trace attached. */
    [[nodiscard]] bool start()
    {
        chart.addTrace(&trace);
        return window.start();
    }

    ChartWindow window{{200, 100}, ChartWindow::Content::Nothing};
    QueueChart &chart; // owned by the window
    PixelTrace trace;
};

#endif
