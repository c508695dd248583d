// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>

namespace Gallery {

/*! 20 log10 of the magnitude, at least -200: nothing at all is drawn there, too. */
[[nodiscard]] inline double decibels(const std::complex<double> &parameter)
{
    return std::max(-200.0, 20.0 * std::log10(std::abs(parameter)));
}

} // namespace Gallery
