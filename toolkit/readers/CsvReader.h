// SPDX-License-Identifier: MIT
#pragma once

#include "LineReader.h"
#include "ReadError.h"

#include <cstddef>
#include <exception>
#include <filesystem>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct csv_parser;

namespace Charts::Readers {

/// Reads the rows of a file of separated values one after another.
///
/// The first row is the header. The character that separates its fields separates those of all
/// rows: a semicolon where there is one outside quotes, else a tabulator, else a comma. Fields may
/// stand between double quotes and then hold separators, line breaks and doubled quotes. Spaces
/// around a field that is not quoted do not belong to it. Blank lines and lines that begin with `#`
/// are skipped, except within quotes. Lines end with a line feed or with carriage return and line
/// feed; the last may end with the file.
///
/// Memory does not depend on the size of the file: one chunk of text and one row are held. A row
/// beyond MaximumRowLength is an error, as a quote that is never closed would make the rest of the
/// file one row.
///
/// Owned by the caller. Used on one thread, which may be any.
class CsvReader
{
public:
    static constexpr std::size_t MaximumRowLength = LineReader::MaximumLength;

    /// Opens `file`; throws ReadError when it is a directory or cannot be opened.
    explicit CsvReader(const std::filesystem::path &file);

    /// Reads from `input`, which must outlive the reader; `name` stands for it in messages.
    CsvReader(std::istream &input, std::string name);

    ~CsvReader();
    CsvReader(const CsvReader &) = delete;
    CsvReader &operator=(const CsvReader &) = delete;

    /// Steps to the next row, the header being the first. Returns false at the end of the file;
    /// throws ReadError, after which the reader is of no further use.
    bool next();

    [[nodiscard]] std::size_t fieldCount() const noexcept { return m_ends.size(); }

    /// The text of the field without its quotes; `index` counts from 0 and is below fieldCount().
    /// Valid until the next call of next().
    [[nodiscard]] std::string_view field(std::size_t index) const;

    /// The line on which the row begins, counted from 1; 0 before the first row.
    [[nodiscard]] std::size_t line() const noexcept { return m_line; }

    /// The number of lines read so far, among them comments and blank lines.
    [[nodiscard]] std::size_t linesRead() const noexcept { return m_lines.number(); }

    /// The separator of the fields; NUL before the header has been read.
    [[nodiscard]] char separator() const noexcept { return m_separator; }

    [[nodiscard]] const std::string &name() const noexcept { return m_lines.name(); }

    /// An error about the present row (`column` 0) or about one of its fields, for the caller to
    /// throw when the row does not say what it should.
    [[nodiscard]] ReadError error(std::size_t column, std::string cause) const;

private:
    struct ParserRelease
    {
        void operator()(csv_parser *parser) const;
    };

    // Called by the C library, through which no exception may pass.
    static void endField(void *text, std::size_t length, void *reader) noexcept;
    static void endRow(int character, void *reader) noexcept;

    void initialise();
    [[nodiscard]] bool isSkipped(std::string_view line) const;
    void take(std::string_view line);
    void takeHeader();
    void parse(std::string_view text);
    void finish();

    LineReader m_lines;
    std::unique_ptr<csv_parser, ParserRelease> m_parser;
    char m_separator = '\0';

    // The header is collected as text until its last line, since its separator is sought first.
    std::string m_header;
    bool m_headerQuoteOpen = false;

    // The fields of the row, one behind the other, and where each of them ends in m_text.
    std::string m_text;
    std::vector<std::size_t> m_ends;
    std::size_t m_line = 0;
    std::size_t m_rowLength = 0;
    bool m_rowBegun = false;
    bool m_rowEnded = false;
    std::exception_ptr m_failure;
};

} // namespace Charts::Readers
