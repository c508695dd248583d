// SPDX-License-Identifier: MIT
#include "TouchstoneKeyword.h"

#include "Text.h"
#include "TouchstoneLines.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Charts::Readers {

namespace {

using Entry = std::pair<std::string_view, TouchstoneKeyword>;

// Where a keyword has two names, the first is that of messages.
constexpr std::array Keywords{
        Entry{"Version", TouchstoneKeyword::Version},
        Entry{"Number of Ports", TouchstoneKeyword::NumberOfPorts},
        Entry{"Two-Port Data Order", TouchstoneKeyword::TwoPortDataOrder},
        // The text that publishes version 2.0 uses both names.
        Entry{"Two-Port Order", TouchstoneKeyword::TwoPortDataOrder},
        Entry{"Number of Frequencies", TouchstoneKeyword::NumberOfFrequencies},
        Entry{"Number of Noise Frequencies", TouchstoneKeyword::NumberOfNoiseFrequencies},
        Entry{"Reference", TouchstoneKeyword::Reference},
        Entry{"Matrix Format", TouchstoneKeyword::MatrixFormat},
        Entry{"Mixed-Mode Order", TouchstoneKeyword::MixedModeOrder},
        Entry{"Begin Information", TouchstoneKeyword::BeginInformation},
        Entry{"End Information", TouchstoneKeyword::EndInformation},
        Entry{"Network Data", TouchstoneKeyword::NetworkData},
        Entry{"Noise Data", TouchstoneKeyword::NoiseData},
        Entry{"End", TouchstoneKeyword::End},
};

/// The words of `text` with one space between them.
std::string withSingleSpaces(std::string_view text)
{
    std::vector<std::string_view> words;
    splitFields(text, words);
    std::string spaced;
    for (const std::string_view word : words)
        spaced.append(spaced.empty() ? "" : " ").append(word);
    return spaced;
}

} // namespace

std::string textOf(TouchstoneKeyword keyword)
{
    const auto *const found = std::ranges::find(Keywords, keyword, &Entry::second);
    return std::string("[").append(found->first).append("]");
}

std::optional<TouchstoneKeyword> keywordOf(const TouchstoneLines &lines)
{
    const std::size_t closing = lines.text().find(']');
    if (closing == std::string_view::npos)
        return std::nullopt;
    const std::string name = withSingleSpaces(lines.text().substr(1, closing - 1));
    const auto *const found = std::ranges::find_if(
            Keywords, [&name](const Entry &entry) { return isSameWord(entry.first, name); });
    if (found == Keywords.end())
        return std::nullopt;
    return found->second;
}

TouchstoneKeyword requireKeyword(const TouchstoneLines &lines)
{
    const std::optional<TouchstoneKeyword> keyword = keywordOf(lines);
    if (keyword.has_value())
        return *keyword;
    const std::size_t closing = lines.text().find(']');
    if (closing == std::string_view::npos)
        throw lines.lineError("bracket is not closed");
    throw lines.lineError(
            "keyword " + excerpt(lines.text().substr(0, closing + 1)) + " is not known");
}

std::vector<std::string_view> argumentsOf(const TouchstoneLines &lines)
{
    std::vector<std::string_view> arguments;
    splitFields(lines.text().substr(lines.text().find(']') + 1), arguments);
    return arguments;
}

} // namespace Charts::Readers
