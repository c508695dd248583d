// SPDX-License-Identifier: MIT
#pragma once

#include "NetworkData.h"

#include <complex>
#include <span>

namespace Charts::Readers {

// The matrices stand row by row. All functions may be called on any thread.

/// Relates impedances, admittances and hybrid parameters (ohms, siemens, ratios) to the reference
/// resistances of the ports, in place. `reference` has a positive resistance for each port; H and G
/// parameters are those of two ports. S parameters stay as they are.
void normalise(ParameterKind kind, std::span<const double> reference,
        std::span<std::complex<double>> matrix);

/// Converts normalised parameters of a network with `portCount` ports to S parameters, in place.
/// Returns false, with the matrix in no useful state, where no S parameters belong to them within
/// the precision of the numbers (a short circuit of negative resistance, for example).
[[nodiscard]] bool toScattering(
        ParameterKind kind, std::size_t portCount, std::span<std::complex<double>> matrix);

} // namespace Charts::Readers
