// SPDX-License-Identifier: MIT
#include "QuickFrames.h"

#include "FrameMeter.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QThread>
#include <QtQuick/QQuickWindow>

#include <chrono>

using namespace std::chrono_literals;

namespace {

// Millions of points take a software renderer this long, when they are many traces.
constexpr auto timeout = 300s;

} // namespace

QuickFrames::QuickFrames(QQuickWindow &window)
    : m_window(window)
{
    // So that waiting ends should no frame come.
    m_alarm.start(10s);

    // All of these are emitted by the thread that draws.
    const auto type = Qt::DirectConnection;
    connect(
            &window, &QQuickWindow::beforeSynchronizing, this,
            [this] { m_before = GlCounters::now(); }, type);
    connect(
            &window, &QQuickWindow::afterSynchronizing, this,
            [this] {
                m_contents += GlCounters::now() - m_before;
                if (++m_synchronised == 1)
                    connectLast();
            },
            type);
    // The first of its receivers: contents connect theirs when they synchronise.
    connect(
            &window, &QQuickWindow::beforeRendering, this, [this] { m_before = GlCounters::now(); },
            type);
    connect(
            &window, &QQuickWindow::frameSwapped, this,
            [this] {
                m_renderTime = CpuTime::ofThread().total();
                m_isThreaded = QThread::currentThread() != thread();
                m_swapped = m_synchronised;
                QCoreApplication::eventDispatcher()->wakeUp();
            },
            type);
}

/*! To be the last of the receivers, after those that the contents have connected in their first
    synchronisation. What follows is Qt's own: it makes buffers for what it draws. */
void QuickFrames::connectLast()
{
    connect(
            &m_window, &QQuickWindow::beforeRendering, this,
            [this] { m_contents += GlCounters::now() - m_before; }, Qt::DirectConnection);
}

bool QuickFrames::draw()
{
    const int before = m_swapped;
    m_window.update();
    return waitForFrame(before);
}

bool QuickFrames::show()
{
    m_window.show();
    return waitForFrame(0);
}

bool QuickFrames::waitForFrame(int after)
{
    const QDeadlineTimer deadline(timeout);
    while (m_swapped <= after && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return m_swapped > after;
}
