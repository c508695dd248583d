// SPDX-License-Identifier: MIT
#include "TouchstonePromises.h"

#include "readers/ReadError.h"
#include "readers/Touchstone.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <sstream>

using Charts::Readers::ReadError;
using Charts::Readers::readTouchstone;

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
    std::string broken;
    try {
        broken = brokenPromise(readTouchstone(input, "fuzz", portCount));
        ++m_accepted;
    } catch (const ReadError &error) {
        broken = brokenPromise(error, "fuzz", text.toStdString());
        ++m_refused;
    }
    QVERIFY2(broken.empty(), (QByteArray::fromStdString(broken) + ": " + text).constData());
}

void tst_TouchstoneFuzz::prefixes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("portCount");

    const auto row = [](const char *name, int portCount) {
        QFile file(QDir(QStringLiteral(SEEDS)).filePath(QString::fromLatin1(name)));
        QVERIFY2(file.open(QIODevice::ReadOnly), name);
        QTest::newRow(name) << file.readAll() << portCount;
    };
    row("two_ports_noise.s2p", 2);
    row("impedances.s3p", 3);
    row("keywords.ts", 0);
    row("hybrid.ts", 0);
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
