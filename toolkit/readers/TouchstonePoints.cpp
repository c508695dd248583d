// SPDX-License-Identifier: MIT
#include "TouchstonePoints.h"

#include "NetworkConversion.h"
#include "Text.h"
#include "TouchstoneLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>
#include <utility>

namespace Charts::Readers {

namespace {

std::size_t entryCountOf(const TouchstoneHeader &header)
{
    const std::size_t ports = header.portCount;
    return header.matrixFormat == MatrixFormat::Full ? ports * ports : ports * (ports + 1) / 2;
}

/// The complex number of a magnitude and an angle in degrees. The angle is reduced before it is
/// converted, so that multiples of 90 degrees give numbers exactly on the axes.
std::complex<double> polar(double magnitude, double degrees)
{
    const double angle = std::remainder(degrees, 360.0);
    const double quarters = std::nearbyint(angle / 90.0);
    const double rest = (angle - 90.0 * quarters) / 180.0 * std::numbers::pi;
    const double cosine = magnitude * std::cos(rest);
    const double sine = magnitude * std::sin(rest);
    switch (static_cast<int>(quarters)) {
    case 0:
        return {cosine, sine};
    case 1:
        return {-sine, cosine};
    case -1:
        return {sine, -cosine};
    default:
        return {-cosine, -sine};
    }
}

} // namespace

TouchstonePoints::TouchstonePoints(const TouchstoneLines &lines, const TouchstoneHeader &header)
    : m_lines(lines)
    , m_header(header)
    , m_entryCount(entryCountOf(header))
{
}

void TouchstonePoints::takeLine()
{
    const std::size_t count = m_lines.fields().size();
    const std::size_t valueCount = 1 + 2 * m_entryCount;
    const std::size_t known = m_isWithinPoint ? 1 + 2 * m_entries.size() : 0;
    if (m_isWithinPoint && count % 2 != 0) {
        throw m_lines.lineError(countOf(count, "value")
                                + " where pairs are expected; the frequency point of line "
                                + std::to_string(m_line) + " has " + std::to_string(known) + " of "
                                + countOf(valueCount, "value"));
    }
    if (!m_isWithinPoint && count % 2 == 0) {
        throw m_lines.lineError(countOf(count, "value")
                                + " where a frequency point is expected to begin, "
                                + "with the frequency and pairs");
    }
    if (known + count > valueCount) {
        const std::size_t line = m_isWithinPoint ? m_line : m_lines.lineNumber();
        throw m_lines.errorAt(line, "frequency point has " + countOf(known + count, "value") + ", "
                                            + std::to_string(valueCount) + " are expected of "
                                            + countOf(m_header.portCount, "port"));
    }

    std::size_t field = 0;
    if (!m_isWithinPoint) {
        takeFrequency();
        field = 1;
    }
    for (; field < count; field += 2)
        m_entries.push_back(complexAt(field));
    if (m_entries.size() == m_entryCount)
        completePoint();
}

bool TouchstonePoints::isNoise() const
{
    if (m_header.portCount != 2 || m_isWithinPoint || m_frequency.empty()
            || m_lines.fields().size() != NoiseFieldCount) {
        return false;
    }
    return m_lines.number(0, "frequency") * m_header.options.frequencyUnit <= m_frequency.back();
}

void TouchstonePoints::takeFrequency()
{
    const double unit = m_header.options.frequencyUnit;
    const double number = m_lines.number(0, "frequency");
    const double frequency = number * unit;
    if (!std::isfinite(frequency))
        throw m_lines.fieldError(0, "frequency", complaintAbout(NumberStatus::OutOfRange));
    if (frequency < 0)
        throw m_lines.fieldError(0, "frequency", " is negative");
    if (!m_frequency.empty() && !(frequency > m_frequency.back())) {
        throw m_lines.fieldError(0, "frequency",
                " is not above the frequency before it, " + shortestText(m_frequencyNumber));
    }
    m_frequency.push_back(frequency);
    m_frequencyNumber = number;
    m_line = m_lines.lineNumber();
    m_isWithinPoint = true;
}

std::complex<double> TouchstonePoints::complexAt(std::size_t index) const
{
    const double first = m_lines.number(index, "value");
    const double second = m_lines.number(index + 1, "value");
    switch (m_header.options.format) {
    case ComplexFormat::RealImaginary:
        return {first, second};
    case ComplexFormat::MagnitudeAngle:
        return polar(first, second);
    case ComplexFormat::DecibelAngle:
        break;
    }
    const double magnitude = std::pow(10.0, first / 20.0);
    if (!std::isfinite(magnitude))
        throw m_lines.fieldError(index, "value", complaintAbout(NumberStatus::OutOfRange));
    return polar(magnitude, second);
}

void TouchstonePoints::completePoint()
{
    arrange();
    const ParameterKind kind = m_header.options.kind;
    // Version 1 relates the values to the reference resistance already.
    if (m_header.isVersion2)
        normalise(kind, m_header.reference, m_matrix);
    if (!toScattering(kind, m_header.portCount, m_matrix)) {
        throw m_lines.errorAt(
                m_line, std::string("the ").append(letterOf(kind))
                                + " parameters of this frequency have no S parameters");
    }
    m_parameters.insert(m_parameters.end(), m_matrix.begin(), m_matrix.end());
    m_entries.clear();
    m_isWithinPoint = false;
}

/// Puts the entries where they belong in the matrix.
void TouchstonePoints::arrange()
{
    const std::size_t ports = m_header.portCount;
    if (m_header.matrixFormat == MatrixFormat::Full) {
        m_matrix = m_entries;
        if (m_header.isColumnByColumn)
            std::swap(m_matrix[1], m_matrix[2]);
        return;
    }

    m_matrix.resize(ports * ports);
    auto entry = m_entries.cbegin();
    for (std::size_t row = 0; row < ports; ++row) {
        const bool isLower = m_header.matrixFormat == MatrixFormat::Lower;
        const std::size_t begin = isLower ? 0 : row;
        const std::size_t end = isLower ? row + 1 : ports;
        for (std::size_t column = begin; column < end; ++column) {
            m_matrix[row * ports + column] = *entry;
            m_matrix[column * ports + row] = *entry;
            ++entry;
        }
    }
}

void TouchstonePoints::checkComplete() const
{
    if (m_isWithinPoint) {
        throw m_lines.errorAt(m_line, "data end within the frequency point, after "
                                              + std::to_string(1 + 2 * m_entries.size()) + " of "
                                              + countOf(1 + 2 * m_entryCount, "value"));
    }
}

NetworkData TouchstonePoints::finish()
{
    checkComplete();
    NetworkData network;
    network.portCount = static_cast<int>(m_header.portCount);
    network.frequency = std::move(m_frequency);
    network.parameters = std::move(m_parameters);
    network.referenceImpedance = m_header.reference;
    network.fileKind = m_header.options.kind;
    network.modes = m_header.modes;
    return network;
}

} // namespace Charts::Readers
