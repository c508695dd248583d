// SPDX-License-Identifier: MIT
#pragma once

#include "NetworkData.h"

#include <filesystem>
#include <istream>
#include <string>

namespace Charts::Readers {

/// A port count beyond this is taken for an error.
constexpr int TouchstoneMaximumPortCount = 1024;

/// Reads a Touchstone file: the network parameters of version 1 (1.0 and 1.1), which states the
/// port count in the name of the file as in "name.s2p", or of version 2 (2.0 and 2.1), which states
/// it in the text; the name does not matter there.
///
/// Y, Z, H and G parameters are converted to S parameters. Those of modes in place of ports (see
/// NetworkData::modes) are kept as they are given. Noise data are skipped.
///
/// Throws ReadError at the first line that cannot be used; there are no partial results. May be
/// called on any thread.
[[nodiscard]] NetworkData readTouchstone(const std::filesystem::path &file);

/// Reads from `input`; `name` stands for it in messages. `portCount` stands for what the name of a
/// file says; 0 where it is not known, which does for version 2.
[[nodiscard]] NetworkData readTouchstone(
        std::istream &input, const std::string &name, int portCount = 0);

} // namespace Charts::Readers
