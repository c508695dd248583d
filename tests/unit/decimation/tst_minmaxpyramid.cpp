// SPDX-License-Identifier: MIT
#include "TestSamples.h"

#include "decimation/MinMaxPyramid.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <random>
#include <span>
#include <vector>

using namespace Charts::Decimation;
using TestSamples::Kind;

Q_DECLARE_METATYPE(TestSamples::Kind)

// The extremes of ranges, compared with a look at every sample.
class tst_MinMaxPyramid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void nothing();
    void scan_data();
    void scan();
    void everyRange_data();
    void everyRange();
    void randomRanges_data();
    void randomRanges();
    void oddPieces_data();
    void oddPieces();
    void ring_data();
    void ring();
    void hugeAppendToRing();
    void firstOfEqualValues();
    void rangesBeyondTheEnds();
    void memory();
};

namespace {

/*! What is wrong with \a extremes; empty if nothing is. */
QString defectOf(const Extremes &extremes, const std::optional<TestSamples::Found> &expected)
{
    const QString found = QStringLiteral("[%1, %2], smallest first: %3")
                                  .arg(extremes.values.min)
                                  .arg(extremes.values.max)
                                  .arg(extremes.isMinFirst);
    if (!expected)
        return extremes.isEmpty() ? QString() : found + QStringLiteral(" instead of nothing");
    const bool isMinFirst = expected->minIndex <= expected->maxIndex;
    if (!extremes.isEmpty() && extremes.values.min == expected->min
            && extremes.values.max == expected->max && extremes.isMinFirst == isMinFirst
            && extremes.first() == (isMinFirst ? expected->min : expected->max)
            && extremes.second() == (isMinFirst ? expected->max : expected->min)) {
        return {};
    }
    return found
           + QStringLiteral(" instead of [%1, %2] at %3, %4")
                     .arg(expected->min)
                     .arg(expected->max)
                     .arg(expected->minIndex)
                     .arg(expected->maxIndex);
}

QString defectOf(const MinMaxPyramid &pyramid, std::span<const float> storage,
        const std::vector<float> &samples, std::size_t first, std::size_t last)
{
    const QString defect =
            defectOf(pyramid.query(storage, first, last), TestSamples::find(samples, first, last));
    return defect.isEmpty() ? defect
                            : QStringLiteral("%1 to %2: %3").arg(first).arg(last).arg(defect);
}

void addKinds()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<std::size_t>("count");
}

const std::vector<std::pair<const char *, Kind>> kinds = {{"noise", Kind::Noise},
        {"few values", Kind::FewValues}, {"rising", Kind::Rising}, {"falling", Kind::Falling},
        {"constant", Kind::Constant}, {"some missing", Kind::SomeMissing},
        {"most missing", Kind::MostMissing}, {"all missing", Kind::AllMissing},
        {"infinities", Kind::Infinite}};

} // namespace

void tst_MinMaxPyramid::nothing()
{
    MinMaxPyramid pyramid;
    QCOMPARE(pyramid.begin(), std::size_t(0));
    QCOMPARE(pyramid.end(), std::size_t(0));
    QVERIFY(pyramid.query({}, 0, 0).isEmpty());
    QVERIFY(pyramid.query({}, 0, 10).isEmpty());
    pyramid.append({});
    QCOMPARE(pyramid.end(), std::size_t(0));
    QCOMPARE(pyramid.memory(), std::size_t(0));

    QVERIFY(MinMax().isEmpty());
    QVERIFY(!(MinMax{1.0F, 1.0F}.isEmpty()));
    QVERIFY(!(MinMax{TestSamples::infinity, TestSamples::infinity}.isEmpty()));
    QVERIFY(!(MinMax{-TestSamples::infinity, -TestSamples::infinity}.isEmpty()));
}

void tst_MinMaxPyramid::scan_data()
{
    QTest::addColumn<Kind>("kind");
    for (const auto &[name, kind] : kinds)
        QTest::newRow(name) << kind;
}

void tst_MinMaxPyramid::scan()
{
    QFETCH(const Kind, kind);
    const std::vector<float> samples = TestSamples::make(kind, 80);
    // Every length at every place within a vector of the processor.
    for (std::size_t first = 0; first < 9; ++first) {
        for (std::size_t last = first; last <= samples.size(); ++last) {
            const std::span values = std::span(samples).subspan(first, last - first);
            const auto expected = TestSamples::find(samples, first, last);
            for (const MinMax &found : {minMaxOf(values), portableMinMaxOf(values)}) {
                QCOMPARE(found.isEmpty(), !expected);
                if (expected) {
                    QCOMPARE(found.min, expected->min);
                    QCOMPARE(found.max, expected->max);
                }
            }
        }
    }
}

void tst_MinMaxPyramid::everyRange_data()
{
    addKinds();
    for (const auto &[name, kind] : kinds) {
        // On both sides of a whole block, and of two.
        for (const std::size_t count : {0, 1, 2, 31, 32, 33, 63, 64, 65})
            QTest::addRow("%s, %d", name, static_cast<int>(count)) << kind << count;
    }
    // And of eight, which make a block of the next level.
    for (const std::size_t count : {255, 256, 257})
        QTest::addRow("few values, %d", static_cast<int>(count)) << Kind::FewValues << count;
}

void tst_MinMaxPyramid::everyRange()
{
    QFETCH(const Kind, kind);
    QFETCH(const std::size_t, count);
    const std::vector<float> samples = TestSamples::make(kind, count);
    MinMaxPyramid pyramid;
    pyramid.append(samples);
    QCOMPARE(pyramid.end(), count);
    for (std::size_t first = 0; first <= count; ++first) {
        for (std::size_t last = first; last <= count; ++last) {
            const QString defect = defectOf(pyramid, samples, samples, first, last);
            QVERIFY2(defect.isEmpty(), qPrintable(defect));
        }
    }
}

void tst_MinMaxPyramid::randomRanges_data()
{
    addKinds();
    for (const auto &[name, kind] : kinds) {
        for (const std::size_t count : {2047, 2048, 2049, 16'384, 20'011})
            QTest::addRow("%s, %d", name, static_cast<int>(count)) << kind << count;
    }
}

void tst_MinMaxPyramid::randomRanges()
{
    QFETCH(const Kind, kind);
    QFETCH(const std::size_t, count);
    const std::vector<float> samples = TestSamples::make(kind, count, 2);
    MinMaxPyramid pyramid;
    pyramid.append(samples);
    std::mt19937 random(3);
    for (int i = 0; i < 100; ++i) {
        // The larger one of them long, the others short.
        const std::size_t length = i % 4 == 0 ? random() % (count + 1) : random() % 700;
        const std::size_t first = random() % (count - std::min(length, count) + 1);
        const QString defect =
                defectOf(pyramid, samples, samples, first, std::min(first + length, count));
        QVERIFY2(defect.isEmpty(), qPrintable(defect));
    }
    const QString defect = defectOf(pyramid, samples, samples, 0, count);
    QVERIFY2(defect.isEmpty(), qPrintable(defect));
}

void tst_MinMaxPyramid::oddPieces_data()
{
    QTest::addColumn<int>("longest");
    QTest::newRow("one by one") << 1;
    QTest::newRow("up to 2") << 2;
    QTest::newRow("up to 31") << 31;
    QTest::newRow("up to 33") << 33;
    QTest::newRow("up to 500") << 500;
    QTest::newRow("up to 5000") << 5000;
}

void tst_MinMaxPyramid::oddPieces()
{
    QFETCH(const int, longest);
    const std::vector<float> samples = TestSamples::make(Kind::SomeMissing, 6000, 4);
    // A growing array, which moves.
    std::vector<float> storage;
    MinMaxPyramid pyramid;
    std::mt19937 random(5);
    while (storage.size() < samples.size()) {
        const std::size_t length = std::min<std::size_t>(
                1 + random() % static_cast<unsigned>(longest), samples.size() - storage.size());
        const std::size_t before = storage.size();
        for (std::size_t i = 0; i < length; ++i)
            storage.push_back(samples[before + i]);
        pyramid.append(std::span(storage).subspan(before));
        QCOMPARE(pyramid.end(), storage.size());
        const std::size_t first = random() % (storage.size() + 1);
        for (const std::size_t from : {first, before, storage.size() - 1}) {
            const QString defect = defectOf(pyramid, storage, samples, from, storage.size());
            QVERIFY2(defect.isEmpty(), qPrintable(defect));
        }
    }
}

void tst_MinMaxPyramid::ring_data()
{
    QTest::addColumn<std::size_t>("capacity");
    QTest::addColumn<Kind>("kind");
    for (const std::size_t capacity :
            {1, 2, 31, 32, 33, 64, 100, 255, 256, 257, 1000, 2048, 2300}) {
        const int number = static_cast<int>(capacity);
        QTest::addRow("%d, few values", number) << capacity << Kind::FewValues;
        QTest::addRow("%d, falling", number) << capacity << Kind::Falling;
        QTest::addRow("%d, most missing", number) << capacity << Kind::MostMissing;
    }
}

void tst_MinMaxPyramid::ring()
{
    QFETCH(const std::size_t, capacity);
    QFETCH(const Kind, kind);
    const std::vector<float> samples = TestSamples::make(kind, 8000, 6);
    std::vector<float> storage(capacity, -1e9F);
    MinMaxPyramid pyramid(capacity);
    std::mt19937 random(7);
    std::size_t end = 0;
    while (end < samples.size()) {
        const std::size_t length = std::min<std::size_t>(1 + random() % 150, samples.size() - end);
        for (std::size_t i = 0; i < length; ++i)
            storage[(end + i) % capacity] = samples[end + i];
        pyramid.append(std::span(samples).subspan(end, length));
        end += length;
        QCOMPARE(pyramid.end(), end);
        const std::size_t begin = end > capacity ? end - capacity : 0;
        QCOMPARE(pyramid.begin(), begin);

        const std::size_t first = begin + random() % (end - begin + 1);
        const std::size_t last = first + random() % (end - first + 1);
        for (const auto &[from, to] : {std::pair(begin, end), std::pair(first, last),
                     std::pair(begin, last), std::pair(first, end)}) {
            const QString defect = defectOf(pyramid, storage, samples, from, to);
            QVERIFY2(defect.isEmpty(), qPrintable(defect));
        }
        // What is asked of forgotten ones is what is left.
        QCOMPARE(pyramid.query(storage, 0, end).values, pyramid.query(storage, begin, end).values);
    }
}

void tst_MinMaxPyramid::hugeAppendToRing()
{
    // Several times round in one piece.
    constexpr std::size_t capacity = 300;
    const std::vector<float> samples = TestSamples::make(Kind::Noise, 5000, 8);
    std::vector<float> storage(capacity);
    for (std::size_t i = 0; i < samples.size(); ++i)
        storage[i % capacity] = samples[i];
    MinMaxPyramid pyramid(capacity);
    pyramid.append(samples);
    for (std::size_t first = 4700; first <= 5000; ++first) {
        for (std::size_t last = first; last <= 5000; last += 3) {
            const QString defect = defectOf(pyramid, storage, samples, first, last);
            QVERIFY2(defect.isEmpty(), qPrintable(defect));
        }
    }
}

void tst_MinMaxPyramid::firstOfEqualValues()
{
    // The same two values over and over, with the other one first: in one block, in two of them, in
    // a range that begins in the middle of one.
    std::vector<float> samples(3000, 0.0F);
    const auto set = [&samples](std::initializer_list<std::size_t> places, float value) {
        for (const std::size_t place : places)
            samples[place] = value;
    };
    set({100, 110, 1000, 2500}, 1.0F);
    set({105, 108, 999, 1001, 2600}, -1.0F);
    MinMaxPyramid pyramid;
    pyramid.append(samples);
    QCOMPARE(pyramid.query(samples, 0, 3000).isMinFirst, false);    // 100 before 105
    QCOMPARE(pyramid.query(samples, 101, 3000).isMinFirst, true);   // 105 before 110
    QCOMPARE(pyramid.query(samples, 109, 3000).isMinFirst, false);  // 110 before 999
    QCOMPARE(pyramid.query(samples, 111, 3000).isMinFirst, true);   // 999 before 1000
    QCOMPARE(pyramid.query(samples, 1000, 3000).isMinFirst, false); // 1000 before 1001
    QCOMPARE(pyramid.query(samples, 1001, 3000).isMinFirst, true);  // 1001 before 2500
    QCOMPARE(pyramid.query(samples, 1002, 3000).isMinFirst, false); // 2500 before 2600
    QCOMPARE(pyramid.query(samples, 0, 100).isMinFirst, true);      // equal
}

void tst_MinMaxPyramid::rangesBeyondTheEnds()
{
    const std::vector<float> samples = {3.0F, 1.0F, 2.0F};
    MinMaxPyramid pyramid;
    pyramid.append(samples);
    QCOMPARE(pyramid.query(samples, 0, 1000).values, (MinMax{1.0F, 3.0F}));
    QCOMPARE(pyramid.query(samples, 2, std::numeric_limits<std::size_t>::max()).values,
            (MinMax{2.0F, 2.0F}));
    QVERIFY(pyramid.query(samples, 3, 1000).isEmpty());
    QVERIFY(pyramid.query(samples, 2, 1).isEmpty());
    QCOMPARE(MinMaxPyramid(0).begin(), std::size_t(0)); // keeps one
}

void tst_MinMaxPyramid::memory()
{
    const std::vector<float> samples(1'000'000, 1.0F);
    MinMaxPyramid growing;
    MinMaxPyramid ring(samples.size());
    growing.append(samples);
    for (int i = 0; i < 3; ++i)
        ring.append(samples);
    const std::size_t bytes = samples.size() * sizeof(float);
    // Pairs: 1 / 16 of the samples' memory and 1 / 8 of it more for the levels above. The vectors
    // may have taken twice of that in advance.
    for (const MinMaxPyramid *pyramid : {&growing, &ring}) {
        QVERIFY2(pyramid->memory() >= bytes / 16, qPrintable(QString::number(pyramid->memory())));
        QVERIFY2(pyramid->memory() <= bytes / 6, qPrintable(QString::number(pyramid->memory())));
    }
}

QTEST_GUILESS_MAIN(tst_MinMaxPyramid)

#include "tst_minmaxpyramid.moc"
