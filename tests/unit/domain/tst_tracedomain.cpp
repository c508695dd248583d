// SPDX-License-Identifier: MIT
#include "DomainSignalLog.h"
#include "ExactCompare.h"
#include "MetaObjectText.h"

#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QMetaEnum>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>

using namespace Charts;

namespace {
} // namespace

// The published face of the class, its defaults, flags, size and format. Ranges, zoom and mappings
// have files of their own.
class tst_TraceDomain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void metaObject();
    void formatEnumeration();
    void defaults();
    void ownership();
    void readOnlyProperties_data();
    void readOnlyProperties();
    void flags_data();
    void flags();
    void logXProperty();
    void size_data();
    void size();
    void sizeProperty();
    void format_data();
    void format();
    void updatedIsTheApplications();
};

void tst_TraceDomain::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TraceDomain::metaObject()
{
    const QMetaObject &meta = TraceDomain::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::TraceDomain");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(propertyTexts(meta),
            (QStringList{
                    QStringLiteral("Charts::Span xRange read xRangeChanged"),
                    QStringLiteral("Charts::Span yRange read yRangeChanged"),
                    QStringLiteral("Charts::Span argRange read argRangeChanged"),
                    QStringLiteral("Charts::TraceDomain::TraceFormat format read formatChanged"),
                    QStringLiteral("bool isLeftSmith read leftSmithChanged"),
                    QStringLiteral("bool isZoomed read zoomedChanged"),
                    QStringLiteral("bool isLogX read write isLogXChanged"),
                    QStringLiteral("bool isRound read formatChanged"),
                    QStringLiteral("QSizeF size read write sizeChanged"),
                    QStringLiteral("Charts::Span baseYRange read baseYRangeChanged"),
                    QStringLiteral("Charts::Span baseXRange read baseXRangeChanged"),
            }));
    QCOMPARE(methodTexts(meta, true),
            (QStringList{
                    QStringLiteral("void updated()"),
                    QStringLiteral("void xRangeChanged()"),
                    QStringLiteral("void yRangeChanged()"),
                    QStringLiteral("void baseYRangeChanged()"),
                    QStringLiteral("void baseXRangeChanged()"),
                    QStringLiteral("void argRangeChanged()"),
                    QStringLiteral("void formatChanged(TraceDomain::TraceFormat format)"),
                    QStringLiteral("void sizeChanged(QSizeF)"),
                    QStringLiteral("void leftSmithChanged(bool)"),
                    QStringLiteral("void zoomedChanged(bool)"),
                    QStringLiteral("void isLogXChanged(bool)"),
            }));
    QCOMPARE(methodTexts(meta, false), QStringList{QStringLiteral("void shiftYRange(double val)")});
    QCOMPARE(classInfos(meta),
            (QMap<QString, QString>{{QStringLiteral("QML.Element"), QStringLiteral("auto")},
                    {QStringLiteral("QML.Creatable"), QStringLiteral("false")},
                    {QStringLiteral("QML.UncreatableReason"), QString()}}));
}

void tst_TraceDomain::formatEnumeration()
{
    const QMetaObject &meta = TraceDomain::staticMetaObject;
    QCOMPARE(meta.enumeratorCount() - meta.enumeratorOffset(), 1);
    const QMetaEnum format = QMetaEnum::fromType<TraceDomain::TraceFormat>();
    QCOMPARE(format.name(), "TraceFormat");
    QVERIFY(!format.isFlag());
    // QML reaches the keys as TraceDomain.XYFormat.
    QVERIFY(!format.isScoped());
    QCOMPARE(format.keyCount(), 3);
    QCOMPARE(format.key(0), "XYFormat");
    QCOMPARE(format.value(0), 0);
    QCOMPARE(format.key(1), "SmithFormat");
    QCOMPARE(format.value(1), 1);
    QCOMPARE(format.key(2), "PolarFormat");
    QCOMPARE(format.value(2), 2);
}

void tst_TraceDomain::defaults()
{
    const TraceDomain domain;
    QCOMPARE(domain.parent(), nullptr);
    for (const Span &range : {domain.xRange(), domain.yRange(), domain.argRange(),
                 domain.baseXRange(), domain.baseYRange()})
        COMPARE_EXACT(range, Span(0.0, 0.0));
    QCOMPARE(domain.format(), TraceDomain::XYFormat);
    QVERIFY(!domain.isRound());
    QVERIFY(!domain.isLeftSmith());
    QVERIFY(!domain.isZoomed());
    QVERIFY(!domain.isLogX());
    // A default QSizeF would be (-1, -1).
    COMPARE_EXACT(domain.size().width(), 0.0);
    COMPARE_EXACT(domain.size().height(), 0.0);
    for (const double value : {domain.minX(), domain.maxX(), domain.minY(), domain.maxY(),
                 domain.spanX(), domain.spanY()})
        COMPARE_EXACT(value, 0.0);
    QCOMPARE(domain.geometry(), QRectF(0.0, 0.0, 0.0, 0.0));
}

void tst_TraceDomain::ownership()
{
    QPointer<TraceDomain> domain;
    {
        QObject parent;
        domain = new TraceDomain(&parent);
        QCOMPARE(domain->parent(), &parent);
        domain->zoomIn(Span(0.0, 1.0), Span(0.0, 1.0));
    }
    QVERIFY(domain.isNull());

    // Deleted from within one of its own signals, by way of the event loop.
    domain = new TraceDomain;
    connect(domain, &TraceDomain::zoomedChanged, domain, &QObject::deleteLater);
    domain->zoomIn(Span(0.0, 1.0), Span(0.0, 1.0));
    QVERIFY(domain->isZoomed());
    QCoreApplication::sendPostedEvents(domain, QEvent::DeferredDelete);
    QVERIFY(domain.isNull());
}

void tst_TraceDomain::readOnlyProperties_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");

    for (const char *name : {"xRange", "yRange", "argRange", "baseXRange", "baseYRange"})
        QTest::newRow(name) << QByteArray(name) << QVariant::fromValue(Span(1.0, 2.0));
    for (const char *name : {"isLeftSmith", "isZoomed", "isRound"})
        QTest::newRow(name) << QByteArray(name) << QVariant(true);
    QTest::newRow("format") << QByteArray("format")
                            << QVariant::fromValue(TraceDomain::PolarFormat);
}

void tst_TraceDomain::readOnlyProperties()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);

    TraceDomain domain;
    DomainSignalLog log(domain);
    const QVariant before = domain.property(name);
    QVERIFY(before != value);
    QVERIFY(!domain.setProperty(name, value));
    QCOMPARE(domain.property(name), before);
    QCOMPARE(log.take(), QStringList());
}

void tst_TraceDomain::flags_data()
{
    using Setter = void (TraceDomain::*)(bool);
    using Getter = bool (TraceDomain::*)() const;
    QTest::addColumn<std::function<void(TraceDomain &, bool)>>("set");
    QTest::addColumn<std::function<bool(const TraceDomain &)>>("get");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("signal");

    const auto row = [](const char *property, const char *signal, Setter set, Getter get) {
        QTest::newRow(property) << std::function<void(TraceDomain &, bool)>(set)
                                << std::function<bool(const TraceDomain &)>(get)
                                << QByteArray(property) << QString::fromLatin1(signal);
    };
    row("isLeftSmith", "leftSmithChanged(%1)", &TraceDomain::setLeftSmith,
            &TraceDomain::isLeftSmith);
    row("isLogX", "isLogXChanged(%1)", &TraceDomain::setIsLogX, &TraceDomain::isLogX);
    row("isZoomed", "zoomedChanged(%1)", &TraceDomain::setZoomed, &TraceDomain::isZoomed);
}

void tst_TraceDomain::flags()
{
    using SetFlag = std::function<void(TraceDomain &, bool)>;
    using GetFlag = std::function<bool(const TraceDomain &)>;
    QFETCH(SetFlag, set);
    QFETCH(GetFlag, get);
    QFETCH(QByteArray, property);
    QFETCH(QString, signal);

    TraceDomain domain;
    DomainSignalLog log(domain);
    set(domain, false);
    QCOMPARE(log.take(), QStringList());
    for (const bool value : {true, false, true}) {
        set(domain, value);
        QCOMPARE(get(domain), value);
        QCOMPARE(domain.property(property), QVariant(value));
        QCOMPARE(log.take(), QStringList(signal.arg(value)));
        set(domain, value);
        QCOMPARE(get(domain), value);
        QCOMPARE(log.take(), QStringList());
    }
}

void tst_TraceDomain::logXProperty()
{
    TraceDomain domain;
    DomainSignalLog log(domain);
    QVERIFY(domain.setProperty("isLogX", true));
    QVERIFY(domain.isLogX());
    QCOMPARE(log.take(), signalNames("isLogXChanged(1)"));
    QVERIFY(domain.setProperty("isLogX", true));
    QCOMPARE(log.take(), QStringList());
    QVERIFY(!domain.setProperty("isLogX", QVariant::fromValue(Span())));
    QVERIFY(domain.isLogX());
    QCOMPARE(log.take(), QStringList());
}

void tst_TraceDomain::size_data()
{
    QTest::addColumn<QSizeF>("before");
    QTest::addColumn<QSizeF>("after");
    QTest::addColumn<bool>("isChange");

    const auto row = [](const char *name, const QSizeF &before, const QSizeF &after,
                             bool isChange) { QTest::newRow(name) << before << after << isChange; };
    const QSizeF plain(200.0, 100.0);
    row("from the default", QSizeF(0.0, 0.0), plain, true);
    row("the same", plain, plain, false);
    row("only the width", plain, QSizeF(201.0, 100.0), true);
    row("only the height", plain, QSizeF(200.0, 101.0), true);
    row("back to zero", plain, QSizeF(0.0, 0.0), true);
    row("within the relative tolerance", plain, QSizeF(200.0 + 1e-10, 100.0 - 5e-11), false);
    row("width beyond it", plain, QSizeF(200.0 + 1e-9, 100.0), true);
    row("height beyond it", plain, QSizeF(200.0, 100.0 - 1e-9), true);
    row("within the tolerance around zero", QSizeF(0.0, 0.0), QSizeF(1e-13, -1e-12), false);
    row("width beyond the tolerance around zero", QSizeF(0.0, 0.0), QSizeF(2e-12, 0.0), true);
    row("height beyond the tolerance around zero", QSizeF(0.0, 0.0), QSizeF(0.0, 2e-12), true);
    row("tiny, neither is zero", QSizeF(1e-3, 2e-13), QSizeF(1e-3, 4e-13), true);
    row("negative", plain, QSizeF(-200.0, -100.0), true);
    row("denormal", plain, QSizeF(smallest, smallest), true);
    row("huge", plain, QSizeF(largest, 1e300), true);
    row("infinite", plain, QSizeF(inf, inf), true);
    row("infinite again, at no distance from itself", QSizeF(inf, inf), QSizeF(inf, inf), true);
    row("NaN", plain, QSizeF(NaN, NaN), true);
    row("NaN again, which equals nothing", QSizeF(NaN, NaN), QSizeF(NaN, NaN), true);
}

void tst_TraceDomain::size()
{
    QFETCH(QSizeF, before);
    QFETCH(QSizeF, after);
    QFETCH(bool, isChange);

    TraceDomain domain;
    domain.setSize(before);
    int emissions = 0;
    QSizeF emitted;
    connect(&domain, &TraceDomain::sizeChanged, this, [&](const QSizeF &size) {
        ++emissions;
        emitted = size;
    });
    DomainSignalLog log(domain);

    domain.setSize(after);
    const QSizeF expected = isChange ? after : before;
    COMPARE_EXACT(domain.size().width(), expected.width());
    COMPARE_EXACT(domain.size().height(), expected.height());
    QCOMPARE(emissions, isChange ? 1 : 0);
    QCOMPARE(log.take().size(), isChange ? 1 : 0);
    if (isChange) {
        COMPARE_EXACT(emitted.width(), after.width());
        COMPARE_EXACT(emitted.height(), after.height());
    }
}

void tst_TraceDomain::sizeProperty()
{
    TraceDomain domain;
    DomainSignalLog log(domain);
    QVERIFY(domain.setProperty("size", QSizeF(30.0, 20.0)));
    QCOMPARE(domain.size(), QSizeF(30.0, 20.0));
    QCOMPARE(domain.property("size").toSizeF(), QSizeF(30.0, 20.0));
    QCOMPARE(log.take(), signalNames("sizeChanged(30x20)"));
}

void tst_TraceDomain::format_data()
{
    QTest::addColumn<TraceDomain::TraceFormat>("before");
    QTest::addColumn<TraceDomain::TraceFormat>("after");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<bool>("isRound");

    const auto row = [](const char *name, int before, int after, const char *log, bool isRound) {
        QTest::newRow(name) << static_cast<TraceDomain::TraceFormat>(before)
                            << static_cast<TraceDomain::TraceFormat>(after) << signalNames(log)
                            << isRound;
    };
    row("XY to Smith", 0, 1, "formatChanged(1)", true);
    row("XY to polar", 0, 2, "formatChanged(2)", true);
    row("Smith to polar", 1, 2, "formatChanged(2)", true);
    row("polar to Smith", 2, 1, "formatChanged(1)", true);
    row("Smith to XY", 1, 0, "formatChanged(0)", false);
    row("polar to XY", 2, 0, "formatChanged(0)", false);
    row("XY again", 0, 0, "", false);
    row("Smith again", 1, 1, "", true);
    row("polar again", 2, 2, "", true);
    row("to no format", 0, 3, "formatChanged(3)", true);
}

void tst_TraceDomain::format()
{
    QFETCH(TraceDomain::TraceFormat, before);
    QFETCH(TraceDomain::TraceFormat, after);
    QFETCH(QStringList, log);
    QFETCH(bool, isRound);

    TraceDomain domain;
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    domain.setFormat(before);
    DomainSignalLog heard(domain);
    domain.setFormat(after);
    QCOMPARE(heard.take(), log);
    QCOMPARE(domain.format(), after);
    QCOMPARE(domain.isRound(), isRound);
    QCOMPARE(domain.property("format").value<TraceDomain::TraceFormat>(), after);
    QCOMPARE(domain.property("isRound").toBool(), isRound);
    COMPARE_EXACT(domain.xRange(), Span(0.0, 10.0));
    COMPARE_EXACT(domain.yRange(), Span(0.0, 5.0));
}

void tst_TraceDomain::updatedIsTheApplications()
{
    TraceDomain domain;
    DomainSignalLog log(domain);
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    domain.setRangeArg(1.0, 2.0);
    domain.setSize(QSizeF(200.0, 100.0));
    domain.setLeftSmith(true);
    domain.setIsLogX(true);
    domain.zoomIn(Span(1.0, 2.0), Span(1.0, 2.0));
    domain.shiftYRange(1.0);
    domain.setBaseRangeX(0.0, 20.0);
    domain.setFormat(TraceDomain::SmithFormat);
    const QStringList heard = log.take();
    QVERIFY(heard.size() > 10);
    QVERIFY(!heard.contains(QStringLiteral("updated")));

    Q_EMIT domain.updated();
    QCOMPARE(log.take(), signalNames("updated"));
}

QTEST_GUILESS_MAIN(tst_TraceDomain)
#include "tst_tracedomain.moc"
