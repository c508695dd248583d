// SPDX-License-Identifier: MIT
#include "readers/ReadError.h"
#include "readers/Touchstone.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <complex>
#include <sstream>
#include <vector>

using Charts::Readers::NetworkData;
using Charts::Readers::ReadError;
using Charts::Readers::readTouchstone;

namespace {

using Complex = std::complex<double>;
using Entries = QList<Complex>;
using Resistances = QList<double>;

QByteArray textOf(const Entries &entries)
{
    QByteArray text;
    for (const Complex &entry : entries) {
        text += ' ' + QByteArray::number(entry.real(), 'g', 17) + ' '
                + QByteArray::number(entry.imag(), 'g', 17);
    }
    return text;
}

/// A file of version 2 with one frequency.
QByteArray version2(const QByteArray &kind, const Resistances &resistances, const Entries &entries)
{
    QByteArray text = "[Version] 2.0\n# Hz RI " + kind + "\n[Number of Ports] "
                      + QByteArray::number(resistances.size()) + "\n[Reference]";
    for (const double resistance : resistances)
        text += ' ' + QByteArray::number(resistance, 'g', 17);
    return text + "\n[Number of Frequencies] 1\n[Two-Port Data Order] 12_21\n[Network Data]\n1"
           + textOf(entries) + '\n';
}

NetworkData readText(const QByteArray &text, int portCount = 0)
{
    std::istringstream input(text.toStdString());
    return readTouchstone(input, "test", portCount);
}

/// The largest difference between the S parameters of the only frequency and those expected.
double deviation(const NetworkData &network, const Entries &expected)
{
    if (qsizetype(network.parameters.size()) != expected.size())
        return HUGE_VAL;
    double largest = 0;
    for (qsizetype i = 0; i < expected.size(); ++i)
        largest = std::fmax(largest, std::abs(network.parameters[std::size_t(i)] - expected[i]));
    return largest;
}

} // namespace

class tst_TouchstoneConversion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void networks_data();
    void networks();
    void normalised_data();
    void normalised();
    void singular_data();
    void singular();
    void orderOfPorts();
    void severalPoints();
    void exactMatch();
};

void tst_TouchstoneConversion::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

/// Networks whose S parameters follow from voltage dividers.
void tst_TouchstoneConversion::networks_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<Resistances>("resistances");
    QTest::addColumn<Entries>("given");
    QTest::addColumn<Entries>("scattering");

    const auto row = [](const char *name, const char *kind, const Resistances &resistances,
                             const Entries &given, const Entries &scattering) {
        QTest::newRow(name) << QByteArray(kind) << resistances << given << scattering;
    };
    const Complex j(0, 1);

    row("match", "Z", {50}, {50}, {0});
    row("short circuit", "Z", {50}, {0}, {-1});
    row("three times the reference", "Z", {20}, {60}, {0.5});
    row("inductance", "Z", {50}, {50.0 * j}, {j});
    row("capacitance", "Z", {50}, {-50.0 * j}, {-j});
    row("nearly open circuit", "Z", {50}, {1e300}, {1});
    row("open circuit", "Y", {50}, {0}, {1});
    row("conductance", "Y", {20}, {1 / 60.0}, {0.5});
    row("capacitive susceptance", "Y", {50}, {0.02 * j}, {-j});
    row("nearly short circuit", "Y", {50}, {1e300}, {-1});

    // S11 = Z / (Z + 2 R), S21 = 2 R / (Z + 2 R): 100 + j 100 ohm between ports of 50 ohm, that is
    // (1 + j) / (2 + j) and 1 / (2 + j).
    const Complex series(100, 100);
    const Complex reflected(0.6, 0.2);
    const Complex passed(0.4, -0.2);
    const Entries seriesScattering{reflected, passed, passed, reflected};
    row("series impedance, Y", "Y", {50, 50},
            {1.0 / series, -1.0 / series, -1.0 / series, 1.0 / series}, seriesScattering);
    row("series impedance, H", "H", {50, 50}, {series, 1, -1, 0}, seriesScattering);
    row("series impedance, G", "G", {50, 50}, {0, -1, 1, series}, seriesScattering);

    // 40 ohm between ports of 40 and 120 ohm: S11 = (40 + 120 - 40) / 200, S22 = (40 + 40 - 120) /
    // 200, S21 = 2 sqrt(40 * 120) / 200.
    const double passedBetween = 0.4 * std::sqrt(3.0);
    const Entries unequalSeries{0.6, passedBetween, passedBetween, -0.2};
    row("series impedance, unequal references, Y", "Y", {40, 120}, {0.025, -0.025, -0.025, 0.025},
            unequalSeries);
    row("series impedance, unequal references, H", "H", {40, 120}, {40, 1, -1, 0}, unequalSeries);
    row("series impedance, unequal references, G", "G", {40, 120}, {0, -1, 1, 40}, unequalSeries);

    // S11 = -Y R / (2 + Y R), S21 = 2 / (2 + Y R): 0.02 + j 0.02 siemens across ports of 50 ohm.
    const Complex shunt(0.02, 0.02);
    const Complex shuntReflected(-0.4, -0.2);
    const Complex shuntPassed(0.6, -0.2);
    const Entries shuntScattering{shuntReflected, shuntPassed, shuntPassed, shuntReflected};
    row("shunt admittance, Z", "Z", {50, 50}, {1.0 / shunt, 1.0 / shunt, 1.0 / shunt, 1.0 / shunt},
            shuntScattering);
    row("shunt admittance, H", "H", {50, 50}, {0, 1, -1, shunt}, shuntScattering);
    row("shunt admittance, G", "G", {50, 50}, {shunt, -1, 1, 0}, shuntScattering);

    // 50 ohm across ports of 100 and 50 ohm: seen from port 1 25 ohm, from port 2 100 / 3 ohm. S21 =
    // (1 + S11) sqrt(R1 / R2).
    const double across = 0.4 * std::sqrt(2.0);
    const Entries unequalShunt{-0.6, across, across, -0.2};
    row("shunt admittance, unequal references, Z", "Z", {100, 50}, {50, 50, 50, 50}, unequalShunt);
    row("shunt admittance, unequal references, H", "H", {100, 50}, {0, 1, -1, 0.02}, unequalShunt);
    row("shunt admittance, unequal references, G", "G", {100, 50}, {0.02, -1, 1, 0}, unequalShunt);

    // V1 = 2 V2, I2 = -2 I1: S11 = (4 R2 - R1) / (4 R2 + R1), S21 = 4 sqrt(R1 R2) / (4 R2 + R1).
    row("transformer 2:1, H", "H", {50, 50}, {0, 2, -2, 0}, {0.6, 0.8, 0.8, -0.6});
    row("transformer 2:1, G", "G", {50, 50}, {0, -0.5, 0.5, 0}, {0.6, 0.8, 0.8, -0.6});
    row("transformer 2:1, matched, H", "H", {200, 50}, {0, 2, -2, 0}, {0, 1, 1, 0});
    row("transformer 2:1, matched, G", "G", {200, 50}, {0, -0.5, 0.5, 0}, {0, 1, 1, 0});

    // Controlled sources, which know one direction only.
    row("transconductance of 0.1 S", "Y", {50, 50}, {0, 0, 0.1, 0}, {1, 0, -10, 1});
    row("transconductance, unequal references", "Y", {200, 50}, {0, 0, 0.1, 0}, {1, 0, -20, 1});
    row("transresistance of 500 ohm", "Z", {50, 50}, {0, 0, 500, 0}, {-1, 0, 20, -1});
    row("matched current amplification of 3", "H", {50, 50}, {50, 0, 3, 0}, {0, 0, -3, 1});
    row("current amplification, unequal references", "H", {200, 50}, {200, 0, 3, 0},
            {0, 0, -1.5, 1});
    row("matched voltage amplification of 3", "G", {50, 50}, {0.02, 0, 3, 0}, {0, 0, 3, -1});
    row("voltage amplification, unequal references", "G", {200, 50}, {0.005, 0, 3, 0},
            {0, 0, 6, -1});
    row("gyrator of 50 ohm", "Z", {50, 50}, {0, -50, 50, 0}, {0, -1, 1, 0});

    // Three resistors of R / 3 from the ports to a common point halve the wave in each direction.
    row("resistive splitter", "Y", {50, 50, 50},
            {0.04, -0.02, -0.02, -0.02, 0.04, -0.02, -0.02, -0.02, 0.04},
            {0, 0.5, 0.5, 0.5, 0, 0.5, 0.5, 0.5, 0});
    // 25 ohm across three ports of 50 ohm: 12.5 ohm are seen from each.
    row("shunt at a junction", "Z", {50, 50, 50}, {25, 25, 25, 25, 25, 25, 25, 25, 25},
            {-0.6, 0.4, 0.4, 0.4, -0.6, 0.4, 0.4, 0.4, -0.6});
    row("separate ports", "Z", {50, 75, 10}, {150, 0, 0, 0, 25, 0, 0, 0, 10},
            {0.5, 0, 0, 0, -0.5, 0, 0, 0, 0});
    row("separate ports of unlike size", "Z", {50, 50}, {1e30, 0, 0, 150}, {1, 0, 0, 0.5});

    row("nothing to convert", "S", {50, 75}, {0.1, 0.2 * j, -0.3, 4}, {0.1, 0.2 * j, -0.3, 4});
}

void tst_TouchstoneConversion::networks()
{
    QFETCH(QByteArray, kind);
    QFETCH(Resistances, resistances);
    QFETCH(Entries, given);
    QFETCH(Entries, scattering);

    try {
        const NetworkData network = readText(version2(kind, resistances, given));
        const double difference = deviation(network, scattering);
        QVERIFY2(difference < 1e-13, QByteArray::number(difference).constData());
        QCOMPARE(network.referenceImpedance,
                std::vector<double>(resistances.begin(), resistances.end()));
    } catch (const ReadError &error) {
        QFAIL(error.what());
    }
}

void tst_TouchstoneConversion::normalised_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::addColumn<Entries>("given");
    QTest::addColumn<Entries>("scattering");

    // Version 1 divides impedances by the reference resistance and multiplies admittances with it;
    // the entries of two ports stand in the order 11, 21, 12, 22.
    const auto row = [](const char *name, const char *option, const Entries &given,
                             const Entries &scattering) {
        QTest::newRow(name) << QByteArray(option) << given << scattering;
    };
    for (const char *const resistance : {"", " R 75"}) {
        const auto withReference = [resistance](const char *kind) {
            return kind + QByteArray(resistance);
        };
        const auto named = [resistance](const char *name) { return name + QByteArray(resistance); };
        row(named("impedance"), withReference("Z"), {3}, {0.5});
        row(named("admittance"), withReference("Y"), {3}, {-0.5});
        row(named("series impedance, Y"), withReference("Y"), {0.5, -0.5, -0.5, 0.5},
                {0.5, 0.5, 0.5, 0.5});
        row(named("transconductance"), withReference("Y"), {0, 5, 0, 0}, {1, 0, -10, 1});
        row(named("transresistance"), withReference("Z"), {0, 10, 0, 0}, {-1, 0, 20, -1});
        row(named("series impedance, H"), withReference("H"), {2, -1, 1, 0}, {0.5, 0.5, 0.5, 0.5});
        row(named("current amplification"), withReference("H"), {1, 3, 0, 0}, {0, 0, -3, 1});
        row(named("shunt admittance, H"), withReference("H"), {0, -1, 1, 2},
                {-0.5, 0.5, 0.5, -0.5});
        row(named("voltage amplification"), withReference("G"), {1, 3, 0, 0}, {0, 0, 3, -1});
        row(named("shunt admittance, G"), withReference("G"), {2, 1, -1, 0},
                {-0.5, 0.5, 0.5, -0.5});
        row(named("series impedance, G"), withReference("G"), {0, 1, -1, 2}, {0.5, 0.5, 0.5, 0.5});
        row(named("a zero on the diagonal"), withReference("Z"), {-1, 2, 2, 0}, {1.5, -1, -1, 1});
    }
}

void tst_TouchstoneConversion::normalised()
{
    QFETCH(QByteArray, option);
    QFETCH(Entries, given);
    QFETCH(Entries, scattering);

    const int portCount = given.size() == 1 ? 1 : 2;
    const QByteArray text = "# Hz RI " + option + "\n1" + textOf(given) + '\n';
    const NetworkData network = readText(text, portCount);
    const double difference = deviation(network, scattering);
    QVERIFY2(difference < 1e-15, QByteArray::number(difference).constData());
    QCOMPARE(network.referenceImpedance,
            std::vector<double>(std::size_t(portCount), option.endsWith("75") ? 75.0 : 50.0));
}

void tst_TouchstoneConversion::singular_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("portCount");
    QTest::addColumn<QByteArray>("kind");

    const auto row = [](const char *name, const QByteArray &text, int portCount, const char *kind) {
        QTest::newRow(name) << text << portCount << QByteArray(kind);
    };
    row("negative impedance", "# Z RI\n1 -1 0\n", 1, "Z");
    row("negative impedance in polar form", "# Z MA\n1 1 180\n", 1, "Z");
    row("negative impedance in decibels", "# Z DB\n1 0 -180\n", 1, "Z");
    row("negative admittance", "# Y RI\n1 -1 0\n", 1, "Y");
    row("negative admittance in siemens", version2("Y", {49}, {-1 / 49.0}), 0, "Y");
    row("negative impedance in ohms", version2("Z", {20}, {-20}), 0, "Z");
    // Of (0.1, 0.2; 0.3, 0.6) no two products are the same in binary numbers.
    row("proportional rows", "# Z RI\n1 -0.9 0 0.3 0 0.2 0 -0.4 0\n", 2, "Z");
    row("equations without coefficients", "# Y RI\n1 -1 0 0 0 0 0 1 0\n", 2, "Y");
    row("impedances beyond the precision of numbers",
            version2("Z", {50, 50}, {1e30, 1e30, 1e30, 1e30}), 0, "Z");
    row("overflow", version2("Y", {1e200}, {1e200}), 0, "Y");
    row("hybrid", "# H RI\n1 -1 0 0 0 0 0 0 0\n", 2, "H");
    row("hybrid, products are the same", "# H RI\n1 0.1 0 0.3 0 1.1 0 -0.7 0\n", 2, "H");
    row("hybrid, overflow of a result", "# H RI\n1 0 0 0 0 1e308 0 0 0\n", 2, "H");
    row("hybrid in ohms and siemens", version2("H", {50, 75}, {-50, 0, 3, 1}), 0, "H");
    row("hybrid, resistance without an exact inverse", version2("H", {49, 75}, {-49, 0, 3, 1}), 0,
            "H");
    row("inverse hybrid in siemens", version2("G", {20, 75}, {-0.05, 0, 3, 1}), 0, "G");
    row("inverse hybrid", "# G RI\n1 0 0 1 0 1 0 0 0\n", 2, "G");
}

void tst_TouchstoneConversion::singular()
{
    QFETCH(QByteArray, text);
    QFETCH(int, portCount);
    QFETCH(QByteArray, kind);

    try {
        const NetworkData network = readText(text, portCount);
        QFAIL("the text was accepted");
    } catch (const ReadError &error) {
        QCOMPARE(QByteArray::fromStdString(error.cause()),
                "the " + kind + " parameters of this frequency have no S parameters");
        QCOMPARE(int(error.line()), int(text.trimmed().count('\n')) + 1);
    }
}

/// S21 is transmission from port 1 to port 2 whatever the order of the file.
void tst_TouchstoneConversion::orderOfPorts()
{
    const QByteArray header = "[Version] 2.0\n# Hz Y RI R 50\n[Number of Ports] 2\n"
                              "[Number of Frequencies] 1\n[Two-Port Data Order] ";
    const Entries expected{1, 0, -10, 1};
    const NetworkData columns = readText(header + "21_12\n[Network Data]\n1 0 0 0.1 0 0 0 0 0\n");
    QVERIFY(deviation(columns, expected) < 1e-14);
    const NetworkData rows = readText(header + "12_21\n[Network Data]\n1 0 0 0 0 0.1 0 0 0\n");
    QVERIFY(deviation(rows, expected) < 1e-14);
}

/// One point leaves nothing behind for the next.
void tst_TouchstoneConversion::severalPoints()
{
    const NetworkData network = readText("# Hz Z RI\n1 3 0\n2 0 0\n3 0 1\n4 1 0\n", 1);
    QVERIFY(deviation(network, {0.5, -1, Complex(0, 1), 0}) < 1e-15);
}

/// A resistor that equals the reference reflects nothing at all, whatever the resistance.
void tst_TouchstoneConversion::exactMatch()
{
    for (int resistance = 1; resistance <= 100; ++resistance) {
        const NetworkData network =
                readText(version2("Z", {double(resistance)}, {double(resistance)}));
        QVERIFY2(network.s(0, 0, 0) == Complex(), QByteArray::number(resistance).constData());
    }
}

QTEST_APPLESS_MAIN(tst_TouchstoneConversion)

#include "tst_touchstoneconversion.moc"
