// SPDX-License-Identifier: MIT
#include "readers/ReadError.h"
#include "readers/Touchstone.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <sstream>

using Charts::Readers::NetworkData;
using Charts::Readers::ReadError;
using Charts::Readers::readTouchstone;

namespace {

constexpr auto Version1 = "! two ports\r\n# MHz S DB R 75\n"
                          "1.5 -20 90 -3D0 -45 -3.0 -45 -20 180 ! first\n"
                          "2E0\t-21 91\t-3 -46 -3 -46\t-21 -179.5\n"
                          "0.5 1.5 0.3 45 0.4\n1 2 0.3 50 0.5\n";

constexpr auto ThreePorts = "# GHz Z RI\n"
                            "1 1.5 0 0.25 0.5 0 0\n0.25 0.5 2 -1 0 0\n0 0 0 0 1 0\n"
                            "2 1.5 1 0.25 0.5 0 0\n0.25 0.5 2 -1 0 0\n0 0 0 0 1 0\n";

constexpr auto Version2 = "[Version] 2.0\n# Hz Y MA\n[Number of Ports] 2\n"
                          "[Two-Port Data Order] 21_12\n[Number of Frequencies] 2\n"
                          "[Number of Noise Frequencies] 1\n[Reference] 50\n 75 ! ohm\n"
                          "[Matrix Format] Lower\n[Begin Information]\nx\n[End Information]\n"
                          "[Network Data]\n1 0.02 0 0.01 180\n0.03 5\n2 0.02 1 0.01 180 0.03 6\n"
                          "[Noise Data]\n1 2 0.5 10 0.4\n[End]\n";

constexpr auto Hybrid = "[Version] 2.1\n# kHz H RI R 10\n[Number of Ports] 2\n"
                        "[Two-Port Order] 12_21\n[Number of Frequencies] 1\n"
                        "[Matrix Format] Full\n[Network Data]\n0 10 0 1 0 -1 0 0 0\n[End]";

/// What a network promises whatever it was read from; empty if it holds.
QByteArray brokenPromise(const NetworkData &network)
{
    const auto ports = std::size_t(network.portCount);
    if (network.portCount < 1 || network.frequency.empty())
        return "nothing read";
    if (network.parameters.size() != network.frequency.size() * ports * ports)
        return "wrong count of parameters";
    if (network.referenceImpedance.size() != ports)
        return "wrong count of references";
    if (!network.modes.empty() && network.modes.size() != ports)
        return "wrong count of modes";
    for (const double resistance : network.referenceImpedance) {
        if (!(resistance > 0) || !std::isfinite(resistance))
            return "bad reference";
    }
    if (!(network.frequency.front() >= 0) || !std::isfinite(network.frequency.back()))
        return "bad frequency";
    if (std::adjacent_find(
                network.frequency.begin(), network.frequency.end(), std::greater_equal<>())
            != network.frequency.end()) {
        return "frequency not increasing";
    }
    for (const std::complex<double> &value : network.parameters) {
        if (!std::isfinite(value.real()) || !std::isfinite(value.imag()))
            return "parameter not finite";
    }
    return {};
}

} // namespace

class tst_TouchstoneFuzz : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void prefixes_data();
    void prefixes();
    void mutations_data();
    void mutations();
    void noise();

private:
    void read(const QByteArray &text, int portCount);

    int m_accepted = 0;
    int m_refused = 0;
};

void tst_TouchstoneFuzz::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    m_accepted = 0;
    m_refused = 0;
}

void tst_TouchstoneFuzz::read(const QByteArray &text, int portCount)
{
    std::istringstream input(text.toStdString());
    try {
        const NetworkData network = readTouchstone(input, "fuzz", portCount);
        const QByteArray broken = brokenPromise(network);
        QVERIFY2(broken.isEmpty(), (broken + ": " + text).constData());
        ++m_accepted;
    } catch (const ReadError &error) {
        const QByteArray message(error.what());
        QVERIFY2(message.startsWith("fuzz:") && !message.contains('\n') && message.size() < 200,
                (message + ": " + text).constData());
        QVERIFY2(int(error.line()) <= text.count('\n') + 1, message.constData());
        ++m_refused;
    }
}

void tst_TouchstoneFuzz::prefixes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("portCount");

    QTest::newRow("two ports with noise") << QByteArray(Version1) << 2;
    QTest::newRow("impedances of three ports") << QByteArray(ThreePorts) << 3;
    QTest::newRow("keywords") << QByteArray(Version2) << 0;
    QTest::newRow("hybrid parameters") << QByteArray(Hybrid) << 0;
}

void tst_TouchstoneFuzz::prefixes()
{
    QFETCH(QByteArray, text);
    QFETCH(int, portCount);

    for (qsizetype length = 0; length <= text.size(); ++length) {
        read(text.first(length), portCount);
        if (QTest::currentTestFailed())
            return;
    }
    // The whole text is data, and nothing but the header is none.
    QVERIFY(m_accepted > 0);
    QVERIFY(m_refused > 20);
}

void tst_TouchstoneFuzz::mutations_data()
{
    prefixes_data();
}

/// A byte replaced, inserted or removed, by random and by those that have a meaning.
void tst_TouchstoneFuzz::mutations()
{
    QFETCH(QByteArray, text);
    QFETCH(int, portCount);

    constexpr auto meaningful = "!#[] \t\r\n.,+-0159eEdDRSZ_";
    QRandomGenerator random(7);
    for (int i = 0; i < 4000; ++i) {
        QByteArray changed = text;
        const int changes = 1 + i % 3;
        for (int change = 0; change < changes; ++change) {
            const char byte = random.bounded(4) == 0
                                      ? char(random.bounded(256))
                                      : meaningful[random.bounded(int(qstrlen(meaningful)))];
            const qsizetype position = random.bounded(int(changed.size()));
            switch (random.bounded(3)) {
            case 0:
                changed[position] = byte;
                break;
            case 1:
                changed.insert(position, byte);
                break;
            default:
                changed.remove(position, 1);
            }
        }
        read(changed, portCount);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(m_accepted > 100);
    QVERIFY(m_refused > 100);
}

/// Bytes without any sense.
void tst_TouchstoneFuzz::noise()
{
    QRandomGenerator random(8);
    for (int i = 0; i < 2000; ++i) {
        QByteArray text(random.bounded(200), '\0');
        for (char &byte : text)
            byte = char(random.bounded(1, 256));
        read((i % 2 == 0 ? "# Hz\n" : "") + text, 2);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(m_refused > 1900);
}

QTEST_APPLESS_MAIN(tst_TouchstoneFuzz)

#include "tst_touchstonefuzz.moc"
