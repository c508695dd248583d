// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_THREADWATCH_H
#define CHARTS_TEST_THREADWATCH_H

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <atomic>

/*
    What is written down here must not itself order the threads that write it, or a thread sanitizer
    would take what orders by chance for what the library orders: everything is atomic and relaxed.
*/

/*! How often something ran where it should, and how often elsewhere. */
class Tally
{
public:
    void note(bool isRight)
    {
        (isRight ? m_right : m_wrong).fetch_add(1, std::memory_order_relaxed);
    }
    [[nodiscard]] int right() const { return m_right.load(std::memory_order_relaxed); }
    [[nodiscard]] int wrong() const { return m_wrong.load(std::memory_order_relaxed); }

private:
    std::atomic<int> m_right = 0;
    std::atomic<int> m_wrong = 0;
};

/*! What the GUI thread has done: that must not go on while it is said to wait. */
class GuiSteps
{
public:
    void note() { m_count.fetch_add(1, std::memory_order_relaxed); }
    [[nodiscard]] int count() const { return m_count.load(std::memory_order_relaxed); }

private:
    std::atomic<int> m_count = 0;
};

/*! The greatest number of calls at work side by side. */
class Crowd
{
public:
    void enter()
    {
        const int now = m_now.fetch_add(1, std::memory_order_relaxed) + 1;
        int greatest = m_greatest.load(std::memory_order_relaxed);
        while (now > greatest
                && !m_greatest.compare_exchange_weak(greatest, now, std::memory_order_relaxed)) {
        }
    }
    void leave() { m_now.fetch_sub(1, std::memory_order_relaxed); }
    [[nodiscard]] int greatest() const { return m_greatest.load(std::memory_order_relaxed); }

private:
    std::atomic<int> m_now = 0;
    std::atomic<int> m_greatest = 0;
};

/*! Everything that one test watches. */
struct ThreadWatch
{
    GuiSteps guiSteps;
    /*! On a thread of the global pool, while the GUI thread did nothing. */
    Tally updates;
    Crowd updating;
    /*! These on the thread that draws the window, within a synchronisation. */
    Tally reads;
    Tally paintNodes;
    Tally curvePoints;
    Tally answers;
    /*! Synchronisations in which the GUI thread did nothing. */
    Tally synchronisations;
    /*! These on the GUI thread, outside of a synchronisation. */
    Tally propertySignals;
    Tally mouseSignals;
    Tally hits;
    Tally zoomSignals;
};

[[nodiscard]] inline bool isGuiThread()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

#endif
