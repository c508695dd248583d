// SPDX-License-Identifier: MIT
#include "SpectrumAnalyzer.h"

namespace Gallery {

SpectrumAnalyzer::SpectrumAnalyzer(QObject *parent)
    : QObject(parent)
    , m_trace(new SpectrumTrace(m_clock, this))
{
    m_trace->setName(tr("spectrum"));
    m_trace->setColor(QColor::fromRgb(0xfff176));
}

void SpectrumAnalyzer::setPaused(bool paused)
{
    if (paused == isPaused())
        return;
    m_clock.setPaused(paused);
    Q_EMIT pausedChanged();
}

} // namespace Gallery
