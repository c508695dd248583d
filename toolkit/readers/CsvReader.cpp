// SPDX-License-Identifier: MIT
#include "CsvReader.h"

#include <csv.h>

#include <algorithm>
#include <cassert>
#include <new>
#include <utility>

namespace Charts::Readers {

namespace {

// Fields grow by this step inside the C library, whose own default of 128 bytes makes long fields
// expensive.
constexpr std::size_t ParserBlockSize = 4096;

// A carriage return is treated as a space, not as the end of a row: it then vanishes before the
// line feed and around a closing quote, stays within quotes, and each row ends with exactly one
// line feed.
int isSpace(unsigned char character)
{
    return character == ' ' || character == '\t' || character == '\r' ? 1 : 0;
}

int isRowEnd(unsigned char character)
{
    return character == '\n' ? 1 : 0;
}

/// The rarer a character is within names, the sooner it is taken for the separator: names in files
/// with semicolons or tabulators may well hold commas. A tabulator behind a comma only aligns. A
/// wrong guess cannot go unnoticed, as the rows of data then have too few fields.
char findSeparator(std::string_view header)
{
    bool inQuotes = false;
    bool tabulatorFound = false;
    char before = '\0';
    for (const char character : header) {
        if (character == '"')
            inQuotes = !inQuotes;
        if (!inQuotes && character == ';')
            return ';';
        if (!inQuotes && character == '\t' && before != ',')
            tabulatorFound = true;
        before = character;
    }
    return tabulatorFound ? '\t' : ',';
}

/// Whether a carriage return outside quotes is followed by more text, as in files that end their
/// lines with carriage returns only.
bool hasLoneCarriageReturn(std::string_view header)
{
    bool inQuotes = false;
    for (std::size_t i = 0; i + 1 < header.size(); ++i) {
        if (header[i] == '"')
            inQuotes = !inQuotes;
        if (!inQuotes && header[i] == '\r'
                && isSpace(static_cast<unsigned char>(header[i + 1])) == 0
                && header[i + 1] != '\n') {
            return true;
        }
    }
    return false;
}

} // namespace

void CsvReader::ParserRelease::operator()(csv_parser *parser) const
{
    csv_free(parser);
    delete parser;
}

CsvReader::CsvReader(const std::filesystem::path &file)
    : m_lines(file)
{
    initialise();
}

CsvReader::CsvReader(std::istream &input, std::string name)
    : m_lines(input, std::move(name))
{
    initialise();
}

CsvReader::~CsvReader() = default;

void CsvReader::initialise()
{
    // Strict, as a quote in the wrong place would otherwise be taken as text and silently swallow
    // separators and line ends up to the next one.
    m_parser.reset(new csv_parser{});
    csv_init(m_parser.get(), CSV_STRICT | CSV_STRICT_FINI);
    csv_set_blk_size(m_parser.get(), ParserBlockSize);
    csv_set_space_func(m_parser.get(), isSpace);
    csv_set_term_func(m_parser.get(), isRowEnd);
}

bool CsvReader::next()
{
    m_text.clear();
    m_ends.clear();
    m_rowBegun = false;
    m_rowEnded = false;
    m_rowLength = 0;

    while (m_lines.next()) {
        if (!m_rowBegun) {
            if (isSkipped(m_lines.text()))
                continue;
            m_rowBegun = true;
            m_line = m_lines.number();
        }
        take(m_lines.text());
        if (m_rowEnded)
            return true;
    }

    if (m_rowBegun)
        finish();
    return m_rowEnded;
}

std::string_view CsvReader::field(std::size_t index) const
{
    assert(index < m_ends.size());
    const std::size_t begin = index == 0 ? 0 : m_ends[index - 1];
    return std::string_view(m_text).substr(begin, m_ends[index] - begin);
}

ReadError CsvReader::error(std::size_t column, std::string cause) const
{
    return {name(), m_line, column, std::move(cause)};
}

bool CsvReader::isSkipped(std::string_view line) const
{
    // Where tabulators separate, a line of nothing else is a row of empty fields.
    return line.starts_with('#') || std::all_of(line.begin(), line.end(), [this](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return character != m_separator && (isSpace(byte) != 0 || isRowEnd(byte) != 0);
    });
}

void CsvReader::take(std::string_view line)
{
    m_rowLength += line.size();
    if (m_rowLength > MaximumRowLength) {
        throw error(0, "row is longer than " + std::to_string(MaximumRowLength)
                               + " bytes; a quote may not be closed");
    }

    if (m_separator != '\0') {
        parse(line);
        return;
    }

    m_header += line;
    if (std::count(line.begin(), line.end(), '"') % 2 != 0)
        m_headerQuoteOpen = !m_headerQuoteOpen;
    if (!m_headerQuoteOpen)
        takeHeader();
}

void CsvReader::takeHeader()
{
    if (hasLoneCarriageReturn(m_header)) {
        throw error(0, "lines end with carriage returns only; line feeds are expected");
    }
    m_separator = findSeparator(m_header);
    csv_set_delim(m_parser.get(), static_cast<unsigned char>(m_separator));
    parse(std::exchange(m_header, {}));
}

void CsvReader::parse(std::string_view text)
{
    const std::size_t parsed =
            csv_parse(m_parser.get(), text.data(), text.size(), endField, endRow, this);
    if (m_failure)
        std::rethrow_exception(m_failure);
    if (parsed == text.size())
        return;
    if (csv_error(m_parser.get()) != CSV_EPARSE)
        throw std::bad_alloc();
    throw error(fieldCount() + 1,
            "misplaced quote; quotes enclose a whole field, and a quote within "
            "is doubled");
}

void CsvReader::finish()
{
    if (m_separator == '\0')
        takeHeader();
    if (m_rowEnded)
        return;
    const int result = csv_fini(m_parser.get(), endField, endRow, this);
    if (m_failure)
        std::rethrow_exception(m_failure);
    if (result != 0)
        throw error(fieldCount() + 1, "quote is not closed");
}

void CsvReader::endField(void *text, std::size_t length, void *reader) noexcept
{
    auto *self = static_cast<CsvReader *>(reader);
    if (self->m_failure)
        return;
    try {
        if (length != 0)
            self->m_text.append(static_cast<const char *>(text), length);
        self->m_ends.push_back(self->m_text.size());
    } catch (...) {
        self->m_failure = std::current_exception();
    }
}

void CsvReader::endRow(int /*character*/, void *reader) noexcept
{
    static_cast<CsvReader *>(reader)->m_rowEnded = true;
}

} // namespace Charts::Readers
