// SPDX-License-Identifier: MIT
#include "readers/ReadError.h"
#include "readers/Touchstone.h"

#include <QDir>
#include <QSet>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <complex>
#include <filesystem>

using Charts::Readers::NetworkData;
using Charts::Readers::ParameterKind;
using Charts::Readers::ReadError;
using Charts::Readers::readTouchstone;

namespace {

using Complex = std::complex<double>;

enum class Format { DecibelAngle, MagnitudeAngle, RealImaginary };

/// A parameter as the two numbers in the file; ports are counted from 1.
struct Entry
{
    std::size_t point;
    std::size_t row;
    std::size_t column;
    double first;
    double second;
};

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

/// How far the parameter is from the numbers of the file, in their terms. An angle counts in
/// degrees and modulo 360.
double deviation(const Complex &value, Format format, double first, double second)
{
    if (format == Format::RealImaginary)
        return std::abs(value - Complex(first, second));
    const double magnitude =
            format == Format::DecibelAngle ? 20 * std::log10(std::abs(value)) : std::abs(value);
    const double angle = std::arg(value) * 180 / M_PI;
    return std::fmax(std::abs(magnitude - first), std::abs(std::remainder(angle - second, 360)));
}

} // namespace

Q_DECLARE_METATYPE(Entry)

class tst_TouchstoneFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void files_data();
    void files();
    void impedance();
    void hybrid();
    void mixedModes();
    void unequalReferences();
    void endsBehindThePortCount();
    void allFilesAreTested();

private:
    // Rows of files(), of which none may be missing.
    QSet<QString> m_tested{QStringLiteral("v2_ex_1.ts"), QStringLiteral("v2_ex_10.ts"),
            QStringLiteral("v2_ex_12.ts")};
};

void tst_TouchstoneFiles::initTestCase()
{
    if (dataFolder().isEmpty() || !QDir(dataFolder()).exists())
        QSKIP("CHARTS_SHARED_DATA_DIR names no folder with measurements.");
}

void tst_TouchstoneFiles::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TouchstoneFiles::files_data()
{
    QTest::addColumn<int>("portCount");
    QTest::addColumn<int>("pointCount");
    QTest::addColumn<QList<double>>("band");
    QTest::addColumn<double>("resistance");
    QTest::addColumn<Format>("format");
    QTest::addColumn<QList<Entry>>("entries");

    const auto row = [this](const char *name, int portCount, int pointCount,
                             const QList<double> &band, double resistance, Format format,
                             const QList<Entry> &entries) {
        QTest::newRow(name) << portCount << pointCount << band << resistance << format << entries;
        m_tested.insert(QString::fromLatin1(name));
    };
    constexpr Format db = Format::DecibelAngle;
    constexpr Format ma = Format::MagnitudeAngle;
    constexpr Format ri = Format::RealImaginary;

    row("oneport_simulated.s1p", 1, 401, {500e9, 750e9}, 50, ma,
            {{0, 1, 1, 1.980929748548814E-01, -7.512776572697453E+01},
                    {400, 1, 1, 1.716134018216175E-01, -9.129160644802278E+01}});
    row("ring_slot_measured.s1p", 1, 101, {75e9, 109.999999992e9}, 50, ri,
            {{0, 1, 1, -0.067684517179, 0.659208635995},
                    {99, 1, 1, -0.869018208582, 0.193402310401},
                    {100, 1, 1, -0.871806027248, 0.177393311906}});
    row("bandpass_filter_450_550MHz.s2p", 2, 1000, {1e6, 1e9}, 50, ma,
            {{0, 1, 1, 1, 179.940182132477}, {0, 2, 1, 4.14165676198742E-10, -90.0598178675226},
                    {499, 1, 1, 0.102468201063824, -102.232096791388},
                    {499, 1, 2, 0.994736280513958, -12.2320967913879},
                    {999, 2, 1, 0.0137557289639148, 109.511035631449}});
    row("line_measured.s2p", 2, 647, {75.0041666667e9, 109.995833333e9}, 50, ri,
            {{0, 1, 1, 0.004597721852728291, -0.03491613201820812},
                    {0, 2, 1, 0.8905043752713642, 0.2776560178856795},
                    {0, 1, 2, 0.893255931973781, 0.27433940161938103},
                    {0, 2, 2, -0.003058256671976368, -0.018995790737683354},
                    {646, 2, 1, 0.9278445994356025, 0.3431220331413274},
                    {646, 1, 2, 0.9284460249510537, 0.3400448986579384}});
    row("lowpass_filter_25C.s2p", 2, 2006, {10e6, 50e9}, 50, db,
            {{0, 1, 1, -4.010140E+001, -4.791718E+001}, {0, 2, 1, -1.965048E-002, -1.868977E-001},
                    {0, 1, 2, -2.149604E-002, -1.844229E-001},
                    {0, 2, 2, -4.033467E+001, -6.119190E+001},
                    {2005, 2, 1, -1.007071E+001, 3.853254E+001},
                    {2005, 1, 2, -1.008418E+001, 3.836919E+001}});
    row("ntwk1.s2p", 2, 91, {1e9, 10e9}, 50, ri,
            {{0, 1, 1, 0.0217920488, -0.151514165}, {45, 2, 1, 0.469633767, -0.567837028},
                    {90, 2, 2, -0.667177736, -0.0670406733}});
    row("resonator_36mm.s2p", 2, 401, {1e9, 5e9}, 50, ri,
            {{0, 2, 1, 6.45089004466933e-05, -1.4883016017487004e-05},
                    {0, 1, 2, 5.719072372971632e-05, -7.666911856497784e-06},
                    {400, 2, 2, -0.896429063212922, -0.2756993234557867}});
    row("ring_slot.s2p", 2, 201, {75e9, 110e9}, 50, ri,
            {{0, 1, 1, -0.503723180993, 0.457844804761},
                    {100, 2, 1, 0.658573205164, -0.579277903466},
                    {200, 2, 2, -0.855165798772, 0.0209559892892}});
    row("tx_190GHz_measured.S2P", 2, 801, {140e9, 220e9}, 50, ma,
            {{0, 1, 1, 1.2252435857E-001, -6.0499525269E+001},
                    {0, 2, 1, 2.5599312904E-001, 1.3633704989E+002},
                    {0, 1, 2, 1.9432182731E-003, -3.2426282308E+001},
                    {0, 2, 2, 7.9877003689E-001, 3.4477683153E+001},
                    {800, 2, 1, 4.4226245439E-001, -1.7691798385E+002}});
    row("tee.s3p", 3, 201, {330e9, 500e9}, 50, ri,
            {{0, 1, 1, -0.333333333333, 0}, {200, 3, 2, 0.666666666667, 0}});
    row("threeport_DB.s3p", 3, 451, {2.9e9, 7.5e9}, 50, db,
            {{0, 1, 1, -12.1586984297013, -58.8076830561439},
                    {0, 1, 3, -4.30929340333341, 12.9090022082271},
                    {0, 3, 2, -4.30896947552799, -61.8442205573913},
                    {450, 2, 1, -0.391752955799184, -106.151100382345},
                    {450, 3, 3, -0.792964639672472, 176.004739490956}});
    row("threeport_MA.s3p", 3, 451, {2.9e9, 7.5e9}, 50, ma,
            {{0, 1, 1, 0.246751117932672, -58.8462095640286},
                    {0, 1, 3, 0.6088832195643, -167.11151962802},
                    {0, 3, 2, 0.608972260638142, 118.196893975302},
                    {450, 2, 1, 0.956080496384348, -106.240090700401},
                    {450, 3, 3, 0.91315939084555, 175.900655105521}});
    row("vna_4port_measured.s4p", 4, 205, {500e6, 4.5e9}, 75, db,
            {{0, 1, 1, -2.290151e-001, 1.778212e+002}, {0, 2, 1, -5.252684e+001, -1.350884e+002},
                    {0, 1, 4, -8.099038e+001, 1.194139e+002},
                    {0, 4, 1, -8.139571e+001, 1.290694e+002},
                    {204, 4, 3, -4.219553e+001, 6.677558e+001},
                    {204, 4, 4, -1.398878e+000, 1.250673e+002}});
    row("ntwk.s32p", 32, 3, {0, 40e6}, 50, ma,
            {{0, 1, 1, 4.34171382294526E-005, 0}, {0, 1, 5, 5.97199356806334E-006, 0},
                    {0, 1, 17, 0.999929839247784, 0}, {0, 2, 1, 1.3887256021583E-005, 0},
                    {0, 2, 18, 0.999923377674008, 0},
                    {1, 1, 2, 0.00561352434762444, 87.2585940196398},
                    {2, 32, 16, 0.998587756858669, -2.69244420695908},
                    {2, 32, 32, 0.0148748017169938, 84.777833175569}});
    row("v2_ex_3.ts", 2, 2, {1e9, 2e9}, 50, ma,
            {{0, 1, 1, 111, 0}, {0, 2, 1, 121, 0}, {0, 1, 2, 112, 0}, {1, 2, 1, 221, 0},
                    {1, 2, 2, 222, 0}});
    row("v2_ex_16.ts", 6, 1, {5e6, 5e6}, 0, ri,
            {{0, 1, 1, 8, 9}, {0, 1, 6, 0.2, -0.2}, {0, 4, 6, 1.5, 0.6}, {0, 6, 6, 5.5, -7}});
    row("v2_ansys.ts", 3, 1, {0, 0}, 0, ma,
            {{0, 1, 1, 9.613004096709377e-01, 0}, {0, 1, 3, 2.736474275082125e-01, 0},
                    {0, 2, 2, 9.945831782414963e-01, 180}, {0, 2, 3, 2.781589590459562e-03, 180},
                    {0, 3, 3, 9.349795164531121e-01, 180}});
}

void tst_TouchstoneFiles::files()
{
    QFETCH(int, portCount);
    QFETCH(int, pointCount);
    QFETCH(QList<double>, band);
    QFETCH(double, resistance);
    QFETCH(Format, format);
    QFETCH(QList<Entry>, entries);

    try {
        const NetworkData network = readFile(QTest::currentDataTag());
        QCOMPARE(network.portCount, portCount);
        QCOMPARE(int(network.frequency.size()), pointCount);
        QCOMPARE(int(network.parameters.size()), pointCount * portCount * portCount);
        QVERIFY(network.fileKind == ParameterKind::S);
        QVERIFY(std::abs(network.frequency.front() - band[0]) <= 1e-15 * band[0]);
        QVERIFY(std::abs(network.frequency.back() - band[1]) <= 1e-15 * band[1]);
        for (std::size_t i = 1; i < network.frequency.size(); ++i)
            QVERIFY(network.frequency[i] > network.frequency[i - 1]);

        QCOMPARE(int(network.referenceImpedance.size()), portCount);
        for (const double reference : network.referenceImpedance)
            QVERIFY(reference == resistance || resistance == 0);
        for (const Entry &entry : entries) {
            const Complex value = network.s(entry.point, entry.row - 1, entry.column - 1);
            const double difference = deviation(value, format, entry.first, entry.second);
            QVERIFY2(difference < 1e-12, qPrintable(QStringLiteral("point %1, S%2,%3: off by %4")
                                                            .arg(entry.point)
                                                            .arg(entry.row)
                                                            .arg(entry.column)
                                                            .arg(difference)));
        }
    } catch (const ReadError &error) {
        QFAIL(error.what());
    }
}

/// Impedances in ohms, magnitude and angle, related to 20 ohm.
void tst_TouchstoneFiles::impedance()
{
    const NetworkData network = readFile("v2_ex_10.ts");
    QVERIFY(network.fileKind == ParameterKind::Z);
    QCOMPARE(network.portCount, 1);
    QCOMPARE(network.frequency, (std::vector<double>{100e6, 200e6, 300e6, 400e6, 500e6}));
    QCOMPARE(network.referenceImpedance, std::vector<double>{20});
    QVERIFY(std::abs(network.s(0, 0, 0) - Complex(0.5760659913596095, -0.023341679597588635))
            < 1e-14);
    QVERIFY(std::abs(network.s(1, 0, 0) - Complex(0.5140363033330436, -0.14442104136277492))
            < 1e-14);
    QVERIFY(std::abs(network.s(4, 0, 0) - Complex(-0.9958897296430562, -0.07478552094985058))
            < 1e-14);
}

/// Hybrid parameters related to 1 ohm. The expected numbers are those of loading one port and
/// driving the other one.
void tst_TouchstoneFiles::hybrid()
{
    const NetworkData network = readFile("v2_ex_12.ts");
    QVERIFY(network.fileKind == ParameterKind::H);
    QCOMPARE(network.portCount, 2);
    QCOMPARE(network.frequency, std::vector<double>{2000});
    QCOMPARE(network.referenceImpedance, (std::vector<double>{1, 1}));
    QVERIFY(std::abs(network.s(0, 0, 0) - Complex(-0.01997594342388509, -0.18397266591655892))
            < 1e-14);
    QVERIFY(std::abs(network.s(0, 0, 1) - Complex(-0.0007830293923139606, 0.025141739030060617))
            < 1e-14);
    QVERIFY(std::abs(network.s(0, 1, 0) - Complex(2.2272065543088795, -0.28199836035885234))
            < 1e-14);
    QVERIFY(std::abs(network.s(0, 1, 1) - Complex(0.19307165046970987, 0.06509578112036195))
            < 1e-14);
}

void tst_TouchstoneFiles::mixedModes()
{
    const NetworkData network = readFile("v2_ex_16.ts");
    QCOMPARE(network.modes, (std::vector<std::string>{"D2,3", "D6,5", "C2,3", "C6,5", "S4", "S1"}));
    QCOMPARE(network.referenceImpedance, (std::vector<double>{50, 75, 75, 50, 0.01, 0.01}));
}

void tst_TouchstoneFiles::unequalReferences()
{
    const NetworkData network = readFile("v2_ansys.ts");
    QCOMPARE(network.referenceImpedance, (std::vector<double>{1, 50, 50}));
    QVERIFY(network.modes.empty());
}

/// This file ends before any data.
void tst_TouchstoneFiles::endsBehindThePortCount()
{
    try {
        const NetworkData network = readFile("v2_ex_1.ts");
        QFAIL("the file was accepted");
    } catch (const ReadError &error) {
        QCOMPARE(error.cause(), std::string("[Network Data] is missing"));
        QCOMPARE(error.line(), std::size_t(0));
    }
}

void tst_TouchstoneFiles::allFilesAreTested()
{
    const QStringList names =
            QDir(dataFolder())
                    .entryList({QStringLiteral("*.s*p"), QStringLiteral("*.ts")}, QDir::Files);
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QVERIFY2(m_tested.contains(name), qPrintable(name));
    QCOMPARE(names.size(), m_tested.size());
}

QTEST_APPLESS_MAIN(tst_TouchstoneFiles)

#include "tst_touchstonefiles.moc"
