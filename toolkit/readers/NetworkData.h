// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>
#include <complex>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Charts::Readers {

/// The kinds of parameters that describe a linear network.
enum class ParameterKind {
    S, ///< scattering
    Y, ///< admittance
    Z, ///< impedance
    H, ///< hybrid, two ports only
    G, ///< inverse hybrid, two ports only
};

/// The letter that names the kind.
[[nodiscard]] constexpr std::string_view letterOf(ParameterKind kind)
{
    return std::string_view("SYZHG").substr(static_cast<std::size_t>(kind), 1);
}

/// The scattering parameters of a linear network with one or more ports, at one or more
/// frequencies. A plain value: whoever read it owns it.
struct NetworkData
{
    /// At least 1.
    int portCount = 0;

    /// In hertz; finite, not negative, strictly increasing.
    std::vector<double> frequency;

    /// The S parameters, finite, a matrix per frequency:
    ///
    ///     frequency 0                         frequency 1
    ///     | S11 S12 .. | S21 S22 .. | ..      | S11 S12 .. | ..
    ///       row 0        row 1                  row 0
    ///
    /// The row is the port where the wave leaves, the column that where it enters.
    std::vector<std::complex<double>> parameters;

    /// The resistances, in ohms and positive, to which the S parameters refer, one for each port, in
    /// the order of the ports even where `modes` gives the rows another one.
    std::vector<double> referenceImpedance;

    /// What the file held before it was converted to S parameters.
    ParameterKind fileKind = ParameterKind::S;

    /// The modes to which the rows and columns belong where these are not the ports themselves, as
    /// the file names them: "D2,3" for the differential mode of the ports 2 and 3, "C2,3" for their
    /// common mode, "S1" for port 1 alone. Empty for the parameters of plain ports.
    std::vector<std::string> modes;

    /// The parameter of a frequency, a row and a column, all of them counted from 0.
    [[nodiscard]] const std::complex<double> &s(
            std::size_t frequencyIndex, std::size_t row, std::size_t column) const
    {
        const auto ports = static_cast<std::size_t>(portCount);
        assert(frequencyIndex < frequency.size() && row < ports && column < ports);
        return parameters[(frequencyIndex * ports + row) * ports + column];
    }
};

} // namespace Charts::Readers
