// SPDX-License-Identifier: MIT
#include "ColumnWindow.h"
#include "TestSamples.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

using namespace Charts::Decimation;
using TestSamples::Kind;

// Single samples that stand apart among ten million: each is seen, in its own column.
class tst_Spikes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void everySpikeOfTenMillion();
};

void tst_Spikes::everySpikeOfTenMillion()
{
    constexpr std::size_t count = 10'000'000;
    constexpr int columnCount = 1920;
    // So far apart that at no zoom two are in one column: 3 of its columns.
    constexpr std::size_t distance = 15'700;
    constexpr float height = 1000.0F;
    std::vector<float> samples = TestSamples::make(Kind::Rising, 4096);
    for (float &sample : samples)
        sample = std::sin(sample / 100.0F);
    samples.resize(count);
    for (std::size_t i = 4096; i < count; ++i)
        samples[i] = samples[i % 4096];

    // The ends, both sides of whole blocks of all levels, both sides of columns' edges of the
    // widest zoom, and others.
    std::vector<std::size_t> spikes = {0};
    std::mt19937 random(15);
    const auto addNear = [&](std::size_t place) {
        place = std::max(place, spikes.back() + distance);
        if (place < count - distance)
            spikes.push_back(place);
    };
    while (spikes.back() < count - 2 * distance) {
        const std::size_t from = spikes.back() + distance;
        // Of 32 samples to 131072.
        const std::size_t length = std::size_t(32) << (3 * (random() % 5));
        const std::size_t block = (from + length - 1) / length * length;
        const std::size_t column = from * columnCount / count + 1;
        const std::size_t edge = column * count / columnCount; // at or left of the edge
        switch (random() % 6) {
        case 0:
            addNear(block);
            break;
        case 1:
            addNear(block - 1);
            break;
        case 2:
            addNear(block + 1);
            break;
        case 3:
            addNear(edge);
            break;
        case 4:
            addNear(edge + 1);
            break;
        default:
            addNear(from + random() % 1000);
            break;
        }
    }
    spikes.push_back(count - 1);
    QVERIFY2(spikes.size() > 300, qPrintable(QString::number(spikes.size())));
    for (std::size_t i = 0; i < spikes.size(); ++i)
        samples[spikes[i]] = i % 2 == 0 ? height : -height;
    Line line(samples);

    // Everything at once.
    const Window whole{0, 16 * static_cast<std::int64_t>(count), columnCount};
    line.fill(samples, whole.columns());
    QVERIFY(line.line.vertices().size() <= 2 * columnCount + 4);
    std::size_t found = 0;
    for (const LineVertex &vertex : line.line.vertices()) {
        if (vertex.isGap || std::abs(vertex.y) != height)
            continue;
        QVERIFY(found < spikes.size());
        QCOMPARE(vertex.y, found % 2 == 0 ? height : -height);
        const auto column = static_cast<std::int64_t>(
                std::floor(static_cast<double>(vertex.x) * columnCount / count));
        QCOMPARE(column, whole.columnOf(static_cast<std::int64_t>(spikes[found])));
        ++found;
    }
    QCOMPARE(found, spikes.size());

    // Each in a part of the columns of a zoom, at a place that differs from spike to spike.
    for (const std::int64_t visible :
            {3'000'000, 1'000'000, 100'003, 20'000, 5000, 3841, 3840, 3839, 1000, 100, 10}) {
        constexpr int partCount = 48;
        for (std::size_t i = 0; i < spikes.size(); ++i) {
            const auto spike = static_cast<std::int64_t>(spikes[i]);
            const std::int64_t length =
                    std::max<std::int64_t>(16 * visible * partCount / columnCount, 1);
            const std::int64_t shift = length * static_cast<std::int64_t>(1 + i % 46) / 47;
            const Window window{16 * spike - shift, length, partCount};
            const PixelColumns columns = window.columns();
            const std::vector<LineVertex> &vertices = line.fill(samples, columns);
            const bool isFound =
                    std::any_of(vertices.begin(), vertices.end(), [&](const LineVertex &vertex) {
                        const double position = line.line.origin() + static_cast<double>(vertex.x);
                        const double place = (position - columns.first()) / columns.width();
                        return !vertex.isGap && vertex.y == (i % 2 == 0 ? height : -height)
                               && static_cast<std::int64_t>(std::floor(place))
                                          == window.columnOf(spike);
                    });
            QVERIFY2(isFound, qPrintable(QStringLiteral("%1 of %2").arg(spike).arg(visible)));
        }
    }
}

QTEST_GUILESS_MAIN(tst_Spikes)

#include "tst_spikes.moc"
