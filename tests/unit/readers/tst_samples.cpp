// SPDX-License-Identifier: MIT
#include "readers/LineReader.h"
#include "readers/ReadError.h"
#include "readers/SampleTable.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

using Charts::Readers::LineReader;
using Charts::Readers::ReadError;
using Charts::Readers::readSamples;
using Charts::Readers::SampleTable;

namespace {

constexpr float Gap = std::numeric_limits<float>::quiet_NaN();

using Times = QList<double>;
using Values = QList<QList<float>>;

SampleTable readText(const QByteArray &text)
{
    std::istringstream input(text.toStdString());
    return readSamples(input, "test.csv");
}

/// Equal bit by bit, except that each NaN equals each other.
bool areSame(const std::vector<float> &left, const QList<float> &right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
            [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); });
}

/// Makes the rows of a table one after another, so that the text is nowhere held as a whole.
class TableBuffer : public std::streambuf
{
public:
    explicit TableBuffer(int rows)
        : m_rows(rows)
    {
    }

    static double timeOf(int row) { return row / 1024.0; }
    static float valueOf(int row) { return float(row % 4096) / 8.0f - 100.0f; }

    std::streamsize largestRequest() const { return m_largestRequest; }

protected:
    std::streamsize xsgetn(char *target, std::streamsize count) override
    {
        m_largestRequest = std::max(m_largestRequest, count);
        while (m_pending.size() < count && m_row < m_rows) {
            m_pending += QByteArray::number(timeOf(m_row), 'g', 17) + ';'
                         + QByteArray::number(double(valueOf(m_row)), 'g', 9).replace('.', ',')
                         + (m_row % 7 == 0 ? ";\n" : ";1\n");
            ++m_row;
        }
        const std::streamsize served = std::min(count, std::streamsize(m_pending.size()));
        std::copy_n(m_pending.constData(), served, target);
        m_pending.remove(0, qsizetype(served));
        return served;
    }

private:
    int m_rows = 0;
    int m_row = 0;
    QByteArray m_pending = "time [s];u [V];flag\n";
    std::streamsize m_largestRequest = 0;
};

QString sharedDataFolder()
{
    QString named = qEnvironmentVariable("CHARTS_SHARED_DATA_DIR");
    if (!named.isEmpty())
        return named;
#ifdef CHARTS_SHARED_DATA_DIR
    return QString::fromUtf8(CHARTS_SHARED_DATA_DIR);
#else
    return {};
#endif
}

} // namespace

class tst_Samples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void tables_data();
    void tables();
    void titles_data();
    void titles();
    void gapsAreQuiet();
    void errors_data();
    void errors();
    void fileErrors_data();
    void fileErrors();
    void longTable();
    void measuredHeart();
};

void tst_Samples::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Samples::tables_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<Times>("time");
    QTest::addColumn<Values>("values");

    const auto row = [](const char *name, const QByteArray &text, const Times &time,
                             const Values &values) {
        QTest::newRow(name) << text << time << values;
    };
    row("comma", "t,v\n0,1.5\n0.5,-2\n", {0, 0.5}, {{1.5f, -2}});
    row("semicolon", "t;v\n0;1.5\n0.5;-2\n", {0, 0.5}, {{1.5f, -2}});
    row("tabulator", "t\tv\n0\t1.5\n0.5\t-2\n", {0, 0.5}, {{1.5f, -2}});
    row("decimal comma, semicolon", "t;v\n0,25;1,5\n0,5;-2,0e1\n", {0.25, 0.5}, {{1.5f, -20}});
    row("decimal comma, tabulator", "t\tv\n0,25\t1,5\n0.5\t-2\n", {0.25, 0.5}, {{1.5f, -2}});
    row("several columns", "t,a,b,c\n0,1,2,3\n1,4,5,6\n", {0, 1}, {{1, 4}, {2, 5}, {3, 6}});
    row("one row", "t,v\n-7,1\n", {-7}, {{1}});
    row("carriage returns, mark, comments, quotes",
            "\xEF\xBB\xBF# x\r\n\"t\",\"v\"\r\n\r\n\"0\",\" 1.5 \"\r\n# y\r\n0.5,-2", {0, 0.5},
            {{1.5f, -2}});
    row("signs", "t,v\n-1,+1.5\n+0,-0\n+1e0,+.5\n", {-1, 0, 1}, {{1.5f, -0.0f, 0.5f}});
    row("gaps",
            "t,v,w\n0,,1\n1,nan,2\n2,NaN,3\n3,NA,4\n4,null,5\n5,NULL,6\n6,-nan,7\n7, ,8\n"
            "8,\"\",9\n9,\" NA \",\n",
            {0, 1, 2, 3, 4, 5, 6, 7, 8, 9},
            {{Gap, Gap, Gap, Gap, Gap, Gap, Gap, Gap, Gap, Gap}, {1, 2, 3, 4, 5, 6, 7, 8, 9, Gap}});
    row("gaps between tabulators", "t\ta\tb\n0\t\t1\n1\t2\t\n", {0, 1}, {{Gap, 2}, {1, Gap}});
    row("nothing but gaps", "t,v\n0,\n1,\n", {0, 1}, {{Gap, Gap}});
    row("unequal steps", "t,v\n-1e9,1\n0,2\n1e-9,3\n5e300,4\n", {-1e9, 0, 1e-9, 5e300},
            {{1, 2, 3, 4}});
    row("smallest step of time", "t,v\n1,1\n1.0000000000000002,2\n", {1, 1 + DBL_EPSILON},
            {{1, 2}});
    row("time beyond the precision of float", "t,v\n1700000000.000001,1\n1700000000.000002,2\n",
            {1700000000.000001, 1700000000.000002}, {{1, 2}});
    row("extreme values", "t,v\n0,3.4028234e38\n1,-3.4028234e38\n2,1e-45\n3,1e-300\n", {0, 1, 2, 3},
            {{FLT_MAX, -FLT_MAX, std::numeric_limits<float>::denorm_min(), 0}});
    row("numbers among the names", "t,50\n0,1\n", {0}, {{1}});
}

void tst_Samples::tables()
{
    QFETCH(QByteArray, text);
    QFETCH(Times, time);
    QFETCH(Values, values);

    try {
        const SampleTable table = readText(text);
        QVERIFY(std::equal(table.time.begin(), table.time.end(), time.begin(), time.end()));
        QCOMPARE(qsizetype(table.columns.size()), values.size());
        for (qsizetype i = 0; i < values.size(); ++i)
            QVERIFY2(areSame(table.columns[std::size_t(i)].values, values[i]),
                    QByteArray::number(i).constData());
    } catch (const ReadError &error) {
        QFAIL(error.what());
    }
}

void tst_Samples::titles_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArrayList>("names");
    QTest::addColumn<QByteArrayList>("units");

    const auto row = [](const char *name, const char *header, const QByteArrayList &names,
                             const QByteArrayList &units) {
        QTest::newRow(name) << QByteArray(header) << names << units;
    };
    row("plain", "t,v", {"t", "v"}, {"", ""});
    row("brackets", "time [s],current [mA]", {"time", "current"}, {"s", "mA"});
    row("parentheses", "time (s),current(mA)", {"time", "current"}, {"s", "mA"});
    row("spaces within", "\" time [ s ] \",v", {"time", "v"}, {"s", ""});
    row("last parentheses", "t,U (peak) (V)", {"t", "U (peak)"}, {"", "V"});
    row("empty brackets", "t,v []", {"t", "v"}, {"", ""});
    row("nothing but a unit", "t,[V]", {"t", "[V]"}, {"", ""});
    row("unbalanced", "t],v)", {"t]", "v)"}, {"", ""});
    row("symbol", "time_s,mlii_mV", {"time", "mlii"}, {"s", "mV"});
    row("symbol with a Greek letter", "time_\u00b5s,v_\u00b5V", {"time", "v"},
            {"\u00b5s", "\u00b5V"});
    row("symbol behind two underscores", "t,lead_2_mV", {"t", "lead_2"}, {"", "mV"});
    row("channel letter", "t,phase_A", {"t", "phase_A"}, {"", ""});
    row("no symbol", "t,foo_bar", {"t", "foo_bar"}, {"", ""});
    row("nothing but a symbol", "t,_mV", {"t", "_mV"}, {"", ""});
    row("other separator", "t [s];v, filtered [mV]", {"t", "v, filtered"}, {"s", "mV"});
    row("no names", ",,v,", {"time", "column 2", "v", "column 4"}, {"", "", "", ""});
    row("same names", "v,v,v", {"v", "v", "v"}, {"", "", ""});
}

void tst_Samples::titles()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArrayList, names);
    QFETCH(QByteArrayList, units);

    const char separator = header.contains(';') ? ';' : ',';
    const QByteArray values = QByteArray(1, separator) + '1';
    const SampleTable table = readText(header + "\n0" + values.repeated(names.size() - 1) + '\n');

    QByteArrayList foundNames{QByteArray::fromStdString(table.timeName)};
    QByteArrayList foundUnits{QByteArray::fromStdString(table.timeUnit)};
    for (const auto &column : table.columns) {
        foundNames.append(QByteArray::fromStdString(column.name));
        foundUnits.append(QByteArray::fromStdString(column.unit));
    }
    QCOMPARE(foundNames, names);
    QCOMPARE(foundUnits, units);
}

void tst_Samples::gapsAreQuiet()
{
    const SampleTable table = readText("t,v\n0,\n1,-nan\n");
    for (const float value : table.columns.at(0).values) {
        // The first bit of the fraction tells a quiet NaN from a signalling one.
        quint32 bits = 0;
        static_assert(sizeof bits == sizeof value);
        std::memcpy(&bits, &value, sizeof bits);
        QCOMPARE(bits & 0x7fc00000U, 0x7fc00000U);
    }
}

void tst_Samples::errors_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("message");

    const auto row = [](const char *name, const QByteArray &text, const char *message) {
        QTest::newRow(name) << text << QByteArray(message);
    };
    row("empty", "", "test.csv: file is empty");
    row("byte order mark only", "\xEF\xBB\xBF", "test.csv: file is empty");
    row("comments only", "# a\n\n# b\n", "test.csv: no header row");
    row("header only", "t,v\n", "test.csv: no rows of data after the header");
    row("header and comments only", "t,v\n# 0,1\n\n", "test.csv: no rows of data after the header");
    row("one column", "# c\nt\n0\n",
            "test.csv:2: header has 1 column, at least 2 are needed, separated by comma, semicolon "
            "or tabulator");
    row("other separator", "t|v\n0|1\n",
            "test.csv:1: header has 1 column, at least 2 are needed, separated by comma, semicolon "
            "or tabulator");
    row("no header", "0,1\n1,2\n",
            "test.csv:1: first row holds numbers, column names are expected");
    row("no header, decimal comma", "0,5;1,5\n1;2\n",
            "test.csv:1: first row holds numbers, column names are expected");
    row("no header, gap", "# c\n0,nan,\n1,2,3\n",
            "test.csv:2: first row holds numbers, column names are expected");

    row("too few fields", "t,v,w\n0,1,2\n1,2\n", "test.csv:3: 2 fields where the header has 3");
    row("one field", "t,v\n0\n", "test.csv:2: 1 field where the header has 2");
    row("too many fields", "t,v\n0,1,\n", "test.csv:2: 3 fields where the header has 2");
    row("separator changes", "t;v\n0;1\n1,2\n", "test.csv:3: 1 field where the header has 2");
    row("decimal comma between commas", "t,v\n0,1,5\n",
            "test.csv:2: 3 fields where the header has 2");

    row("time is a word", "t,v\nzero,1\n", "test.csv:2:1: time \"zero\" is not a number");
    row("time is missing", "t,v\n0,1\n,2\n", "test.csv:3:1: time is missing");
    row("time is missing between tabulators", "t\tv\n0\t1\n\t\n", "test.csv:3:1: time is missing");
    row("time is no number", "t,v\nNaN,1\n", "test.csv:2:1: time is missing");
    row("time is infinite", "t,v\ninf,1\n", "test.csv:2:1: time \"inf\" is not finite");
    row("time is out of range", "t,v\n1e999,1\n", "test.csv:2:1: time \"1e999\" is out of range");
    row("time is a date", "t,v\n2024-01-01,1\n",
            "test.csv:2:1: time \"2024-01-01\" is not a number");
    row("time stands still", "t,v\n0,1\n0.5,2\n0.50,3\n",
            "test.csv:4:1: time \"0.50\" is not after the time before it, 0.5");
    row("time goes back", "t;v\n0;1\n-1e-9;2\n",
            "test.csv:3:1: time \"-1e-9\" is not after the time before it, 0");
    row("time stands still at zero", "t,v\n-0,1\n0,2\n",
            "test.csv:3:1: time \"0\" is not after the time before it, -0");
    row("time stands still in double precision", "t,v\n1,1\n1.00000000000000001,2\n",
            "test.csv:3:1: time \"1.00000000000000001\" is not after the time before it, 1");

    row("value is a word", "t,v\n0,abc\n", "test.csv:2:2: value \"abc\" is not a number");
    row("value with a unit", "t,v,w\n0,1,2V\n", "test.csv:2:3: value \"2V\" is not a number");
    row("value is a dash", "t,v\n0,-\n", "test.csv:2:2: value \"-\" is not a number");
    row("value is infinite", "t,v\n0,-Inf\n", "test.csv:2:2: value \"-Inf\" is not finite");
    row("value is out of range", "t,v\n0,1e39\n", "test.csv:2:2: value \"1e39\" is out of range");
    row("quoted decimal comma between commas", "t,v\n0,\"1,5\"\n",
            "test.csv:2:2: value \"1,5\" is not a number");
    row("grouped digits", "t;v\n0;1.234,5\n", "test.csv:2:2: value \"1.234,5\" is not a number");
    row("value of two lines", "t,v\n0,\"1\n2\"\n", "test.csv:2:2: value \"1\\n2\" is not a number");
    row("value with a control character", "t,v\n0,\x1b[2J\n",
            "test.csv:2:2: value \"\\x1b[2J\" is not a number");
    row("long value", "t,v\n0," + QByteArray(100000, 'x') + '\n',
            "test.csv:2:2: value \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\"... is not a number");

    row("after comments and blank lines", "# a\n\nt,v\n# b\n0,1\n\n# c\n1,x\n",
            "test.csv:8:2: value \"x\" is not a number");
    row("after a header of many lines", "\"t\n[s]\n\",v\n0,1\n1,x\n",
            "test.csv:5:2: value \"x\" is not a number");
    row("after a gap of many lines", "t,v\n0,\"\n\n\"\n1,x\n",
            "test.csv:5:2: value \"x\" is not a number");
    row("in the last line without a line feed", "t,v\r\n0,1\r\n1,x",
            "test.csv:3:2: value \"x\" is not a number");
    row("first error of a row", "t,a,b\nx,y,z\n", "test.csv:2:1: time \"x\" is not a number");
    row("quote not closed", "t,v\n0,\"1\n1,2\n", "test.csv:2:2: quote is not closed");
    row("NUL", QByteArrayLiteral("t,v\n0,1\n\0"),
            "test.csv:3: not a text file: there is a NUL byte");
}

void tst_Samples::errors()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, message);

    try {
        readText(text);
        QFAIL("the text was accepted");
    } catch (const ReadError &error) {
        QCOMPARE(QByteArray(error.what()), message);
        QVERIFY(!QByteArray(error.what()).contains('\n'));
    }
}

void tst_Samples::fileErrors_data()
{
    QTest::addColumn<QString>("relative");
    QTest::addColumn<QByteArray>("cause");

    QTest::newRow("missing") << QStringLiteral("none.csv")
                             << QByteArray(": cannot open: No such file or directory");
    QTest::newRow("directory") << QStringLiteral("folder")
                               << QByteArray(": cannot open: Is a directory");
    QTest::newRow("empty") << QStringLiteral("empty.csv") << QByteArray(": file is empty");
    QTest::newRow("bad value") << QStringLiteral("bad.csv")
                               << QByteArray(":3:2: value \"x\" is not a number");
}

void tst_Samples::fileErrors()
{
    QFETCH(QString, relative);
    QFETCH(QByteArray, cause);

    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("folder")));
    for (const auto &[name, text] :
            {std::pair("empty.csv", ""), std::pair("bad.csv", "t,v\n0,1\n1,x\n")}) {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), qint64(qstrlen(text)));
    }

    const std::string path = folder.filePath(relative).toStdString();
    try {
        const SampleTable table = readSamples(std::filesystem::path(path));
        QFAIL("the file was accepted");
    } catch (const ReadError &error) {
        QCOMPARE(QByteArray(error.what()), QByteArray::fromStdString(path) + cause);
    }
}

void tst_Samples::longTable()
{
    constexpr int rows = 400000;
    TableBuffer buffer(rows);
    std::istream input(&buffer);
    const SampleTable table = readSamples(input, "long.csv");

    QCOMPARE(buffer.largestRequest(), std::streamsize(LineReader::ChunkSize));
    QCOMPARE(table.timeUnit, std::string("s"));
    QCOMPARE(table.columns.size(), std::size_t(2));
    QCOMPARE(table.columns[0].name, std::string("u"));
    QCOMPARE(table.columns[0].unit, std::string("V"));
    QCOMPARE(table.time.size(), std::size_t(rows));
    QCOMPARE(table.columns[0].values.size(), std::size_t(rows));
    QCOMPARE(table.columns[1].values.size(), std::size_t(rows));

    int differences = 0;
    for (int i = 0; i < rows; ++i) {
        const auto at = std::size_t(i);
        const float flag = table.columns[1].values[at];
        if (table.time[at] != TableBuffer::timeOf(i)
                || table.columns[0].values[at] != TableBuffer::valueOf(i)
                || (i % 7 == 0 ? !std::isnan(flag) : flag != 1.0f)) {
            ++differences;
        }
    }
    QCOMPARE(differences, 0);
}

void tst_Samples::measuredHeart()
{
    const QString folder = sharedDataFolder();
    if (folder.isEmpty() || !QDir(folder).exists())
        QSKIP("CHARTS_SHARED_DATA_DIR names no folder with measurements.");

    const QString path = QDir(folder).filePath(QStringLiteral("ecg/mitbih_208_mlii_360Hz.csv"));
    const SampleTable table = readSamples(std::filesystem::path(path.toStdString()));
    QCOMPARE(table.timeName, std::string("time"));
    QCOMPARE(table.timeUnit, std::string("s"));
    QCOMPARE(table.columns.size(), std::size_t(1));
    QCOMPARE(table.columns[0].name, std::string("mlii"));
    QCOMPARE(table.columns[0].unit, std::string("mV"));
    QCOMPARE(table.time.size(), std::size_t(108000));
    QCOMPARE(table.columns[0].values.size(), std::size_t(108000));
    QVERIFY(table.time.front() == 0.0);
    QVERIFY(table.time.back() == 299.997222);
    QVERIFY(table.columns[0].values.front() == -0.245f);
    QVERIFY(table.columns[0].values.back() == -0.385f);

    // 360 samples per second, written with six decimals.
    for (std::size_t i = 0; i < table.time.size(); ++i)
        QVERIFY(std::abs(table.time[i] - double(i) / 360.0) < 1e-6);
    for (const float value : table.columns[0].values)
        QVERIFY(std::abs(value) < 6.0f);
}

QTEST_APPLESS_MAIN(tst_Samples)

#include "tst_samples.moc"
