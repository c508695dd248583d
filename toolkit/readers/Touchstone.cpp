// SPDX-License-Identifier: MIT
#include "Touchstone.h"

#include "Text.h"
#include "TouchstoneHeader.h"
#include "TouchstoneKeyword.h"
#include "TouchstoneLines.h"
#include "TouchstonePoints.h"

#include <string_view>

namespace Charts::Readers {

namespace {

/// The digits in the extension of a file, which states the port count as in ".s2p"; empty where the
/// extension is another one.
std::string portCountInName(const std::filesystem::path &file)
{
    const std::string extension = file.extension().string();
    if (extension.size() < 4 || !isSameWord(extension.substr(0, 2), ".s")
            || !isSameWord(extension.substr(extension.size() - 1), "p")) {
        return {};
    }
    const std::string digits = extension.substr(2, extension.size() - 3);
    return digits.find_first_not_of("0123456789") == std::string::npos ? digits : std::string();
}

/// Noise data are not kept, but what is skipped as such should be nothing else.
void skipNoise(const TouchstoneLines &lines)
{
    const std::size_t count = lines.fields().size();
    if (count != TouchstonePoints::NoiseFieldCount) {
        throw lines.lineError(countOf(count, "value") + " in a line of noise data, "
                              + std::to_string(TouchstonePoints::NoiseFieldCount)
                              + " are expected");
    }
    for (std::size_t i = 0; i < count; ++i)
        (void)lines.number(i, "value");
}

/// Reads the data of version 1, which begin with the present line.
void readUnmarkedData(TouchstoneLines &lines, TouchstonePoints &points)
{
    bool isNoise = false;
    do {
        if (lines.isOptionLine())
            continue;
        if (lines.isKeyword()) {
            throw lines.lineError(textOf(requireKeyword(lines))
                                  + " in a file that does not begin with [Version]");
        }
        isNoise = isNoise || points.isNoise();
        if (isNoise)
            skipNoise(lines);
        else
            points.takeLine();
    } while (lines.next());
}

/// Reads the data of version 2, which begin behind the present line.
void readMarkedData(
        TouchstoneLines &lines, TouchstonePoints &points, std::size_t expectedPointCount)
{
    bool isNoise = false;
    while (lines.next()) {
        if (lines.isOptionLine())
            continue;
        if (lines.isKeyword()) {
            const TouchstoneKeyword keyword = requireKeyword(lines);
            if (keyword == TouchstoneKeyword::End)
                break;
            if (keyword != TouchstoneKeyword::NoiseData || isNoise)
                throw lines.lineError(textOf(keyword) + " is out of place");
            points.checkComplete();
            isNoise = true;
        } else if (isNoise) {
            skipNoise(lines);
        } else {
            points.takeLine();
        }
    }

    points.checkComplete();
    if (points.pointCount() != expectedPointCount) {
        throw lines.fileError(countOf(points.pointCount(), "frequency point")
                              + " where [Number of Frequencies] is "
                              + std::to_string(expectedPointCount));
    }
}

NetworkData readNetwork(TouchstoneLines &lines, const std::string &portCount)
{
    const TouchstoneHeader header = readTouchstoneHeader(lines, portCount);
    TouchstonePoints points(lines, header);
    if (header.frequencyCount.has_value())
        readMarkedData(lines, points, *header.frequencyCount);
    else
        readUnmarkedData(lines, points);
    return points.finish();
}

} // namespace

NetworkData readTouchstone(const std::filesystem::path &file)
{
    TouchstoneLines lines(file);
    return readNetwork(lines, portCountInName(file));
}

NetworkData readTouchstone(std::istream &input, const std::string &name, int portCount)
{
    TouchstoneLines lines(input, name);
    return readNetwork(lines, portCount == 0 ? std::string() : std::to_string(portCount));
}

} // namespace Charts::Readers
