// SPDX-License-Identifier: MIT
#include "CpuTimes.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string>

namespace Gallery {

std::vector<CpuTimes> readCpuTimes(std::istream &statistics)
{
    constexpr int columnCount = 8;
    constexpr int idleColumn = 3;
    constexpr int ioWaitColumn = 4;

    std::vector<CpuTimes> cores;
    for (std::string line; std::getline(statistics, line);) {
        // The line "cpu  ..." without a number is the sum of all.
        if (!line.starts_with("cpu") || line.size() < 4
                || std::isdigit(static_cast<unsigned char>(line[3])) == 0)
            continue;
        std::istringstream fields(line);
        std::string name;
        fields >> name;
        CpuTimes times;
        long long ticks = 0;
        for (int column = 0; column < columnCount && fields >> ticks; ++column) {
            times.total += ticks;
            if (column != idleColumn && column != ioWaitColumn)
                times.busy += ticks;
        }
        cores.push_back(times);
    }
    return cores;
}

float loadBetween(const CpuTimes &before, const CpuTimes &now)
{
    const long long total = now.total - before.total;
    if (total <= 0)
        return 0.0F;
    const auto load =
            100.0F * static_cast<float>(now.busy - before.busy) / static_cast<float>(total);
    return std::clamp(load, 0.0F, 100.0F);
}

} // namespace Gallery
