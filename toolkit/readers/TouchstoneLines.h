// SPDX-License-Identifier: MIT
#pragma once

#include "LineReader.h"
#include "Number.h"
#include "ReadError.h"

#include <cstddef>
#include <filesystem>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace Charts::Readers {

/// Appends the parts of `text` between white space to `fields`.
void splitFields(std::string_view text, std::vector<std::string_view> &fields);

/// Reads the lines of a Touchstone file that say something, without their comments, which begin
/// with an exclamation mark, and without white space around them.
///
/// Owned by the reader of the file. Used on one thread, which may be any.
class TouchstoneLines
{
public:
    /// Opens `file`; throws ReadError when it is a directory or cannot be opened.
    explicit TouchstoneLines(const std::filesystem::path &file);

    /// Reads from `input`, which must outlive the reader; `name` stands for it in messages.
    TouchstoneLines(std::istream &input, std::string name);

    /// Steps to the next line that is neither blank nor a mere comment. Returns false at the end of
    /// the file; throws ReadError.
    bool next();

    /// The line; never empty after next() has returned true. Valid until the next call of it, as
    /// are the fields.
    [[nodiscard]] std::string_view text() const noexcept { return m_text; }

    /// The parts of the line between white space.
    [[nodiscard]] const std::vector<std::string_view> &fields() const noexcept { return m_fields; }

    [[nodiscard]] bool isKeyword() const noexcept { return m_text.starts_with('['); }
    [[nodiscard]] bool isOptionLine() const noexcept { return m_text.starts_with('#'); }

    /// The field as a number; `index` counts from 0. Throws ReadError with `what` standing for the
    /// field when it is no finite number.
    [[nodiscard]] double number(std::size_t index, std::string_view what) const;

    /// The number of the line, counted from 1.
    [[nodiscard]] std::size_t lineNumber() const noexcept { return m_lines.number(); }

    [[nodiscard]] const std::string &name() const noexcept { return m_lines.name(); }

    /// An error about the whole file, about the present line, about one of its fields (`index`
    /// counts from 0) or about a line before it.
    [[nodiscard]] ReadError fileError(std::string cause) const;
    [[nodiscard]] ReadError lineError(std::string cause) const;
    [[nodiscard]] ReadError fieldError(
            std::size_t index, std::string_view what, std::string_view complaint) const;
    [[nodiscard]] ReadError errorAt(std::size_t line, std::string cause) const;

private:
    LineReader m_lines;
    std::string_view m_text;
    std::vector<std::string_view> m_fields;
};

/// Reads a number whose exponent may be marked with the letter D, as Fortran does it.
[[nodiscard]] ParsedNumber<double> parseTouchstoneNumber(std::string_view text);

/// What is wrong with a number, as the end of a sentence; empty for a finite one.
[[nodiscard]] std::string_view complaintAbout(NumberStatus status);

/// `count` and `noun`, which is given an s where there is not one of it.
[[nodiscard]] std::string countOf(std::size_t count, std::string_view noun);

} // namespace Charts::Readers
