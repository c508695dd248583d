// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_BOUNDRANGETEXT_H
#define CHARTS_TEST_BOUNDRANGETEXT_H

#include <ChartsLibrary/BoundRange.h>

#include <QtCore/QString>

#include <algorithm>
#include <vector>

/*! The stored ranges in their order. Works on a copy, because only pop() gives them away. */
inline std::vector<Charts::Range<int>> storedRanges(Charts::BoundRange set)
{
    std::vector<Charts::Range<int>> ranges;
    while (!set.isEmpty())
        ranges.push_back(set.pop(false));
    std::reverse(ranges.begin(), ranges.end());
    return ranges;
}

/*! "start+length" of every range, with spaces between them. */
inline QString rangesText(const std::vector<Charts::Range<int>> &ranges)
{
    QString text;
    for (const Charts::Range<int> range : ranges)
        text += QStringLiteral(" %1+%2").arg(range.start).arg(range.length);
    return text.trimmed();
}

#endif
