// SPDX-License-Identifier: MIT
#pragma once

#include "readers/NetworkData.h"
#include "readers/ReadError.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <string_view>

/// What a network promises whatever it was read from; empty if it holds.
inline std::string brokenPromise(const Charts::Readers::NetworkData &network)
{
    const auto ports = static_cast<std::size_t>(network.portCount);
    if (network.portCount < 1 || network.frequency.empty())
        return "nothing read";
    if (network.parameters.size() != network.frequency.size() * ports * ports)
        return "wrong count of parameters";
    if (network.referenceImpedance.size() != ports)
        return "wrong count of references";
    if (!network.modes.empty() && network.modes.size() != ports)
        return "wrong count of modes";
    for (const double resistance : network.referenceImpedance) {
        if (!(resistance > 0) || !std::isfinite(resistance))
            return "bad reference";
    }
    if (!(network.frequency.front() >= 0) || !std::isfinite(network.frequency.back()))
        return "bad frequency";
    if (std::ranges::adjacent_find(network.frequency, std::greater_equal<>())
            != network.frequency.end()) {
        return "frequency not increasing";
    }
    for (const std::complex<double> &value : network.parameters) {
        if (!std::isfinite(value.real()) || !std::isfinite(value.imag()))
            return "parameter not finite";
    }
    return {};
}

/// What the message of an error promises for a file of that name and text: one line that names the
/// file, of a length that can be read, and a line that is there. Empty if it holds.
inline std::string brokenPromise(
        const Charts::Readers::ReadError &error, std::string_view name, std::string_view text)
{
    const std::string_view message = error.what();
    if (!message.starts_with(std::string(name) + ':') || message.find('\n') != message.npos
            || message.size() >= 300) {
        return "bad message: " + std::string(message);
    }
    if (error.line() > static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1)
        return "no such line: " + std::string(message);
    return {};
}
