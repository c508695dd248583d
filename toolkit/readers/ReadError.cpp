// SPDX-License-Identifier: MIT
#include "ReadError.h"

#include <utility>

namespace Charts::Readers {

namespace {

constexpr std::size_t ExcerptLength = 40;

unsigned char byteAt(std::string_view text, std::size_t position)
{
    return static_cast<unsigned char>(text[position]);
}

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0U) == 0x80U;
}

/// The length of the printable UTF-8 sequence at `position`, 0 where there is none. The ranges of
/// the second byte are those of table 3-7 of the Unicode standard (no overlong forms, no
/// surrogates); the C1 controls and the line and paragraph separators count as not printable.
std::size_t printableLength(std::string_view text, std::size_t position)
{
    const unsigned char first = byteAt(text, position);
    if (first < 0x80U)
        return first >= 0x20U && first != 0x7FU ? 1 : 0;

    const std::size_t length = first >= 0xC2U && first <= 0xDFU   ? 2
                               : first >= 0xE0U && first <= 0xEFU ? 3
                               : first >= 0xF0U && first <= 0xF4U ? 4
                                                                  : 0;
    if (length == 0 || text.size() - position < length)
        return 0;

    const unsigned char second = byteAt(text, position + 1);
    const unsigned char lowest = first == 0xC2U || first == 0xE0U ? 0xA0U
                                 : first == 0xF0U                 ? 0x90U
                                                                  : 0x80U;
    const unsigned char highest = first == 0xEDU ? 0x9FU : first == 0xF4U ? 0x8FU : 0xBFU;
    if (second < lowest || second > highest)
        return 0;
    for (std::size_t i = 2; i < length; ++i) {
        if (!isContinuation(byteAt(text, position + i)))
            return 0;
    }

    const std::string_view sequence = text.substr(position, length);
    return sequence == "\u2028" || sequence == "\u2029" ? 0 : length;
}

std::string escaped(unsigned char byte)
{
    constexpr std::string_view digits = "0123456789abcdef";
    switch (byte) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return {'\\', 'x', digits[byte >> 4U], digits[byte & 0xFU]};
    }
}

std::string message(
        const std::string &file, std::size_t line, std::size_t column, const std::string &cause)
{
    std::string text = oneLine(file);
    if (line != 0) {
        text += ':' + std::to_string(line);
        if (column != 0)
            text += ':' + std::to_string(column);
    }
    return text + ": " + oneLine(cause);
}

} // namespace

ReadError::ReadError(std::string file, std::string cause)
    : ReadError(std::move(file), 0, 0, std::move(cause))
{
}

ReadError::ReadError(std::string file, std::size_t line, std::size_t column, std::string cause)
    : std::runtime_error(message(file, line, column, cause))
    , m_file(std::move(file))
    , m_line(line)
    , m_column(column)
    , m_cause(std::move(cause))
{
}

std::string oneLine(std::string_view text)
{
    std::string line;
    line.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t length = printableLength(text, position);
        if (length == 0) {
            line += escaped(byteAt(text, position));
            ++position;
        } else {
            line += text.substr(position, length);
            position += length;
        }
    }
    return line;
}

std::string excerpt(std::string_view text)
{
    if (text.size() <= ExcerptLength)
        return '"' + oneLine(text) + '"';

    // Step back to the start of a character, unless the text is no UTF-8 anyway.
    std::size_t end = ExcerptLength;
    while (end > ExcerptLength - 3 && isContinuation(byteAt(text, end)))
        --end;
    return '"' + oneLine(text.substr(0, end)) + "\"...";
}

} // namespace Charts::Readers
