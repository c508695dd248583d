// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Charts::Readers {

/// What a reader throws when a file cannot be read or does not hold what it should.
///
/// what() is one line, fit to be the last line of a program's output:
///
///     FILE:LINE:COLUMN: CAUSE      a field
///     FILE:LINE: CAUSE             a whole row
///     FILE: CAUSE                  a whole file
///
/// Thrown by value and owned by whoever catches it. Immutable.
class ReadError : public std::runtime_error
{
public:
    /// An error about the whole file.
    ReadError(std::string file, std::string cause);

    /// An error about a row (`column` 0) or a field. Lines and columns count from 1; a column is
    /// the number of the field in its row, not a position in the text.
    ReadError(std::string file, std::size_t line, std::size_t column, std::string cause);

    /// The file as the caller named it.
    [[nodiscard]] const std::string &file() const noexcept { return m_file; }
    /// The line on which the row begins, 0 when the error is about the whole file.
    [[nodiscard]] std::size_t line() const noexcept { return m_line; }
    /// The number of the field in its row, 0 when the error is about the whole row or file.
    [[nodiscard]] std::size_t column() const noexcept { return m_column; }
    /// What is wrong, without the place.
    [[nodiscard]] const std::string &cause() const noexcept { return m_cause; }

private:
    std::string m_file;
    std::size_t m_line = 0;
    std::size_t m_column = 0;
    std::string m_cause;
};

/// `text` with everything escaped that would end the line or disturb a terminal: control characters
/// as `\n`, `\t`, `\r` or `\xNN`, and bytes that are not well-formed UTF-8 as `\xNN`.
[[nodiscard]] std::string oneLine(std::string_view text);

/// `text` between double quotes for a message, escaped like oneLine(). At most 40 bytes of it are
/// shown; an ellipsis after the closing quote says that there is more.
[[nodiscard]] std::string excerpt(std::string_view text);

} // namespace Charts::Readers
