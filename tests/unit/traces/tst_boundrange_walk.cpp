// SPDX-License-Identifier: MIT
#include "BoundRangeText.h"

#include <QtCore/QRandomGenerator>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <set>

using namespace Charts;

namespace {

/*!
    The same set of ranges, told in another way: a range is the set of its indices. Two of them
    touch when one holds an index of the other or a neighbour of one; widening fills the gap.
*/
class IndexSets
{
public:
    using Indices = std::set<int>;

    void push(int start, int length)
    {
        Indices pushed;
        for (int i = 0; i < length; ++i)
            pushed.insert(start + i);
        if (pushed.empty() || *pushed.rbegin() >= m_size)
            return;
        for (Indices &stored : m_stored) {
            if (!touches(stored, pushed))
                continue;
            const int low = std::min(*stored.begin(), *pushed.begin());
            const int high = std::max(*stored.rbegin(), *pushed.rbegin());
            for (int i = low; i <= high; ++i)
                stored.insert(i);
            return;
        }
        m_stored.push_back(pushed);
    }

    Range<int> pop(bool all)
    {
        Range<int> popped;
        if (all) {
            popped.length = m_size;
            m_stored.clear();
        } else if (!m_stored.empty()) {
            popped = asRange(m_stored.back());
            m_stored.pop_back();
        }
        return popped;
    }

    void setSize(int size)
    {
        if (size != m_size)
            m_stored.clear();
        m_size = size;
    }

    int size() const { return m_size; }

    bool contain(int index) const
    {
        return std::any_of(m_stored.begin(), m_stored.end(),
                [index](const Indices &stored) { return stored.contains(index); });
    }

    std::vector<Range<int>> ranges() const
    {
        std::vector<Range<int>> ranges;
        for (const Indices &stored : m_stored)
            ranges.push_back(asRange(stored));
        return ranges;
    }

private:
    static bool touches(const Indices &a, const Indices &b)
    {
        return std::any_of(b.begin(), b.end(), [&a](int index) {
            return a.contains(index - 1) || a.contains(index) || a.contains(index + 1);
        });
    }

    static Range<int> asRange(const Indices &indices)
    {
        return {*indices.begin(), static_cast<int>(indices.size())};
    }

    std::vector<Indices> m_stored;
    int m_size = 0;
};

} // namespace

class tst_BoundRangeWalk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void walk_data();
    void walk();
};

void tst_BoundRangeWalk::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_BoundRangeWalk::walk_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("longest");

    for (const quint32 seed : {1U, 2U, 3U, 4U, 5U}) {
        QTest::addRow("seed %u, short ranges", seed) << seed << 3;
        QTest::addRow("seed %u, long ranges", seed) << seed << 12;
    }
}

void tst_BoundRangeWalk::walk()
{
    QFETCH(quint32, seed);
    QFETCH(int, longest);

    constexpr int largestSize = 40;
    QRandomGenerator random(seed);
    BoundRange set;
    IndexSets model;
    std::size_t mostRanges = 0;
    for (int step = 0; step < 3000; ++step) {
        const int choice = random.bounded(100);
        if (choice < 80) {
            const int start = random.bounded(-3, largestSize + 3);
            const int length = random.bounded(longest + 1);
            set.push({start, length});
            model.push(start, length);
        } else if (choice < 95) {
            QCOMPARE(set.pop(false), model.pop(false));
        } else if (choice < 97) {
            QCOMPARE(set.pop(true), model.pop(true));
        } else {
            // Half of the time the size that it has.
            const int size = random.bounded(2) == 0 ? model.size() : random.bounded(largestSize);
            set.setSize(size);
            model.setSize(size);
        }

        const auto expected = model.ranges();
        mostRanges = std::max(mostRanges, expected.size());
        QCOMPARE(rangesText(storedRanges(set)), rangesText(expected));
        QCOMPARE(set.isEmpty(), expected.empty());
        QCOMPARE(set.size(), model.size());
        for (int index = -5; index < largestSize + 5; ++index)
            QCOMPARE(set.contain(index), model.contain(index));
    }
    // The walk went somewhere.
    QVERIFY(mostRanges >= 3);
}

QTEST_APPLESS_MAIN(tst_BoundRangeWalk)
#include "tst_boundrange_walk.moc"
