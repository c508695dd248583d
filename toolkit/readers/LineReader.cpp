// SPDX-License-Identifier: MIT
#include "LineReader.h"

#include "ReadError.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace Charts::Readers {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

} // namespace

LineReader::LineReader(const std::filesystem::path &file)
    : m_name(file.string())
    , m_input(m_file)
{
    // A directory can be opened like a file and fails only when it is read, without a reason.
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored))
        throw ReadError(m_name, "cannot open: Is a directory");

    errno = 0;
    m_file.open(file, std::ios::in | std::ios::binary);
    if (!m_file.is_open()) {
        const int reason = errno;
        throw ReadError(
                m_name, reason == 0 ? "cannot open"
                                    : "cannot open: " + std::generic_category().message(reason));
    }
}

LineReader::LineReader(std::istream &input, std::string name)
    : m_name(std::move(name))
    , m_input(input)
{
}

bool LineReader::next()
{
    m_straddling.clear();
    while (!m_unread.empty() || fill()) {
        const std::size_t lineFeed = m_unread.find('\n');
        const bool complete = lineFeed != std::string_view::npos;
        const std::string_view piece = complete ? m_unread.substr(0, lineFeed + 1) : m_unread;
        checkPiece(piece);
        m_unread.remove_prefix(piece.size());

        if (complete && m_straddling.empty()) {
            m_text = piece;
            ++m_number;
            return true;
        }
        m_straddling += piece;
        if (complete)
            break;
    }

    m_text = m_straddling;
    if (m_text.empty())
        return false;
    ++m_number;
    return true;
}

bool LineReader::fill()
{
    if (!m_input.good()) {
        if (m_input.bad() || !m_input.eof())
            throw ReadError(m_name, "cannot read");
        return false;
    }

    m_input.read(m_chunk.data(), static_cast<std::streamsize>(m_chunk.size()));
    if (m_input.bad())
        throw ReadError(m_name, "cannot read");
    m_unread = {m_chunk.data(), static_cast<std::size_t>(m_input.gcount())};

    if (!std::exchange(m_started, true) && m_unread.starts_with(ByteOrderMark))
        m_unread.remove_prefix(ByteOrderMark.size());
    return !m_unread.empty();
}

void LineReader::checkPiece(std::string_view piece) const
{
    if (piece.find('\0') != std::string_view::npos)
        throw ReadError(m_name, m_number + 1, 0, "not a text file: there is a NUL byte");
    if (m_straddling.size() + piece.size() > MaximumLength) {
        throw ReadError(m_name, m_number + 1, 0,
                "line is longer than " + std::to_string(MaximumLength) + " bytes");
    }
}

} // namespace Charts::Readers
