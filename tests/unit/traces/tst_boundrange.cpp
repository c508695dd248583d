// SPDX-License-Identifier: MIT
#include "BoundRangeText.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cstddef>
#include <limits>
#include <type_traits>

using namespace Charts;

namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int lowest = std::numeric_limits<int>::min();

using Ranges = std::vector<Range<int>>;

static_assert(sizeof(Range<int>) == 8);
static_assert(offsetof(Range<int>, start) == 0 && offsetof(Range<int>, length) == 4);
static_assert(std::is_trivially_copyable_v<Range<int>>);
static_assert(std::is_copy_constructible_v<BoundRange> && std::is_copy_assignable_v<BoundRange>);

BoundRange boundRange(int size, const Ranges &ranges)
{
    BoundRange set;
    set.setSize(size);
    for (const Range<int> range : ranges)
        set.push(range);
    return set;
}

} // namespace

class tst_BoundRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void construction();
    void push_data();
    void push();
    void pushWithoutSize();
    void popLast();
    void popAll_data();
    void popAll();
    void popAllKeepsSize();
    void contain_data();
    void contain();
    void setSize_data();
    void setSize();
    void limits_data();
    void limits();
    void unionBeyondInt();
    void copies();
};

void tst_BoundRange::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_BoundRange::construction()
{
    BoundRange set;
    QVERIFY(set.isEmpty());
    QCOMPARE(set.size(), 0);
    QVERIFY(!set.contain(0));
    QCOMPARE(set.pop(false), (Range<int>{0, 0}));
    QCOMPARE(set.pop(true), (Range<int>{0, 0}));
}

void tst_BoundRange::push_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<Ranges>("before");
    QTest::addColumn<Ranges>("pushed");
    QTest::addColumn<QString>("after");

    const auto row = [](const char *name, int size, const Ranges &before, const Ranges &pushed,
                             const char *after) {
        QTest::newRow(name) << size << before << pushed << QString::fromLatin1(after);
    };
    row("into nothing", 10, {}, {{2, 3}}, "2+3");
    row("the whole array", 10, {}, {{0, 10}}, "0+10");
    row("empty", 10, {}, {{3, 0}}, "");
    row("empty, at a stored range", 10, {{0, 3}}, {{3, 0}}, "0+3");
    row("empty, beyond the array", 10, {}, {{30, 0}}, "");
    row("beyond the array", 10, {}, {{8, 4}}, "");
    row("beyond the array by one", 10, {}, {{6, 5}}, "");
    row("up to the end of the array", 10, {}, {{6, 4}}, "6+4");
    row("behind the array", 10, {}, {{10, 1}}, "");
    row("beyond the array, touching a stored range", 10, {{0, 8}}, {{8, 4}}, "0+8");
    row("into an array without points", 0, {}, {{0, 1}}, "");

    row("apart, in the order of pushing", 20, {{10, 2}}, {{0, 2}, {5, 2}}, "10+2 0+2 5+2");
    row("touching behind", 10, {{0, 5}}, {{5, 3}}, "0+8");
    row("touching in front", 10, {{5, 3}}, {{0, 5}}, "0+8");
    row("one apart behind", 10, {{0, 5}}, {{6, 2}}, "0+5 6+2");
    row("one apart in front", 10, {{6, 2}}, {{0, 5}}, "6+2 0+5");
    row("overlapping behind", 10, {{0, 5}}, {{3, 4}}, "0+7");
    row("overlapping in front", 10, {{3, 4}}, {{0, 5}}, "0+7");
    row("inside", 10, {{2, 6}}, {{3, 2}}, "2+6");
    row("around", 10, {{3, 2}}, {{2, 6}}, "2+6");
    row("the same", 10, {{3, 2}}, {{3, 2}}, "3+2");
    row("around, with one start", 10, {{3, 2}}, {{3, 6}}, "3+6");
    row("around, with one end", 10, {{3, 2}}, {{1, 4}}, "1+4");

    row("only the first one widens", 10, {{0, 2}, {4, 2}}, {{1, 4}}, "0+5 4+2");
    row("the first in the order of pushing", 10, {{4, 2}, {0, 2}}, {{1, 4}}, "1+5 0+2");
    row("over three", 20, {{0, 2}, {5, 2}, {10, 2}}, {{1, 12}}, "0+13 5+2 10+2");
    row("the second one", 20, {{0, 2}, {5, 2}, {10, 2}}, {{6, 3}}, "0+2 5+4 10+2");
    row("the last one", 20, {{0, 2}, {5, 2}, {10, 2}}, {{12, 8}}, "0+2 5+2 10+10");
    row("the widened one takes the next", 20, {{0, 2}, {5, 2}}, {{2, 4}, {6, 2}}, "0+8 5+2");

    row("a start below zero", 10, {}, {{-3, 2}}, "-3+2");
    row("from below zero", 10, {{2, 2}}, {{-3, 6}}, "-3+7");
    // Nothing asks whether a length is negative. The end lies before the start then.
    row("a negative length", 10, {}, {{5, -2}}, "5+-2");
    row("a negative length, beyond the array by its start", 10, {}, {{11, -2}}, "11+-2");
    row("a negative length inside a stored range", 10, {{0, 8}}, {{5, -2}}, "0+8");
}

void tst_BoundRange::push()
{
    QFETCH(int, size);
    QFETCH(Ranges, before);
    QFETCH(Ranges, pushed);
    QFETCH(QString, after);

    BoundRange set = boundRange(size, before);
    QCOMPARE(rangesText(storedRanges(set)), rangesText(before));
    for (const Range<int> range : pushed)
        set.push(range);
    QCOMPARE(rangesText(storedRanges(set)), after);
    QCOMPARE(set.isEmpty(), after.isEmpty());
    QCOMPARE(set.size(), size);
}

void tst_BoundRange::pushWithoutSize()
{
    BoundRange set;
    set.push({0, 1});
    QVERIFY(set.isEmpty());
    // It ends where the array without points ends.
    set.push({-1, 1});
    QCOMPARE(rangesText(storedRanges(set)), QStringLiteral("-1+1"));
}

void tst_BoundRange::popLast()
{
    BoundRange set = boundRange(20, {{10, 2}, {0, 2}, {5, 2}});
    QCOMPARE(set.pop(false), (Range<int>{5, 2}));
    QVERIFY(!set.contain(5));
    QVERIFY(set.contain(0));
    QCOMPARE(set.pop(false), (Range<int>{0, 2}));
    QVERIFY(!set.isEmpty());
    QCOMPARE(set.pop(false), (Range<int>{10, 2}));
    QVERIFY(set.isEmpty());
    QCOMPARE(set.pop(false), (Range<int>{0, 0}));
    QVERIFY(set.isEmpty());
    QCOMPARE(set.size(), 20);
}

void tst_BoundRange::popAll_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<Ranges>("ranges");

    QTest::newRow("several") << 20 << Ranges{{10, 2}, {0, 2}};
    QTest::newRow("one") << 20 << Ranges{{10, 2}};
    QTest::newRow("none") << 7 << Ranges{};
    QTest::newRow("no points") << 0 << Ranges{};
    QTest::newRow("huge") << largest << Ranges{{0, largest}};
}

void tst_BoundRange::popAll()
{
    QFETCH(int, size);
    QFETCH(Ranges, ranges);

    BoundRange set = boundRange(size, ranges);
    QCOMPARE(set.isEmpty(), ranges.empty());
    QCOMPARE(set.pop(true), (Range<int>{0, size}));
    QVERIFY(set.isEmpty());
    QCOMPARE(set.pop(false), (Range<int>{0, 0}));
}

void tst_BoundRange::popAllKeepsSize()
{
    BoundRange set = boundRange(20, {{10, 2}});
    set.pop(true);
    QCOMPARE(set.size(), 20);
    set.push({18, 2});
    QCOMPARE(rangesText(storedRanges(set)), QStringLiteral("18+2"));
    QCOMPARE(set.pop(true), (Range<int>{0, 20}));
}

void tst_BoundRange::contain_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("isContained");

    // Of the ranges [0, 5), [7, 8) and [-4, -2).
    QTest::newRow("first") << 0 << true;
    QTest::newRow("inside") << 3 << true;
    QTest::newRow("last") << 4 << true;
    QTest::newRow("behind the last") << 5 << false;
    QTest::newRow("between two ranges") << 6 << false;
    QTest::newRow("the only one of the second") << 7 << true;
    QTest::newRow("behind the second") << 8 << false;
    QTest::newRow("before the first") << -1 << false;
    QTest::newRow("negative, behind") << -2 << false;
    QTest::newRow("negative, last") << -3 << true;
    QTest::newRow("negative, first") << -4 << true;
    QTest::newRow("negative, before") << -5 << false;
    QTest::newRow("beyond the array") << 100 << false;
    QTest::newRow("largest") << largest << false;
    QTest::newRow("lowest") << lowest << false;
}

void tst_BoundRange::contain()
{
    QFETCH(int, index);
    QFETCH(bool, isContained);

    const BoundRange set = boundRange(10, {{0, 5}, {7, 1}, {-4, 2}});
    QCOMPARE(set.contain(index), isContained);
    QVERIFY(!boundRange(10, {}).contain(index));
}

void tst_BoundRange::setSize_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("isKept");

    QTest::newRow("the same") << 10 << true;
    QTest::newRow("larger") << 11 << false;
    QTest::newRow("smaller, still large enough") << 9 << false;
    QTest::newRow("zero") << 0 << false;
    QTest::newRow("negative") << -1 << false;
    QTest::newRow("largest") << largest << false;
    QTest::newRow("lowest") << lowest << false;
}

void tst_BoundRange::setSize()
{
    QFETCH(int, size);
    QFETCH(bool, isKept);

    BoundRange set = boundRange(10, {{0, 2}, {4, 2}});
    set.setSize(size);
    QCOMPARE(set.size(), size);
    QCOMPARE(rangesText(storedRanges(set)), isKept ? QStringLiteral("0+2 4+2") : QString());
    QCOMPARE(set.pop(true), (Range<int>{0, size}));
}

// Sums that are no int must neither wrap round nor trap.
void tst_BoundRange::limits_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<Ranges>("pushed");
    QTest::addColumn<QString>("after");

    const auto row = [](const char *name, int size, const Ranges &pushed, const char *after) {
        QTest::newRow(name) << size << pushed << QString::fromLatin1(after);
    };
    row("the largest start", 10, {{largest, 1}}, "");
    row("the largest length", 10, {{1, largest}}, "");
    row("the largest of both", 10, {{largest, largest}}, "");
    row("beyond the largest array", largest, {{largest, 1}}, "");
    row("the end of the largest array", largest, {{largest - 1, 1}}, "2147483646+1");
    row("all of the largest array", largest, {{0, largest}}, "0+2147483647");
    row("merged in the largest array", largest, {{0, 5}, {5, largest - 5}}, "0+2147483647");
    row("merged in the largest array, from behind", largest, {{5, largest - 5}, {0, 5}},
            "0+2147483647");
    row("apart in the largest array", largest, {{largest - 1, 1}, {0, 5}}, "2147483646+1 0+5");
    row("the lowest start", 10, {{lowest, 1}}, "-2147483648+1");
    row("the lowest start and the largest length", 10, {{lowest, largest}},
            "-2147483648+2147483647");
    row("the lowest start, apart from the end", 10, {{lowest, 1}, {0, 10}}, "-2147483648+1 0+10");
    row("the lowest start and a negative length", 10, {{lowest, -1}, {0, 10}},
            "-2147483648+-1 0+10");
    row("the lowest of both", 10, {{lowest, lowest}}, "-2147483648+-2147483648");
    row("the lowest array", lowest, {{lowest, 1}, {0, 1}}, "");
}

void tst_BoundRange::limits()
{
    QFETCH(int, size);
    QFETCH(Ranges, pushed);
    QFETCH(QString, after);

    const BoundRange set = boundRange(size, pushed);
    QCOMPARE(rangesText(storedRanges(set)), after);
    QCOMPARE(set.contain(largest), false);
    QCOMPARE(set.contain(largest - 1), after.contains(u"2147483646+1") || after == u"0+2147483647");
    QCOMPARE(set.contain(lowest),
            after.startsWith(u"-2147483648+1") || after.startsWith(u"-2147483648+2147483647"));
}

// A length that no int can hold cannot be stored; it only must not trap.
void tst_BoundRange::unionBeyondInt()
{
    BoundRange set = boundRange(largest, {{lowest, largest}, {-1, largest}});
    QCOMPARE(storedRanges(set).size(), 1U);
    QCOMPARE(set.pop(false).start, lowest);
    QVERIFY(set.isEmpty());
}

void tst_BoundRange::copies()
{
    // The draw pass takes everything out of a copy.
    const BoundRange set = boundRange(10, {{0, 2}, {4, 2}});
    BoundRange copy = set;
    QCOMPARE(copy.pop(true), (Range<int>{0, 10}));
    QVERIFY(copy.isEmpty());
    QCOMPARE(rangesText(storedRanges(set)), QStringLiteral("0+2 4+2"));
    copy = set;
    QCOMPARE(rangesText(storedRanges(copy)), QStringLiteral("0+2 4+2"));
    QCOMPARE(copy.size(), 10);
}

QTEST_APPLESS_MAIN(tst_BoundRange)
#include "tst_boundrange.moc"
