// SPDX-License-Identifier: MIT
#include "WatchedTrace.h"

#include <QtCore/QThreadPool>

#include <cmath>

WatchedTrace::WatchedTrace(WatchedWindow &window, double row)
    : m_window(window)
    , m_row(row)
{
    setColor(Qt::darkGreen);
    setLineWidth(9.0);
    domain()->setRangeXY(0.0, 1.0, 0.0, 1.0);
    m_data.setDrawType(Charts::DrawType::LineStrip);

    const auto note = [&watch = window.watch(), &window] {
        watch.propertySignals.note(isGuiThread() && !window.isSynchronising());
    };
    connect(this, &AbstractTrace::nameChanged, this, note, Qt::DirectConnection);
    connect(this, &AbstractTrace::visibleChanged, this, note, Qt::DirectConnection);
    connect(this, &AbstractTrace::zChanged, this, note, Qt::DirectConnection);
    connect(this, &AbstractTrace::colorChanged, this, note, Qt::DirectConnection);
    connect(this, &AbstractTrace::lineWidthChaned, this, note, Qt::DirectConnection);
    connect(domain(), &Charts::TraceDomain::sizeChanged, this, note, Qt::DirectConnection);
    const auto noteZoom = [&watch = window.watch(), &window] {
        watch.zoomSignals.note(isGuiThread() && !window.isSynchronising());
    };
    connect(domain(), &Charts::TraceDomain::zoomedChanged, this, noteZoom, Qt::DirectConnection);
    connect(domain(), &Charts::TraceDomain::xRangeChanged, this, noteZoom, Qt::DirectConnection);
}

Charts::TraceData *WatchedTrace::traceData()
{
    m_window.watch().reads.note(m_window.isHere());
    // What the driver reads when points are uploaded, no sanitizer sees. So the trace reads all of
    // it here, at the same time and on the same thread.
    for (const Charts::TracePoint &point : m_data.array())
        m_sum += point.x + point.y + point.opacity;
    return &m_data;
}

void WatchedTrace::updateData()
{
    ThreadWatch &watch = m_window.watch();
    watch.updating.enter();
    const int stepsBefore = watch.guiSteps.count();

    ++m_updates;
    // The number of points changes now and then; between that, all of them or some do.
    const int count = 200 + m_updates / 16 % 3 * 100;
    if (count != static_cast<int>(m_data.array().size()))
        resize(count);
    else if (m_updates % 3 != 0)
        move(m_updates % 2 * 50, count / 2);
    const Charts::TraceDomain &visible = *domain();
    m_data.setViewPort({static_cast<float>(visible.minX()), static_cast<float>(visible.minY()),
            static_cast<float>(visible.spanX()), static_cast<float>(visible.spanY())});
    m_data.setVisible(isVisible());
    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));
    // Long enough for the traces to be at work at the same time, and for a GUI thread that does not
    // wait to be caught.
    QThread::usleep(300);

    const bool isInPool = QThreadPool::globalInstance()->contains(QThread::currentThread());
    watch.updates.note(isInPool && !isGuiThread() && !m_window.isSynchronising()
                       && watch.guiSteps.count() == stepsBefore);
    watch.updating.leave();
}

void WatchedTrace::resize(int count)
{
    m_data.array().resize(static_cast<std::size_t>(count));
    m_data.dirtyRange().setSize(count);
    m_data.filledRange().setSize(count);
    move(0, count);
}

void WatchedTrace::move(int start, int count)
{
    const double points = static_cast<double>(m_data.array().size());
    for (int i = start; i < start + count; ++i) {
        const double x = i / points;
        m_data.array()[static_cast<std::size_t>(i)] = {static_cast<float>(x),
                static_cast<float>(m_row + 0.02 * std::sin(20.0 * x + m_updates)), 1.0F};
    }
    m_data.dirtyRange().push({start, count});
    m_data.filledRange().push({start, count});
}
