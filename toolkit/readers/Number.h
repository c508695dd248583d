// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Charts::Readers {

enum class DecimalMark {
    Point,
    PointOrComma,
};

enum class NumberStatus {
    Finite,
    NotFinite,  ///< an infinity or NaN by name
    NotANumber, ///< no number, or text beside it
    OutOfRange, ///< beyond the largest number of the type
};

/// A number as it was found in a text. `value` has a meaning only when `status` is Finite.
template<typename T>
struct ParsedNumber
{
    T value = 0;
    NumberStatus status = NumberStatus::NotANumber;
};

/// Reads the whole of `text` as a decimal number: an optional sign, digits with an optional decimal
/// mark, an optional exponent; no grouping of digits, no hexadecimal form, no spaces, whatever the
/// locale. The result is the nearest number of the type, so a number too close to zero for it
/// becomes zero. May be called on any thread.
[[nodiscard]] ParsedNumber<double> parseDouble(std::string_view text, DecimalMark mark);
[[nodiscard]] ParsedNumber<float> parseFloat(std::string_view text, DecimalMark mark);

} // namespace Charts::Readers
