// SPDX-License-Identifier: MIT
#include "Program.h"
#include "SignalSource.h"

#include <QtCore/QDir>
#include <QtCore/QHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <vector>

// What the frame benchmarks count, which is exact. How long anything took is asked of a quiet machine
// in a release build, never here.
class tst_FrameBenchmark : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void newPointsAreNew_data();
    void newPointsAreNew();
    void counters_data();
    void counters();
    void graphics_data();
    void graphics();
    void samples_data();
    void samples();
    void repeatsTheOptions();
    void peers_data();
    void peers();
    void help();
    void refusals_data();
    void refusals();
};

namespace {

constexpr int pointSize = 12;
constexpr int appended = 1000;

/*! Numbers a frame, by their names in the report. */
using Counters = QHash<QString, double>;

Counters counters(double draws, double bytes, double passes, double readBacks)
{
    return {
            {QStringLiteral("draw_calls"), draws},
            {QStringLiteral("uploaded_bytes"), bytes},
            {QStringLiteral("allocated_bytes"), 0.0},
            {QStringLiteral("passes"), passes},
            {QStringLiteral("read_backs"), readBacks},
    };
}

Counters countersOf(const QJsonObject &report)
{
    Counters found;
    for (const char *name :
            {"draw_calls", "uploaded_bytes", "allocated_bytes", "passes", "read_backs"}) {
        const QString key = QLatin1String(name);
        found.insert(key, report.value(key).toDouble(-1.0));
    }
    return found;
}

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

ProgramResult run(const char *program, const QStringList &arguments)
{
    return runProgram(QString::fromUtf8(program), arguments, QDir::tempPath(),
            QProcessEnvironment::systemEnvironment());
}

/*! The report of a run that has to succeed; empty when it did not. */
QJsonObject report(const char *program, const QStringList &arguments)
{
    const QStringList small = words("--size 200x150 --blocks 2");
    const ProgramResult result = run(program, small + arguments);
    if (result.exitCode != 0 || result.output.count(u'\n') != 1 || !result.output.endsWith(u'\n')) {
        qWarning("exit code %d, %s%s", result.exitCode, qPrintable(result.output),
                qPrintable(result.errors));
        return {};
    }
    return QJsonDocument::fromJson(result.output.toUtf8()).object();
}

} // namespace

void tst_FrameBenchmark::newPointsAreNew_data()
{
    QTest::addColumn<BenchmarkOptions::Mode>("mode");
    QTest::addColumn<int>("points");
    for (const int points : {1000, 2500, 65536, 100000, 1000000}) {
        QTest::addRow("append, %d points", points) << BenchmarkOptions::Mode::Append << points;
        QTest::addRow("rewrite, %d points", points) << BenchmarkOptions::Mode::Rewrite << points;
    }
}

/*! Who draws only what has changed must not get away with drawing nothing. Values that are equal by
    chance are few: noise has been added to them. */
void tst_FrameBenchmark::newPointsAreNew()
{
    BenchmarkOptions options;
    QFETCH(BenchmarkOptions::Mode, mode);
    QFETCH(int, points);
    options.mode = mode;
    options.points = points;
    SignalSource source(options, 0);
    std::vector<float> values(static_cast<std::size_t>(points));
    bool isInRange = true;
    // How many values the pieces of a frame change.
    const auto write = [&](const SignalSource::Frame &frame) {
        int changed = 0;
        for (const SignalSource::Piece &piece : frame.written) {
            for (int i = 0; i < piece.length; ++i) {
                float &value = values.at(static_cast<std::size_t>(piece.first + i));
                const float written = source.valueAt(piece.sample + i);
                isInRange = isInRange && std::abs(written) <= 1.0F;
                changed += value < written || written < value ? 1 : 0;
                value = written;
            }
        }
        return changed;
    };
    write(source.begin());
    const int expected = mode == BenchmarkOptions::Mode::Append ? appended : points;
    for (int i = 0; i < 5; ++i) {
        const int changed = write(source.next());
        QVERIFY2(changed > 0.98 * expected, qPrintable(QString::number(changed)));
        QVERIFY(changed <= expected);
    }
    QVERIFY(isInRange);
}

void tst_FrameBenchmark::counters_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("program");
    QTest::addColumn<Counters>("expected");

    const auto row = [](const char *arguments, const char *program, const Counters &expected) {
        QTest::newRow(arguments) << words(arguments) << QString::fromUtf8(program) << expected;
    };
    // Only what is new is uploaded, however long the trace. A ring of 2500 points wraps in the middle
    // of a frame, one of 2000 between frames, and one of 1000 is written as a whole.
    row("--mode append --points 20000 --frames 6", "charts",
            ::counters(1, pointSize * appended, 1, 0));
    row("--mode append --points 2500 --frames 10 --traces 3", "charts",
            ::counters(3, 3 * pointSize * appended, 1, 0));
    row("--mode append --points 2000 --frames 6", "charts",
            ::counters(1, pointSize * appended, 1, 0));
    row("--mode append --points 1000 --frames 5", "charts",
            ::counters(1, pointSize * appended, 1, 0));
    row("--mode rewrite --points 5000 --frames 5 --traces 2", "charts",
            ::counters(2, 2 * 5000 * pointSize, 1, 0));
    row("--mode static --points 5000 --frames 5 --traces 3", "charts", ::counters(3, 0, 1, 0));
    // More frames than the visible tenth has room to move: it starts anew.
    row("--mode pan --points 3000 --frames 10 --traces 2", "charts", ::counters(2, 0, 1, 0));
    row("--mode idle --points 2000 --frames 5 --traces 3", "charts", ::counters(0, 0, 0, 0));
    row("--mode idle --points 2000 --frames 5 --traces 0", "charts", ::counters(0, 0, 0, 0));
    row("--mode append --points 2000 --frames 5 --traces 0", "charts", ::counters(0, 0, 0, 0));
    row("--mode hover --points 2000 --frames 10", "charts", ::counters(0, 0, 0, 1));
    row("--mode hover --points 2000 --frames 10 --traces 3", "charts", ::counters(0, 0, 0, 1));
    row("--mode grid --points 2000 --frames 5", "charts", ::counters(0, 0, 0, 0));
    row("--mode append --points 2000 --frames 5 --empty", "empty window", ::counters(0, 0, 0, 0));
    // The bare calls do the same work as the chart.
    row("--floor --mode append --points 2500 --frames 10 --traces 3", "floor",
            ::counters(3, 3 * pointSize * appended, 1, 0));
    row("--floor --mode rewrite --points 5000 --frames 5 --traces 2", "floor",
            ::counters(2, 2 * 5000 * pointSize, 1, 0));
    row("--floor --mode static --points 5000 --frames 5 --traces 3", "floor",
            ::counters(3, 0, 1, 0));
    row("--floor --mode pan --points 3000 --frames 10 --traces 2", "floor", ::counters(2, 0, 1, 0));
    row("--floor --mode idle --points 2000 --frames 5", "floor", ::counters(0, 0, 0, 0));
    row("--floor --mode append --points 2000 --frames 5 --empty", "empty floor",
            ::counters(0, 0, 0, 0));
}

void tst_FrameBenchmark::counters()
{
    QFETCH(QStringList, arguments);
    const QJsonObject line = report(FRAME_BENCHMARK, arguments);
    QTEST(line.value(QStringLiteral("program")).toString(), "program");
    QTEST(countersOf(line), "expected");
    // A line that nobody sees may cost nothing; so what the window shows is drawn as well.
    const bool isInWindow = line.value(QStringLiteral("program")) == QStringLiteral("charts");
    const bool hasPicture = !arguments.join(u' ').endsWith(QStringLiteral("--traces 0"));
    if (isInWindow && hasPicture)
        QVERIFY(line.value(QStringLiteral("all_draw_calls")).toDouble()
                > line.value(QStringLiteral("draw_calls")).toDouble());
}

void tst_FrameBenchmark::graphics_data()
{
    QTest::addColumn<QStringList>("arguments");
    for (const char *arguments : {"--gl compat", "--gl core", "--gl es", "--gl compat --floor",
                 "--gl core --floor", "--gl es --floor"})
        QTest::newRow(arguments) << words(arguments);
}

void tst_FrameBenchmark::graphics()
{
    QFETCH(QStringList, arguments);
    const QJsonObject line =
            report(FRAME_BENCHMARK, arguments + words("--mode append --points 2500 --frames 5"));
    QCOMPARE(line.value(QStringLiteral("gl")).toString(), arguments.at(1));
    QVERIFY(!line.value(QStringLiteral("renderer")).toString().isEmpty());
    QCOMPARE(countersOf(line), ::counters(1, pointSize * appended, 1, 0));
}

void tst_FrameBenchmark::samples_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("chart") << QStringList();
    QTest::newRow("floor") << words("--floor");
}

void tst_FrameBenchmark::samples()
{
    QFETCH(QStringList, arguments);
    arguments += words("--mode static --points 2000 --frames 5");
    const QString samples = QStringLiteral("samples");
    const QJsonObject on = report(FRAME_BENCHMARK, arguments + words("--samples on"));
    QVERIFY2(on.value(samples).toInt() > 1, QJsonDocument(on).toJson());
    const QJsonObject off = report(FRAME_BENCHMARK, arguments + words("--samples off"));
    QCOMPARE(off.value(samples).toInt(-1), 0);
    for (const QJsonObject &line : {on, off})
        QCOMPARE(countersOf(line), ::counters(1, 0, 1, 0));
}

void tst_FrameBenchmark::repeatsTheOptions()
{
    const QJsonObject line = report(FRAME_BENCHMARK,
            words("--mode rewrite --points 2001 --traces 2 --frames 7 --blocks 3 --size 201x151"));
    const QJsonObject options = {
            {QStringLiteral("mode"), QStringLiteral("rewrite")},
            {QStringLiteral("points"), 2001},
            {QStringLiteral("traces"), 2},
            {QStringLiteral("frames"), 7},
            {QStringLiteral("blocks"), 3},
            {QStringLiteral("size"), QStringLiteral("201x151")},
            {QStringLiteral("gl"), QStringLiteral("compat")},
    };
    for (auto option = options.begin(); option != options.end(); ++option)
        QCOMPARE(line.value(option.key()), option.value());
    for (const char *time : {"cpu_ms", "cpu_user_ms", "cpu_system_ms", "cpu_render_thread_ms"})
        QVERIFY2(line.value(QLatin1String(time)).toDouble(-1.0) >= 0.0, time);
    // These pass or are there even where a clock is too coarse to see the work.
    for (const char *amount :
            {"wall_median_ms", "wall_p99_ms", "first_frame_ms", "heap_bytes", "peak_memory_kib"})
        QVERIFY2(line.value(QLatin1String(amount)).toDouble() > 0.0, amount);
    QVERIFY(line.value(QStringLiteral("wall_p99_ms")).toDouble()
            >= line.value(QStringLiteral("wall_median_ms")).toDouble());
}

void tst_FrameBenchmark::peers_data()
{
    if (QLatin1String(PEER_BENCHMARK).isEmpty())
        QSKIP("built without Qt Charts");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("isDrawnAnew");
    QTest::addColumn<int>("draws");

    const auto row = [](const char *arguments, const char *program, bool isDrawnAnew, int draws) {
        QTest::newRow(arguments) << words(arguments) << QString::fromUtf8(program) << isDrawnAnew
                                 << draws;
    };
    row("--mode append", "qt charts", true, 0);
    row("--mode static", "qt charts", true, 0);
    row("--mode pan", "qt charts", true, 0);
    row("--mode idle", "qt charts", false, 0);
    row("--mode append --opengl", "qt charts opengl", true, 2);
    row("--mode static --opengl", "qt charts opengl", true, 2);
    row("--mode pan --opengl", "qt charts opengl", true, 2);
    row("--mode idle --opengl", "qt charts opengl", false, 0);
    row("--mode append --empty", "empty window", false, 0);
}

/*! What others upload is theirs; but each frame has to have its own picture, be it an image or one
    drawn with OpenGL. */
void tst_FrameBenchmark::peers()
{
    QFETCH(QStringList, arguments);
    const QJsonObject line =
            report(PEER_BENCHMARK, arguments + words("--points 2500 --frames 5 --traces 2"));
    QTEST(line.value(QStringLiteral("program")).toString(), "program");
    QTEST(line.value(QStringLiteral("draw_calls")).toInt(-1), "draws");
    const bool isImage =
            line.value(QStringLiteral("all_texture_bytes")).toDouble() >= 200 * 150 * 4;
    const bool isDrawn = line.value(QStringLiteral("passes")).toDouble() >= 1.0;
    QTEST(isImage || isDrawn, "isDrawnAnew");
}

void tst_FrameBenchmark::help()
{
    const ProgramResult result = run(FRAME_BENCHMARK, words("--help"));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    for (const char *option : {"--points", "--traces", "--frames", "--blocks", "--mode", "--size",
                 "--samples", "--gl", "--floor", "--empty"})
        QVERIFY2(result.output.contains(QLatin1String(option)), option);
}

void tst_FrameBenchmark::refusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");

    const auto row = [](const char *arguments, const char *named) {
        QTest::newRow(arguments) << words(arguments) << QString::fromUtf8(named);
    };
    row("--wrong", "wrong");
    row("stray", "'stray'");
    row("--mode append stray", "'stray'");
    row("--points", "points");
    row("--points many", "--points 'many'");
    row("--points 1", "--points '1'");
    row("--points -5", "--points '-5'");
    row("--points 100000001", "--points '100000001'");
    row("--points 99999999999999999999", "--points");
    row("--points 10.5", "--points '10.5'");
    row("--traces -1", "--traces '-1'");
    row("--frames 0", "--frames '0'");
    row("--blocks 0", "--blocks '0'");
    row("--blocks 6 --frames 5", "--blocks");
    row("--size 200", "--size '200'");
    row("--size 200x", "--size '200x'");
    row("--size 0x150", "--size '0x150'");
    row("--size 200x-1", "--size '200x-1'");
    row("--size 8193x10", "--size '8193x10'");
    row("--size 1x2x3", "--size '1x2x3'");
    row("--mode wild", "--mode 'wild'");
    row("--samples 4", "--samples '4'");
    row("--gl vulkan", "--gl 'vulkan'");
    row("--mode append --points 999", "--points");
    row("--points 1000000 --traces 101", "--points, --traces");
    row("--floor --mode hover", "--floor");
    row("--floor --mode grid", "--floor");
    row("--floor --decimated", "--floor");
}

void tst_FrameBenchmark::refusals()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const ProgramResult result = run(FRAME_BENCHMARK, arguments);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.output, QString());
    QVERIFY2(result.errors.startsWith(QStringLiteral("frame_benchmark: ")),
            qPrintable(result.errors));
    QVERIFY2(result.errors.contains(named), qPrintable(result.errors));
    QCOMPARE(result.errors.count(u'\n'), 1);
    QVERIFY(result.errors.endsWith(u'\n'));
}

QTEST_GUILESS_MAIN(tst_FrameBenchmark)
#include "tst_framebenchmark.moc"
