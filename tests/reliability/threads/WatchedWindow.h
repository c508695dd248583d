// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_WATCHEDWINDOW_H
#define CHARTS_TEST_WATCHEDWINDOW_H

#include "ThreadWatch.h"

#include <QtQuick/QQuickWindow>

/*! A window that knows which thread draws it and when it is synchronised. */
class WatchedWindow : public QQuickWindow
{
    Q_OBJECT

public:
    explicit WatchedWindow(ThreadWatch &watch);

    [[nodiscard]] ThreadWatch &watch() const { return m_watch; }
    /*! Null before the first frame. */
    [[nodiscard]] QThread *renderThread() const
    {
        return m_renderThread.load(std::memory_order_relaxed);
    }
    [[nodiscard]] bool isSynchronising() const
    {
        return m_isSynchronising.load(std::memory_order_relaxed);
    }
    /*! Whether the caller is the thread that draws this window, in a synchronisation. */
    [[nodiscard]] bool isHere() const
    {
        return isSynchronising() && QThread::currentThread() == renderThread();
    }

private:
    ThreadWatch &m_watch;
    std::atomic<QThread *> m_renderThread = nullptr;
    std::atomic<bool> m_isSynchronising = false;
    // Render thread only.
    int m_stepsBefore = 0;
};

#endif
