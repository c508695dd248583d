// SPDX-License-Identifier: MIT
#include "CpuTimes.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <sstream>

using Gallery::CpuTimes;

class tst_CpuTimes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void read_data();
    void read();
    void load_data();
    void load();
    void loadFromTwoReadings();
    void thisMachine();
};

namespace {

// busy and total of each core
using Times = QList<std::pair<qint64, qint64>>;

Times timesIn(const std::string &text)
{
    std::istringstream statistics(text);
    Times times;
    for (const CpuTimes &core : Gallery::readCpuTimes(statistics))
        times.append({core.busy, core.total});
    return times;
}

} // namespace

void tst_CpuTimes::read_data()
{
    QTest::addColumn<std::string>("text");
    QTest::addColumn<Times>("expected");

    using std::string;
    // user 4705, nice 150, system 1120, idle 162500, iowait 250, irq 5, softirq 130, steal 40, and
    // the guest columns 300 and 10, which user and nice contain:
    // busy 4705 + 150 + 1120 + 5 + 130 + 40, idle 162500 + 250.
    QTest::newRow("a machine") << string("cpu  9410 300 2240 325000 500 10 260 80 600 20\n"
                                         "cpu0 4705 150 1120 162500 250 5 130 40 300 10\n"
                                         "cpu1 1 2 3 4 5 6 7 8 9 10\n"
                                         "intr 123456 9 0 0 0 cpu7 1 2 3\n"
                                         "ctxt 88888\n"
                                         "btime 1700000000\n"
                                         "processes 4242\n"
                                         "procs_running 2\n"
                                         "softirq 777 1 2 3\n")
                               << Times{{6150, 168900}, {27, 36}};
    QTest::newRow("a core is offline") << string("cpu  6 0 0 6 0 0 0 0 0 0\n"
                                                 "cpu0 1 0 0 1 0 0 0 0 0 0\n"
                                                 "cpu2 2 0 0 2 0 0 0 0 0 0\n"
                                                 "cpu3 3 0 0 3 0 0 0 0 0 0\n")
                                       << Times{{1, 2}, {2, 4}, {3, 6}};
    QTest::newRow("many cores") << string("cpu9 1 0 0 0 0 0 0 0 0 0\n"
                                          "cpu10 2 0 0 0 0 0 0 0 0 0\n"
                                          "cpu127 3 0 0 0 0 0 0 0 0 0\n")
                                << Times{{1, 1}, {2, 2}, {3, 3}};
    // Linux 2.4 had four columns, 2.6.11 eight.
    QTest::newRow("four columns") << string("cpu0 10 20 30 40\n") << Times{{60, 100}};
    QTest::newRow("eight columns") << string("cpu0 1 1 1 1 1 1 1 1\n") << Times{{6, 8}};
    QTest::newRow("years of ticks") << string("cpu0 900000000000 0 0 8000000000000 0 0 0 0 0 0\n")
                                    << Times{{900000000000, 8900000000000}};
    QTest::newRow("no line feed at the end")
            << string("cpu0 1 2 3 4 5 6 7 8 9 10") << Times{{27, 36}};
    QTest::newRow("only the sum") << string("cpu  1 2 3 4 5 6 7 8 9 10\n") << Times{};
    QTest::newRow("other names") << string("cpufreq 1 2\ncpu\ncp\n\nxcpu0 1 2 3 4\n") << Times{};
    QTest::newRow("no numbers") << string("cpu0\n") << Times{{0, 0}};
    QTest::newRow("broken off") << string("cpu0 5 x 7 8\n") << Times{{5, 5}};
    QTest::newRow("empty") << string() << Times{};
}

void tst_CpuTimes::read()
{
    QFETCH(std::string, text);
    QFETCH(Times, expected);
    QCOMPARE(timesIn(text), expected);
}

void tst_CpuTimes::load_data()
{
    QTest::addColumn<qint64>("busyBefore");
    QTest::addColumn<qint64>("totalBefore");
    QTest::addColumn<qint64>("busyNow");
    QTest::addColumn<qint64>("totalNow");
    QTest::addColumn<float>("percent");

    const auto row = [](const char *name, qint64 busyBefore, qint64 totalBefore, qint64 busyNow,
                             qint64 totalNow, float percent) {
        QTest::newRow(name) << busyBefore << totalBefore << busyNow << totalNow << percent;
    };
    row("idle", 100, 1000, 100, 1010, 0.0F);
    row("busy", 100, 1000, 110, 1010, 100.0F);
    row("a quarter", 100, 1000, 105, 1020, 25.0F);
    row("one of eight ticks", 7, 70, 8, 78, 12.5F);
    row("since the start", 0, 0, 3, 4, 75.0F);
    row("after years", 900000000000, 8900000000000, 900000000001, 8900000000002, 50.0F);
    row("no time has passed", 100, 1000, 100, 1000, 0.0F);
    row("no time, yet busy", 100, 1000, 105, 1000, 0.0F);
    // The counters began anew: a core was taken offline and came back.
    row("began anew", 100, 1000, 1, 2, 0.0F);
    // Idle and iowait of a core may run backwards by some ticks.
    row("idle fell", 100, 1000, 110, 1008, 100.0F);
    row("busy fell", 100, 1000, 98, 1010, 0.0F);
}

void tst_CpuTimes::load()
{
    QFETCH(qint64, busyBefore);
    QFETCH(qint64, totalBefore);
    QFETCH(qint64, busyNow);
    QFETCH(qint64, totalNow);
    QFETCH(float, percent);
    QCOMPARE(Gallery::loadBetween({busyBefore, totalBefore}, {busyNow, totalNow}), percent);
}

void tst_CpuTimes::loadFromTwoReadings()
{
    std::istringstream first("cpu  0 0 0 0 0 0 0 0 0 0\n"
                             "cpu0 100 0 50 800 50 0 0 0 30 0\n");
    // Ten ticks later: 3 user, 1 softirq, 4 idle, 2 waiting. A guest's ticks count once.
    std::istringstream second("cpu  0 0 0 0 0 0 0 0 0 0\n"
                              "cpu0 103 0 50 804 52 0 1 0 33 0\n");
    const auto before = Gallery::readCpuTimes(first);
    const auto now = Gallery::readCpuTimes(second);
    QCOMPARE(before.size(), 1U);
    QCOMPARE(now.size(), 1U);
    QCOMPARE(Gallery::loadBetween(before[0], now[0]), 40.0F);
}

void tst_CpuTimes::thisMachine()
{
    QFile file(QStringLiteral("/proc/stat"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const std::string text = file.readAll().toStdString();
    const Times times = timesIn(text);
    QVERIFY(!times.isEmpty());
    for (const auto &[busy, total] : times) {
        QCOMPARE_GT(total, 0);
        QCOMPARE_GE(busy, 0);
        QCOMPARE_LE(busy, total);
    }
}

QTEST_GUILESS_MAIN(tst_CpuTimes)

#include "tst_cputimes.moc"
