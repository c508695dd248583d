// SPDX-License-Identifier: MIT
#include "Text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Charts::Readers {

namespace {

char lowered(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of(WhiteSpace), text.size());
    return text.substr(begin, text.find_last_not_of(WhiteSpace) + 1 - begin);
}

bool isSameWord(std::string_view left, std::string_view right)
{
    return std::ranges::equal(left, right, {}, lowered, lowered);
}

std::string shortestText(double value)
{
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

} // namespace Charts::Readers
