// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace Charts::Readers {

/// Reads the lines of a text file one after another, for readers of line-oriented formats.
///
/// It asks its stream for chunks of fixed size and holds one of them, plus one line where a line
/// straddles chunks, whatever the size of the file. A byte order mark of UTF-8 at the start is
/// skipped. A NUL byte or a line beyond MaximumLength is an error, so that a binary file ends
/// quickly and clearly.
///
/// Owned by the reader of the format. Used on one thread, which may be any.
class LineReader
{
public:
    static constexpr std::size_t ChunkSize = std::size_t(64) * 1024;
    static constexpr std::size_t MaximumLength = std::size_t(1024) * 1024;

    /// Opens `file`; throws ReadError when it is a directory or cannot be opened.
    explicit LineReader(const std::filesystem::path &file);

    /// Reads from `input`, which must outlive the reader; `name` stands for it in messages.
    LineReader(std::istream &input, std::string name);

    LineReader(const LineReader &) = delete;
    LineReader &operator=(const LineReader &) = delete;

    /// Steps to the next line. Returns false at the end of the file; throws ReadError.
    bool next();

    /// The line with its line feed, which only the last line of a file may lack. Valid until the
    /// next call of next().
    [[nodiscard]] std::string_view text() const noexcept { return m_text; }

    /// The number of the line, counted from 1; 0 before the first.
    [[nodiscard]] std::size_t number() const noexcept { return m_number; }

    [[nodiscard]] const std::string &name() const noexcept { return m_name; }

private:
    bool fill();
    void checkPiece(std::string_view piece) const;

    std::string m_name;
    std::ifstream m_file;
    std::istream &m_input;

    // m_chunk    |.....already read.....|.....m_unread.....|
    std::vector<char> m_chunk = std::vector<char>(ChunkSize);
    std::string_view m_unread;
    bool m_started = false;

    std::string m_straddling;
    std::string_view m_text;
    std::size_t m_number = 0;
};

} // namespace Charts::Readers
