// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_COLUMNWINDOW_H
#define CHARTS_TEST_COLUMNWINDOW_H

#include "decimation/LineDecimation.h"

#include <cstdint>
#include <vector>

/*! A visible range in sixteenths of a sample, so that the columns of samples are found with whole
    numbers. */
struct Window
{
    std::int64_t first = 0;
    std::int64_t length = 0;
    int count = 0;

    [[nodiscard]] Charts::Decimation::PixelColumns columns() const
    {
        return {static_cast<double>(first) / 16.0, static_cast<double>(first + length) / 16.0,
                count};
    }
    /*! The column in which a sample lies. */
    [[nodiscard]] std::int64_t columnOf(std::int64_t sample) const
    {
        const std::int64_t dividend = (16 * sample - first) * count;
        return dividend / length - (dividend % length < 0 ? 1 : 0);
    }
};

/*! A line through an array of samples. */
struct Line
{
    Charts::Decimation::MinMaxPyramid pyramid;
    Charts::Decimation::LineDecimation line;

    explicit Line(const std::vector<float> &samples) { pyramid.append(samples); }
    const std::vector<Charts::Decimation::LineVertex> &fill(
            const std::vector<float> &samples, const Charts::Decimation::PixelColumns &columns)
    {
        line.fill(pyramid, samples, columns);
        return line.vertices();
    }
};

#endif
