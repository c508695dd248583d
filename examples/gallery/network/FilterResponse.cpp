// SPDX-License-Identifier: MIT
#include "FilterResponse.h"

#include "Decibels.h"
#include "LadderFilter.h"

#include <array>
#include <cmath>
#include <utility>

namespace Gallery {

namespace {

struct Shown
{
    int order = 1;
    QRgb color = 0;
};

constexpr std::array<Shown, 4> filters = {
        {{1, 0xfff176}, {2, 0xffb74d}, {4, 0x66e08a}, {8, 0x4fc3f7}}};
constexpr double cutoff = 1000.0; // hertz
constexpr double lowestDecade = 1.0;
constexpr double highestDecade = 5.0;
constexpr int pointsPerDecade = 200;

} // namespace

FilterResponse::FilterResponse(QObject *parent)
    : QObject(parent)
{
    for (const Shown &shown : filters) {
        const LadderFilter filter = LadderFilter::butterworth(shown.order, cutoff);
        std::vector<Charts::TracePoint> points;
        const int count =
                static_cast<int>(std::lround((highestDecade - lowestDecade) * pointsPerDecade));
        for (int i = 0; i <= count; ++i) {
            const double decade = lowestDecade + static_cast<double>(i) / pointsPerDecade;
            const auto transmission = filter.scattering(std::pow(10.0, decade))[2];
            points.push_back({.x = static_cast<float>(decade),
                    .y = static_cast<float>(decibels(transmission)),
                    .opacity = 1.0F});
        }
        auto *trace = new StaticTrace(std::move(points), this);
        trace->setName(tr("order %1").arg(shown.order));
        trace->setColor(QColor::fromRgb(shown.color));
        trace->domain()->setIsLogX(true);
        trace->domain()->setRangeXY(lowestDecade, highestDecade, -100.0, 20.0);
        m_traces.append(trace);
    }
}

} // namespace Gallery
