// SPDX-License-Identifier: MIT
#include "WatchedWindow.h"

WatchedWindow::WatchedWindow(ThreadWatch &watch)
    : m_watch(watch)
{
    connect(
            this, &QQuickWindow::beforeSynchronizing, this,
            [this] {
                m_stepsBefore = m_watch.guiSteps.count();
                m_renderThread.store(QThread::currentThread(), std::memory_order_relaxed);
                m_isSynchronising.store(true, std::memory_order_relaxed);
            },
            Qt::DirectConnection);
    connect(
            this, &QQuickWindow::afterSynchronizing, this,
            [this] {
                m_isSynchronising.store(false, std::memory_order_relaxed);
                m_watch.synchronisations.note(m_watch.guiSteps.count() == m_stepsBefore);
            },
            Qt::DirectConnection);
}
