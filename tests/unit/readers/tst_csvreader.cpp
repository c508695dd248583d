// SPDX-License-Identifier: MIT
#include "readers/CsvReader.h"
#include "readers/ReadError.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

using Charts::Readers::CsvReader;
using Charts::Readers::LineReader;
using Charts::Readers::ReadError;

namespace {

using Row = QByteArrayList;
using Rows = QList<QByteArrayList>;

struct Reading
{
    Rows rows;
    QList<int> lines;
    char separator = '\0';
    QByteArray error;
    int errorLine = 0;
    int errorColumn = 0;
};

Reading readAll(CsvReader &reader)
{
    Reading reading;
    try {
        while (reader.next()) {
            Row row;
            for (std::size_t i = 0; i < reader.fieldCount(); ++i) {
                const std::string_view field = reader.field(i);
                row.append(QByteArray(field.data(), qsizetype(field.size())));
            }
            reading.rows.append(row);
            reading.lines.append(int(reader.line()));
        }
    } catch (const ReadError &error) {
        reading.error = error.what();
        reading.errorLine = int(error.line());
        reading.errorColumn = int(error.column());
    }
    reading.separator = reader.separator();
    return reading;
}

Reading readText(const QByteArray &text)
{
    std::istringstream input(text.toStdString());
    CsvReader reader(input, "test.csv");
    return readAll(reader);
}

/// A stream that makes its text on demand and notes how much was asked for at once. It is long
/// enough to pass for endless, and ends so that a reader without limits fails instead of hanging.
class GeneratingBuffer : public std::streambuf
{
public:
    explicit GeneratingBuffer(QByteArray head, QByteArray repeated)
        : m_pending(std::move(head))
        , m_repeated(std::move(repeated))
    {
    }

    std::streamsize largestRequest() const { return m_largestRequest; }
    std::streamsize total() const { return m_total; }

protected:
    std::streamsize xsgetn(char *target, std::streamsize count) override
    {
        m_largestRequest = std::max(m_largestRequest, count);
        if (m_total >= Length)
            return 0;
        m_total += count;
        while (m_pending.size() < count)
            m_pending += m_repeated;
        std::copy_n(m_pending.constData(), count, target);
        m_pending.remove(0, qsizetype(count));
        return count;
    }

    int_type underflow() override
    {
        // Reading by characters instead of chunks would come here.
        throw std::logic_error("the stream was read by characters");
    }

private:
    static constexpr std::streamsize Length = std::streamsize(16) * 1024 * 1024;

    QByteArray m_pending;
    QByteArray m_repeated;
    std::streamsize m_largestRequest = 0;
    std::streamsize m_total = 0;
};

/// A stream that breaks after its text, like a file on a disk that fails.
class BreakingBuffer : public std::stringbuf
{
public:
    using std::stringbuf::stringbuf;

protected:
    std::streamsize xsgetn(char *target, std::streamsize count) override
    {
        if (std::exchange(m_used, true))
            throw std::runtime_error("broken");
        // Fills the request, or the reader would take the end of the text for the end of the file.
        const std::streamsize held = std::stringbuf::xsgetn(target, count);
        std::fill(target + held, target + count, '\n');
        return count;
    }

private:
    bool m_used = false;
};

} // namespace

class tst_CsvReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void rows_data();
    void rows();
    void errors_data();
    void errors();

    void beforeTheFirstRow();
    void errorOfTheCaller();
    void fieldsSurviveGrowth();

    void chunkBoundary_data();
    void chunkBoundary();
    void endAtChunkBoundary();
    void straddlingLines();

    void limits_data();
    void limits();
    void limitIsGenerous();
    void longUnclosedQuoteIsQuick();
    void readsInBoundedChunks();

    void readsAFile();
    void unopenable_data();
    void unopenable();
    void unreadable();
    void breakingStream();
};

void tst_CsvReader::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_CsvReader::rows_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<Rows>("rows");
    QTest::addColumn<QList<int>>("lines");
    QTest::addColumn<char>("separator");

    const auto row = [](const char *name, const QByteArray &text, const Rows &rows,
                             const QList<int> &lines, char separator) {
        QTest::newRow(name) << text << rows << lines << separator;
    };
    const Rows plain{{"t", "v"}, {"0", "1"}, {"2", "3"}};

    row("comma", "t,v\n0,1\n2,3\n", plain, {1, 2, 3}, ',');
    row("semicolon", "t;v\n0;1\n2;3\n", plain, {1, 2, 3}, ';');
    row("tabulator", "t\tv\n0\t1\n2\t3\n", plain, {1, 2, 3}, '\t');
    row("semicolon before commas", "t;a, b, or c\n0;1\n", {{"t", "a, b, or c"}, {"0", "1"}}, {1, 2},
            ';');
    row("semicolon before tabulators", "t;\ta\tb\n0;\t1\n", {{"t", "a\tb"}, {"0", "1"}}, {1, 2},
            ';');
    row("tabulator before commas", "t\ta, b, or c\n0\t1\n", {{"t", "a, b, or c"}, {"0", "1"}},
            {1, 2}, '\t');
    row("tabulators that align", "t,\tv\n0,\t1\n2,\t3\n", plain, {1, 2, 3}, ',');
    row("separators in quotes do not count", "\"a;b;c;d\",v\n0,1\n", {{"a;b;c;d", "v"}, {"0", "1"}},
            {1, 2}, ',');
    row("separators behind doubled quotes", "\"a\"\";;;\"\"\",v\n0,1\n",
            {{"a\";;;\"", "v"}, {"0", "1"}}, {1, 2}, ',');
    row("only the header decides", "t,v\n0;1\n2,3\n", {{"t", "v"}, {"0;1"}, {"2", "3"}}, {1, 2, 3},
            ',');
    row("one column", "v\n1\n2\n", {{"v"}, {"1"}, {"2"}}, {1, 2, 3}, ',');

    row("carriage returns", "t,v\r\n0,1\r\n2,3\r\n", plain, {1, 2, 3}, ',');
    row("mixed line ends", "t,v\n0,1\r\n2,3\n", plain, {1, 2, 3}, ',');
    row("doubled carriage returns", "t,v\r\r\n0,1\r\r\n2,3\r\r\n", plain, {1, 2, 3}, ',');
    row("no line feed at the end", "t,v\n0,1\n2,3", plain, {1, 2, 3}, ',');
    row("carriage return at the end", "t,v\r\n0,1\r\n2,3\r", plain, {1, 2, 3}, ',');
    row("header only", "t,v", {{"t", "v"}}, {1}, ',');
    row("quoted header only", "\"t\",\"v\"", {{"t", "v"}}, {1}, ',');

    row("quotes", "\"t\",\"v\"\n\"0\",\"1\"\n\"2\",\"3\"\n", plain, {1, 2, 3}, ',');
    row("quotes and carriage returns", "\"t\",\"v\"\r\n\"0\",\"1\"\r\n\"2\",\"3\"\r\n", plain,
            {1, 2, 3}, ',');
    row("separators in quotes", "t,v\n\"0,5\",\"1,\"\n", {{"t", "v"}, {"0,5", "1,"}}, {1, 2}, ',');
    row("doubled quotes", "t,\"say \"\"v\"\"\"\n0,\"\"\"\"\n", {{"t", "say \"v\""}, {"0", "\""}},
            {1, 2}, ',');
    row("line feeds in quotes", "\"t\n(s)\",v\n0,\"a\n\nb\"\n2,3\n",
            {{"t\n(s)", "v"}, {"0", "a\n\nb"}, {"2", "3"}}, {1, 3, 6}, ',');
    row("line feed in quotes before any separator", "\"t\n\";v\n0;1\n", {{"t\n", "v"}, {"0", "1"}},
            {1, 3}, ';');
    row("line ends in quotes stay as they are", "t,v\r\n0,\"a\r\nb\"\r\n",
            {{"t", "v"}, {"0", "a\r\nb"}}, {1, 2}, ',');
    row("empty quotes", "t,v\n\"\",\"\"\n", {{"t", "v"}, {"", ""}}, {1, 2}, ',');
    row("quotes closed by the end", "t,v\n0,\"1\"", {{"t", "v"}, {"0", "1"}}, {1, 2}, ',');

    row("spaces around", " t , v \n 0 ,\t1 \n2, \"3\" \n", plain, {1, 2, 3}, ',');
    row("spaces in quotes stay", "t,v\n\" 0 \",1\n", {{"t", "v"}, {" 0 ", "1"}}, {1, 2}, ',');
    row("spaces within stay", "t,v\n1 2,3\n", {{"t", "v"}, {"1 2", "3"}}, {1, 2}, ',');

    row("empty fields", "t,v,w\n,,\n0,,\n", {{"t", "v", "w"}, {"", "", ""}, {"0", "", ""}},
            {1, 2, 3}, ',');
    row("empty fields between tabulators", "t\tv\tw\n\t\t\n0\t\t1\n",
            {{"t", "v", "w"}, {"", "", ""}, {"0", "", "1"}}, {1, 2, 3}, '\t');

    row("comments", "# one\n#two,2\nt,v\n#three\n0,1\n#\n2,3\n# four", plain, {3, 5, 7}, ',');
    row("quote in a comment", "# 5\" pipe\nt,v\n# \"\n0,1\n2,3\n", plain, {2, 4, 5}, ',');
    row("separator in a comment", "# a;b;c;d\nt,v\n0,1\n2,3\n", plain, {2, 3, 4}, ',');
    row("no comment within quotes", "t,v\n0,\"a\n# b\n\"\n2,3\n",
            {{"t", "v"}, {"0", "a\n# b\n"}, {"2", "3"}}, {1, 2, 5}, ',');
    row("no comment within quotes of the header", "\"t\n# b\",v\n0,1\n",
            {{"t\n# b", "v"}, {"0", "1"}}, {1, 3}, ',');
    row("no comment behind a space", "t,v\n #0,1\n", {{"t", "v"}, {"#0", "1"}}, {1, 2}, ',');
    row("no comment behind a field", "t,v\n0,1 # x\n", {{"t", "v"}, {"0", "1 # x"}}, {1, 2}, ',');

    row("blank lines", "\n\r\n \t \nt,v\n\n0,1\n \n\t\n2,3\n\n\n", plain, {4, 6, 9}, ',');
    row("blank lines between tabulators", "t\tv\n\n0\t1\n  \r\n2\t3\n", plain, {1, 3, 5}, '\t');

    row("byte order mark", "\xEF\xBB\xBFt,v\n0,1\n2,3\n", plain, {1, 2, 3}, ',');
    row("byte order mark before quotes", "\xEF\xBB\xBF\"t\",v\n0,1\n2,3\n", plain, {1, 2, 3}, ',');
    row("byte order mark before a comment", "\xEF\xBB\xBF# x\nt,v\n0,1\n2,3\n", plain, {2, 3, 4},
            ',');
    row("byte order mark elsewhere is text", "t,v\n\xEF\xBB\xBF\x30,1\n",
            {{"t", "v"}, {"\xEF\xBB\xBF\x30", "1"}}, {1, 2}, ',');

    row("empty", "", {}, {}, '\0');
    row("byte order mark only", "\xEF\xBB\xBF", {}, {}, '\0');
    row("comments and blank lines only", "# x\n\n", {}, {}, '\0');
    row("bytes above 127", "t,\xC2\xB5V\n0,\xFF\n", {{"t", "\xC2\xB5V"}, {"0", "\xFF"}}, {1, 2},
            ',');
}

void tst_CsvReader::rows()
{
    QFETCH(QByteArray, text);
    QFETCH(Rows, rows);
    QFETCH(QList<int>, lines);
    QFETCH(char, separator);

    const Reading reading = readText(text);
    QCOMPARE(reading.error, QByteArray());
    QCOMPARE(reading.rows, rows);
    QCOMPARE(reading.lines, lines);
    QCOMPARE(reading.separator, separator);
}

void tst_CsvReader::errors_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("rowsBefore");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QByteArray>("message");

    const auto row = [](const char *name, const QByteArray &text, int rowsBefore, int line,
                             int column, const char *message) {
        QTest::newRow(name) << text << rowsBefore << line << column << QByteArray(message);
    };
    row("quote not closed", "t,v\n0,1\n2,\"3\n4,5\n", 2, 3, 2, "test.csv:3:2: quote is not closed");
    row("quote not closed in the first field", "t,v\n\"0,1\n", 1, 2, 1,
            "test.csv:2:1: quote is not closed");
    row("quote not closed at the very end", "t,v\n0,\"", 1, 2, 2,
            "test.csv:2:2: quote is not closed");
    row("quote not closed in the header", "# c\n\"t,v\n0,1\n", 0, 2, 1,
            "test.csv:2:1: quote is not closed");
    row("quote not closed after rows of many lines", "t,v\n0,\"a\n\nb\"\n# c\n\n1,\"\n", 2, 7, 2,
            "test.csv:7:2: quote is not closed");
    row("quote within a field", "t,v\n0,5\" pipe\n", 1, 2, 2,
            "test.csv:2:2: misplaced quote; quotes enclose a whole field, and a quote within is "
            "doubled");
    row("text behind a quote", "t,v,w\n0,1,\"a\"b\n", 1, 2, 3,
            "test.csv:2:3: misplaced quote; quotes enclose a whole field, and a quote within is "
            "doubled");
    row("misplaced quote in the header", "t\",v\n0,1\"\n", 0, 1, 1,
            "test.csv:1:1: misplaced quote; quotes enclose a whole field, and a quote within is "
            "doubled");
    row("misplaced quotes in the header", "t,a \"b\"\n0,1\n", 0, 1, 2,
            "test.csv:1:2: misplaced quote; quotes enclose a whole field, and a quote within is "
            "doubled");
    row("misplaced quote in a row of many lines", "t,v\n0,\"a\nb\nc\"d\n", 1, 2, 2,
            "test.csv:2:2: misplaced quote; quotes enclose a whole field, and a quote within is "
            "doubled");
    row("NUL", QByteArrayLiteral("t,v\n0,1\n2,\0003\n"), 2, 3, 0,
            "test.csv:3: not a text file: there is a NUL byte");
    row("NUL in the header", QByteArrayLiteral("t\0,v\n0,1\n"), 0, 1, 0,
            "test.csv:1: not a text file: there is a NUL byte");
    row("NUL in a comment", QByteArrayLiteral("t,v\n# \0\n"), 1, 2, 0,
            "test.csv:2: not a text file: there is a NUL byte");
    row("NUL at the end", QByteArrayLiteral("t,v\n0,1\0"), 1, 2, 0,
            "test.csv:2: not a text file: there is a NUL byte");
    row("NUL within quotes", QByteArrayLiteral("t,v\n0,\"a\n\0\"\n"), 1, 3, 0,
            "test.csv:3: not a text file: there is a NUL byte");
    row("UTF-16", QByteArrayLiteral("\xFF\xFEt\0,\0v\0\n\0"), 0, 1, 0,
            "test.csv:1: not a text file: there is a NUL byte");
    row("carriage returns only", "# x\nt,v\r0,1\r2,3\r", 0, 2, 0,
            "test.csv:2: lines end with carriage returns only; line feeds are expected");
}

void tst_CsvReader::errors()
{
    QFETCH(QByteArray, text);
    QFETCH(int, rowsBefore);
    QFETCH(int, line);
    QFETCH(int, column);
    QFETCH(QByteArray, message);

    const Reading reading = readText(text);
    QCOMPARE(reading.error, message);
    QCOMPARE(reading.errorLine, line);
    QCOMPARE(reading.errorColumn, column);
    QCOMPARE(int(reading.rows.size()), rowsBefore);
}

void tst_CsvReader::beforeTheFirstRow()
{
    std::istringstream input("# c\n\nt;v\n");
    CsvReader reader(input, "some name");
    QCOMPARE(reader.name(), std::string("some name"));
    QCOMPARE(reader.line(), std::size_t(0));
    QCOMPARE(reader.linesRead(), std::size_t(0));
    QCOMPARE(reader.fieldCount(), std::size_t(0));
    QCOMPARE(reader.separator(), '\0');

    QVERIFY(reader.next());
    QCOMPARE(reader.line(), std::size_t(3));
    QCOMPARE(reader.linesRead(), std::size_t(3));
    QCOMPARE(reader.separator(), ';');

    QVERIFY(!reader.next());
    QCOMPARE(reader.fieldCount(), std::size_t(0));
    QVERIFY(!reader.next());
}

void tst_CsvReader::errorOfTheCaller()
{
    std::istringstream input("t,v\n\n0,1\n");
    CsvReader reader(input, "n");
    QVERIFY(reader.next());
    QVERIFY(reader.next());
    QCOMPARE(QByteArray(reader.error(2, "bad").what()), QByteArray("n:3:2: bad"));
    QCOMPARE(QByteArray(reader.error(0, "bad").what()), QByteArray("n:3: bad"));
}

void tst_CsvReader::fieldsSurviveGrowth()
{
    // Many fields of growing length in one row, so that everything that holds them must move.
    QByteArray text("a,b\n");
    Row expected;
    for (int i = 0; i < 1000; ++i) {
        expected.append(QByteArray(i, char('a' + i % 26)));
        text += expected.back() + (i == 999 ? '\n' : ',');
    }
    const Reading reading = readText(text);
    QCOMPARE(reading.error, QByteArray());
    QCOMPARE(reading.rows.size(), qsizetype(2));
    QCOMPARE(reading.rows.at(1), expected);
}

void tst_CsvReader::chunkBoundary_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<Rows>("rows");

    QTest::newRow("plain") << QByteArray("12,34\n56,78\n") << Rows{{"12", "34"}, {"56", "78"}};
    QTest::newRow("carriage returns")
            << QByteArray("12,34\r\n\r\n56,78\r\n") << Rows{{"12", "34"}, {"56", "78"}};
    QTest::newRow("quotes") << QByteArray("\"1,\"\"2\",\"\n#\"\n56,78\n")
                            << Rows{{"1,\"2", "\n#"}, {"56", "78"}};
    QTest::newRow("comment") << QByteArray("12,34\n# \"c\n56,78\n")
                             << Rows{{"12", "34"}, {"56", "78"}};
    QTest::newRow("no line feed") << QByteArray("12,34\n56,\"78\"")
                                  << Rows{{"12", "34"}, {"56", "78"}};
}

void tst_CsvReader::chunkBoundary()
{
    QFETCH(QByteArray, text);
    QFETCH(Rows, rows);

    // Every position of the text once becomes the first one of the second chunk.
    const auto chunk = qsizetype(LineReader::ChunkSize);
    for (qsizetype cut = 0; cut <= text.size(); ++cut) {
        QByteArray padded("t,v\n#");
        padded += QByteArray(chunk - cut - padded.size() - 1, 'x') + '\n';
        QCOMPARE(padded.size(), chunk - cut);
        const Reading reading = readText(padded + text);
        QCOMPARE(reading.error, QByteArray());
        QCOMPARE(reading.rows, Rows{Row({"t", "v"})} + rows);
        QCOMPARE(reading.lines.at(1), 3);
    }
}

void tst_CsvReader::endAtChunkBoundary()
{
    const auto chunk = qsizetype(LineReader::ChunkSize);
    for (const QByteArray &end : {QByteArray("0,1"), QByteArray("0,1\n"), QByteArray("0,1\r\n")}) {
        for (qsizetype chunks = 1; chunks <= 2; ++chunks) {
            QByteArray text("t,v\n#");
            text += QByteArray(chunks * chunk - text.size() - 1 - end.size(), 'x') + '\n' + end;
            QCOMPARE(text.size(), chunks * chunk);
            const Reading reading = readText(text);
            QCOMPARE(reading.error, QByteArray());
            QCOMPARE(reading.rows, Rows({{"t", "v"}, {"0", "1"}}));
        }
    }
}

void tst_CsvReader::straddlingLines()
{
    // Rows of about 1.5 chunks, so that each straddles at least one boundary.
    QByteArray text("t,v\n");
    Rows expected{{"t", "v"}};
    for (int i = 0; i < 10; ++i) {
        expected.append({QByteArray::number(i), QByteArray(98301 + i, char('a' + i))});
        text += expected.back().join(',') + '\n';
    }
    const Reading reading = readText(text);
    QCOMPARE(reading.error, QByteArray());
    QVERIFY(reading.rows == expected);
    QCOMPARE(reading.lines, QList<int>({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
}

void tst_CsvReader::limits_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("repeated");
    QTest::addColumn<QByteArray>("message");

    const QByteArray line = QByteArray(1023, 'x') + '\n';
    QTest::newRow("line without end")
            << QByteArray("t,v\n0,1\n") << QByteArray(1024, 'x')
            << QByteArray("test.csv:3: line is longer than 1048576 bytes");
    QTest::newRow("header without end")
            << QByteArray("t,") << QByteArray(1024, 'x')
            << QByteArray("test.csv:1: line is longer than 1048576 bytes");
    QTest::newRow("comment without end")
            << QByteArray("t,v\n#") << QByteArray(1024, 'x')
            << QByteArray("test.csv:2: line is longer than 1048576 bytes");
    QTest::newRow("quote without end")
            << QByteArray("t,v\n0,1\n2,\"") << line
            << QByteArray(
                       "test.csv:3: row is longer than 1048576 bytes; a quote may not be closed");
    QTest::newRow("quote without end in the header")
            << QByteArray("# c\n\"t") << line
            << QByteArray(
                       "test.csv:2: row is longer than 1048576 bytes; a quote may not be closed");
    QTest::newRow("line within quotes without end")
            << QByteArray("t,v\n0,\"\n") << QByteArray(1024, 'x')
            << QByteArray("test.csv:3: line is longer than 1048576 bytes");
    QTest::newRow("NUL bytes") << QByteArray("") << QByteArray(1024, '\0')
                               << QByteArray("test.csv:1: not a text file: there is a NUL byte");
}

void tst_CsvReader::limits()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, repeated);
    QFETCH(QByteArray, message);

    GeneratingBuffer buffer(head, repeated);
    std::istream input(&buffer);
    CsvReader reader(input, "test.csv");
    QCOMPARE(readAll(reader).error, message);
    QVERIFY(buffer.total()
            <= std::streamsize(CsvReader::MaximumRowLength + 2 * LineReader::ChunkSize));
}

void tst_CsvReader::limitIsGenerous()
{
    // A row of exactly the greatest length, on one line and on many.
    const auto length = qsizetype(CsvReader::MaximumRowLength);
    const QByteArray one(length - 3, 'x');
    Reading reading = readText("t,v\n0," + one + "\n2,3\n");
    QCOMPARE(reading.error, QByteArray());
    QCOMPARE(reading.rows.size(), qsizetype(3));
    QVERIFY(reading.rows.at(1).at(1) == one);

    const QByteArray many = QByteArray("x\n").repeated((length - 6) / 2) + 'x';
    reading = readText("t,v\n0,\"" + many + "\"\n2,3\n");
    QCOMPARE(reading.error, QByteArray());
    QCOMPARE(reading.rows.size(), qsizetype(3));
    QVERIFY(reading.rows.at(1).at(1) == many);

    reading = readText("t,v\n0,x" + one + "\n2,3\n");
    QCOMPARE(reading.error, QByteArray("test.csv:2: line is longer than 1048576 bytes"));
}

void tst_CsvReader::longUnclosedQuoteIsQuick()
{
    // A million lines in one open quote of the header: what is collected must not be searched
    // again for each of them, which would take hours.
    const Reading reading = readText("\"" + QByteArray("\n").repeated(1000000));
    QCOMPARE(reading.error, QByteArray("test.csv:1:1: quote is not closed"));
}

void tst_CsvReader::readsInBoundedChunks()
{
    GeneratingBuffer buffer("t,v\n", "0.125,\"1.5\"\r\n# comment\n");
    std::istream input(&buffer);
    CsvReader reader(input, "endless");
    QVERIFY(reader.next());
    QCOMPARE(buffer.total(), std::streamsize(LineReader::ChunkSize));

    for (int i = 0; i < 200000; ++i) {
        QVERIFY(reader.next());
        QCOMPARE(reader.fieldCount(), std::size_t(2));
    }
    QCOMPARE(reader.line(), std::size_t(2 + 2 * 199999));
    QCOMPARE(buffer.largestRequest(), std::streamsize(LineReader::ChunkSize));
    // 200000 rows of 13 bytes and comments of 10 bytes: read ahead by less than one chunk.
    QVERIFY(buffer.total() < std::streamsize(std::size_t(200000) * 23 + 2 * LineReader::ChunkSize));
}

void tst_CsvReader::readsAFile()
{
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QString path = folder.filePath(QStringLiteral("a \u00b5.csv"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("t,v\r\n0,\"a\r\nb\"\r\n") > 0);
    file.close();

    CsvReader reader{std::filesystem::path(path.toStdU16String())};
    QCOMPARE(reader.name(), path.toStdString());
    const Reading reading = readAll(reader);
    QCOMPARE(reading.error, QByteArray());
    QCOMPARE(reading.rows, Rows({{"t", "v"}, {"0", "a\r\nb"}}));
}

void tst_CsvReader::unopenable_data()
{
    QTest::addColumn<QString>("relative");
    QTest::addColumn<QByteArray>("cause");

    QTest::newRow("missing") << QStringLiteral("none.csv")
                             << QByteArray("cannot open: No such file or directory");
    QTest::newRow("missing folder")
            << QStringLiteral("none/a.csv") << QByteArray("cannot open: No such file or directory");
    QTest::newRow("below a file") << QStringLiteral("file/a.csv")
                                  << QByteArray("cannot open: Not a directory");
    QTest::newRow("directory") << QStringLiteral(".") << QByteArray("cannot open: Is a directory");
    QTest::newRow("name too long")
            << QString(5000, QLatin1Char('x')) << QByteArray("cannot open: File name too long");
}

void tst_CsvReader::unopenable()
{
    QFETCH(QString, relative);
    QFETCH(QByteArray, cause);

    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QFile file(folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();

    const std::string path = folder.filePath(relative).toStdString();
    try {
        const CsvReader reader{std::filesystem::path(path)};
        QFAIL("the file was opened");
    } catch (const ReadError &error) {
        QCOMPARE(QByteArray(error.what()), QByteArray::fromStdString(path) + ": " + cause);
        QCOMPARE(error.file(), path);
        QCOMPARE(error.line(), std::size_t(0));
    }
}

void tst_CsvReader::unreadable()
{
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QFile file(folder.filePath(QStringLiteral("secret.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(file.setPermissions({}));
    if (file.open(QIODevice::ReadOnly))
        QSKIP("This user may read every file.");

    try {
        const CsvReader reader{std::filesystem::path(file.fileName().toStdString())};
        QFAIL("the file was opened");
    } catch (const ReadError &error) {
        QCOMPARE(QByteArray(error.what()),
                file.fileName().toUtf8() + ": cannot open: Permission denied");
    }
}

void tst_CsvReader::breakingStream()
{
    BreakingBuffer buffer("t,v\n0,1\n");
    std::istream input(&buffer);
    CsvReader reader(input, "disk.csv");
    const Reading reading = readAll(reader);
    QCOMPARE(reading.rows, Rows({{"t", "v"}, {"0", "1"}}));
    QCOMPARE(reading.error, QByteArray("disk.csv: cannot read"));

    std::istringstream failed("t,v\n");
    failed.setstate(std::ios::failbit);
    CsvReader other(failed, "failed.csv");
    QCOMPARE(readAll(other).error, QByteArray("failed.csv: cannot read"));
}

QTEST_APPLESS_MAIN(tst_CsvReader)

#include "tst_csvreader.moc"
