// SPDX-License-Identifier: MIT
#include "readers/ReadError.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <string>

using Charts::Readers::excerpt;
using Charts::Readers::oneLine;
using Charts::Readers::ReadError;

class tst_ReadError : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void message_data();
    void message();
    void accessors();
    void text_data();
    void text();
};

void tst_ReadError::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ReadError::message_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QByteArray>("cause");
    QTest::addColumn<QByteArray>("expected");

    const auto row = [](const char *name, const char *file, int line, int column, const char *cause,
                             const char *expected) {
        QTest::newRow(name) << QByteArray(file) << line << column << QByteArray(cause)
                            << QByteArray(expected);
    };
    row("file", "a.csv", 0, 0, "is empty", "a.csv: is empty");
    row("row", "a.csv", 3, 0, "is short", "a.csv:3: is short");
    row("field", "a.csv", 3, 2, "is odd", "a.csv:3:2: is odd");
    row("column of no line", "a.csv", 0, 2, "is odd", "a.csv: is odd");
    row("large numbers", "a", 2000000000, 1000000, "x", "a:2000000000:1000000: x");
    row("line feed in the name", "a\nb", 1, 1, "x", "a\\nb:1:1: x");
    row("line feed in the cause", "a", 1, 1, "x\ny", "a:1:1: x\\ny");
    row("nothing known", "", 0, 0, "", ": ");
}

void tst_ReadError::message()
{
    QFETCH(QByteArray, file);
    QFETCH(int, line);
    QFETCH(int, column);
    QFETCH(QByteArray, cause);
    QFETCH(QByteArray, expected);

    const ReadError error(file.toStdString(), static_cast<std::size_t>(line),
            static_cast<std::size_t>(column), cause.toStdString());
    QCOMPARE(QByteArray(error.what()), expected);
}

void tst_ReadError::accessors()
{
    const ReadError field("dir/a\tb.csv", 7, 3, "odd\nthing");
    QCOMPARE(field.file(), std::string("dir/a\tb.csv"));
    QCOMPARE(field.line(), std::size_t(7));
    QCOMPARE(field.column(), std::size_t(3));
    QCOMPARE(field.cause(), std::string("odd\nthing"));

    const ReadError whole("a.csv", "gone");
    QCOMPARE(whole.file(), std::string("a.csv"));
    QCOMPARE(whole.line(), std::size_t(0));
    QCOMPARE(whole.column(), std::size_t(0));
    QCOMPARE(whole.cause(), std::string("gone"));
    QCOMPARE(QByteArray(whole.what()), QByteArray("a.csv: gone"));
}

void tst_ReadError::text_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("quotation");

    const auto same = [](const char *name, const QByteArray &text, const QByteArray &line) {
        QTest::newRow(name) << text << line << QByteArray('"' + line + '"');
    };
    same("plain", "1.5 V", "1.5 V");
    same("empty", "", "");
    same("line breaks", "a\r\nb\tc", "a\\r\\nb\\tc");
    same("escape sequence", "\x1b[31m", "\\x1b[31m");
    same("NUL and delete", QByteArray("\0\x7f", 2), "\\x00\\x7f");
    same("quotes and backslashes", "\"\\", "\"\\");
    same("two bytes", "\u00b5V", "\u00b5V");
    same("three bytes", "\u2126", "\u2126");
    same("four bytes", "\U0001d11e", "\U0001d11e");
    same("Latin 1", "\xb5V", "\\xb5V");
    same("cut sequence", "\xe2\x84", "\\xe2\\x84");
    same("broken sequence", "\xe2\x84z", "\\xe2\\x84z");
    same("overlong form", "\xc0\x8a", "\\xc0\\x8a");
    same("overlong form of three bytes", "\xe0\x80\x8a", "\\xe0\\x80\\x8a");
    same("overlong form of four bytes", "\xf0\x80\x80\x8a", "\\xf0\\x80\\x80\\x8a");
    same("surrogate", "\xed\xa0\x80", "\\xed\\xa0\\x80");
    same("beyond Unicode", "\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80");
    same("C1 control", "\xc2\x85", "\\xc2\\x85");
    same("line separator", "\u2028", "\\xe2\\x80\\xa8");
    same("40 bytes", QByteArray(40, 'x'), QByteArray(40, 'x'));

    QTest::newRow("41 bytes") << QByteArray(41, 'x') << QByteArray(41, 'x')
                              << QByteArray('"' + QByteArray(40, 'x') + "\"...");
    const QByteArray cut = QByteArray(39, 'x') + "\u00b5";
    QTest::newRow("cut within a character")
            << cut << cut << QByteArray('"' + QByteArray(39, 'x') + "\"...");
    const QByteArray wide = QByteArray(37, 'x') + "\U0001d11e";
    QTest::newRow("cut within a long character")
            << wide << wide << QByteArray('"' + QByteArray(37, 'x') + "\"...");
    QTest::newRow("huge") << QByteArray(1 << 20, 'x') << QByteArray(1 << 20, 'x')
                          << QByteArray('"' + QByteArray(40, 'x') + "\"...");
}

void tst_ReadError::text()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, quotation);

    QCOMPARE(QByteArray::fromStdString(oneLine(text.toStdString())), line);
    QCOMPARE(QByteArray::fromStdString(excerpt(text.toStdString())), quotation);
}

QTEST_APPLESS_MAIN(tst_ReadError)

#include "tst_readerror.moc"
