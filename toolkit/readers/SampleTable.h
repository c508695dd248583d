// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <istream>
#include <string>
#include <vector>

namespace Charts::Readers {

/// One measured quantity: a value for each instant of the table it belongs to.
struct SampleColumn
{
    std::string name;
    /// As the header states it, empty where it does not.
    std::string unit;
    /// Finite numbers; a gap is a quiet NaN.
    std::vector<float> values;
};

/// Samples of one or more quantities that were taken at common instants. A plain value: whoever
/// read it owns it.
struct SampleTable
{
    std::string timeName;
    std::string timeUnit;
    /// Finite and strictly increasing; not necessarily in equal steps.
    std::vector<double> time;
    /// At least one, each with as many values as there are instants.
    std::vector<SampleColumn> columns;
};

/// Reads a file of separated values (see CsvReader) whose first column is the time.
///
/// The header gives each column a name, with a unit at its end in brackets or parentheses
/// ("current [mA]") or as one of the usual unit symbols behind an underscore ("current_mA"). A
/// value that is empty, `nan`, `na` or `null` in any case is a gap. Where the separator is no
/// comma, numbers may have a decimal comma. Numbers are parsed in the order of the file and only
/// they are kept.
///
/// Throws ReadError at the first row that cannot be used; there are no partial results. May be
/// called on any thread.
[[nodiscard]] SampleTable readSamples(const std::filesystem::path &file);

/// Reads from `input`; `name` stands for it in messages.
[[nodiscard]] SampleTable readSamples(std::istream &input, const std::string &name);

} // namespace Charts::Readers
