// SPDX-License-Identifier: MIT
#include "ComputedSignal.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

using Charts::Readers::SampleTable;

class tst_ComputedSignal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_table = Gallery::computedSignal(); }
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void names();
    void time();
    void values_data();
    void values();
    void heartRate();
    void pulseFollows();
    void isTheSameEachTime();

private:
    /*! The times of the highest values above \a limit, one for each time it is exceeded. */
    [[nodiscard]] std::vector<double> peaks(std::size_t column, float limit) const;

    SampleTable m_table;
};

std::vector<double> tst_ComputedSignal::peaks(std::size_t column, float limit) const
{
    std::vector<double> times;
    const std::vector<float> &values = m_table.columns.at(column).values;
    float highest = limit;
    bool isAbove = false;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i] <= limit) {
            isAbove = false;
            highest = limit;
        } else if (values[i] > highest) {
            if (isAbove)
                times.back() = m_table.time[i];
            else
                times.push_back(m_table.time[i]);
            isAbove = true;
            highest = values[i];
        }
    }
    return times;
}

void tst_ComputedSignal::names()
{
    QCOMPARE(m_table.timeUnit, std::string("s"));
    QVERIFY(!m_table.timeName.empty());
    QCOMPARE(m_table.columns.size(), 2U);
    QVERIFY(m_table.columns[0].name.starts_with("ECG"));
    QVERIFY(m_table.columns[1].name.starts_with("Pulse"));
    // Both are drawn over one axis.
    QCOMPARE(m_table.columns[0].unit, std::string("mV"));
    QCOMPARE(m_table.columns[1].unit, m_table.columns[0].unit);
}

void tst_ComputedSignal::time()
{
    // A minute, 500 samples a second.
    QCOMPARE(m_table.time.size(), 30000U);
    QCOMPARE(m_table.time.front(), 0.0);
    for (std::size_t i = 1; i < m_table.time.size(); ++i) {
        QVERIFY(std::isfinite(m_table.time[i]));
        QVERIFY(std::abs(m_table.time[i] - m_table.time[i - 1] - 0.002) < 1e-9);
    }
    QVERIFY(std::abs(m_table.time.back() - 59.998) < 1e-9);
}

void tst_ComputedSignal::values_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<float>("lowest");
    QTest::addColumn<float>("highest");

    // An R wave of 1.25 mV, an S wave of -0.28 mV, 0.04 mV of breathing.
    QTest::newRow("electrocardiogram") << 0 << -0.35F << 1.35F;
    // Below the electrocardiogram, so that the two do not cross.
    QTest::newRow("pulse") << 1 << -1.45F << -0.3F;
}

void tst_ComputedSignal::values()
{
    QFETCH(int, column);
    QFETCH(float, lowest);
    QFETCH(float, highest);

    const std::vector<float> &values = m_table.columns.at(static_cast<std::size_t>(column)).values;
    QCOMPARE(values.size(), m_table.time.size());
    QVERIFY(std::all_of(
            values.begin(), values.end(), [](float value) { return std::isfinite(value); }));
    const auto [least, greatest] = std::minmax_element(values.begin(), values.end());
    QCOMPARE_GE(*least, lowest);
    QCOMPARE_LE(*greatest, highest);
    // It moves, over most of its range.
    QCOMPARE_GT(*greatest - *least, 0.7F * (highest - lowest));
    // It is smooth enough for its rate: no step above a third of the whole.
    for (std::size_t i = 1; i < values.size(); ++i)
        QVERIFY(std::abs(values[i] - values[i - 1]) < (highest - lowest) / 3.0F);
}

void tst_ComputedSignal::heartRate()
{
    const std::vector<double> beats = peaks(0, 0.8F);
    // 1.15 beats a second on average; the first R wave comes after a part of a beat.
    QCOMPARE_GE(beats.size(), 68U);
    QCOMPARE_LE(beats.size(), 70U);

    double shortest = 10.0;
    double longest = 0.0;
    for (std::size_t i = 1; i < beats.size(); ++i) {
        shortest = std::min(shortest, beats[i] - beats[i - 1]);
        longest = std::max(longest, beats[i] - beats[i - 1]);
    }
    // The rate breathes by 6 %: intervals of 1 / (1.15 * 1.06) to 1 / (1.15 * 0.94) s.
    QCOMPARE_GE(shortest, 0.820 - 0.005);
    QCOMPARE_LE(shortest, 0.835);
    QCOMPARE_GE(longest, 0.910);
    QCOMPARE_LE(longest, 0.925 + 0.005);
}

void tst_ComputedSignal::pulseFollows()
{
    const std::vector<double> beats = peaks(0, 0.8F);
    const std::vector<double> pulses = peaks(1, -0.85F);
    // One pulse after each beat, the last of which may be cut off.
    QCOMPARE_LE(beats.size() - pulses.size(), 1U);
    for (std::size_t i = 0; i < pulses.size(); ++i) {
        const double delay = pulses[i] - beats[i];
        QVERIFY2(delay > 0.1 && delay < 0.3, qPrintable(QString::number(delay)));
    }
}

void tst_ComputedSignal::isTheSameEachTime()
{
    const SampleTable again = Gallery::computedSignal();
    QVERIFY(again.time == m_table.time);
    QVERIFY(again.columns[0].values == m_table.columns[0].values);
    QVERIFY(again.columns[1].values == m_table.columns[1].values);
}

QTEST_GUILESS_MAIN(tst_ComputedSignal)

#include "tst_computedsignal.moc"
