// SPDX-License-Identifier: MIT
#include "LadderFilter.h"
#include "NetworkPlot.h"
#include "ReadableRange.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <memory>

using Charts::Span;
using Charts::TraceDomain;
using Charts::TracePoint;
using Charts::Readers::NetworkData;
using Gallery::NetworkPlot;
using Gallery::StaticTrace;

class tst_NetworkPlot : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void twoPorts();
    void onePort();
    void manyPorts();
    void modes();
    void frequencyUnits_data();
    void frequencyUnits();
    void scaleAndFlip();
    void otherSource();
    void viewPorts();
    void readableRanges_data();
    void readableRanges();

private:
    /*! All parameters 1, unless told otherwise. */
    static NetworkData network(int portCount, std::vector<double> frequencies)
    {
        NetworkData data;
        data.portCount = portCount;
        data.parameters.resize(
                frequencies.size() * std::size_t(portCount) * std::size_t(portCount), 1.0);
        data.frequency = std::move(frequencies);
        return data;
    }
    static void show(NetworkData data)
    {
        NetworkPlot::setSources({{QStringLiteral("network"),
                std::make_shared<const NetworkData>(std::move(data))}});
    }
    static QStringList namesOf(const QList<StaticTrace *> &traces)
    {
        QStringList names;
        for (const StaticTrace *trace : traces)
            names.append(trace->name());
        return names;
    }
};

void tst_NetworkPlot::twoPorts()
{
    NetworkData data = network(2, {1e9, 2e9, 4e9});
    using namespace std::complex_literals;
    data.parameters = {0.5, 0.1i, 0.2, -0.5, /**/ 0.25i, 1.0, 0.01, 0.0, /**/ 1.0, 2.0, 3.0, 4.0};
    show(data);
    const NetworkPlot plot;
    QCOMPARE(plot.sources(), QStringList{QStringLiteral("network")});
    QCOMPARE(namesOf(plot.magnitudes()), (QStringList{QStringLiteral("S11"), QStringLiteral("S12"),
                                                 QStringLiteral("S21"), QStringLiteral("S22")}));
    QCOMPARE(namesOf(plot.reflections()),
            (QStringList{QStringLiteral("S11"), QStringLiteral("S22")}));
    QCOMPARE(namesOf(plot.phasors()), namesOf(plot.magnitudes()));
    QCOMPARE(plot.frequencyUnit(), QStringLiteral("GHz"));

    const auto &s21 = plot.magnitudes()[2]->traceData()->array();
    QCOMPARE(s21.size(), std::size_t(3));
    const std::vector<std::pair<float, float>> expected = {
            {1.0F, -13.9794F}, {2.0F, -40.0F}, {4.0F, 9.542425F}};
    for (std::size_t i = 0; i < 3; ++i) {
        QCOMPARE(s21[i].x, expected[i].first);
        QVERIFY(std::abs(s21[i].y - expected[i].second) < 1e-4F);
        QCOMPARE(s21[i].opacity, 1.0F);
    }
    const auto &s11 = plot.reflections()[0]->traceData()->array();
    QCOMPARE(s11[1].x, 0.0F);
    QCOMPARE(s11[1].y, 0.25F);
    QCOMPARE(plot.phasors()[1]->traceData()->array()[0].y, 0.1F);

    const TraceDomain &magnitude = *plot.magnitudes()[0]->domain();
    QCOMPARE(magnitude.format(), TraceDomain::XYFormat);
    QCOMPARE(magnitude.xRange(), Span(1.0, 4.0));
    // S22 is 0 at 2 GHz, and S22 is 4 at 4 GHz, 12 dB; 120 dB are shown, and a margin.
    QVERIFY(magnitude.minY() <= -108.0 && magnitude.minY() >= -130.0);
    QVERIFY(magnitude.maxY() >= 12.1 && magnitude.maxY() <= 30.0);
    QVERIFY(plot.magnitudeBands() >= 5 && plot.magnitudeBands() <= 13);
    for (const StaticTrace *trace : plot.magnitudes())
        QCOMPARE(trace->domain()->yRange(), magnitude.yRange());
    QCOMPARE(plot.reflections()[0]->domain()->format(), TraceDomain::SmithFormat);
    QCOMPARE(plot.reflections()[0]->domain()->argRange(), Span(1e9, 4e9));
    QCOMPARE(plot.phasors()[0]->domain()->format(), TraceDomain::PolarFormat);
    QCOMPARE(plot.reflections()[0]->color(), plot.magnitudes()[0]->color());
    QVERIFY(plot.magnitudes()[0]->color() != plot.magnitudes()[3]->color());
}

void tst_NetworkPlot::onePort()
{
    show(network(1, {50.0}));
    const NetworkPlot plot;
    QCOMPARE(namesOf(plot.magnitudes()), QStringList{QStringLiteral("S11")});
    QCOMPARE(namesOf(plot.reflections()), QStringList{QStringLiteral("S11")});
    QCOMPARE(namesOf(plot.phasors()), QStringList{QStringLiteral("S11")});
    // A single frequency still has a range around it.
    QCOMPARE(plot.magnitudes()[0]->domain()->xRange(), Span(49.5, 50.5));
}

void tst_NetworkPlot::manyPorts()
{
    show(network(12, {1.0, 2.0}));
    const NetworkPlot plot;
    QCOMPARE(plot.magnitudes().size(), 144);
    QCOMPARE(plot.reflections().size(), 12);
    QCOMPARE(plot.phasors().size(), 144);
    QCOMPARE(plot.magnitudes()[1]->name(), QStringLiteral("S1,2"));
    QCOMPARE(plot.magnitudes()[143]->name(), QStringLiteral("S12,12"));
}

void tst_NetworkPlot::modes()
{
    NetworkData data = network(2, {1.0, 2.0});
    data.modes = {"D1,2", "C1,2"};
    show(data);
    const NetworkPlot plot;
    QCOMPARE(plot.magnitudes()[1]->name(), QStringLiteral("S D1,2 C1,2"));
}

void tst_NetworkPlot::frequencyUnits_data()
{
    QTest::addColumn<double>("highest");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<double>("shown");
    QTest::newRow("Hz") << 999.0 << QStringLiteral("Hz") << 999.0;
    QTest::newRow("kHz") << 1e3 << QStringLiteral("kHz") << 1.0;
    QTest::newRow("MHz") << 450e6 << QStringLiteral("MHz") << 450.0;
    QTest::newRow("GHz") << 190e9 << QStringLiteral("GHz") << 190.0;
}

void tst_NetworkPlot::frequencyUnits()
{
    QFETCH(const double, highest);
    QFETCH(const QString, unit);
    QFETCH(const double, shown);
    show(network(1, {0.0, highest}));
    const NetworkPlot plot;
    QCOMPARE(plot.frequencyUnit(), unit);
    QCOMPARE(plot.magnitudes()[0]->domain()->xRange(), Span(0.0, shown));
    QCOMPARE(plot.magnitudes()[0]->traceData()->array()[1].x, static_cast<float>(shown));
}

void tst_NetworkPlot::scaleAndFlip()
{
    show(network(2, {1.0, 2.0}));
    NetworkPlot plot;
    QSignalSpy scaled(&plot, &NetworkPlot::scaleChanged);
    QSignalSpy flipped(&plot, &NetworkPlot::flipChanged);
    QCOMPARE(plot.reflections()[0]->domain()->xRange(), Span(-1.0, 1.0));
    plot.setScale(2.5);
    plot.setScale(2.5);
    QCOMPARE(scaled.size(), 1);
    for (const StaticTrace *trace : {plot.reflections()[1], plot.phasors()[1]}) {
        QCOMPARE(trace->domain()->xRange(), Span(-2.5, 2.5));
        QCOMPARE(trace->domain()->yRange(), Span(-2.5, 2.5));
    }
    plot.setFlip(true);
    plot.setFlip(true);
    QCOMPARE(flipped.size(), 1);
    QVERIFY(plot.reflections()[0]->domain()->isLeftSmith());
    QVERIFY(!plot.phasors()[0]->domain()->isLeftSmith());
}

void tst_NetworkPlot::otherSource()
{
    const auto one = std::make_shared<const NetworkData>(network(1, {1.0, 2.0}));
    const auto three = std::make_shared<const NetworkData>(network(3, {1e6, 2e6}));
    NetworkPlot::setSources({{QStringLiteral("one"), one}, {QStringLiteral("three"), three}});
    NetworkPlot plot;
    plot.setScale(2.0);
    plot.setFlip(true);
    QSignalSpy changed(&plot, &NetworkPlot::tracesChanged);
    const QPointer<StaticTrace> before = plot.magnitudes()[0];
    plot.setCurrentSource(1);
    QCOMPARE(changed.size(), 1);
    QVERIFY(!before);
    QCOMPARE(plot.magnitudes().size(), 9);
    QCOMPARE(plot.frequencyUnit(), QStringLiteral("MHz"));
    QCOMPARE(plot.reflections()[2]->domain()->xRange(), Span(-2.0, 2.0));
    QVERIFY(plot.reflections()[2]->domain()->isLeftSmith());
    for (const int invalid : {1, -1, 2})
        plot.setCurrentSource(invalid);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(plot.currentSource(), 1);
}

void tst_NetworkPlot::viewPorts()
{
    StaticTrace trace({{1.0F, 2.0F, 1.0F}, {3.0F, 4.0F, 1.0F}}, nullptr);
    const Charts::TraceData &data = *trace.traceData();
    QCOMPARE(data.drawType(), Charts::DrawType::LineStrip);
    QCOMPARE(data.filledRange().size(), 2);
    QVERIFY(data.filledRange().contain(1));
    trace.domain()->setRangeXY(-2.0, 2.0, -3.0, 3.0);
    trace.updateData();
    const Charts::ViewPort plain = {.x = -2.0F, .y = -3.0F, .width = 4.0F, .height = 6.0F};
    QVERIFY(data.viewPort() == plain);
    QVERIFY(!data.squaredViewPort());

    trace.domain()->setFormat(TraceDomain::SmithFormat);
    trace.updateData();
    QVERIFY(data.viewPort() == plain);
    QVERIFY(data.squaredViewPort());
    // Mirrored: x = 2 is on the left.
    trace.domain()->setLeftSmith(true);
    trace.updateData();
    const Charts::ViewPort mirrored = {.x = 2.0F, .y = -3.0F, .width = -4.0F, .height = 6.0F};
    QVERIFY(data.viewPort() == mirrored);
}

void tst_NetworkPlot::readableRanges_data()
{
    QTest::addColumn<Span>("range");
    QTest::addColumn<Span>("readable");
    QTest::addColumn<int>("stepCount");
    QTest::newRow("as it is") << Span(0.0, 10.0) << Span(0.0, 10.0) << 10;
    QTest::newRow("widened") << Span(-0.3, 9.7) << Span(-1.0, 10.0) << 11;
    QTest::newRow("negative") << Span(-96.0, -4.0) << Span(-100.0, 0.0) << 10;
    QTest::newRow("small") << Span(0.0011, 0.0029) << Span(0.001, 0.003) << 10;
}

void tst_NetworkPlot::readableRanges()
{
    QFETCH(const Span, range);
    QFETCH(const Span, readable);
    QFETCH(const int, stepCount);
    const Gallery::ReadableRange result = Gallery::readableRange(range);
    QCOMPARE(result.range, readable);
    QCOMPARE(result.stepCount, stepCount);
}

QTEST_GUILESS_MAIN(tst_NetworkPlot)

#include "tst_networkplot.moc"
