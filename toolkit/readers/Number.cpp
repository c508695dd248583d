// SPDX-License-Identifier: MIT
#include "Number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

namespace Charts::Readers {

namespace {

/// Whether a well-formed number that does not fit its type is too close to zero rather than too
/// large, which std::from_chars does not tell: the power of ten of its first digit that is not
/// zero.
bool isTiny(std::string_view text)
{
    const std::size_t exponentAt = std::min(text.find_first_of("eE"), text.size());
    const std::string_view mantissa = text.substr(0, exponentAt);
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos)
        return true;

    long long exponent = 0;
    if (exponentAt < text.size()) {
        std::string_view digits = text.substr(exponentAt + 1);
        if (digits.starts_with('+'))
            digits.remove_prefix(1);
        const auto [end, failure] =
                std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (failure == std::errc::result_out_of_range)
            return digits.starts_with('-');
    }

    const auto point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto position = static_cast<long long>(first);
    const long long power = position < point ? point - position - 1 : point - position;
    return exponent + power < 0;
}

template<typename T>
ParsedNumber<T> parseWithPoint(std::string_view text)
{
    // std::from_chars knows no plus sign.
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return {};
    }

    ParsedNumber<T> number;
    const char *const textEnd = text.data() + text.size();
    const auto [end, failure] = std::from_chars(text.data(), textEnd, number.value);
    if (end != textEnd || failure == std::errc::invalid_argument)
        return {};
    if (failure == std::errc::result_out_of_range) {
        if (isTiny(text))
            return {T(0), NumberStatus::Finite};
        return {T(0), NumberStatus::OutOfRange};
    }
    number.status = std::isfinite(number.value) ? NumberStatus::Finite : NumberStatus::NotFinite;
    return number;
}

template<typename T>
ParsedNumber<T> parse(std::string_view text, DecimalMark mark)
{
    if (mark == DecimalMark::Point || text.find(',') == std::string_view::npos)
        return parseWithPoint<T>(text);

    // A second mark of either kind ends the number early, so grouped digits are refused.
    std::string pointed(text);
    std::replace(pointed.begin(), pointed.end(), ',', '.');
    return parseWithPoint<T>(pointed);
}

} // namespace

ParsedNumber<double> parseDouble(std::string_view text, DecimalMark mark)
{
    return parse<double>(text, mark);
}

ParsedNumber<float> parseFloat(std::string_view text, DecimalMark mark)
{
    return parse<float>(text, mark);
}

} // namespace Charts::Readers
