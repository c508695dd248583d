// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace Charts::Readers {

/// The white space of all formats read here, whatever the locale.
inline constexpr std::string_view WhiteSpace = " \t\r\n\v\f";

/// `text` without the white space around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Whether two texts are the same but for the case of the letters A to Z.
[[nodiscard]] bool isSameWord(std::string_view left, std::string_view right);

/// The shortest text that reads back as the same number.
[[nodiscard]] std::string shortestText(double value);

} // namespace Charts::Readers
