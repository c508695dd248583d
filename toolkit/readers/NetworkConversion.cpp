// SPDX-License-Identifier: MIT
#include "NetworkConversion.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <limits>
#include <vector>

namespace Charts::Readers {

namespace {

using Complex = std::complex<double>;

bool isFinite(const Complex &value)
{
    return std::isfinite(value.real()) && std::isfinite(value.imag());
}

/// Solves left * X = right for the square matrix X, which takes the place of `right`, by LU
/// decomposition with row pivoting. Returns false where `left` is singular within the precision of
/// the numbers, those from which its entries were computed being of the order of 1 in each row.
bool solve(std::size_t count, std::span<Complex> left, std::span<Complex> right)
{
    const auto rowOf = [count](std::span<Complex> matrix, std::size_t row) {
        return matrix.subspan(row * count, count);
    };
    const double smallest = double(count) * std::numeric_limits<double>::epsilon();

    for (std::size_t step = 0; step < count; ++step) {
        std::size_t pivot = step;
        for (std::size_t row = step + 1; row < count; ++row) {
            if (std::abs(left[row * count + step]) > std::abs(left[pivot * count + step]))
                pivot = row;
        }
        if (!(std::abs(left[pivot * count + step]) > smallest))
            return false;
        if (pivot != step) {
            std::ranges::swap_ranges(rowOf(left, step), rowOf(left, pivot));
            std::ranges::swap_ranges(rowOf(right, step), rowOf(right, pivot));
        }

        for (std::size_t row = step + 1; row < count; ++row) {
            const Complex factor = left[row * count + step] / left[step * count + step];
            if (factor == Complex())
                continue;
            for (std::size_t column = step; column < count; ++column)
                left[row * count + column] -= factor * left[step * count + column];
            for (std::size_t column = 0; column < count; ++column)
                right[row * count + column] -= factor * right[step * count + column];
        }
    }

    for (std::size_t row = count; row-- > 0;) {
        for (std::size_t known = row + 1; known < count; ++known) {
            const Complex factor = left[row * count + known];
            for (std::size_t column = 0; column < count; ++column)
                right[row * count + column] -= factor * right[known * count + column];
        }
        for (Complex &value : rowOf(right, row))
            value /= left[row * count + row];
    }
    return true;
}

/// S = (z + 1)^-1 (z - 1) for normalised impedances z, and S = (1 + y)^-1 (1 - y) for normalised
/// admittances y (K. Kurokawa, "Power Waves and the Scattering Matrix", IEEE Trans. Microwave
/// Theory and Techniques, vol. 13, no. 2, 1965). The factors commute, being functions of one
/// matrix, so this order, which needs no inverse, is as good as the other.
bool immittanceToScattering(double sign, std::size_t portCount, std::span<Complex> matrix)
{
    std::vector<Complex> sum(matrix.begin(), matrix.end());
    for (std::size_t row = 0; row < portCount; ++row) {
        const std::span<Complex> left = std::span(sum).subspan(row * portCount, portCount);
        const std::span<Complex> right = matrix.subspan(row * portCount, portCount);
        left[row] += 1.0;
        right[row] -= 1.0;

        // Divided by its largest coefficient on either side, of which the two on the diagonals are
        // not both less than 1, each equation tells by its pivot how much of the numbers has
        // cancelled out, whatever their size.
        double size = 0;
        for (std::size_t column = 0; column < portCount; ++column)
            size = std::max({size, std::abs(left[column]), std::abs(right[column])});
        if (!std::isfinite(size))
            return false;
        for (std::size_t column = 0; column < portCount; ++column) {
            left[column] /= size;
            right[column] *= sign / size;
        }
    }
    return solve(portCount, sum, matrix);
}

/// The formulas for H parameters are those of D. A. Frickey, "Conversions Between S, Z, Y, h, ABCD,
/// and T Parameters which are Valid for Complex Source and Load Impedances", IEEE Trans. Microwave
/// Theory and Techniques, vol. 42, no. 2, 1994, for normalised parameters and hence reference
/// impedances of 1 (`sign` is 1). G parameters, which are not among them, give the same with the
/// opposite sign, as they are the H parameters of a network with voltages and currents exchanged.
bool hybridToScattering(double sign, std::span<Complex> matrix)
{
    const Complex h11 = matrix[0];
    const Complex h12 = matrix[1];
    const Complex h21 = matrix[2];
    const Complex h22 = matrix[3];

    const Complex ownPart = (h11 + 1.0) * (h22 + 1.0);
    const Complex transferPart = h12 * h21;
    const Complex denominator = ownPart - transferPart;
    // Relative to the sum of all magnitudes, it tells how much of the numbers has cancelled out.
    const double smallest = 4 * std::numeric_limits<double>::epsilon()
                            * ((std::abs(h11) + 1) * (std::abs(h22) + 1) + std::abs(transferPart));
    if (!(std::abs(denominator) > smallest))
        return false;

    matrix[0] = sign * ((h11 - 1.0) * (h22 + 1.0) - transferPart) / denominator;
    matrix[1] = sign * 2.0 * h12 / denominator;
    matrix[2] = sign * -2.0 * h21 / denominator;
    matrix[3] = sign * ((1.0 + h11) * (1.0 - h22) + transferPart) / denominator;
    return true;
}

} // namespace

void normalise(ParameterKind kind, std::span<const double> reference,
        std::span<std::complex<double>> matrix)
{
    const std::size_t ports = reference.size();
    assert(matrix.size() == ports * ports);

    // With v = V / sqrt(R) and i = I * sqrt(R) at each port.
    switch (kind) {
    case ParameterKind::S:
        return;
    case ParameterKind::Z:
    case ParameterKind::Y:
        for (std::size_t row = 0; row < ports; ++row) {
            for (std::size_t column = 0; column < ports; ++column) {
                const double resistance =
                        row == column ? reference[row]
                                      : std::sqrt(reference[row]) * std::sqrt(reference[column]);
                Complex &value = matrix[row * ports + column];
                value = kind == ParameterKind::Z ? value / resistance : value * resistance;
            }
        }
        return;
    case ParameterKind::H:
    case ParameterKind::G: {
        assert(ports == 2);
        const bool isHybrid = kind == ParameterKind::H;
        const double first = isHybrid ? 1 / reference[0] : reference[0];
        const double second = isHybrid ? reference[1] : 1 / reference[1];
        const double transfer = std::sqrt(first) * std::sqrt(second);
        matrix[0] *= first;
        matrix[1] *= transfer;
        matrix[2] *= transfer;
        matrix[3] *= second;
        return;
    }
    }
}

bool toScattering(ParameterKind kind, std::size_t portCount, std::span<std::complex<double>> matrix)
{
    assert(matrix.size() == portCount * portCount);

    bool isConverted = true;
    switch (kind) {
    case ParameterKind::S:
        break;
    case ParameterKind::Z:
        isConverted = immittanceToScattering(1, portCount, matrix);
        break;
    case ParameterKind::Y:
        isConverted = immittanceToScattering(-1, portCount, matrix);
        break;
    case ParameterKind::H:
        assert(portCount == 2);
        isConverted = hybridToScattering(1, matrix);
        break;
    case ParameterKind::G:
        assert(portCount == 2);
        isConverted = hybridToScattering(-1, matrix);
        break;
    }
    return isConverted && std::ranges::all_of(matrix, isFinite);
}

} // namespace Charts::Readers
