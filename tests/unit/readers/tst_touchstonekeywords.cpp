// SPDX-License-Identifier: MIT
#include "readers/ReadError.h"
#include "readers/Touchstone.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <complex>
#include <sstream>
#include <string>

using Charts::Readers::NetworkData;
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

} // namespace

class tst_TouchstoneKeywords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void keywords_data();
    void keywords();
    void modes();
};

void tst_TouchstoneKeywords::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TouchstoneKeywords::keywords_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<Numbers>("reference");
    QTest::addColumn<Entries>("entries");

    const auto row = [](const char *name, const QByteArray &text, const Numbers &reference,
                             const Entries &entries) {
        QTest::newRow(name) << text << reference << entries;
    };
    const QByteArray begin = "[Version] 2.0\n# Hz RI R 75\n";
    const QByteArray one = "[Number of Ports] 1\n[Number of Frequencies] 1\n";
    const QByteArray data = "[Network Data]\n7 0.5 0.25\n";
    const Entries oneEntry{{0.5, 0.25}};
    row("one port", begin + one + data + "[End]\n", {75}, oneEntry);
    row("no end", begin + one + data, {75}, oneEntry);
    row("lines behind the end", begin + one + data + "[End]\n8 1 2 3\n[Nothing]\n", {75}, oneEntry);
    row("version 2.1", "[Version] 2.1\n# Hz RI R 75\n" + one + data + "[End]\n", {75}, oneEntry);
    row("comments", "! a\n\n[Version] 2.0 ! b\n# Hz RI R 75\n!c\n" + one + "!d\n" + data + "!e\n",
            {75}, oneEntry);
    row("cases and spaces",
            "[VERSION]2.0\n# Hz RI R 75\n [number  OF ports]\t1\n[ Number of\tfrequencies ] 1 \n"
            "[network data] ! x\r\n7 0.5 0.25\r\n[END]",
            {75}, oneEntry);
    row("option line behind other keywords", "[Version] 2.0\n" + one + "# Hz RI R 75\n" + data,
            {75}, oneEntry);
    row("information",
            begin + one
                    + "[Begin Information]\n[Manufacturer] x\n# y\n1 2 3\n[Reference] 1\n"
                      "[End Information]\n[Begin Information]\n[end  information]\n"
                    + data,
            {75}, oneEntry);
    row("reference", begin + one + "[Reference] 20.5\n" + data, {20.5}, oneEntry);
    row("reference in the next line", begin + one + "[Reference] ! x\n\n 20.5 ! y\n" + data, {20.5},
            oneEntry);
    row("full", begin + one + "[Matrix Format] full\n" + data, {75}, oneEntry);
    row("noise count", begin + one + "[Number of Noise Frequencies] 0\n" + data, {75}, oneEntry);

    const QByteArray two = begin + "[Number of Ports] 2\n[Number of Frequencies] 1\n";
    const QByteArray twoData = "[Network Data]\n7 1 0 2 0 3 0 4 0\n";
    row("order 12_21", two + "[Two-Port Data Order] 12_21\n" + twoData, {75, 75},
            {{1, 0}, {2, 0}, {3, 0}, {4, 0}});
    row("order 21_12", two + "[Two-Port Data Order] 21_12\n" + twoData, {75, 75},
            {{1, 0}, {3, 0}, {2, 0}, {4, 0}});
    row("order by its other name", two + "[Two-Port Order] 21_12\n" + twoData, {75, 75},
            {{1, 0}, {3, 0}, {2, 0}, {4, 0}});
    row("noise data",
            two + "[Two-Port Data Order] 12_21\n[Number of Noise Frequencies] 2\n" + twoData
                    + "[Noise Data]\n8 1.5 0.3 45 0.4\n9 1.6 0.3 45 0.4\n[End]\n",
            {75, 75}, {{1, 0}, {2, 0}, {3, 0}, {4, 0}});
    row("lower, two ports",
            two
                    + "[Two-Port Data Order] 21_12\n[Matrix Format] Lower\n[Network Data]\n"
                      "7 1 0\n2 0 3 0\n",
            {75, 75}, {{1, 0}, {2, 0}, {2, 0}, {3, 0}});
    row("upper, two ports, no order",
            two + "[Matrix Format] Upper\n[Network Data]\n7 1 0 2 0\n3 0\n", {75, 75},
            {{1, 0}, {2, 0}, {2, 0}, {3, 0}});

    const QByteArray three = begin + "[Number of Ports] 3\n[Number of Frequencies] 1\n";
    const Entries symmetric{
            {11, 1}, {12, 2}, {13, 3}, {12, 2}, {22, 4}, {23, 5}, {13, 3}, {23, 5}, {33, 6}};
    row("lower", three + "[Matrix Format] lower\n[Network Data]\n7 11 1\n12 2 22 4\n13 3 23 5 33 6",
            {75, 75, 75}, symmetric);
    row("upper", three + "[Matrix Format] UPPER\n[Network Data]\n7 11 1 12 2 13 3\n22 4 23 5\n33 6",
            {75, 75, 75}, symmetric);
    row("two-port order of three ports",
            three
                    + "[Two-Port Data Order] 21_12\n[Network Data]\n"
                      "7 11 0 12 0 13 0\n21 0 22 0 23 0\n31 0 32 0 33 0\n",
            {75, 75, 75},
            {{11, 0}, {12, 0}, {13, 0}, {21, 0}, {22, 0}, {23, 0}, {31, 0}, {32, 0}, {33, 0}});
    row("references",
            three
                    + "[Reference] 50 75 0.01\n[Matrix Format] Upper\n[Network Data]\n"
                      "7 11 1 12 2 13 3\n22 4 23 5\n33 6",
            {50, 75, 0.01}, symmetric);
    row("references over lines, before the port count",
            begin
                    + "[Reference] 50\n! x\n75\n\n1D-2\n[Number of Ports] 3\n"
                      "[Number of Frequencies] 1\n[Matrix Format] Upper\n[Network Data]\n"
                      "7 11 1 12 2 13 3\n22 4 23 5\n33 6",
            {50, 75, 0.01}, symmetric);
}

void tst_TouchstoneKeywords::keywords()
{
    QFETCH(QByteArray, text);
    QFETCH(Numbers, reference);
    QFETCH(Entries, entries);

    try {
        // A stated port count has no say in version 2.
        for (const int stated : {0, 4}) {
            const NetworkData network = readText(text, stated);
            QCOMPARE(network.portCount, int(reference.size()));
            QCOMPARE(network.frequency, std::vector<double>{7});
            QVERIFY(network.parameters == std::vector<Complex>(entries.begin(), entries.end()));
            QCOMPARE(network.referenceImpedance,
                    std::vector<double>(reference.begin(), reference.end()));
        }
    } catch (const ReadError &error) {
        QFAIL(error.what());
    }
}

void tst_TouchstoneKeywords::modes()
{
    const NetworkData network = readText("[Version] 2.0\n# Hz RI\n[Number of Ports] 3\n"
                                         "[Number of Frequencies] 1\n[Reference] 75 50 75\n"
                                         "[Matrix Format] Lower\n[Mixed-Mode Order] D3,1 C3,1 S2\n"
                                         "[Network Data]\n1 1 0\n2 0 3 0\n4 0 5 0 6 0\n[End]\n");
    QCOMPARE(network.modes, (std::vector<std::string>{"D3,1", "C3,1", "S2"}));
    QCOMPARE(network.referenceImpedance, (std::vector<double>{75, 50, 75}));
    QVERIFY(network.parameters == (std::vector<Complex>{1, 2, 4, 2, 3, 5, 4, 5, 6}));
}

QTEST_APPLESS_MAIN(tst_TouchstoneKeywords)

#include "tst_touchstonekeywords.moc"
