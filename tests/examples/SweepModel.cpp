// SPDX-License-Identifier: MIT
#include "SweepModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

using DrawnLine::Piece;

SweepModel::SweepModel(Gallery::SweepTrace::Table table, std::size_t column,
        const Gallery::SweepSettings &settings)
    : m_table(std::move(table))
    , m_column(column)
    , m_settings(settings)
{
    const double duration = m_table->time.back() - m_table->time.front();
    while (static_cast<double>(m_sweepCount) * m_settings.length < duration)
        ++m_sweepCount;
}

long long SweepModel::sweepAt(double seconds) const
{
    return 1 + static_cast<long long>(std::floor(seconds * m_settings.speed / m_settings.length));
}

double SweepModel::beamAt(double seconds) const
{
    return std::fmod(seconds * m_settings.speed, m_settings.length);
}

double SweepModel::gapEndAt(double seconds) const
{
    return beamAt(seconds) + 0.04 * m_settings.length;
}

std::size_t SweepModel::writtenAt(double seconds) const
{
    const std::vector<Sample> samples = samplesOf(sweepAt(seconds));
    return static_cast<std::size_t>(std::count_if(samples.begin(), samples.end(),
            [beam = beamAt(seconds)](const Sample &sample) { return sample.x <= beam; }));
}

std::vector<SweepModel::Sample> SweepModel::samplesOf(long long sweep) const
{
    const auto index = static_cast<double>(sweep % m_sweepCount);
    const bool isLast = sweep % m_sweepCount == m_sweepCount - 1;
    std::vector<Sample> samples;
    for (std::size_t i = 0; i < m_table->time.size(); ++i) {
        const double x = m_table->time[i] - m_table->time.front() - index * m_settings.length;
        // The end of the table belongs to its last sweep.
        if (x >= 0.0 && (isLast || x < m_settings.length))
            samples.push_back({x, m_table->columns[m_column].values[i]});
    }
    return samples;
}

std::vector<Piece> SweepModel::linesOf(const std::vector<Sample> &samples)
{
    std::vector<Piece> lines;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        const Sample &a = samples[i - 1];
        const Sample &b = samples[i];
        if (!std::isnan(a.value) && !std::isnan(b.value))
            lines.push_back({static_cast<float>(a.x), a.value, static_cast<float>(b.x), b.value});
    }
    return lines;
}

QString SweepModel::defectOf(
        const std::vector<Charts::TracePoint> &vertices, double seconds, bool evenlySpaced) const
{
    const double beam = beamAt(seconds);
    std::vector<Piece> left;
    std::vector<Piece> right;
    for (const Piece &piece : DrawnLine::pieces(vertices)) {
        if (piece.x2 < piece.x1)
            return QStringLiteral("runs backwards: ") + DrawnLine::toString(piece);
        if (piece.x1 <= beam && piece.x2 > beam)
            return QStringLiteral("runs across the beam: ") + DrawnLine::toString(piece);
        (piece.x2 <= beam ? left : right).push_back(piece);
    }

    std::vector<Sample> written = samplesOf(sweepAt(seconds));
    written.resize(writtenAt(seconds));
    if (const QString difference = DrawnLine::compare(left, linesOf(written));
            !difference.isEmpty())
        return QStringLiteral("left of the beam: ") + difference;
    if (const QString defect = defectOfOld(std::move(right), seconds, evenlySpaced);
            !defect.isEmpty())
        return QStringLiteral("right of the beam: ") + defect;
    return {};
}

QString SweepModel::defectOfOld(std::vector<Piece> pieces, double seconds, bool evenlySpaced) const
{
    const double gapEnd = gapEndAt(seconds);
    const std::vector<Sample> samples = samplesOf(sweepAt(seconds) - 1);
    const std::vector<Piece> lines = linesOf(samples);

    // Within the gap at most the line that leaves it may be seen.
    double hiddenUpTo = beamAt(seconds);
    for (const Sample &sample : samples) {
        if (sample.x <= gapEnd)
            hiddenUpTo = std::max(hiddenUpTo, sample.x);
    }
    for (const Piece &piece : pieces) {
        if (piece.x1 < hiddenUpTo - 1e-6)
            return QStringLiteral("seen in the gap: ") + DrawnLine::toString(piece);
    }
    // That one may be cut; from then on the lines are those of the sweep before.
    if (!pieces.empty()) {
        Piece &first = pieces.front();
        const auto line =
                std::find_if(lines.begin(), lines.end(), [&first](const Piece &candidate) {
                    return candidate.x2 == first.x2 && candidate.y2 == first.y2;
                });
        if (line == lines.end())
            return QStringLiteral("no line of the sweep before: ") + DrawnLine::toString(first);
        const double part = (first.x1 - line->x1) / (line->x2 - line->x1);
        const double y = line->y1 + part * (line->y2 - line->y1);
        if (part < 0.0 || std::abs(y - first.y1) > 1e-5 * (1.0 + std::abs(y)))
            return QStringLiteral("not on the line it is a part of: ") + DrawnLine::toString(first);
        first = *line;
    }
    std::vector<Piece> expected;
    for (const Piece &line : lines) {
        const bool hasToBeSeen = evenlySpaced && line.x1 > gapEnd + 1e-6;
        const bool isSeen = std::find(pieces.begin(), pieces.end(), line) != pieces.end();
        if (hasToBeSeen || isSeen)
            expected.push_back(line);
    }
    return DrawnLine::compare(pieces, expected);
}
