// SPDX-License-Identifier: MIT
#include "readers/ReadError.h"
#include "readers/Touchstone.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <filesystem>
#include <sstream>
#include <string>
#include <utility>

using Charts::Readers::NetworkData;
using Charts::Readers::ReadError;
using Charts::Readers::readTouchstone;

class tst_TouchstoneErrors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void headers_data();
    void headers();
    void keywords_data();
    void keywords();
    void points_data();
    void points();
    void fields();
    void files_data();
    void files();

private:
    void check();
};

namespace {

void addColumns()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("portCount");
    QTest::addColumn<QByteArray>("message");
}

void addRow(const char *name, const QByteArray &text, int portCount, const char *message)
{
    QTest::newRow(name) << text << portCount << QByteArray(message);
}

} // namespace

void tst_TouchstoneErrors::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TouchstoneErrors::check()
{
    QFETCH(QByteArray, text);
    QFETCH(int, portCount);
    QFETCH(QByteArray, message);

    std::istringstream input(text.toStdString());
    try {
        const NetworkData network = readTouchstone(input, "test", portCount);
        QFAIL("the text was accepted");
    } catch (const ReadError &error) {
        QCOMPARE(QByteArray(error.what()), message);
    }
}

void tst_TouchstoneErrors::headers_data()
{
    addColumns();
    addRow("empty", "", 2, "test: file is empty");
    addRow("byte order mark only", "\xEF\xBB\xBF", 2, "test: file is empty");
    addRow("comments only", "! a\n\n! b\n", 2, "test: no option line, which begins with #");
    addRow("option line only", "! a\n# GHz\n! b\n", 2, "test: no data after the option line");
    addRow("no option line", "! a\n1 2 3\n# Hz\n", 1,
            "test:2: data before the option line, which begins with #");
    addRow("not a number, no option line", "name\n", 1,
            "test:1: data before the option line, which begins with #");

    addRow("unknown option", "# GHz S XX R 50\n", 1, "test:1: option \"XX\" is not known");
    addRow("unknown unit", "\n# THz\n", 1, "test:2: option \"THz\" is not known");
    addRow("number without R", "# GHz S MA 50\n", 1, "test:1: option \"50\" is not known");
    addRow("number joined to R", "# R50\n", 1, "test:1: option \"R50\" is not known");
    addRow("two resistances", "# R 50 75\n", 1, "test:1: option \"75\" is not known");
    addRow("control character", "# \x1b[2J\n", 1, "test:1: option \"\\x1b[2J\" is not known");
    addRow("two units", "# MHz S GHz\n", 1,
            "test:1: option \"GHz\" follows another one of its sort");
    addRow("two kinds", "# S s\n", 1, "test:1: option \"s\" follows another one of its sort");
    addRow("two formats", "# ma DB\n", 1, "test:1: option \"DB\" follows another one of its sort");
    addRow("two references", "# R 50 R 50\n", 1,
            "test:1: option \"R\" follows another one of its sort");
    addRow("no resistance", "# GHz r\n", 1, "test:1: option \"r\" has no resistance behind it");
    addRow("resistance is a word", "# R MA 50\n", 1,
            "test:1: reference resistance \"MA\" is not a number");
    addRow("resistance of zero", "# R 0\n", 1,
            "test:1: reference resistance \"0\" is not positive");
    addRow("negative resistance", "# R -50\n", 1,
            "test:1: reference resistance \"-50\" is not positive");
    addRow("infinite resistance", "# R inf\n", 1,
            "test:1: reference resistance \"inf\" is not finite");
    addRow("huge resistance", "# R 1e999\n", 1,
            "test:1: reference resistance \"1e999\" is out of range");

    addRow("no port count", "# Hz\n1 2 3\n", 0,
            "test: port count is not known; files of version 1 state it in their names, which end "
            "as in name.s2p");
    addRow("negative port count", "# Hz\n1 2 3\n", -1,
            "test: port count \"-1\" is not possible; 1 to 1024 are");
    addRow("huge port count", "# Hz\n1 2 3\n", 1025,
            "test: port count \"1025\" is not possible; 1 to 1024 are");
    addRow("hybrid parameters of one port", "# Hz H\n1 2 3\n", 1,
            "test: H parameters are those of 2 ports, but there is 1 port");
    addRow("inverse hybrid parameters of three ports", "# Hz g\n1 2 3\n", 3,
            "test: G parameters are those of 2 ports, but there are 3 ports");

    addRow("NUL", QByteArrayLiteral("# Hz\n1 2 3\n\0"), 1,
            "test:3: not a text file: there is a NUL byte");
    addRow("carriage returns only", "! a\r# Hz\r1 2 3\r", 1,
            "test:1: a carriage return within the line; line feeds are expected to end lines");
    addRow("carriage return within data", "# Hz\n1 2 3\r2 2 3\r\n", 1,
            "test:2: a carriage return within the line; line feeds are expected to end lines");
}

void tst_TouchstoneErrors::headers()
{
    check();
}

void tst_TouchstoneErrors::keywords_data()
{
    addColumns();
    const auto row = [](const char *name, const QByteArray &text, const char *message) {
        addRow(name, text, 0, message);
    };
    const QByteArray begin = "[Version] 2.0\n# Hz RI\n";
    const QByteArray one = begin + "[Number of Ports] 1\n[Number of Frequencies] 2\n";
    const QByteArray data = one + "[Network Data]\n1 2 3\n";

    row("unknown", one + "[Port Names] x\n", "test:5: keyword \"[Port Names]\" is not known");
    row("unknown among the data", data + "[ x ]\n", "test:7: keyword \"[ x ]\" is not known");
    row("empty", "[]\n", "test:1: keyword \"[]\" is not known");
    row("bracket not closed", begin + "[Number of Ports 1\n", "test:3: bracket is not closed");
    row("bracket closed in the comment", begin + "[Number of Ports !]\n",
            "test:3: bracket is not closed");
    row("no version", "# Hz\n[Number of Ports] 1\n",
            "test:2: [Number of Ports] in a file that does not begin with [Version]");
    addRow("keyword among the data of version 1", "# Hz\n1 2 3\n[network data]\n", 1,
            "test:3: [Network Data] in a file that does not begin with [Version]");
    addRow("unknown keyword among the data of version 1", "# Hz\n1 2 3\n[x]\n", 1,
            "test:3: keyword \"[x]\" is not known");
    row("old version", "[Version] 1.0\n",
            "test:1: [Version] \"1.0\" is not known; 2.0 and 2.1 are, and older files do not state "
            "it");
    row("no number of the version", "[Version]\n", "test:1: [Version] has 0 values, 1 is expected");
    row("two port counts in one line", begin + "[Number of Ports] 1 2\n",
            "test:3: [Number of Ports] has 2 values, 1 is expected");
    row("two port counts", one + "[number of ports] 1\n",
            "test:5: [Number of Ports] stands here again");
    row("two orders by two names", begin + "[Two-Port Data Order] 21_12\n[Two-Port Order] 21_12\n",
            "test:4: [Two-Port Data Order] stands here again");

    row("no ports", begin + "[Number of Ports] 0\n",
            "test:3: port count \"0\" is not possible; 1 to 1024 are");
    row("absurd port count", begin + "[Number of Ports] 1025\n",
            "test:3: port count \"1025\" is not possible; 1 to 1024 are");
    row("port count beyond integers", begin + "[Number of Ports] 99999999999999999999\n",
            "test:3: port count \"99999999999999999999\" is not possible; 1 to 1024 are");
    row("port count is a fraction", begin + "[Number of Ports] 2.0\n",
            "test:3: port count \"2.0\" is not possible; 1 to 1024 are");
    row("no frequencies", begin + "[Number of Frequencies] 0\n",
            "test:3: [Number of Frequencies] \"0\" is not a count");
    row("frequency count is a word", begin + "[Number of Frequencies] many\n",
            "test:3: [Number of Frequencies] \"many\" is not a count");
    row("noise frequency count is negative", begin + "[Number of Noise Frequencies] -1\n",
            "test:3: [Number of Noise Frequencies] \"-1\" is not a count");
    row("unknown order", begin + "[Two-Port Data Order] 11_22\n",
            "test:3: [Two-Port Data Order] \"11_22\" is not known; 12_21 and 21_12 are");
    row("unknown matrix format", begin + "[Matrix Format] Diagonal\n",
            "test:3: [Matrix Format] \"Diagonal\" is not known; Full, Lower and Upper are");
    row("reference is a word", begin + "[Reference]\n50\nx\n",
            "test:5: reference resistance \"x\" is not a number");
    row("reference of zero", begin + "[Reference] 50 0\n",
            "test:3: reference resistance \"0\" is not positive");
    row("no reference", one + "[Reference]\n[Network Data]\n",
            "test:5: [Reference] has 0 values for 1 port");
    row("too many references", one + "[Reference] 50\n50\n[Network Data]\n",
            "test:5: [Reference] has 2 values for 1 port");
    row("endless references", begin + "[Reference]\n" + QByteArray("1\n").repeated(1025),
            "test:3: [Reference] has too many values");
    row("too few modes",
            begin
                    + "[Number of Ports] 3\n[Number of Frequencies] 1\n[Mixed-Mode Order] D1,2 "
                      "C1,2\n"
                      "[Network Data]\n",
            "test:5: [Mixed-Mode Order] has 2 values for 3 ports");
    row("impedances of modes",
            "[Version] 2.0\n# Z\n[Number of Ports] 1\n[Number of Frequencies] 1\n"
            "[Mixed-Mode Order] S1\n[Network Data]\n",
            "test:5: [Mixed-Mode Order] is understood for S parameters only");
    row("information without an end", one + "[Begin Information]\n[x]\n[Network Data]\n1 2 3\n",
            "test:5: [Begin Information] has no [End Information]");

    row("data before their keyword", one + "1 2 3\n", "test:5: data before [Network Data]");
    row("data beside their keyword", one + "[Network Data] 1 2 3\n",
            "test:5: data in the line of [Network Data]");
    row("data after a closed reference", one + "[Reference] 50\n# Hz\n50\n",
            "test:7: data before [Network Data]");
    row("noise data before network data", one + "[Noise Data]\n",
            "test:5: [Noise Data] is out of place");
    row("end before network data", one + "[End]\n", "test:5: [End] is out of place");
    row("end of no information", one + "[End Information]\n",
            "test:5: [End Information] is out of place");
    row("reference after network data", data + "[Reference] 50\n",
            "test:7: [Reference] is out of place");
    row("noise data again", data + "2 2 3\n[Noise Data]\n[Noise Data]\n",
            "test:9: [Noise Data] is out of place");
    row("no network data", one, "test: [Network Data] is missing");
    row("nothing but the version", "[Version] 2.0\n", "test: [Network Data] is missing");
    row("no option line", "[Version] 2.0\n[Network Data]\n",
            "test:2: no option line, which begins with #, before [Network Data]");
    row("no port count", begin + "[Number of Frequencies] 1\n[Network Data]\n",
            "test:4: [Number of Ports] is missing before [Network Data]");
    row("no frequency count", begin + "[Number of Ports] 1\n[Network Data]\n",
            "test:4: [Number of Frequencies] is missing before [Network Data]");
    row("no order of two ports",
            begin + "[Number of Ports] 2\n[Number of Frequencies] 1\n[Network Data]\n",
            "test:5: [Two-Port Data Order] is missing before [Network Data]");
    row("hybrid parameters of three ports",
            "[Version] 2.0\n# H\n[Number of Ports] 3\n[Number of Frequencies] 1\n[Network Data]\n",
            "test: H parameters are those of 2 ports, but there are 3 ports");
    row("too few points", data, "test: 1 frequency point where [Number of Frequencies] is 2");
    row("too few points before the end", data + "[End]\n2 2 3\n",
            "test: 1 frequency point where [Number of Frequencies] is 2");
    row("too many points", data + "2 2 3\n3 2 3\n",
            "test: 3 frequency points where [Number of Frequencies] is 2");
}

void tst_TouchstoneErrors::keywords()
{
    check();
}

void tst_TouchstoneErrors::points_data()
{
    addColumns();
    const QByteArray start = "# Hz RI\n";
    const QByteArray one = "# Hz RI\n1 2 3\n";
    addRow("frequency is a word", one + "x 2 3\n", 1, "test:3:1: frequency \"x\" is not a number");
    addRow("frequency is infinite", one + "inf 2 3\n", 1,
            "test:3:1: frequency \"inf\" is not finite");
    addRow("frequency is out of range", one + "1e999 2 3\n", 1,
            "test:3:1: frequency \"1e999\" is out of range");
    addRow("frequency is out of range in hertz", "# GHz\n1e300 2 3\n", 1,
            "test:2:1: frequency \"1e300\" is out of range");
    addRow("frequency is negative", start + "-1 2 3\n", 1,
            "test:2:1: frequency \"-1\" is negative");
    addRow("frequency stands still", "# GHz\n0.007 2 3\n7D-3 2 3\n", 1,
            "test:3:1: frequency \"7D-3\" is not above the frequency before it, 0.007");
    addRow("frequency falls", one + "0.5 2 3\n", 1,
            "test:3:1: frequency \"0.5\" is not above the frequency before it, 1");
    addRow("frequency falls, two ports", start + "2 1 0 1 0 1 0 1 0\n1 1 0 1 0 1 0 1 0\n", 2,
            "test:3:1: frequency \"1\" is not above the frequency before it, 2");
    addRow("value is a word", start + "1 x 3\n", 1, "test:2:2: value \"x\" is not a number");
    addRow("second value is a word", start + "1 2 x\n", 1, "test:2:3: value \"x\" is not a number");
    addRow("decimal comma", start + "1 2,5 3\n", 1, "test:2:2: value \"2,5\" is not a number");
    addRow("value is not finite", start + "1 nan 3\n", 1, "test:2:2: value \"nan\" is not finite");
    addRow("value is out of range", start + "1 2 1D400\n", 1,
            "test:2:3: value \"1D400\" is out of range");
    addRow("two exponents", start + "1 2 1d1d1\n", 1, "test:2:3: value \"1d1d1\" is not a number");
    addRow("decibels are out of range", "# Hz DB\n1 7000 0\n", 1,
            "test:2:2: value \"7000\" is out of range");
    addRow("value in a later row", start + "1 0 0 0 0 0 0 ! a\n\n0 0 0 0 0 0\n0 0 0 x 0 0\n", 3,
            "test:5:4: value \"x\" is not a number");

    addRow("one value too few", one + "2 2\n", 1,
            "test:3: 2 values where a frequency point is expected to begin, with the frequency and "
            "pairs");
    addRow("one value too many", start + "1 2 3 4\n", 1,
            "test:2: 4 values where a frequency point is expected to begin, with the frequency and "
            "pairs");
    addRow("one pair too many", one + "2 2 3 4 5\n", 1,
            "test:3: frequency point has 5 values, 3 are expected of 1 port");
    addRow("other port count", start + "1 1 0 1 0 1 0 1 0\n", 1,
            "test:2: frequency point has 9 values, 3 are expected of 1 port");
    addRow("one row too many", start + "1 0 0 0 0 0 0\n0 0 0 0 0 0\n0 0 0 0 0 0\n0 0 0 0 0 0\n", 3,
            "test:5: 6 values where a frequency point is expected to begin, with the frequency and "
            "pairs");
    addRow("one pair too many in a row", start + "1 0 0 0 0 0 0\n0 0 0 0 0 0\n0 0 0 0 0 0 0 0\n", 3,
            "test:2: frequency point has 21 values, 19 are expected of 3 ports");
    addRow("one value too few in a row", start + "1 0 0 0 0 0 0\n0 0 0 0 0\n0 0 0 0 0 0\n", 3,
            "test:3: 5 values where pairs are expected; the frequency point of line 2 has 7 of 19 "
            "values");
    addRow("one row too few", start + "1 0 0 0 0 0 0\n0 0 0 0 0 0\n2 0 0 0 0 0 0\n", 3,
            "test:4: 7 values where pairs are expected; the frequency point of line 2 has 13 of 19 "
            "values");
    addRow("one pair too few, two ports", start + "1 0 0 0 0 0 0\n2 0 0 0 0 0 0 0 0\n", 2,
            "test:3: 9 values where pairs are expected; the frequency point of line 2 has 7 of 9 "
            "values");
    addRow("one value", start + "1 0 0\n5\n", 2,
            "test:3: 1 value where pairs are expected; the frequency point of line 2 has 3 of 9 "
            "values");
    addRow("five values within a point", start + "10 1 0\n1 0 1 0 1\n", 2,
            "test:3: 5 values where pairs are expected; the frequency point of line 2 has 3 of 9 "
            "values");
    addRow("truncated", start + "1 0 0 0 0 0 0\n0 0 0 0 0 0\n\n", 3,
            "test:2: data end within the frequency point, after 13 of 19 values");
    addRow("truncated, two ports", start + "1 1 0 1 0 1 0 1 0\n2 1 0 1 0\n", 2,
            "test:3: data end within the frequency point, after 5 of 9 values");
    const QByteArray marked =
            "[Version] 2.0\n# RI\n[Number of Ports] 2\n[Number of Frequencies] 1\n"
            "[Two-Port Data Order] 12_21\n";
    addRow("truncated before the end", marked + "[Network Data]\n1 1 0 1 0 1 0\n[End]\n", 0,
            "test:7: data end within the frequency point, after 7 of 9 values");
    addRow("truncated before noise data", marked + "[Network Data]\n1 1 0\n[Noise Data]\n", 0,
            "test:7: data end within the frequency point, after 3 of 9 values");
    addRow("truncated before bad noise data",
            marked + "[Network Data]\n1 1 0\n[Noise Data]\n1 2 3\n", 0,
            "test:7: data end within the frequency point, after 3 of 9 values");
    addRow("frequency falls without a mark",
            marked + "[Network Data]\n1 1 0 1 0 1 0 1 0\n0.5 1 1 1 1\n", 0,
            "test:8:1: frequency \"0.5\" is not above the frequency before it, 1");
    addRow("lower triangle", marked + "[Matrix Format] Lower\n[Network Data]\n1 1 0 1 0 1 0 1 0\n",
            0, "test:8: frequency point has 9 values, 7 are expected of 2 ports");

    const QByteArray two = start + "2 1 0 1 0 1 0 1 0\n";
    addRow("noise data, wrong count", two + "1 1 1 1 1\n1.5 1 1 1\n", 2,
            "test:4: 4 values in a line of noise data, 5 are expected");
    addRow("noise data, word", two + "1 1 1 1 1\n1.5 1 1 1 x\n", 2,
            "test:4:5: value \"x\" is not a number");
    addRow("no noise data of one port", one + "0.5 1 1 1 1\n", 1,
            "test:3: frequency point has 5 values, 3 are expected of 1 port");
    addRow("marked noise data, wrong count",
            marked + "[Network Data]\n1 1 0 1 0 1 0 1 0\n[Noise Data]\n1 2 3\n", 0,
            "test:9: 3 values in a line of noise data, 5 are expected");

    addRow("impedance without S parameters", "# Hz Z RI\n1 2 0\n2 -1 0\n", 1,
            "test:3: the Z parameters of this frequency have no S parameters");
    addRow("impedances without S parameters",
            "# Hz Z RI\n1 0 0 0 0 0 0\n0 0 -1 0 0 0\n0 0 0 0 0 0\n", 3,
            "test:2: the Z parameters of this frequency have no S parameters");
}

void tst_TouchstoneErrors::points()
{
    check();
}

/// What what() is made of.
void tst_TouchstoneErrors::fields()
{
    std::istringstream input("# Hz\n1 2 3\n2 2 x\n");
    try {
        const NetworkData network = readTouchstone(input, "dir/a.s1p", 1);
        QFAIL("the text was accepted");
    } catch (const ReadError &error) {
        QCOMPARE(error.file(), std::string("dir/a.s1p"));
        QCOMPARE(error.line(), std::size_t(3));
        QCOMPARE(error.column(), std::size_t(3));
        QCOMPARE(error.cause(), std::string("value \"x\" is not a number"));
    }
}

void tst_TouchstoneErrors::files_data()
{
    QTest::addColumn<QString>("relative");
    QTest::addColumn<QByteArray>("cause");

    const auto row = [](const char *name, const char *relative, const char *cause) {
        QTest::newRow(name) << QString::fromLatin1(relative) << QByteArray(cause);
    };
    row("missing", "none.s2p", ": cannot open: No such file or directory");
    row("directory", "folder.s2p", ": cannot open: Is a directory");
    row("empty", "empty.s2p", ": file is empty");
    row("bad value", "bad.s1p", ":2:3: value \"x\" is not a number");
    row("no ports", "ports.s0p", ": port count \"0\" is not possible; 1 to 1024 are");
    row("absurd port count", "ports.s1025p",
            ": port count \"1025\" is not possible; 1 to 1024 are");
    row("port count beyond integers", "ports.s99999999999999999999p",
            ": port count \"99999999999999999999\" is not possible; 1 to 1024 are");
    row("wrong port count", "ports.S2P",
            ":2: data end within the frequency point, after 3 of 9 "
            "values");
}

void tst_TouchstoneErrors::files()
{
    QFETCH(QString, relative);
    QFETCH(QByteArray, cause);

    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("folder.s2p")));
    for (const auto &[name, text] : {std::pair("empty.s2p", ""),
                 std::pair("bad.s1p", "# Hz\n1 2 x\n"), std::pair("ports.s0p", "# Hz\n1 2 3\n"),
                 std::pair("ports.s1025p", "# Hz\n1 2 3\n"),
                 std::pair("ports.S2P", "# Hz\n1 2 3\n"),
                 std::pair("ports.s99999999999999999999p", "# Hz\n1 2 3\n")}) {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), qint64(qstrlen(text)));
    }

    const std::string path = folder.filePath(relative).toStdString();
    try {
        const NetworkData network = readTouchstone(std::filesystem::path(path));
        QFAIL("the file was accepted");
    } catch (const ReadError &error) {
        QCOMPARE(QByteArray(error.what()), QByteArray::fromStdString(path) + cause);
    }
}

QTEST_APPLESS_MAIN(tst_TouchstoneErrors)

#include "tst_touchstoneerrors.moc"
