// SPDX-License-Identifier: MIT
#pragma once

#include "NetworkData.h"

#include <string_view>

namespace Charts::Readers {

class TouchstoneLines;

/// How two numbers of a Touchstone file stand for a complex one.
enum class ComplexFormat {
    DecibelAngle,   ///< 20 log10 of the magnitude, degrees
    MagnitudeAngle, ///< magnitude, degrees
    RealImaginary,
};

/// What the option line of a Touchstone file says, or what holds where it says nothing.
struct TouchstoneOptions
{
    /// In hertz.
    double frequencyUnit = 1e9;
    ParameterKind kind = ParameterKind::S;
    ComplexFormat format = ComplexFormat::MagnitudeAngle;
    /// In ohms, positive.
    double resistance = 50;
};

/// Reads the present line as an option line: a number sign and, in any order and upper or lower
/// case, the unit of frequency, the kind of parameters, the format of complex numbers and the
/// letter R with the reference resistance behind it. Throws ReadError.
[[nodiscard]] TouchstoneOptions parseTouchstoneOptions(const TouchstoneLines &lines);

/// Reads `text`, a part of the present line, as a reference resistance. Throws ReadError.
[[nodiscard]] double parseResistance(const TouchstoneLines &lines, std::string_view text);

} // namespace Charts::Readers
