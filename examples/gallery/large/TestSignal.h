// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace Gallery {

/*!
    An endless signal that shows something else at every zoom: a slow wave, a carrier under an
    envelope, noise, stretches without samples, and spikes of a single sample. The same each time.
    Cheap: some ten million samples are made in a fraction of a second.
*/
class TestSignal
{
public:
    static constexpr float Lowest = -4.0F; // of all samples
    static constexpr float Highest = 6.0F;
    static constexpr float SpikeHeight = 5.5F;
    static constexpr std::size_t SpikeDistance = 1'234'567;
    static constexpr std::size_t FirstSpike = 700'001;

    TestSignal();

    /*! Fills \a samples with those that follow the ones before. */
    void read(std::span<float> samples);

private:
    void readStretch(std::span<float> samples);

    std::vector<float> m_carrier;
    std::vector<float> m_noise;
    std::size_t m_next = 0;
};

} // namespace Gallery
