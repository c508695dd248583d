// SPDX-License-Identifier: MIT
#include "SampleTable.h"

#include "CsvReader.h"
#include "Number.h"
#include "ReadError.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace Charts::Readers {

namespace {

// Units that are recognised behind an underscore. Single capitals are left out on purpose: in
// "phase_A" or "input_V" they are as likely to name a channel.
constexpr std::array<std::string_view, 29> UnitSymbols{"s", "ms", "us", "µs", "ns", "ps", "uV",
        "µV", "mV", "kV", "nA", "uA", "µA", "mA", "mW", "kW", "Hz", "kHz", "MHz", "GHz", "dB",
        "dBm", "dBV", "Ohm", "kOhm", "deg", "rad", "degC", "Pa"};

/// Whether the text stands for a missing number. NaN may have a sign, as the C library prints one.
bool isGap(std::string_view text)
{
    const bool isSigned = text.starts_with('-') || text.starts_with('+');
    return text.empty() || isSameWord(isSigned ? text.substr(1) : text, "nan")
           || isSameWord(text, "na") || isSameWord(text, "null");
}

std::string counted(std::size_t count, std::string_view noun)
{
    return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

DecimalMark decimalMark(const CsvReader &reader)
{
    return reader.separator() == ',' ? DecimalMark::Point : DecimalMark::PointOrComma;
}

/// The name and the unit of a column.
std::pair<std::string, std::string> splitTitle(std::string_view title)
{
    const char last = title.empty() ? '\0' : title.back();
    if (last == ']' || last == ')') {
        const std::size_t opening = title.rfind(last == ']' ? '[' : '(');
        if (opening != std::string_view::npos) {
            const std::string_view name = trimmed(title.substr(0, opening));
            const std::string_view unit =
                    trimmed(title.substr(opening + 1, title.size() - opening - 2));
            if (!name.empty())
                return {std::string(name), std::string(unit)};
        }
    }

    const std::size_t underscore = title.rfind('_');
    if (underscore != std::string_view::npos && underscore != 0) {
        const std::string_view unit = title.substr(underscore + 1);
        if (std::find(UnitSymbols.begin(), UnitSymbols.end(), unit) != UnitSymbols.end())
            return {std::string(title.substr(0, underscore)), std::string(unit)};
    }
    return {std::string(title), {}};
}

void readHeader(CsvReader &reader, SampleTable &table)
{
    if (!reader.next()) {
        throw ReadError(reader.name(), reader.linesRead() == 0 ? "file is empty" : "no header row");
    }
    if (reader.fieldCount() < 2) {
        throw reader.error(0,
                "header has 1 column, at least 2 are needed, separated by comma, semicolon "
                "or tabulator");
    }

    bool onlyNumbers = true;
    for (std::size_t i = 0; i < reader.fieldCount(); ++i) {
        const std::string_view title = trimmed(reader.field(i));
        onlyNumbers = onlyNumbers
                      && (isGap(title)
                              || parseDouble(title, decimalMark(reader)).status
                                         != NumberStatus::NotANumber);

        auto [name, unit] = splitTitle(title);
        if (i == 0) {
            table.timeName = name.empty() ? "time" : std::move(name);
            table.timeUnit = std::move(unit);
        } else {
            if (name.empty())
                name = "column " + std::to_string(i + 1);
            table.columns.push_back({std::move(name), std::move(unit), {}});
        }
    }
    // Taken as names, the numbers of a file without a header would silently be lost.
    if (onlyNumbers)
        throw reader.error(0, "first row holds numbers, column names are expected");
}

[[noreturn]] void refuse(
        const CsvReader &reader, std::size_t index, std::string_view what, NumberStatus status)
{
    const std::string_view complaint = status == NumberStatus::NotFinite    ? " is not finite"
                                       : status == NumberStatus::OutOfRange ? " is out of range"
                                                                            : " is not a number";
    throw reader.error(index + 1,
            std::string(what).append(" ").append(excerpt(reader.field(index))).append(complaint));
}

double timeOf(const CsvReader &reader)
{
    const std::string_view text = trimmed(reader.field(0));
    if (isGap(text))
        throw reader.error(1, "time is missing");
    const ParsedNumber<double> number = parseDouble(text, decimalMark(reader));
    if (number.status != NumberStatus::Finite)
        refuse(reader, 0, "time", number.status);
    return number.value;
}

float valueOf(const CsvReader &reader, std::size_t index)
{
    const std::string_view text = trimmed(reader.field(index));
    if (isGap(text))
        return std::numeric_limits<float>::quiet_NaN();
    const ParsedNumber<float> number = parseFloat(text, decimalMark(reader));
    if (number.status != NumberStatus::Finite)
        refuse(reader, index, "value", number.status);
    return number.value;
}

void appendRow(const CsvReader &reader, SampleTable &table)
{
    const std::size_t width = table.columns.size() + 1;
    if (reader.fieldCount() != width) {
        throw reader.error(0, counted(reader.fieldCount(), "field") + " where the header has "
                                      + std::to_string(width));
    }

    const double time = timeOf(reader);
    if (!table.time.empty() && !(time > table.time.back())) {
        throw reader.error(1, "time " + excerpt(reader.field(0))
                                      + " is not after the time before it, "
                                      + shortestText(table.time.back()));
    }
    table.time.push_back(time);
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        table.columns[i].values.push_back(valueOf(reader, i + 1));
}

SampleTable readTable(CsvReader &reader)
{
    SampleTable table;
    readHeader(reader, table);
    while (reader.next())
        appendRow(reader, table);
    if (table.time.empty())
        throw ReadError(reader.name(), "no rows of data after the header");
    return table;
}

} // namespace

SampleTable readSamples(const std::filesystem::path &file)
{
    CsvReader reader(file);
    return readTable(reader);
}

SampleTable readSamples(std::istream &input, const std::string &name)
{
    CsvReader reader(input, name);
    return readTable(reader);
}

} // namespace Charts::Readers
