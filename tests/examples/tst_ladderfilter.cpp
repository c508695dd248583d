// SPDX-License-Identifier: MIT
#include "Decibels.h"
#include "LadderFilter.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <complex>
#include <numbers>

using Gallery::LadderFilter;

class tst_LadderFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void oneInductor();
    void isMaximallyFlat_data();
    void isMaximallyFlat();
    void isLosslessAndReciprocal();
    void asMeasured();
    void inDecibels();
};

void tst_LadderFilter::oneInductor()
{
    // A series impedance Z between two resistances R: S21 = 2R / (2R + Z), S11 = Z / (2R + Z).
    const LadderFilter filter = {.resistance = 75.0, .elements = {3e-6}};
    for (const double frequency : {0.0, 1e3, 4e6, 1e12}) {
        const std::complex<double> z(0.0, 2.0 * std::numbers::pi * frequency * 3e-6);
        const auto s = filter.scattering(frequency);
        QCOMPARE(s.size(), std::size_t(4));
        QVERIFY(std::abs(s[0] - z / (150.0 + z)) < 1e-12);
        QVERIFY(std::abs(s[1] - 150.0 / (150.0 + z)) < 1e-12);
        QCOMPARE(s[2], s[1]);
        QVERIFY(std::abs(s[3] - s[0]) < 1e-12);
    }
}

void tst_LadderFilter::isMaximallyFlat_data()
{
    QTest::addColumn<int>("order");
    for (const int order : {1, 2, 3, 4, 5, 8, 15})
        QTest::addRow("order %d", order) << order;
}

void tst_LadderFilter::isMaximallyFlat()
{
    QFETCH(const int, order);
    const double cutoff = 2.5e6;
    const LadderFilter filter = LadderFilter::butterworth(order, cutoff);
    QCOMPARE(filter.elements.size(), static_cast<std::size_t>(order));
    // What makes a Butterworth filter one: |S21|^2 = 1 / (1 + (f / fc)^(2 order)).
    for (const double ratio : {0.0, 0.1, 0.5, 0.9, 1.0, 1.1, 2.0, 5.0}) {
        const double power = std::norm(filter.scattering(ratio * cutoff)[2]);
        const double expected = 1.0 / (1.0 + std::pow(ratio, 2 * order));
        QVERIFY2(std::abs(power - expected) <= 1e-9 * expected, qPrintable(QString::number(ratio)));
    }
}

void tst_LadderFilter::isLosslessAndReciprocal()
{
    const LadderFilter filter = LadderFilter::butterworth(6, 1e9);
    for (int i = 0; i <= 40; ++i) {
        const auto s = filter.scattering(i * 1e8);
        QVERIFY(std::abs(std::norm(s[0]) + std::norm(s[2]) - 1.0) < 1e-12);
        QVERIFY(std::abs(std::norm(s[3]) + std::norm(s[1]) - 1.0) < 1e-12);
        QCOMPARE(s[1], s[2]);
        // The columns of a lossless network's matrix are orthogonal.
        QVERIFY(std::abs(std::conj(s[0]) * s[1] + std::conj(s[2]) * s[3]) < 1e-12);
    }
}

void tst_LadderFilter::asMeasured()
{
    const LadderFilter filter = LadderFilter::butterworth(3, 1e6);
    const auto data = filter.measuredAt({1e5, 1e6, 3e6});
    QCOMPARE(data.portCount, 2);
    QCOMPARE(data.frequency, (std::vector<double>{1e5, 1e6, 3e6}));
    QCOMPARE(data.referenceImpedance, (std::vector<double>{50.0, 50.0}));
    for (std::size_t i = 0; i < 3; ++i) {
        const auto s = filter.scattering(data.frequency[i]);
        QCOMPARE(data.s(i, 0, 0), s[0]);
        QCOMPARE(data.s(i, 0, 1), s[1]);
        QCOMPARE(data.s(i, 1, 0), s[2]);
        QCOMPARE(data.s(i, 1, 1), s[3]);
    }
}

void tst_LadderFilter::inDecibels()
{
    using Gallery::decibels;
    QCOMPARE(decibels(1.0), 0.0);
    QCOMPARE(decibels({0.0, -10.0}), 20.0);
    QVERIFY(std::abs(decibels({0.6, 0.8}) - 0.0) < 1e-12);
    QCOMPARE(decibels(0.001), -60.0);
    QCOMPARE(decibels(0.0), -200.0);
    QCOMPARE(decibels(1e-300), -200.0);
}

QTEST_GUILESS_MAIN(tst_LadderFilter)

#include "tst_ladderfilter.moc"
