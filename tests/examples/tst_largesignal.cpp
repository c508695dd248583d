// SPDX-License-Identifier: MIT
#include "LargeSignal.h"
#include "LargeTrace.h"
#include "Recording.h"
#include "TestSignal.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Charts;

/*! The ten million samples of the gallery's page: how they are made, kept and continued. */
class tst_LargeSignal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void ringOfSamples();
    void signalInPieces();
    void signalOfTenMillion();
    void made();
    void leftWhileBeingMade();
    void appends();
};

namespace {

constexpr int patience = 20'000; // milliseconds

/*! A sample of every value once, so that it is known from its value. */
float valueOf(std::size_t index)
{
    return static_cast<float>(index * 7919 % 100'003);
}

} // namespace

void tst_LargeSignal::ringOfSamples()
{
    Gallery::Recording recording(1000);
    QCOMPARE(recording.storage().size(), std::size_t(1000));
    std::vector<float> all;
    for (const std::size_t length : {1, 0, 998, 1, 1, 500, 999, 1000, 1001, 2500, 3}) {
        std::vector<float> samples(length);
        for (float &sample : samples) {
            sample = valueOf(all.size());
            all.push_back(sample);
        }
        recording.append(samples);
        QCOMPARE(recording.end(), all.size());
        QCOMPARE(recording.begin(), all.size() - std::min<std::size_t>(all.size(), 1000));
        for (std::size_t i = recording.begin(); i < recording.end(); ++i)
            QCOMPARE(recording.storage()[i % 1000], all[i]);
    }
}

void tst_LargeSignal::signalInPieces()
{
    std::vector<float> whole(50'000);
    Gallery::TestSignal().read(whole);
    Gallery::TestSignal signal;
    std::vector<float> pieces;
    for (std::size_t length = 1; pieces.size() < whole.size(); length = length * 3 % 4001) {
        std::vector<float> piece(std::min(length, whole.size() - pieces.size()));
        signal.read(piece);
        pieces.insert(pieces.end(), piece.begin(), piece.end());
    }
    QVERIFY(pieces == whole);
}

void tst_LargeSignal::signalOfTenMillion()
{
    Gallery::TestSignal signal;
    std::vector<float> samples(100'000);
    std::vector<std::size_t> spikes;
    std::size_t missing = 0;
    for (std::size_t begin = 0; begin < 10'000'000; begin += samples.size()) {
        signal.read(samples);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const float sample = samples[i];
            missing += std::isnan(sample) ? 1 : 0;
            if (sample == Gallery::TestSignal::SpikeHeight)
                spikes.push_back(begin + i);
            else if (!std::isnan(sample) && (sample < Gallery::TestSignal::Lowest || sample > 4.0F))
                QFAIL(qPrintable(QString::number(sample)));
        }
    }
    QCOMPARE(missing, std::size_t(150'000));
    QCOMPARE(spikes.size(), std::size_t(8));
    for (std::size_t i = 0; i < spikes.size(); ++i)
        QCOMPARE(spikes[i], 700'001 + i * 1'234'567);
}

void tst_LargeSignal::made()
{
    Gallery::LargeSignal signal;
    QVERIFY(!signal.isReady());
    QSignalSpy ready(&signal, &Gallery::LargeSignal::readyChanged);
    Gallery::LargeTrace &trace = *signal.trace();
    QCOMPARE(signal.traces(), QList<Gallery::LargeTrace *>{&trace});
    trace.domain()->setSize({1000.0, 400.0});
    QVERIFY(ready.wait(patience));
    QVERIFY(signal.isReady());
    trace.updateData();
    QCOMPARE(trace.visibleSamples(), 1e7);
    QVERIFY(trace.vertexCount() > 1900 && trace.vertexCount() <= 2004);
    // The eight spikes are among them.
    QCOMPARE(std::count_if(trace.traceData()->array().begin(), trace.traceData()->array().end(),
                     [](const TracePoint &point) { return point.y == 5.5F; }),
            8);
}

void tst_LargeSignal::leftWhileBeingMade()
{
    for (int i = 0; i < 3; ++i)
        Gallery::LargeSignal();
    QCoreApplication::processEvents();
}

void tst_LargeSignal::appends()
{
    Gallery::LargeSignal signal;
    QSignalSpy ready(&signal, &Gallery::LargeSignal::readyChanged);
    TraceDomain &domain = *signal.trace()->domain();
    domain.setSize({1000.0, 400.0});
    const std::vector<float> samples(25'000, 1.0F);
    signal.append(samples); // has nothing to be appended to
    QCOMPARE(domain.xRange(), Span(0.0, 1e7));
    QVERIFY(ready.wait(patience));

    // A column is 10000 samples wide: by two whole ones.
    signal.append(samples);
    QCOMPARE(domain.xRange(), Span(20'000.0, 10'020'000.0));
    QCOMPARE(domain.baseXRange(), Span(20'000.0, 10'020'000.0));
    signal.trace()->updateData();
    QVERIFY(signal.trace()->visibleSamples() >= 9'995'000.0);

    // In a zoom to the end the view moves along, 100 samples a column.
    domain.zoomIn(Span(9'925'000.0, 10'025'000.0), domain.yRange());
    signal.append(samples);
    QCOMPARE(domain.xRange(), Span(9'950'000.0, 10'050'000.0));
    QCOMPARE(domain.baseXRange(), Span(50'000.0, 10'050'000.0));
    // One to the middle stays.
    domain.zoomIn(Span(5'000'000.0, 5'100'000.0), domain.yRange());
    signal.append(samples);
    QCOMPARE(domain.xRange(), Span(5'000'000.0, 5'100'000.0));
    // One to the beginning does not show what is forgotten.
    domain.zoomIn(Span(80'000.0, 180'000.0), domain.yRange());
    signal.append(samples);
    QCOMPARE(domain.xRange(), Span(100'000.0, 200'000.0));
    domain.zoomReset();
    QCOMPARE(domain.xRange(), Span(100'000.0, 10'100'000.0));

    QSignalSpy live(&signal, &Gallery::LargeSignal::liveChanged);
    signal.setLive(true);
    signal.setLive(true);
    QCOMPARE(live.size(), 1);
    QVERIFY(signal.isLive());
    QTRY_VERIFY_WITH_TIMEOUT(domain.xRange().max > 10'110'000.0, patience);
    signal.setLive(false);
    QCOMPARE(live.size(), 2);
    const Span stopped = domain.xRange();
    QTest::qWait(100);
    QCOMPARE(domain.xRange(), stopped);
}

QTEST_GUILESS_MAIN(tst_LargeSignal)

#include "tst_largesignal.moc"
