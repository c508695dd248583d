// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Charts::Readers {

class TouchstoneLines;

/// The keywords of version 2, which stand between brackets at the beginnings of lines.
enum class TouchstoneKeyword {
    Version,
    NumberOfPorts,
    TwoPortDataOrder,
    NumberOfFrequencies,
    NumberOfNoiseFrequencies,
    Reference,
    MatrixFormat,
    MixedModeOrder,
    BeginInformation,
    EndInformation,
    NetworkData,
    NoiseData,
    End,
};

/// The keyword as messages show it, with its brackets.
[[nodiscard]] std::string textOf(TouchstoneKeyword keyword);

/// The keyword of the present line, in upper or lower case; nothing where it is not known or its
/// bracket is not closed.
[[nodiscard]] std::optional<TouchstoneKeyword> keywordOf(const TouchstoneLines &lines);

/// The same, but throws ReadError instead of returning nothing.
[[nodiscard]] TouchstoneKeyword requireKeyword(const TouchstoneLines &lines);

/// What stands behind the keyword of the present line. Valid until the lines step on.
[[nodiscard]] std::vector<std::string_view> argumentsOf(const TouchstoneLines &lines);

} // namespace Charts::Readers
