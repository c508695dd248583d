// SPDX-License-Identifier: MIT
#pragma once

#include "PlaybackClock.h"
#include "SpectrumTrace.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace Gallery {

/*! A computed spectrum as a trace that keeps moving. */
class SpectrumAnalyzer : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QList<Gallery::SpectrumTrace *> traces READ traces CONSTANT)
    Q_PROPERTY(bool paused READ isPaused WRITE setPaused NOTIFY pausedChanged)

public:
    explicit SpectrumAnalyzer(QObject *parent = nullptr);

    [[nodiscard]] QList<SpectrumTrace *> traces() const { return {m_trace}; }
    [[nodiscard]] bool isPaused() const { return m_clock.isPaused(); }
    void setPaused(bool paused);

Q_SIGNALS:
    void pausedChanged();

private:
    PlaybackClock m_clock;
    SpectrumTrace *m_trace; // a child
};

} // namespace Gallery
