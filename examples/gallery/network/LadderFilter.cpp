// SPDX-License-Identifier: MIT
#include "LadderFilter.h"

#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <utility>

namespace Gallery {

LadderFilter LadderFilter::butterworth(int order, double cutoff)
{
    LadderFilter filter;
    const double angularCutoff = 2.0 * std::numbers::pi * cutoff;
    for (int k = 1; k <= order; ++k) {
        const double value = 2.0 * std::sin((2 * k - 1) * std::numbers::pi / (2 * order));
        const bool isInductor = k % 2 == 1;
        filter.elements.push_back(
                value / angularCutoff * (isInductor ? filter.resistance : 1.0 / filter.resistance));
    }
    return filter;
}

std::vector<std::complex<double>> LadderFilter::scattering(double frequency) const
{
    using Complex = std::complex<double>;
    const Complex angular(0.0, 2.0 * std::numbers::pi * frequency);
    Complex a = 1.0;
    Complex b = 0.0;
    Complex c = 0.0;
    Complex d = 1.0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Complex immittance = angular * elements[i];
        if (i % 2 == 0) { // a series impedance
            b += a * immittance;
            d += c * immittance;
        } else { // a shunt admittance
            a += b * immittance;
            c += d * immittance;
        }
    }
    b /= resistance;
    c *= resistance;
    const Complex sum = a + b + c + d;
    // The network is reciprocal, ad - bc is 1.
    return {(a + b - c - d) / sum, 2.0 / sum, 2.0 / sum, (-a + b - c + d) / sum};
}

Charts::Readers::NetworkData LadderFilter::measuredAt(std::vector<double> frequencies) const
{
    Charts::Readers::NetworkData data;
    data.portCount = 2;
    data.referenceImpedance = {resistance, resistance};
    for (const double frequency : frequencies) {
        const auto parameters = scattering(frequency);
        data.parameters.insert(data.parameters.end(), parameters.begin(), parameters.end());
    }
    data.frequency = std::move(frequencies);
    return data;
}

} // namespace Gallery
