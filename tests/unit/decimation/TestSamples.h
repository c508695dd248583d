// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_TESTSAMPLES_H
#define CHARTS_TEST_TESTSAMPLES_H

#include <QtCore/QString>

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <random>
#include <vector>

/*! Samples to try, and what to expect of them: looked for one after another. */
namespace TestSamples {

inline constexpr float nan = std::numeric_limits<float>::quiet_NaN();
inline constexpr float infinity = std::numeric_limits<float>::infinity();

enum class Kind {
    Noise,
    FewValues,
    Rising,
    Falling,
    Constant,
    SomeMissing,
    MostMissing,
    AllMissing,
    Infinite
};

inline std::vector<float> make(Kind kind, std::size_t count, unsigned seed = 1)
{
    std::mt19937 random(seed);
    const auto number = [&random] { return static_cast<float>(random() % 100'000) - 50'000.0F; };
    std::vector<float> samples;
    samples.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const float value = number();
        const auto position = static_cast<float>(i);
        switch (kind) {
        case Kind::Noise:
            samples.push_back(value);
            break;
        case Kind::FewValues:
            samples.push_back(std::trunc(value / 20'000.0F));
            break;
        case Kind::Rising:
            samples.push_back(position);
            break;
        case Kind::Falling:
            samples.push_back(-position);
            break;
        case Kind::Constant:
            samples.push_back(7.5F);
            break;
        case Kind::SomeMissing:
            samples.push_back(value < -20'000.0F ? nan : value);
            break;
        case Kind::MostMissing:
            samples.push_back(value < 49'000.0F ? -nan : value);
            break;
        case Kind::AllMissing:
            samples.push_back(nan);
            break;
        case Kind::Infinite:
            samples.push_back(value < -40'000.0F  ? -infinity
                              : value > 40'000.0F ? infinity
                                                  : value);
            break;
        }
    }
    return samples;
}

struct Found
{
    float min = 0.0F;
    float max = 0.0F;
    std::size_t minIndex = 0;
    std::size_t maxIndex = 0;
};

/*! The first smallest and the first largest of the samples \a first to \a last - 1. */
inline std::optional<Found> find(
        const std::vector<float> &samples, std::size_t first, std::size_t last)
{
    std::optional<Found> found;
    for (std::size_t i = first; i < last; ++i) {
        const float value = samples[i];
        if (std::isnan(value))
            continue;
        if (!found)
            found = Found{value, value, i, i};
        if (value < found->min) {
            found->min = value;
            found->minIndex = i;
        }
        if (value > found->max) {
            found->max = value;
            found->maxIndex = i;
        }
    }
    return found;
}

} // namespace TestSamples

#endif
