// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <vector>

namespace Gallery {

/*! What one core has done since the machine started, in the kernel's ticks. */
struct CpuTimes
{
    long long busy = 0;
    long long total = 0;
};

/*!
    Reads the lines "cpu0 ..." and on of the kernel's statistics, in their order: user, nice,
    system, idle, iowait, irq, softirq and steal; the guest columns are contained in user and nice.
*/
[[nodiscard]] std::vector<CpuTimes> readCpuTimes(std::istream &statistics);

/*! Busy share between two readings in percent; 0 when no time has passed. */
[[nodiscard]] float loadBetween(const CpuTimes &before, const CpuTimes &now);

} // namespace Gallery
