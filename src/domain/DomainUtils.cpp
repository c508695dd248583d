// SPDX-License-Identifier: MIT
#include "DomainUtils.h"

#include "TraceDomain.h"

#include <cmath>

namespace Charts {

DomainUtils::DomainUtils(QObject *parent)
    : QObject(parent)
{
}

double DomainUtils::mapToGeometry(Span geometryRange, Span domianRange, double domain) const
{
    return mapRangeValue(domianRange, geometryRange, domain);
}

double DomainUtils::mapFromGeometry(Span geometryRange, Span domianRange, double geomtry) const
{
    return mapRangeValue(geometryRange, domianRange, geomtry);
}

Span DomainUtils::span(double min, double max) const
{
    return {min, max};
}

double DomainUtils::niceStep(Span span) const
{
    const double range = span.max - span.min;
    if (std::abs(range) <= 1e-12)
        return range;

    // Only a reversed span can be this small here; the bound keeps log10 away from it.
    const double exponent = range <= 1e-300 ? -300.0 : std::floor(std::log10(range));
    const double power = std::pow(10.0, exponent);
    const double mantissa = range / power;

    // Grid lines are compared by position, so each step has to come out the same to the last bit
    // wherever it is computed: x / (10 / 3) and x * 0.3 differ, and the form below is the one used.
    if (mantissa <= 1.0)
        return power / 10.0;
    if (mantissa <= 1.25)
        return power * 0.125;
    if (mantissa <= 2.0)
        return power / 5.0;
    if (mantissa <= 2.5)
        return power * 0.25;
    if (mantissa <= 3.0)
        return power / (10.0 / 3.0);
    if (mantissa <= 4.0)
        return power / 2.5;
    if (mantissa <= 5.0)
        return power * 0.5;
    if (mantissa <= 6.0)
        return power / (5.0 / 3.0);
    if (mantissa <= 7.5)
        return power / (4.0 / 3.0);
    return power;
}

bool DomainUtils::isDomainRound(TraceDomain *domain) const
{
    return domain->isRound();
}

double DomainUtils::mapRangeValue(Span from, Span to, double value)
{
    return std::fma(value - from.min, to.length() / from.length(), to.min);
}

} // namespace Charts
