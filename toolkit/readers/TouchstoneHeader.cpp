// SPDX-License-Identifier: MIT
#include "TouchstoneHeader.h"

#include "Text.h"
#include "Touchstone.h"
#include "TouchstoneKeyword.h"
#include "TouchstoneLines.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

namespace Charts::Readers {

namespace {

std::optional<std::size_t> parseCount(std::string_view text)
{
    std::size_t count = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (failure != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return count;
}

std::optional<std::size_t> parsePortCount(std::string_view text)
{
    const std::optional<std::size_t> count = parseCount(text);
    const bool isPossible = count.has_value() && *count >= 1
                            && *count <= static_cast<std::size_t>(TouchstoneMaximumPortCount);
    return isPossible ? count : std::nullopt;
}

std::string impossiblePortCount(std::string_view text)
{
    return "port count " + excerpt(text) + " is not possible; 1 to "
           + std::to_string(TouchstoneMaximumPortCount) + " are";
}

/// Collects what the lines of a header say, and judges it once it is complete.
class HeaderReader
{
public:
    HeaderReader(TouchstoneLines &lines, std::string_view portCount)
        : m_lines(lines)
        , m_statedPortCount(portCount)
    {
    }

    TouchstoneHeader read();

private:
    void takeOptions();
    void takeKeyword(TouchstoneKeyword keyword);
    void takeVersion();
    void takePortCount();
    void takeTwoPortDataOrder();
    void takeMatrixFormat();
    void takeReference(const std::vector<std::string_view> &values);
    void skipInformation();

    [[nodiscard]] std::string_view argument(TouchstoneKeyword keyword) const;
    [[nodiscard]] std::size_t countArgument(TouchstoneKeyword keyword, std::size_t least) const;
    [[nodiscard]] ReadError argumentError(
            TouchstoneKeyword keyword, std::string_view text, std::string_view complaint) const;

    void completeVersion1();
    void completeVersion2();
    void checkKind() const;
    [[noreturn]] void failAtEnd() const;
    void require(bool isGiven, TouchstoneKeyword keyword) const;

    TouchstoneLines &m_lines;
    std::string_view m_statedPortCount;
    TouchstoneHeader m_header;
    std::vector<TouchstoneKeyword> m_keywords;
    bool m_optionsTaken = false;
    // [Reference] may go on in the lines that follow it.
    bool m_referenceOpen = false;
    std::size_t m_referenceLine = 0;
    std::size_t m_modesLine = 0;
};

TouchstoneHeader HeaderReader::read()
{
    while (m_lines.next()) {
        if (m_lines.isOptionLine()) {
            takeOptions();
        } else if (m_lines.isKeyword()) {
            const TouchstoneKeyword keyword = requireKeyword(m_lines);
            takeKeyword(keyword);
            if (keyword == TouchstoneKeyword::NetworkData) {
                completeVersion2();
                return std::move(m_header);
            }
        } else if (m_referenceOpen) {
            takeReference(m_lines.fields());
        } else if (m_header.isVersion2) {
            throw m_lines.lineError("data before [Network Data]");
        } else {
            completeVersion1();
            return std::move(m_header);
        }
    }
    failAtEnd();
}

void HeaderReader::takeOptions()
{
    m_referenceOpen = false;
    // All option lines but the first are ignored, whatever they say.
    if (!m_optionsTaken)
        m_header.options = parseTouchstoneOptions(m_lines);
    m_optionsTaken = true;
}

void HeaderReader::takeKeyword(TouchstoneKeyword keyword)
{
    m_referenceOpen = false;
    if (keyword != TouchstoneKeyword::Version && !m_header.isVersion2)
        throw m_lines.lineError(textOf(keyword) + " in a file that does not begin with [Version]");
    if (keyword != TouchstoneKeyword::BeginInformation) {
        if (std::ranges::find(m_keywords, keyword) != m_keywords.end())
            throw m_lines.lineError(textOf(keyword) + " stands here again");
        m_keywords.push_back(keyword);
    }

    switch (keyword) {
    case TouchstoneKeyword::Version:
        takeVersion();
        break;
    case TouchstoneKeyword::NumberOfPorts:
        takePortCount();
        break;
    case TouchstoneKeyword::TwoPortDataOrder:
        takeTwoPortDataOrder();
        break;
    case TouchstoneKeyword::NumberOfFrequencies:
        m_header.frequencyCount = countArgument(keyword, 1);
        break;
    case TouchstoneKeyword::NumberOfNoiseFrequencies:
        (void)countArgument(keyword, 0);
        break;
    case TouchstoneKeyword::Reference:
        m_referenceLine = m_lines.lineNumber();
        m_referenceOpen = true;
        takeReference(argumentsOf(m_lines));
        break;
    case TouchstoneKeyword::MatrixFormat:
        takeMatrixFormat();
        break;
    case TouchstoneKeyword::MixedModeOrder: {
        const std::vector<std::string_view> modes = argumentsOf(m_lines);
        m_header.modes.assign(modes.begin(), modes.end());
        m_modesLine = m_lines.lineNumber();
        break;
    }
    case TouchstoneKeyword::BeginInformation:
        skipInformation();
        break;
    case TouchstoneKeyword::NetworkData:
        if (!argumentsOf(m_lines).empty())
            throw m_lines.lineError("data in the line of [Network Data]");
        break;
    case TouchstoneKeyword::EndInformation:
    case TouchstoneKeyword::NoiseData:
    case TouchstoneKeyword::End:
        throw m_lines.lineError(textOf(keyword) + " is out of place");
    }
}

void HeaderReader::takeVersion()
{
    const std::string_view version = argument(TouchstoneKeyword::Version);
    if (version != "2.0" && version != "2.1") {
        throw argumentError(TouchstoneKeyword::Version, version,
                " is not known; 2.0 and 2.1 are, and older files do not state it");
    }
    m_header.isVersion2 = true;
}

void HeaderReader::takePortCount()
{
    const std::string_view text = argument(TouchstoneKeyword::NumberOfPorts);
    const std::optional<std::size_t> count = parsePortCount(text);
    if (!count.has_value())
        throw m_lines.lineError(impossiblePortCount(text));
    m_header.portCount = *count;
}

void HeaderReader::takeTwoPortDataOrder()
{
    const std::string_view order = argument(TouchstoneKeyword::TwoPortDataOrder);
    if (order != "12_21" && order != "21_12") {
        throw argumentError(
                TouchstoneKeyword::TwoPortDataOrder, order, " is not known; 12_21 and 21_12 are");
    }
    m_header.isColumnByColumn = order == "21_12";
}

void HeaderReader::takeMatrixFormat()
{
    const std::string_view format = argument(TouchstoneKeyword::MatrixFormat);
    if (isSameWord(format, "Full")) {
        m_header.matrixFormat = MatrixFormat::Full;
    } else if (isSameWord(format, "Lower")) {
        m_header.matrixFormat = MatrixFormat::Lower;
    } else if (isSameWord(format, "Upper")) {
        m_header.matrixFormat = MatrixFormat::Upper;
    } else {
        throw argumentError(TouchstoneKeyword::MatrixFormat, format,
                " is not known; Full, Lower and Upper are");
    }
}

void HeaderReader::takeReference(const std::vector<std::string_view> &values)
{
    for (const std::string_view value : values)
        m_header.reference.push_back(parseResistance(m_lines, value));
    // More than that many are an error anyway, which then need not wait for the end of a huge file.
    if (m_header.reference.size() > static_cast<std::size_t>(TouchstoneMaximumPortCount))
        throw m_lines.errorAt(m_referenceLine, "[Reference] has too many values");
}

void HeaderReader::skipInformation()
{
    const std::size_t begin = m_lines.lineNumber();
    while (m_lines.next()) {
        if (m_lines.isKeyword() && keywordOf(m_lines) == TouchstoneKeyword::EndInformation)
            return;
    }
    throw m_lines.errorAt(begin, "[Begin Information] has no [End Information]");
}

std::string_view HeaderReader::argument(TouchstoneKeyword keyword) const
{
    const std::vector<std::string_view> arguments = argumentsOf(m_lines);
    if (arguments.size() != 1) {
        throw m_lines.lineError(
                textOf(keyword) + " has " + countOf(arguments.size(), "value") + ", 1 is expected");
    }
    return arguments.front();
}

std::size_t HeaderReader::countArgument(TouchstoneKeyword keyword, std::size_t least) const
{
    const std::string_view text = argument(keyword);
    const std::optional<std::size_t> count = parseCount(text);
    if (!count.has_value() || *count < least)
        throw argumentError(keyword, text, " is not a count");
    return *count;
}

ReadError HeaderReader::argumentError(
        TouchstoneKeyword keyword, std::string_view text, std::string_view complaint) const
{
    return m_lines.lineError(textOf(keyword) + " " + excerpt(text).append(complaint));
}

void HeaderReader::completeVersion1()
{
    if (!m_optionsTaken)
        throw m_lines.lineError("data before the option line, which begins with #");
    if (m_statedPortCount.empty()) {
        throw m_lines.fileError("port count is not known; files of version 1 state it in their "
                                "names, which end as in name.s2p");
    }
    const std::optional<std::size_t> count = parsePortCount(m_statedPortCount);
    if (!count.has_value())
        throw m_lines.fileError(impossiblePortCount(m_statedPortCount));

    m_header.portCount = *count;
    m_header.reference.assign(*count, m_header.options.resistance);
    m_header.isColumnByColumn = *count == 2;
    checkKind();
}

void HeaderReader::completeVersion2()
{
    if (!m_optionsTaken)
        throw m_lines.lineError("no option line, which begins with #, before [Network Data]");
    require(m_header.portCount != 0, TouchstoneKeyword::NumberOfPorts);
    require(m_header.frequencyCount.has_value(), TouchstoneKeyword::NumberOfFrequencies);
    // Without it, transmission forwards and backwards could not be told apart.
    const bool needsOrder = m_header.portCount == 2 && m_header.matrixFormat == MatrixFormat::Full;
    const bool hasOrder =
            std::ranges::find(m_keywords, TouchstoneKeyword::TwoPortDataOrder) != m_keywords.end();
    require(hasOrder || !needsOrder, TouchstoneKeyword::TwoPortDataOrder);
    m_header.isColumnByColumn = m_header.isColumnByColumn && needsOrder;

    const auto requireOnePerPort = [this](TouchstoneKeyword keyword, std::size_t line,
                                           std::size_t count) {
        if (line != 0 && count != m_header.portCount) {
            throw m_lines.errorAt(line, textOf(keyword) + " has " + countOf(count, "value")
                                                + " for " + countOf(m_header.portCount, "port"));
        }
    };
    requireOnePerPort(TouchstoneKeyword::Reference, m_referenceLine, m_header.reference.size());
    requireOnePerPort(TouchstoneKeyword::MixedModeOrder, m_modesLine, m_header.modes.size());
    if (m_referenceLine == 0)
        m_header.reference.assign(m_header.portCount, m_header.options.resistance);

    checkKind();
    if (m_modesLine != 0 && m_header.options.kind != ParameterKind::S) {
        throw m_lines.errorAt(
                m_modesLine, "[Mixed-Mode Order] is understood for S parameters only");
    }
}

void HeaderReader::checkKind() const
{
    const ParameterKind kind = m_header.options.kind;
    const bool isHybrid = kind == ParameterKind::H || kind == ParameterKind::G;
    if (isHybrid && m_header.portCount != 2) {
        throw m_lines.fileError(
                std::string(letterOf(kind)) + " parameters are those of 2 ports, but there "
                + (m_header.portCount == 1 ? "is " : "are ") + countOf(m_header.portCount, "port"));
    }
}

void HeaderReader::failAtEnd() const
{
    if (m_lines.lineNumber() == 0)
        throw m_lines.fileError("file is empty");
    if (m_header.isVersion2)
        throw m_lines.fileError("[Network Data] is missing");
    if (!m_optionsTaken)
        throw m_lines.fileError("no option line, which begins with #");
    throw m_lines.fileError("no data after the option line");
}

void HeaderReader::require(bool isGiven, TouchstoneKeyword keyword) const
{
    if (!isGiven)
        throw m_lines.lineError(textOf(keyword) + " is missing before [Network Data]");
}

} // namespace

TouchstoneHeader readTouchstoneHeader(TouchstoneLines &lines, std::string_view portCount)
{
    return HeaderReader(lines, portCount).read();
}

} // namespace Charts::Readers
