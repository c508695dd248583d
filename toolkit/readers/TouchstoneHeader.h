// SPDX-License-Identifier: MIT
#pragma once

#include "TouchstoneOptions.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Charts::Readers {

class TouchstoneLines;

/// Which entries of the matrices a file holds. Lower and Upper stand for symmetric matrices and
/// include the diagonal.
enum class MatrixFormat {
    Full,
    Lower,
    Upper,
};

/// What a Touchstone file says before its data.
struct TouchstoneHeader
{
    /// Whether the file has keywords, actual values in place of normalised ones, and marks for the
    /// beginning and the end of its data.
    bool isVersion2 = false;

    TouchstoneOptions options;

    /// 1 to TouchstoneMaximumPortCount.
    std::size_t portCount = 0;

    /// In ohms, one for each port.
    std::vector<double> reference;

    MatrixFormat matrixFormat = MatrixFormat::Full;

    /// Whether the full matrix of two ports stands column by column, as 11 21 12 22.
    bool isColumnByColumn = false;

    /// How many frequencies the file promises, in version 2.
    std::optional<std::size_t> frequencyCount;

    /// What [Mixed-Mode Order] names.
    std::vector<std::string> modes;
};

/// Reads the lines before the data. They stand at the first line of data then in version 1, at
/// [Network Data] in version 2. `portCount` is the text of the port count that the name of a file
/// or the caller states, empty where neither does; version 2 does not need it. Throws ReadError.
[[nodiscard]] TouchstoneHeader readTouchstoneHeader(
        TouchstoneLines &lines, std::string_view portCount);

} // namespace Charts::Readers
