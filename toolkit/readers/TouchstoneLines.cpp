// SPDX-License-Identifier: MIT
#include "TouchstoneLines.h"

#include "Text.h"

#include <algorithm>
#include <utility>

namespace Charts::Readers {

void splitFields(std::string_view text, std::vector<std::string_view> &fields)
{
    std::size_t begin = text.find_first_not_of(WhiteSpace);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(WhiteSpace, begin), text.size());
        fields.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(WhiteSpace, end);
    }
}

TouchstoneLines::TouchstoneLines(const std::filesystem::path &file)
    : m_lines(file)
{
}

TouchstoneLines::TouchstoneLines(std::istream &input, std::string name)
    : m_lines(input, std::move(name))
{
}

bool TouchstoneLines::next()
{
    m_fields.clear();
    while (m_lines.next()) {
        const std::string_view line = trimmed(m_lines.text());
        // Such a file would be one long line, and all of it a comment where it begins with one.
        if (line.find('\r') != std::string_view::npos)
            throw lineError(
                    "a carriage return within the line; line feeds are expected to end lines");

        m_text = trimmed(line.substr(0, line.find('!')));
        if (!m_text.empty()) {
            splitFields(m_text, m_fields);
            return true;
        }
    }
    m_text = {};
    return false;
}

double TouchstoneLines::number(std::size_t index, std::string_view what) const
{
    const ParsedNumber<double> number = parseTouchstoneNumber(m_fields[index]);
    if (number.status != NumberStatus::Finite)
        throw fieldError(index, what, complaintAbout(number.status));
    return number.value;
}

ReadError TouchstoneLines::fileError(std::string cause) const
{
    return {name(), std::move(cause)};
}

ReadError TouchstoneLines::lineError(std::string cause) const
{
    return errorAt(lineNumber(), std::move(cause));
}

ReadError TouchstoneLines::fieldError(
        std::size_t index, std::string_view what, std::string_view complaint) const
{
    return {name(), lineNumber(), index + 1,
            std::string(what).append(" ").append(excerpt(m_fields[index])).append(complaint)};
}

ReadError TouchstoneLines::errorAt(std::size_t line, std::string cause) const
{
    return {name(), line, 0, std::move(cause)};
}

ParsedNumber<double> parseTouchstoneNumber(std::string_view field)
{
    const std::size_t mark = field.find_first_of("dD");
    if (mark == std::string_view::npos)
        return parseDouble(field, DecimalMark::Point);
    std::string withE(field);
    withE[mark] = 'e';
    return parseDouble(withE, DecimalMark::Point);
}

std::string_view complaintAbout(NumberStatus status)
{
    switch (status) {
    case NumberStatus::Finite:
        return {};
    case NumberStatus::NotFinite:
        return " is not finite";
    case NumberStatus::OutOfRange:
        return " is out of range";
    case NumberStatus::NotANumber:
        break;
    }
    return " is not a number";
}

std::string countOf(std::size_t count, std::string_view noun)
{
    return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

} // namespace Charts::Readers
