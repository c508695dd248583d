// SPDX-License-Identifier: MIT
#include "TouchstonePromises.h"

#include "readers/Touchstone.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>

// Any text is either read as a network that keeps its promises or refused with one clear line, for
// each number of ports that a file's name may state.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    for (int portCount = 0; portCount <= 4; ++portCount) {
        std::istringstream input(text);
        std::string broken;
        try {
            broken = brokenPromise(Charts::Readers::readTouchstone(input, "fuzz", portCount));
        } catch (const Charts::Readers::ReadError &error) {
            broken = brokenPromise(error, "fuzz", text);
        }
        if (!broken.empty()) {
            std::fprintf(stderr, "%d ports: %s\n", portCount, broken.c_str());
            std::abort();
        }
    }
    return 0;
}
