// SPDX-License-Identifier: MIT
#pragma once

#include "LargeTrace.h"
#include "TestSignal.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <span>
#include <thread>

namespace Gallery {

/*!
    Ten million samples as a trace. They are made on a thread of their own, so that the page is there
    at once. When live, new ones are appended and the oldest forgotten; a view that shows the newest
    sample moves along.
*/
class LargeSignal : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QList<Gallery::LargeTrace *> traces READ traces CONSTANT)
    Q_PROPERTY(Gallery::LargeTrace *trace READ trace CONSTANT)
    /*! Whether the samples are there. */
    Q_PROPERTY(bool ready READ isReady NOTIFY readyChanged)
    Q_PROPERTY(bool live READ isLive WRITE setLive NOTIFY liveChanged)

public:
    static constexpr std::size_t SampleCount = 10'000'000;
    static constexpr double SamplesPerSecond = 200'000.0;

    explicit LargeSignal(QObject *parent = nullptr);
    ~LargeSignal() override;

    [[nodiscard]] QList<LargeTrace *> traces() const { return {m_trace}; }
    [[nodiscard]] LargeTrace *trace() const { return m_trace; }
    [[nodiscard]] bool isReady() const { return m_recording != nullptr; }
    [[nodiscard]] bool isLive() const { return m_timer.isActive(); }
    void setLive(bool live);

    /*! Appends \a samples, once the others are there, and moves the ranges. GUI thread. */
    void append(std::span<const float> samples);

Q_SIGNALS:
    void readyChanged();
    void liveChanged();

private:
    /*! Takes over what the thread has made, which has ended. */
    Q_INVOKABLE void take();
    void appendDue();

    LargeTrace *m_trace;
    std::shared_ptr<Recording> m_recording; // null until it is made
    TestSignal m_signal;
    QTimer m_timer;
    QElapsedTimer m_sinceAppended;

    std::shared_ptr<Recording> m_made; // by the thread, until it has ended
    std::jthread m_thread;
};

} // namespace Gallery
