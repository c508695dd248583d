// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_POINTEDWINDOW_H
#define CHARTS_TEST_POINTEDWINDOW_H

#include "ChartWindow.h"
#include "GlProbe.h"
#include "MouseLog.h"
#include "PixelBlock.h"
#include "PixelTrace.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>

#include <memory>
#include <tuple>
#include <vector>

/*!
    A window with a chart and named traces, and what the mouse finds in it.

    Positions are those of mouse events: from the top left, y downwards. Data are in pixels from the
    bottom left, as PixelTrace has them. What is drawn in the column c and in the row r from the
    bottom is hit by the position x = c, and by y = height - r: a row's position is the boundary
    below it, for the row that is read is one above the mirrored one.
*/
class PointedWindow : public ChartWindow
{
public:
    explicit PointedWindow(const QSize &size = {200, 100}, bool isAntialiased = false)
        : ChartWindow(size)
    {
        chart()->setAntialiasing(isAntialiased);
        log.watch(*chart());
    }

    /*! Adds a trace whose data units are the chart's pixels. It stands above all others so far. */
    PixelTrace &add(const QString &name, Charts::DrawType drawType, float width,
            const std::vector<QPointF> &points)
    {
        auto trace = std::make_unique<PixelTrace>(
                chart()->size().toSize(), drawType, width, QColor(Qt::red));
        trace->setPoints(points);
        trace->setZ(static_cast<double>(m_traces.size()));
        log.watch(*trace, name);
        chart()->addTrace(trace.get());
        m_traces.push_back(std::move(trace));
        return *m_traces.back();
    }
    /*! A trace that fills exactly the pixels of \a pixels, whose y is the lowest row. */
    PixelTrace &addBlock(const QString &name, const QRect &pixels)
    {
        return add(name, Charts::DrawType::Points, 1.0F, centresOf(pixels));
    }
    PixelTrace &addLine(const QString &name, float width, const std::vector<QPointF> &points)
    {
        return add(name, Charts::DrawType::LineStrip, width, points);
    }
    void destroy(const PixelTrace &trace)
    {
        std::erase_if(m_traces, [&trace](const auto &owned) { return owned.get() == &trace; });
    }

    /*! Sends a mouse event to the window, as it would come from the window system. */
    void send(QEvent::Type type, const QPointF &scenePosition)
    {
        const bool isPress = type == QEvent::MouseButtonPress;
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(type, scenePosition, scenePosition, mapToGlobal(scenePosition),
                isMove ? Qt::NoButton : Qt::LeftButton, isPress ? Qt::LeftButton : Qt::NoButton,
                Qt::NoModifier);
        QCoreApplication::sendEvent(this, &event);
    }
    void click(const QPointF &scenePosition)
    {
        send(QEvent::MouseButtonPress, scenePosition);
        send(QEvent::MouseButtonRelease, scenePosition);
    }
    /*! Queues one press, whatever the window would make of it. */
    void pressInChart(const QPointF &place)
    {
        QMouseEvent event(QEvent::MouseButtonPress, place, chart()->mapToScene(place),
                chart()->mapToGlobal(place), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(chart(), &event);
    }

    /*! Marks all data changed, so that the next event gets a new selection image. */
    void touchData()
    {
        for (const auto &trace : m_traces)
            trace->data.dirtyRange().push({0, 1});
    }
    /*! Lets frames pass until nothing is drawn any more: attributes that were set before the first
        frame are still marked, one trace a frame. */
    [[nodiscard]] bool settle()
    {
        for (std::size_t i = 0; i < m_traces.size() + 3; ++i) {
            const auto before = GlProbe::totals();
            if (!frame())
                return false;
            if (GlProbe::totals() == before)
                return true;
        }
        return false;
    }

    /*! Who says to be pressed by a click at each of \a places in the chart, all of them in one
        frame: names of traces, or "chart" where there is none. Data is marked changed. */
    [[nodiscard]] QStringList hits(const QList<QPointF> &places)
    {
        touchData();
        return hitsInOldImage(places);
    }
    [[nodiscard]] QString hit(const QPointF &place) { return hits({place}).join(u','); }
    /*! The same without a change of data. */
    [[nodiscard]] QStringList hitsInOldImage(const QList<QPointF> &places)
    {
        std::ignore = log.take();
        for (const QPointF &place : places)
            click(chart()->mapToScene(place));
        if (!answerEvents())
            return {QString::fromUtf8(error())};
        QStringList names;
        for (const MouseSignal &signal : log.takeSignals()) {
            if (signal.name == u"pressed")
                names.append(signal.sender);
        }
        return names;
    }

    /*! From now on GlProbe takes the look-ups for the chart's part of a frame, too. They come
        between synchronisation and drawing. To be called once the renderer exists, so that the
        section ends after the renderer's own work. */
    void watchLookups()
    {
        connect(
                this, &QQuickWindow::afterSynchronizing, this, [] { GlProbe::beginSection(); },
                Qt::DirectConnection);
        connect(
                this, &QQuickWindow::beforeRendering, this, [] { GlProbe::endSection(); },
                Qt::DirectConnection);
    }

    MouseLog log;

private:
    std::vector<std::unique_ptr<PixelTrace>> m_traces;
};

#endif
