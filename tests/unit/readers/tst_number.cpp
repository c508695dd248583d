// SPDX-License-Identifier: MIT
#include "readers/Number.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cfloat>

using namespace Charts::Readers;

Q_DECLARE_METATYPE(Charts::Readers::NumberStatus)

class tst_Number : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void finite_data();
    void finite();
    void refused_data();
    void refused();
    void nearestFloat();
};

void tst_Number::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Number::finite_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("comma");
    QTest::addColumn<double>("asDouble");
    QTest::addColumn<float>("asFloat");

    const auto row = [](const char *name, const QByteArray &text, bool comma, double d, float f) {
        QTest::newRow(name) << text << comma << d << f;
    };
    row("integer", "42", false, 42.0, 42.0f);
    row("zero", "0", false, 0.0, 0.0f);
    row("fraction", "-0.245", false, -0.245, -0.245f);
    row("plus", "+1.5", false, 1.5, 1.5f);
    row("no leading digit", ".5", false, 0.5, 0.5f);
    row("no digit behind the point", "5.", false, 5.0, 5.0f);
    row("exponent", "1e3", false, 1000.0, 1000.0f);
    row("exponent with plus", "1.25E+02", false, 125.0, 125.0f);
    row("exponent with minus", "-1.25e-02", false, -0.0125, -0.0125f);
    row("leading zeros", "0007", false, 7.0, 7.0f);
    row("decimal comma", "1,5", true, 1.5, 1.5f);
    row("decimal comma and exponent", "-2,5e-3", true, -0.0025, -0.0025f);
    row("decimal point where a comma may be", "1.5", true, 1.5, 1.5f);
    row("decimal comma in a long number", "1234567890,0123456789012345", true,
            1234567890.0123456789012345, 1234567890.0123456789012345f);
    row("largest float", "3.4028234663852886e38", false, double(FLT_MAX), FLT_MAX);
    row("many digits", QByteArray(200, '0') + "1." + QByteArray(200, '0'), false, 1.0, 1.0f);
    row("tiny for float", "1e-60", false, 1e-60, 0.0f);
    row("subnormal float", "1e-42", false, 1e-42, 1e-42f);
    row("tiny", "1e-400", false, 0.0, 0.0f);
    row("tiny and negative", "-1e-400", false, 0.0, 0.0f);
    row("tiny by an endless exponent", "9e-99999999999999999999999", false, 0.0, 0.0f);
    row("tiny without an exponent", "0." + QByteArray(400, '0') + "1", false, 0.0, 0.0f);
    row("tiny although the digits are many", "1" + QByteArray(400, '0') + "e-900", false, 0.0,
            0.0f);
    row("zero with an endless exponent", "0e99999999999999999999999", false, 0.0, 0.0f);
}

void tst_Number::finite()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, comma);
    QFETCH(double, asDouble);
    QFETCH(float, asFloat);

    const DecimalMark mark = comma ? DecimalMark::PointOrComma : DecimalMark::Point;
    const ParsedNumber<double> d = parseDouble(text.toStdString(), mark);
    QCOMPARE(d.status, NumberStatus::Finite);
    QVERIFY2(d.value == asDouble, QByteArray::number(d.value, 'g', 17).constData());
    const ParsedNumber<float> f = parseFloat(text.toStdString(), mark);
    QCOMPARE(f.status, NumberStatus::Finite);
    QVERIFY2(f.value == asFloat, QByteArray::number(double(f.value), 'g', 17).constData());
}

void tst_Number::refused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("comma");
    QTest::addColumn<NumberStatus>("asDouble");
    QTest::addColumn<NumberStatus>("asFloat");

    const auto row = [](const char *name, const QByteArray &text, bool comma, NumberStatus status) {
        QTest::newRow(name) << text << comma << status << status;
    };
    const NumberStatus no = NumberStatus::NotANumber;
    row("empty", "", false, no);
    row("word", "abc", false, no);
    row("sign", "-", false, no);
    row("plus", "+", false, no);
    row("two signs", "+-1", false, no);
    row("two plus signs", "++1", false, no);
    row("point", ".", false, no);
    row("open exponent", "1e", false, no);
    row("unit", "1.5V", false, no);
    row("leading space", " 1", false, no);
    row("trailing space", "1 ", false, no);
    row("hexadecimal", "0x10", false, no);
    row("decimal comma", "1,5", false, no);
    row("two commas", "1,234,567", true, no);
    row("grouped, comma last", "1.234,5", true, no);
    row("grouped, point last", "1,234.5", true, no);
    row("comma", ",", true, no);
    row("NUL behind", QByteArray("1\0", 2), false, no);
    row("out of range with a unit", "1e999V", false, no);

    row("infinity", "inf", false, NumberStatus::NotFinite);
    row("negative infinity", "-Infinity", false, NumberStatus::NotFinite);
    row("NaN", "nan", false, NumberStatus::NotFinite);

    row("huge", "1e400", false, NumberStatus::OutOfRange);
    row("huge and negative", "-1e400", false, NumberStatus::OutOfRange);
    row("huge by an endless exponent", "1e+99999999999999999999999", false,
            NumberStatus::OutOfRange);
    row("huge without an exponent", QByteArray(400, '9'), false, NumberStatus::OutOfRange);
    row("huge although the exponent is negative", QByteArray(900, '9') + "e-100", false,
            NumberStatus::OutOfRange);
    row("huge although it begins with zeros", "0." + QByteArray(100, '0') + "1e900", false,
            NumberStatus::OutOfRange);
    QTest::newRow("huge for float")
            << QByteArray("1e39") << false << NumberStatus::Finite << NumberStatus::OutOfRange;
}

void tst_Number::refused()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, comma);
    QFETCH(NumberStatus, asDouble);
    QFETCH(NumberStatus, asFloat);

    const DecimalMark mark = comma ? DecimalMark::PointOrComma : DecimalMark::Point;
    QCOMPARE(parseDouble(text.toStdString(), mark).status, asDouble);
    QCOMPARE(parseFloat(text.toStdString(), mark).status, asFloat);
}

void tst_Number::nearestFloat()
{
    // Just above the middle between 1 and the next float: by way of a double, which cannot hold the
    // last digit, it would be rounded to the middle and from there down to 1.
    const ParsedNumber<float> number =
            parseFloat("1.00000005960464477539062500000000001", DecimalMark::Point);
    QCOMPARE(number.status, NumberStatus::Finite);
    QVERIFY(number.value == 1.0f + FLT_EPSILON);
}

QTEST_APPLESS_MAIN(tst_Number)

#include "tst_number.moc"
