// SPDX-License-Identifier: MIT
#include "readers/Touchstone.h"

#include <QDir>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <complex>
#include <filesystem>
#include <utility>

using Charts::Readers::NetworkData;
using Charts::Readers::readTouchstone;

namespace {

QString dataFolder()
{
    QString named = qEnvironmentVariable("CHARTS_SHARED_DATA_DIR");
#ifdef CHARTS_SHARED_DATA_DIR
    if (named.isEmpty())
        named = QString::fromUtf8(CHARTS_SHARED_DATA_DIR);
#endif
    return named.isEmpty() ? QString() : QDir(named).filePath(QStringLiteral("touchstone"));
}

NetworkData readFile(const char *name)
{
    const QString path = QDir(dataFolder()).filePath(QString::fromLatin1(name));
    return readTouchstone(std::filesystem::path(path.toStdString()));
}

double largestAsymmetry(const NetworkData &network)
{
    const auto ports = std::size_t(network.portCount);
    double largest = 0;
    for (std::size_t point = 0; point < network.frequency.size(); ++point) {
        for (std::size_t row = 0; row < ports; ++row) {
            for (std::size_t column = 0; column < row; ++column) {
                largest = std::fmax(largest,
                        std::abs(network.s(point, row, column) - network.s(point, column, row)));
            }
        }
    }
    return largest;
}

/// The least and the most power that leaves through all ports for a unit of power that enters
/// through one.
std::pair<double, double> powers(const NetworkData &network)
{
    const auto ports = std::size_t(network.portCount);
    double least = HUGE_VAL;
    double most = 0;
    for (std::size_t point = 0; point < network.frequency.size(); ++point) {
        for (std::size_t column = 0; column < ports; ++column) {
            double power = 0;
            for (std::size_t row = 0; row < ports; ++row)
                power += std::norm(network.s(point, row, column));
            least = std::fmin(least, power);
            most = std::fmax(most, power);
        }
    }
    return {least, most};
}

} // namespace

/// What the measured and simulated networks of the shared files promise by their nature.
class tst_TouchstonePassivity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void reciprocity_data();
    void reciprocity();
    void passivity_data();
    void passivity();
    void sameNetworkTwice();
    void tee();
};

void tst_TouchstonePassivity::initTestCase()
{
    if (dataFolder().isEmpty() || !QDir(dataFolder()).exists())
        QSKIP("CHARTS_SHARED_DATA_DIR names no folder with measurements.");
}

void tst_TouchstonePassivity::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TouchstonePassivity::reciprocity_data()
{
    QTest::addColumn<double>("tolerance");

    // Simulated; and measured between passive ends, within the error of the measurement.
    QTest::newRow("bandpass_filter_450_550MHz.s2p") << 1e-13;
    QTest::newRow("ntwk1.s2p") << 0.0;
    QTest::newRow("ring_slot.s2p") << 0.0;
    QTest::newRow("tee.s3p") << 0.0;
    QTest::newRow("threeport_DB.s3p") << 1e-11;
    QTest::newRow("threeport_MA.s3p") << 1e-11;
    QTest::newRow("ntwk.s32p") << 1e-6;
    QTest::newRow("v2_ansys.ts") << 1e-15;
    QTest::newRow("line_measured.s2p") << 0.02;
    QTest::newRow("lowpass_filter_25C.s2p") << 0.003;
    QTest::newRow("resonator_36mm.s2p") << 3e-4;
    QTest::newRow("vna_4port_measured.s4p") << 0.005;
}

void tst_TouchstonePassivity::reciprocity()
{
    QFETCH(double, tolerance);

    const double asymmetry = largestAsymmetry(readFile(QTest::currentDataTag()));
    QVERIFY2(asymmetry <= tolerance, QByteArray::number(asymmetry).constData());
}

void tst_TouchstonePassivity::passivity_data()
{
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");

    // Without losses all power leaves again, as far as the simulation is exact.
    QTest::newRow("bandpass_filter_450_550MHz.s2p") << 1 - 1e-13 << 1 + 1e-13;
    QTest::newRow("tee.s3p") << 1 - 1e-11 << 1 + 1e-11;
    QTest::newRow("threeport_DB.s3p") << 0.9999 << 1.0001;
    QTest::newRow("threeport_MA.s3p") << 0.9998 << 1.0003;
    // With losses.
    QTest::newRow("ntwk1.s2p") << 0.7 << 1.0;
    QTest::newRow("ring_slot.s2p") << 0.9 << 1.0;
    QTest::newRow("ntwk.s32p") << 0.99 << 1.0;
    QTest::newRow("resonator_36mm.s2p") << 0.8 << 1.0;
    QTest::newRow("vna_4port_measured.s4p") << 0.0 << 1.0;
    QTest::newRow("oneport_simulated.s1p") << 0.0 << 0.1;
    QTest::newRow("ring_slot_measured.s1p") << 0.0 << 1.0;
}

void tst_TouchstonePassivity::passivity()
{
    QFETCH(double, least);
    QFETCH(double, most);

    const auto [foundLeast, foundMost] = powers(readFile(QTest::currentDataTag()));
    QVERIFY2(foundLeast >= least && foundMost <= most,
            qPrintable(QStringLiteral("%1 to %2").arg(foundLeast).arg(foundMost)));
}

/// Two simulations of one network, written in different formats. They count the wave at port 3 with
/// opposite signs, and one was refined a little further than the other.
void tst_TouchstonePassivity::sameNetworkTwice()
{
    const NetworkData decibels = readFile("threeport_DB.s3p");
    const NetworkData magnitudes = readFile("threeport_MA.s3p");
    QCOMPARE(decibels.frequency.size(), magnitudes.frequency.size());

    double sum = 0;
    for (std::size_t point = 0; point < decibels.frequency.size(); ++point) {
        QVERIFY(std::abs(decibels.frequency[point] - magnitudes.frequency[point]) < 1e-4);
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                const double sign = (row == 2) == (column == 2) ? 1 : -1;
                const double difference = std::abs(
                        decibels.s(point, row, column) - sign * magnitudes.s(point, row, column));
                QVERIFY(difference < 0.04);
                sum += difference;
            }
        }
    }
    QVERIFY(sum / double(decibels.parameters.size()) < 0.003);
}

/// An ideal tee reflects a third of the wave and passes two thirds on to each of the others.
void tst_TouchstonePassivity::tee()
{
    const NetworkData network = readFile("tee.s3p");
    for (std::size_t point = 0; point < network.frequency.size(); ++point) {
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                const double expected = row == column ? -1 / 3.0 : 2 / 3.0;
                QVERIFY(std::abs(network.s(point, row, column) - expected) < 1e-12);
            }
        }
    }
}

QTEST_APPLESS_MAIN(tst_TouchstonePassivity)

#include "tst_touchstonepassivity.moc"
