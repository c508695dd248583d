// SPDX-License-Identifier: MIT
#include "readers/ReadError.h"
#include "readers/Touchstone.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <complex>
#include <sstream>
#include <string>

using Charts::Readers::NetworkData;
using Charts::Readers::ParameterKind;
using Charts::Readers::ReadError;
using Charts::Readers::readTouchstone;

namespace {

using Complex = std::complex<double>;
using Numbers = QList<double>;
using Entries = QList<Complex>;

NetworkData readText(const QByteArray &text, int portCount = 0)
{
    std::istringstream input(text.toStdString());
    return readTouchstone(input, "test.ts", portCount);
}

/// All numbers here are of the order of 1, or exact.
bool isClose(const Complex &left, const Complex &right)
{
    return std::abs(left - right) <= 4e-16 * (1 + std::abs(right));
}

QByteArray textOf(const Complex &value)
{
    return QByteArray::number(value.real(), 'g', 17) + ' '
           + QByteArray::number(value.imag(), 'g', 17) + 'j';
}

/// The entry of a test matrix: the row in front of the decimal point, the column behind it, so that
/// no two entries are alike.
Complex markedEntry(int row, int column)
{
    return {row + column / 64.0, column - row / 64.0};
}

QByteArray textOfPair(const Complex &value)
{
    return QByteArray::number(value.real(), 'g', 17) + ' '
           + QByteArray::number(value.imag(), 'g', 17) + ' ';
}

} // namespace

class tst_Touchstone : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void options_data();
    void options();
    void angles_data();
    void angles();
    void layout_data();
    void layout();
    void manyPorts_data();
    void manyPorts();
    void accessor();
    void letters();
    void nameStatesPortCount_data();
    void nameStatesPortCount();
};

void tst_Touchstone::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Touchstone::options_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<double>("frequency");
    QTest::addColumn<Complex>("value");
    QTest::addColumn<double>("resistance");

    // The numbers of the only point are 2, 0.5 and 90.
    const Complex magnitudeAngle(0, 0.5);
    const Complex realImaginary(0.5, 90);
    const auto row = [](const char *name, const char *line, double frequency, const Complex &value,
                             double resistance) {
        QTest::newRow(name) << QByteArray(line) << frequency << value << resistance;
    };
    row("defaults", "#", 2e9, magnitudeAngle, 50);
    row("hertz", "# Hz", 2, magnitudeAngle, 50);
    row("kilohertz", "# kHz", 2e3, magnitudeAngle, 50);
    row("megahertz", "# MHz", 2e6, magnitudeAngle, 50);
    row("gigahertz", "# GHz", 2e9, magnitudeAngle, 50);
    row("usual order", "# MHz S RI R 75", 2e6, realImaginary, 75);
    row("reversed", "# R 75 RI S MHz", 2e6, realImaginary, 75);
    row("resistance in the middle", "# RI R 75 MHz S", 2e6, realImaginary, 75);
    row("lower case", "# mhz s ri r 75", 2e6, realImaginary, 75);
    row("upper case", "# MHZ S RI R 75", 2e6, realImaginary, 75);
    row("mixed case", "# mHZ S rI R 75", 2e6, realImaginary, 75);
    row("no space", "#MHz S RI R 75", 2e6, realImaginary, 75);
    row("many spaces", "  #\tMHz \t S   RI\tR   75  ", 2e6, realImaginary, 75);
    row("comment", "# MHz S RI ! R 75", 2e6, realImaginary, 50);
    row("only the format", "# ri", 2e9, realImaginary, 50);
    row("only the resistance", "# R 0.001", 2e9, magnitudeAngle, 0.001);
    row("resistance with an exponent", "# R 1.0D+02", 2e9, magnitudeAngle, 100);
    row("more option lines", "# MHz S RI R 75\n# GHz S MA R 50\n# anything", 2e6, realImaginary,
            75);
}

void tst_Touchstone::options()
{
    QFETCH(QByteArray, line);
    QFETCH(double, frequency);
    QFETCH(Complex, value);
    QFETCH(double, resistance);

    const NetworkData network = readText(line + "\n2 0.5 90\n", 1);
    QCOMPARE(network.portCount, 1);
    QCOMPARE(network.frequency, std::vector<double>{frequency});
    QCOMPARE(network.parameters.size(), std::size_t(1));
    QVERIFY2(network.parameters[0] == value, textOf(network.parameters[0]).constData());
    QCOMPARE(network.referenceImpedance, std::vector<double>{resistance});
    QVERIFY(network.fileKind == ParameterKind::S);
    QVERIFY(network.modes.empty());
}

void tst_Touchstone::angles_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("pair");
    QTest::addColumn<Complex>("value");
    QTest::addColumn<bool>("exact");

    const auto row = [](const char *format, const char *pair, const Complex &value, bool exact) {
        QTest::addRow("%s %s", format, pair)
                << QByteArray(format) << QByteArray(pair) << value << exact;
    };
    constexpr double half = 0.5;
    constexpr double root2 = 1.4142135623730951;
    constexpr double root3 = 1.7320508075688772;

    row("MA", "0.5 0", {0.5, 0}, true);
    row("MA", "0.5 90", {0, 0.5}, true);
    row("MA", "0.5 180", {-0.5, 0}, true);
    row("MA", "0.5 -180", {-0.5, 0}, true);
    row("MA", "0.5 270", {0, -0.5}, true);
    row("MA", "0.5 -90", {0, -0.5}, true);
    row("MA", "0.5 360", {0.5, 0}, true);
    row("MA", "0.5 -450", {0, -0.5}, true);
    row("MA", "0.5 36000000090", {0, 0.5}, true);
    row("MA", "1 30", {root3 / 2, half}, false);
    row("MA", "1 45", {root2 / 2, root2 / 2}, false);
    row("MA", "1 60", {half, root3 / 2}, false);
    row("MA", "1 -60", {half, -root3 / 2}, false);
    row("MA", "2 120", {-1, root3}, false);
    row("MA", "2 -135", {-root2, -root2}, false);
    row("MA", "1 240", {-half, -root3 / 2}, false);
    row("MA", "1 300", {half, -root3 / 2}, false);
    row("MA", "0 77", {0, 0}, true);
    row("MA", "-1 0", {-1, 0}, true);
    row("DB", "0 0", {1, 0}, true);
    row("DB", "0 90", {0, 1}, true);
    row("DB", "20 0", {10, 0}, false);
    row("DB", "-20 180", {-0.1, 0}, false);
    row("DB", "-40 -90", {0, -0.01}, false);
    row("DB", "-6.020599913279624 60", {0.25, root3 / 4}, false);
    row("DB", "-1e9 45", {0, 0}, true);
    row("RI", "0.25 -0.75", {0.25, -0.75}, true);
    row("RI", "1D-1 -2.5d+1", {0.1, -25}, true);
    row("RI", "+1.0E+001 -4.5E-001", {10, -0.45}, true);
    row("RI", ".5 5.", {0.5, 5}, true);
    row("RI", "1e300 1e-300", {1e300, 1e-300}, true);
    row("RI", "1e-400 0", {0, 0}, true);
}

void tst_Touchstone::angles()
{
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, pair);
    QFETCH(Complex, value);
    QFETCH(bool, exact);

    const NetworkData network = readText("# " + format + "\n1 " + pair + '\n', 1);
    const Complex found = network.parameters.at(0);
    QVERIFY2(exact ? found == value : isClose(found, value), textOf(found).constData());
}

void tst_Touchstone::layout_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("portCount");
    QTest::addColumn<Numbers>("frequency");
    QTest::addColumn<Entries>("entries");

    const auto row = [](const char *name, const QByteArray &text, int portCount,
                             const Numbers &frequency, const Entries &entries) {
        QTest::newRow(name) << text << portCount << frequency << entries;
    };
    const Entries one{{0.5, 0.25}, {-0.5, 0}};
    row("one port", "# Hz RI\n1 0.5 0.25\n2 -0.5 0\n", 1, {1, 2}, one);
    row("comments", "! a\n# Hz RI ! b\n!c\n1 0.5 0.25!d\n  ! e\n2 -0.5 0 ! f ! g\n!h", 1, {1, 2},
            one);
    row("blank lines", "\n\n# Hz RI\n \n1 0.5 0.25\n\t\n\n2 -0.5 0\n\n", 1, {1, 2}, one);
    row("tabulators and spaces", "\t# Hz RI\n\t1\t0.5\t0.25 \t\n  2  -0.5\t 0\t\n", 1, {1, 2}, one);
    row("carriage returns", "! a\r\n# Hz RI\r\n\r\n1 0.5 0.25\r\n2 -0.5 0\r\n", 1, {1, 2}, one);
    row("no line feed at the end", "# Hz RI\n1 0.5 0.25\n2 -0.5 0", 1, {1, 2}, one);
    row("byte order mark", "\xEF\xBB\xBF# Hz RI\n1 0.5 0.25\n2 -0.5 0\n", 1, {1, 2}, one);
    row("other letters in comments",
            "! 20 \xB0"
            "C \xC2\xB5\n# Hz RI\n1 0.5 0.25\n2 -0.5 0\n",
            1, {1, 2}, one);
    row("option lines in between", "# Hz RI\n1 0.5 0.25\n# GHz MA\n2 -0.5 0\n# x\n", 1, {1, 2},
            one);
    row("zero hertz", "# Hz RI\n0 0.5 0.25\n1e-3 -0.5 0\n", 1, {0, 1e-3}, one);
    row("one point", "# kHz RI\n1.5D+3 1 2\n", 1, {1.5e6}, {{1, 2}});

    const QByteArray two = "# Hz RI\n1 1.1 0 2.1 0 1.2 0 2.2 0\n2 -1.1 0 -2.1 0 -1.2 0 -2.2 0\n";
    const Entries twoEntries{
            {1.1, 0}, {1.2, 0}, {2.1, 0}, {2.2, 0}, {-1.1, 0}, {-1.2, 0}, {-2.1, 0}, {-2.2, 0}};
    row("two ports", two, 2, {1, 2}, twoEntries);
    row("two ports, wrapped",
            "# Hz RI\n1 1.1 0\n2.1 0 1.2 0\n2.2 0\n2 -1.1 0 -2.1 0\n-1.2 0 -2.2 0\n", 2, {1, 2},
            twoEntries);
    row("noise data", two + "0.5 1.5 0.3 45 0.4\n1 2 0.3 50 0.5\n1.5 2.5 0.4 60 0.5\n", 2, {1, 2},
            twoEntries);
    row("noise data at the last frequency", two + "! noise\n2 1.5 0.3 45 0.4 ! x\n", 2, {1, 2},
            twoEntries);

    const Entries three{
            {11, 0}, {12, 0}, {13, 0}, {21, 0}, {22, 0}, {23, 0}, {31, 0}, {32, 0}, {33, 0}};
    row("three ports", "# Hz RI\n1 11 0 12 0 13 0\n21 0 22 0 23 0\n31 0 32 0 33 0\n", 3, {1},
            three);
    row("three ports, comments between the rows",
            "# Hz RI\n1 11 0 12 0 13 0 ! a\n! b\n\n 21 0 22 0 23 0\n! c\n 31 0 32 0 33 0", 3, {1},
            three);
    row("three ports in one line", "# Hz RI\n1 11 0 12 0 13 0 21 0 22 0 23 0 31 0 32 0 33 0\n", 3,
            {1}, three);
    row("three ports, one pair per line",
            "# Hz RI\n1 11 0\n12 0\n13 0\n21 0\n22 0\n23 0\n31 0\n32 0\n33 0\n", 3, {1}, three);
    row("three ports, the frequency alone",
            "# Hz RI\n1\n11 0 12 0 13 0\n21 0 22 0 23 0\n31 0 32 0 33 0\n", 3, {1}, three);
}

void tst_Touchstone::layout()
{
    QFETCH(QByteArray, text);
    QFETCH(int, portCount);
    QFETCH(Numbers, frequency);
    QFETCH(Entries, entries);

    try {
        const NetworkData network = readText(text, portCount);
        QCOMPARE(network.portCount, portCount);
        QCOMPARE(network.frequency, std::vector<double>(frequency.begin(), frequency.end()));
        QVERIFY(network.parameters == std::vector<Complex>(entries.begin(), entries.end()));
        QCOMPARE(network.referenceImpedance, std::vector<double>(std::size_t(portCount), 50.0));
    } catch (const ReadError &error) {
        QFAIL(error.what());
    }
}

void tst_Touchstone::manyPorts_data()
{
    QTest::addColumn<int>("portCount");

    for (const int portCount : {1, 3, 4, 5, 8, 9, 32, 33, 100})
        QTest::addRow("%d ports", portCount) << portCount;
}

void tst_Touchstone::manyPorts()
{
    QFETCH(int, portCount);

    // Rows begin on new lines and are wrapped behind four pairs.
    QByteArray text = "# Hz RI\n";
    for (const int frequency : {1, 2}) {
        text += QByteArray::number(frequency) + ' ';
        for (int row = 0; row < portCount; ++row) {
            for (int column = 0; column < portCount; ++column) {
                if (column != 0 && column % 4 == 0)
                    text += '\n';
                text += textOfPair(markedEntry(row, column) * double(frequency));
            }
            text += '\n';
        }
    }

    const NetworkData network = readText(text, portCount);
    QCOMPARE(network.portCount, portCount);
    QCOMPARE(network.frequency, (std::vector<double>{1, 2}));
    QCOMPARE(network.parameters.size(), std::size_t(2 * portCount * portCount));
    int differences = 0;
    for (std::size_t point = 0; point < 2; ++point) {
        for (int row = 0; row < portCount; ++row) {
            for (int column = 0; column < portCount; ++column) {
                const Complex expected = markedEntry(row, column) * double(point + 1);
                if (network.s(point, std::size_t(row), std::size_t(column)) != expected)
                    ++differences;
            }
        }
    }
    QCOMPARE(differences, 0);
}

void tst_Touchstone::accessor()
{
    const NetworkData network =
            readText("# Hz RI\n1 11 0 21 0 12 0 22 0\n2 111 0 121 0 112 0 122 0\n", 2);
    QVERIFY(network.s(0, 0, 0) == Complex(11));
    QVERIFY(network.s(0, 0, 1) == Complex(12));
    QVERIFY(network.s(0, 1, 0) == Complex(21));
    QVERIFY(network.s(0, 1, 1) == Complex(22));
    QVERIFY(network.s(1, 0, 0) == Complex(111));
    QVERIFY(network.s(1, 0, 1) == Complex(112));
    QVERIFY(network.s(1, 1, 0) == Complex(121));
    QVERIFY(network.s(1, 1, 1) == Complex(122));
}

void tst_Touchstone::letters()
{
    QByteArray found;
    for (const char *const letter : {"S", "Y", "Z", "H", "G"}) {
        const QByteArray text = QByteArray("# Hz ") + letter + " RI\n1 1 0 0 0 0 0 2 0\n";
        const std::string_view name = Charts::Readers::letterOf(readText(text, 2).fileKind);
        found.append(name.data(), qsizetype(name.size()));
    }
    QCOMPARE(found, QByteArray("SYZHG"));
}

void tst_Touchstone::nameStatesPortCount_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("portCount");

    const auto row = [](const char *name, int portCount) {
        QTest::newRow(name) << QString::fromLatin1(name) << portCount;
    };
    row("a.s1p", 1);
    row("a.S2P", 2);
    row("a.s2P", 2);
    row("a.s3p.S02p", 2);
    row("a.s10p", 10);
    row("a", 0);
    row("a.ts", 0);
    row("a.sp", 0);
    row("a.s2", 0);
    row("a.sxp", 0);
    row("a.s-2p", 0);
    row("a.s2.5p", 0);
    row("as2p", 0);
    row("a.s2px", 0);
    row("a.z2p", 0);
}

void tst_Touchstone::nameStatesPortCount()
{
    QFETCH(QString, name);
    QFETCH(int, portCount);

    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const int pairs = qMax(portCount, 1) * qMax(portCount, 1);
    const QByteArray text = "# Hz RI\n1" + QByteArray(" 1 0").repeated(pairs) + '\n';
    QCOMPARE(file.write(text), qint64(text.size()));
    file.close();

    const std::string path = file.fileName().toStdString();
    try {
        const NetworkData network = readTouchstone(std::filesystem::path(path));
        QCOMPARE(network.portCount, portCount);
    } catch (const ReadError &error) {
        QCOMPARE(QByteArray(error.what()),
                QByteArray::fromStdString(path)
                        + ": port count is not known; files of version 1 state it in their names, "
                          "which end as in name.s2p");
        QCOMPARE(portCount, 0);
    }
}

QTEST_APPLESS_MAIN(tst_Touchstone)

#include "tst_touchstone.moc"
