// SPDX-License-Identifier: MIT
#pragma once

#include "NetworkData.h"
#include "TouchstoneHeader.h"

#include <complex>
#include <cstddef>
#include <vector>

namespace Charts::Readers {

class TouchstoneLines;

/// Assembles the lines of network data into matrices of S parameters.
///
/// A frequency point begins on a line of its own with the frequency, followed by pairs of numbers;
/// more pairs may follow on more lines. So an odd count of numbers begins a point and an even count
/// goes on with it, by which a number that is missing or too many is noticed where it happens.
///
///     f  a b  a b  a b        odd: begins a point of three ports
///        a b  a b  a b        even
///        a b  a b  a b        even: completes it, with 1 + 2 * 9 numbers
///
/// Owned by the reader of the file. Used on one thread, which may be any.
class TouchstonePoints
{
public:
    /// The numbers in a line of noise data: the frequency, the minimum noise figure, the magnitude
    /// and the angle of the source reflection coefficient, the noise resistance.
    static constexpr std::size_t NoiseFieldCount = 5;

    /// Both arguments must outlive the points.
    TouchstonePoints(const TouchstoneLines &lines, const TouchstoneHeader &header);

    /// Takes the present line, which is neither a keyword nor an option line. Throws ReadError.
    void takeLine();

    /// Whether the present line begins the noise data that may follow the network data of two ports
    /// in version 1, without a mark: as many numbers, the frequency not above the last one.
    [[nodiscard]] bool isNoise() const;

    /// Throws ReadError when a frequency point is not complete.
    void checkComplete() const;

    [[nodiscard]] std::size_t pointCount() const noexcept { return m_frequency.size(); }

    /// Gives away the network; throws ReadError when the last point is not complete.
    [[nodiscard]] NetworkData finish();

private:
    void takeFrequency();
    [[nodiscard]] std::complex<double> complexAt(std::size_t index) const;
    void completePoint();
    void arrange();

    const TouchstoneLines &m_lines;
    const TouchstoneHeader &m_header;
    std::size_t m_entryCount = 0;

    // The point that is being assembled: its entries in the order of the file, its line.
    std::vector<std::complex<double>> m_entries;
    std::size_t m_line = 0;
    bool m_isWithinPoint = false;

    std::vector<std::complex<double>> m_matrix;
    std::vector<double> m_frequency;
    // The last of them as it stands in the file, in its unit.
    double m_frequencyNumber = 0;
    std::vector<std::complex<double>> m_parameters;
};

} // namespace Charts::Readers
