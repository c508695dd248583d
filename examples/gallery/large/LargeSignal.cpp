// SPDX-License-Identifier: MIT
#include "LargeSignal.h"

#include <QtCore/QMetaObject>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <stop_token>
#include <vector>

namespace Gallery {

namespace {

constexpr std::chrono::milliseconds interval(33);
constexpr std::size_t pieceLength = 50'000;

} // namespace

LargeSignal::LargeSignal(QObject *parent)
    : QObject(parent)
    , m_trace(new LargeTrace(this))
{
    m_trace->setName(tr("ten million samples"));
    m_trace->setColor(QColor::fromRgb(0x4fc3f7));
    m_trace->domain()->setRangeXY(
            0.0, static_cast<double>(SampleCount), TestSignal::Lowest, TestSignal::Highest);

    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &LargeSignal::appendDue);

    m_thread = std::jthread([this](const std::stop_token &stop) {
        auto recording = std::make_shared<Recording>(SampleCount);
        std::vector<float> piece(pieceLength);
        while (recording->end() < SampleCount && !stop.stop_requested()) {
            m_signal.read(piece);
            recording->append(piece);
        }
        m_made = std::move(recording);
        QMetaObject::invokeMethod(this, "take", Qt::QueuedConnection);
    });
}

LargeSignal::~LargeSignal()
{
    // It uses members, and posts to this object.
    m_thread.request_stop();
    if (m_thread.joinable())
        m_thread.join();
}

void LargeSignal::take()
{
    // Has nothing left to do; what it wrote is seen from here on.
    m_thread.join();
    m_recording = std::move(m_made);
    m_trace->setRecording(m_recording);
    m_sinceAppended.start();
    Q_EMIT readyChanged();
}

void LargeSignal::setLive(bool live)
{
    if (live == isLive())
        return;
    if (live) {
        m_sinceAppended.start();
        m_timer.start(interval);
    } else {
        m_timer.stop();
    }
    Q_EMIT liveChanged();
}

void LargeSignal::appendDue()
{
    if (!isReady())
        return;
    // After a halt of the program the rest of it is left out.
    const double seconds = std::min(static_cast<double>(m_sinceAppended.restart()) / 1000.0, 0.5);
    std::vector<float> samples(static_cast<std::size_t>(seconds * SamplesPerSecond));
    m_signal.read(samples);
    append(samples);
}

void LargeSignal::append(std::span<const float> samples)
{
    if (!isReady() || samples.empty())
        return;
    Charts::TraceDomain &domain = *m_trace->domain();
    const bool wasZoomed = domain.isZoomed();
    const auto endBefore = static_cast<double>(m_recording->end());
    m_recording->append(samples);
    const auto begin = static_cast<double>(m_recording->begin());
    const auto end = static_cast<double>(m_recording->end());

    // In steps of whole columns, so that the same samples stay together in one while it moves: a
    // column of other samples every time would flicker.
    const auto snapped = [&domain](double position, double length) {
        const double width = std::max(domain.size().width(), 1.0);
        const double column = length / std::round(width);
        return std::floor(position / column) * column;
    };
    const Charts::Span visible = domain.xRange();
    const auto capacity = static_cast<double>(SampleCount);
    const double baseEnd = snapped(end, capacity);
    domain.setBaseRangeX(baseEnd - capacity, baseEnd);
    if (!wasZoomed)
        return;
    const double length = visible.length();
    double shift = 0.0;
    if (visible.max >= endBefore - length / 100.0) // shows the newest sample
        shift = snapped(end, length) - visible.max;
    else if (visible.min < begin)
        shift = begin - visible.min;
    if (shift > 0.0)
        domain.setRangeX(visible.min + shift, visible.max + shift);
}

} // namespace Gallery
