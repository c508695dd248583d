// SPDX-License-Identifier: MIT
#include "TouchstoneOptions.h"

#include "Text.h"
#include "TouchstoneLines.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Charts::Readers {

namespace {

template<typename T>
using Word = std::pair<std::string_view, T>;

constexpr std::array FrequencyUnits{Word<double>{"Hz", 1.0}, Word<double>{"kHz", 1e3},
        Word<double>{"MHz", 1e6}, Word<double>{"GHz", 1e9}};

constexpr std::array Kinds{Word<ParameterKind>{"S", ParameterKind::S},
        Word<ParameterKind>{"Y", ParameterKind::Y}, Word<ParameterKind>{"Z", ParameterKind::Z},
        Word<ParameterKind>{"H", ParameterKind::H}, Word<ParameterKind>{"G", ParameterKind::G}};

constexpr std::array Formats{Word<ComplexFormat>{"DB", ComplexFormat::DecibelAngle},
        Word<ComplexFormat>{"MA", ComplexFormat::MagnitudeAngle},
        Word<ComplexFormat>{"RI", ComplexFormat::RealImaginary}};

ReadError optionError(
        const TouchstoneLines &lines, std::string_view option, std::string_view complaint)
{
    return lines.lineError("option " + excerpt(option).append(complaint));
}

/// Takes the option where it is one of the words. One that is given twice may well mean two
/// different things.
template<typename T, std::size_t Count>
bool take(const TouchstoneLines &lines, std::string_view option,
        const std::array<Word<T>, Count> &words, std::optional<T> &value)
{
    const auto found = std::ranges::find_if(
            words, [option](const Word<T> &word) { return isSameWord(word.first, option); });
    if (found == words.end())
        return false;
    if (value.has_value())
        throw optionError(lines, option, " follows another one of its sort");
    value = found->second;
    return true;
}

} // namespace

TouchstoneOptions parseTouchstoneOptions(const TouchstoneLines &lines)
{
    // The first option may follow the number sign at once.
    std::vector<std::string_view> words;
    splitFields(lines.text().substr(1), words);

    std::optional<double> frequencyUnit;
    std::optional<ParameterKind> kind;
    std::optional<ComplexFormat> format;
    std::optional<double> resistance;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (isSameWord(words[i], "R")) {
            if (resistance.has_value())
                throw optionError(lines, words[i], " follows another one of its sort");
            if (++i == words.size())
                throw optionError(lines, words[i - 1], " has no resistance behind it");
            resistance = parseResistance(lines, words[i]);
        } else if (!take(lines, words[i], FrequencyUnits, frequencyUnit)
                   && !take(lines, words[i], Kinds, kind)
                   && !take(lines, words[i], Formats, format)) {
            throw optionError(lines, words[i], " is not known");
        }
    }

    TouchstoneOptions options;
    options.frequencyUnit = frequencyUnit.value_or(options.frequencyUnit);
    options.kind = kind.value_or(options.kind);
    options.format = format.value_or(options.format);
    options.resistance = resistance.value_or(options.resistance);
    return options;
}

double parseResistance(const TouchstoneLines &lines, std::string_view text)
{
    const ParsedNumber<double> number = parseTouchstoneNumber(text);
    const std::string_view complaint = number.status == NumberStatus::Finite && !(number.value > 0)
                                               ? " is not positive"
                                               : complaintAbout(number.status);
    if (!complaint.empty())
        throw lines.lineError("reference resistance " + excerpt(text).append(complaint));
    return number.value;
}

} // namespace Charts::Readers
