// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_HEAPUSE_H
#define CHARTS_TEST_HEAPUSE_H

#include <cstdint>

#include <malloc.h>

/*! Bytes that the GUI thread has got from malloc() and that nobody has given back, on whichever thread:
    those of the first arena. What a driver keeps on threads of its own does not show. 0 under a
    sanitizer, which has an allocator of its own. */
[[nodiscard]] inline std::int64_t heapUse()
{
    return static_cast<std::int64_t>(mallinfo2().uordblks);
}

#endif
