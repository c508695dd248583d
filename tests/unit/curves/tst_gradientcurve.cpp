// SPDX-License-Identifier: MIT
#include "CountedItem.h"
#include "MetaObjectText.h"
#include "PaintedCurve.h"
#include "RecordingProvider.h"

#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/GradientCurve.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! A curve with all that it needs to be drawn. */
struct Scene
{
    Scene()
    {
        curve.setGeometryTransform(&transform);
        curve.setShape(&provider);
    }
    /*! How often the lines were made anew since the last call. */
    [[nodiscard]] qsizetype takeRebuilds()
    {
        const qsizetype count = provider.takeQuestions().size();
        return transform.takeQuestions().size() == count ? count : -1;
    }

    RecordingTransform transform;
    RecordingTransform otherTransform;
    RecordingProvider provider;
    RecordingProvider otherProvider;
    PaintedCurve<GradientCurve> curve;
};

/*! Something to do with a curve, and another transform and provider for it. */
using Action = void (*)(GradientCurve &, AbstractCurveTransform *, GradientProvider *);

void addActions()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("isRepainted");

    const auto row = [](const char *name, bool isRepainted, Action action) {
        QTest::newRow(name) << action << isRepainted;
    };
    row("nothing", false, [](auto &, auto, auto) {});
    row("direction", true, [](auto &curve, auto, auto) { curve.setUpDirection(true); });
    row("same direction", false, [](auto &curve, auto, auto) { curve.setUpDirection(false); });
    row("direction and back", true, [](auto &curve, auto, auto) {
        curve.setUpDirection(true);
        curve.setUpDirection(false);
    });
    row("shape", true, [](auto &curve, auto, auto provider) { curve.setShape(provider); });
    row("same shape", false, [](auto &curve, auto, auto) { curve.setShape(curve.shape()); });
    row("margin", false, [](auto &curve, auto, auto) { curve.setContainsMouseMargin(50); });
    row("transform", true,
            [](auto &curve, auto transform, auto) { curve.setGeometryTransform(transform); });
    row("same transform", false,
            [](auto &curve, auto, auto) { curve.setGeometryTransform(curve.geometryTransform()); });
    row("first end", true, [](auto &curve, auto, auto) { curve.setP1({1.0, 2.0}); });
    row("second end", true, [](auto &curve, auto, auto) { curve.setP2({1.0, 2.0}); });
    row("same ends", false, [](auto &curve, auto, auto) {
        curve.setP1({});
        curve.setP2({1e-13, -1e-13});
    });
    row("line width", true, [](auto &curve, auto, auto) { curve.setLineWidth(2.0); });
    row("same line width", false, [](auto &curve, auto, auto) { curve.setLineWidth(1.0); });
    row("colour", true, [](auto &curve, auto, auto) { curve.setColor(Qt::red); });
    row("same colour", false, [](auto &curve, auto, auto) { curve.setColor(Qt::gray); });
    row("position", true, [](auto &curve, auto, auto) { curve.setX(5.0); });
    row("size", true, [](auto &curve, auto, auto) { curve.setSize({150.0, 50.0}); });
    row("same size", false, [](auto &curve, auto, auto) { curve.setSize({200.0, 100.0}); });
}

} // namespace

class tst_GradientCurve : public QObject
{
    Q_OBJECT

public:
    static void initMain() { FrameWindow::setUp(); }

private Q_SLOTS:
    void init();

    void initialState();
    void parentItem();
    void metaObject();

    void upDirection();
    void shape();
    void margins_data();
    void margins();
    void propertiesByName();
    void storedFirst();
    void signalsOnce();

    void rebuilds_data();
    void rebuilds();
    void repaints_data();
    void repaints();
    void geometryReachesTheBase();
    void emptySizes_data();
    void emptySizes();
    void newNode();
};

void tst_GradientCurve::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_GradientCurve::initialState()
{
    const GradientCurve curve;
    QVERIFY(!curve.upDirection());
    QCOMPARE(curve.containsMouseMargin(), 10);
    QCOMPARE(curve.shape(), nullptr);
    QCOMPARE(curve.geometryTransform(), nullptr);
    QCOMPARE(curve.p1(), QPointF());
    QCOMPARE(curve.p2(), QPointF());
    QCOMPARE(curve.lineWidth(), 1.0);
    QCOMPARE(curve.color(), QColor(Qt::gray));
    QVERIFY(curve.antialiasing());

    // Nothing else differs from a plain item.
    QQuickItem plain;
    plain.setFlag(QQuickItem::ItemHasContents);
    QCOMPARE(curve.flags(), plain.flags());
    QCOMPARE(curve.acceptedMouseButtons(), plain.acceptedMouseButtons());
    QCOMPARE(curve.acceptHoverEvents(), plain.acceptHoverEvents());
    QVERIFY(curve.children().isEmpty());
}

void tst_GradientCurve::parentItem()
{
    QQuickItem parent;
    const auto *curve = new GradientCurve(&parent);
    QCOMPARE(curve->parentItem(), &parent);
    QCOMPARE(curve->parent(), &parent);
}

void tst_GradientCurve::metaObject()
{
    const QMetaObject &curve = GradientCurve::staticMetaObject;
    QCOMPARE(curve.className(), "Charts::GradientCurve");
    QCOMPARE(curve.superClass(), &Curve::staticMetaObject);
    QCOMPARE(propertyTexts(curve),
            QStringList({
                    u"bool upDirection read write upGradientChanged"_s,
                    u"Charts::GradientProvider* shape read write shapeChanged"_s,
                    u"int containsMouseMargin read write containsMouseMarginChanged"_s,
            }));
    QCOMPARE(methodTexts(curve, true),
            QStringList({u"void upGradientChanged()"_s, u"void shapeChanged()"_s,
                    u"void containsMouseMarginChanged()"_s}));
    QCOMPARE(methodTexts(curve, false), QStringList());
}

void tst_GradientCurve::upDirection()
{
    GradientCurve curve;
    QSignalSpy changes(&curve, &GradientCurve::upGradientChanged);
    curve.setUpDirection(false);
    QCOMPARE(changes.size(), 0);
    for (int i = 0; i < 2; ++i) {
        curve.setUpDirection(true);
        QVERIFY(curve.upDirection());
        QCOMPARE(changes.size(), 1);
    }
    curve.setUpDirection(false);
    QVERIFY(!curve.upDirection());
    QCOMPARE(changes.size(), 2);
}

void tst_GradientCurve::shape()
{
    GradientCurve curve;
    FillRectProvider first;
    RecordingProvider second;
    QSignalSpy changes(&curve, &GradientCurve::shapeChanged);
    curve.setShape(nullptr);
    QCOMPARE(changes.size(), 0);
    qsizetype count = 0;
    for (GradientProvider *provider :
            {static_cast<GradientProvider *>(&first), static_cast<GradientProvider *>(&second),
                    static_cast<GradientProvider *>(nullptr)}) {
        ++count;
        for (int i = 0; i < 2; ++i) {
            curve.setShape(provider);
            QCOMPARE(curve.shape(), provider);
            QCOMPARE(changes.size(), count);
        }
    }
    // Not owned, neither as the curve's child nor otherwise.
    curve.setShape(&first);
    QCOMPARE(first.parent(), nullptr);
}

void tst_GradientCurve::margins_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    using Limits = std::numeric_limits<int>;
    QTest::newRow("larger") << 10 << 11;
    QTest::newRow("smaller") << 10 << 9;
    QTest::newRow("the same") << 20 << 20;
    QTest::newRow("the default") << 10 << 10;
    QTest::newRow("none") << 10 << 0;
    QTest::newRow("negative") << 10 << -10;
    QTest::newRow("largest") << Limits::min() << Limits::max();
    QTest::newRow("smallest") << Limits::max() << Limits::min();
}

void tst_GradientCurve::margins()
{
    QFETCH(int, from);
    QFETCH(int, to);

    GradientCurve curve;
    curve.setContainsMouseMargin(from);
    QSignalSpy changes(&curve, &GradientCurve::containsMouseMarginChanged);
    for (int i = 0; i < 2; ++i) {
        curve.setContainsMouseMargin(to);
        QCOMPARE(curve.containsMouseMargin(), to);
        QCOMPARE(changes.size(), from == to ? 0 : 1);
    }
}

void tst_GradientCurve::propertiesByName()
{
    GradientCurve curve;
    FillRectProvider provider;
    QVERIFY(curve.setProperty("upDirection", true));
    QVERIFY(curve.setProperty("shape", QVariant::fromValue<GradientProvider *>(&provider)));
    QVERIFY(curve.setProperty("containsMouseMargin", 3));
    QVERIFY(curve.upDirection());
    QCOMPARE(curve.shape(), &provider);
    QCOMPARE(curve.containsMouseMargin(), 3);
    QCOMPARE(curve.property("upDirection"), QVariant(true));
    QCOMPARE(curve.property("shape").value<GradientProvider *>(), &provider);
    QCOMPARE(curve.property("containsMouseMargin"), QVariant(3));
}

// A handler sees the new value, and a curve that is to be drawn anew.
void tst_GradientCurve::storedFirst()
{
    Scene scene;
    GradientCurve &curve = scene.curve;
    QStringList seen;
    connect(&curve, &GradientCurve::upGradientChanged, this, [&] {
        scene.curve.paint();
        seen += u"up %1 %2"_s.arg(curve.upDirection()).arg(scene.takeRebuilds());
    });
    connect(&curve, &GradientCurve::shapeChanged, this, [&] {
        scene.curve.paint();
        seen += u"other %1 %2"_s.arg(curve.shape() == &scene.otherProvider)
                        .arg(scene.otherProvider.takeQuestions().size());
    });
    connect(&curve, &GradientCurve::containsMouseMarginChanged, this,
            [&] { seen += u"margin %1"_s.arg(curve.containsMouseMargin()); });
    scene.curve.paint();
    QCOMPARE(scene.takeRebuilds(), 1);

    curve.setUpDirection(true);
    curve.setShape(&scene.otherProvider);
    curve.setContainsMouseMargin(2);
    QCOMPARE(seen, QStringList({u"up 1 1"_s, u"other 1 1"_s, u"margin 2"_s}));
}

// None tells of another, nor of those that it has from a curve without a fill.
void tst_GradientCurve::signalsOnce()
{
    Scene scene;
    QStringList names;
    const QMetaObject *meta = scene.curve.metaObject();
    QList<QSharedPointer<QSignalSpy>> spies;
    for (int i = QQuickItem::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == QMetaMethod::Signal) {
            names += QString::fromLatin1(meta->method(i).name());
            spies += QSharedPointer<QSignalSpy>::create(&scene.curve, meta->method(i));
        }
    }
    const auto takeSignals = [&] {
        QStringList taken;
        for (qsizetype i = 0; i < spies.size(); ++i) {
            for (; !spies.at(i)->isEmpty(); spies.at(i)->removeFirst())
                taken += names.at(i);
        }
        return taken;
    };
    QCOMPARE(names.size(), 8);
    scene.curve.setUpDirection(true);
    QCOMPARE(takeSignals(), QStringList(u"upGradientChanged"_s));
    scene.curve.setShape(nullptr);
    QCOMPARE(takeSignals(), QStringList(u"shapeChanged"_s));
    scene.curve.setContainsMouseMargin(0);
    QCOMPARE(takeSignals(), QStringList(u"containsMouseMarginChanged"_s));
    scene.curve.setP1({1.0, 1.0});
    QCOMPARE(takeSignals(), QStringList(u"p1Changed"_s));
    scene.curve.setSize({10.0, 10.0});
    scene.curve.paint();
    QCOMPARE(takeSignals(), QStringList());
}

void tst_GradientCurve::rebuilds_data()
{
    addActions();
}

// The lines are made anew with the next frame after a change, and only then.
void tst_GradientCurve::rebuilds()
{
    QFETCH(Action, action);
    QFETCH(bool, isRepainted);

    Scene scene;
    QVERIFY(scene.curve.paint());
    QCOMPARE(scene.takeRebuilds(), 1);
    QVERIFY(scene.curve.paint());
    QCOMPARE(scene.takeRebuilds(), 0);

    action(scene.curve, &scene.otherTransform, &scene.otherProvider);
    QVERIFY(scene.curve.paint());
    const auto rebuilds = scene.provider.takeQuestions() + scene.otherProvider.takeQuestions();
    QCOMPARE(rebuilds.size(), isRepainted ? 1 : 0);
    const auto lines = scene.transform.takeQuestions() + scene.otherTransform.takeQuestions();
    QCOMPARE(lines.size(), rebuilds.size());
    QVERIFY(scene.curve.paint());
    QCOMPARE(scene.takeRebuilds(), 0);
}

void tst_GradientCurve::repaints_data()
{
    addActions();
}

void tst_GradientCurve::repaints()
{
    QFETCH(Action, action);
    QFETCH(bool, isRepainted);

    RecordingTransform transform;
    RecordingTransform otherTransform;
    FillRectProvider provider;
    FillRectProvider otherProvider;
    FrameWindow window;
    CountedItem<GradientCurve> curve;
    curve.setSize({200, 100});
    curve.setGeometryTransform(&transform);
    curve.setShape(&provider);
    curve.setParentItem(window.contentItem());
    QVERIFY(window.start());
    QVERIFY(curve.takeCount() > 0);
    QVERIFY(window.frame());
    QCOMPARE(curve.takeCount(), 0);

    action(curve, &otherTransform, &otherProvider);
    QVERIFY(window.frame());
    QCOMPARE(curve.takeCount(), isRepainted ? 1 : 0);
}

void tst_GradientCurve::geometryReachesTheBase()
{
    GradientCurve curve;
    QSignalSpy widths(&curve, &QQuickItem::widthChanged);
    curve.setWidth(20.0);
    QCOMPARE(widths.size(), 1);
}

void tst_GradientCurve::emptySizes_data()
{
    QTest::addColumn<QSizeF>("size");
    constexpr double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("nothing") << QSizeF(0.0, 0.0);
    QTest::newRow("no width") << QSizeF(0.0, 100.0);
    QTest::newRow("no height") << QSizeF(200.0, 0.0);
    QTest::newRow("less than half a pixel wide") << QSizeF(0.49, 100.0);
    QTest::newRow("less than half a pixel high") << QSizeF(200.0, 0.49);
    QTest::newRow("negative width") << QSizeF(-5.0, 100.0);
    QTest::newRow("negative height") << QSizeF(200.0, -0.6);
    QTest::newRow("negative") << QSizeF(-5.0, -5.0);
    QTest::newRow("lowest width") << QSizeF(-2147483648.0, 100.0);
    QTest::newRow("huge negative width") << QSizeF(-1e300, 100.0);
    QTest::newRow("negative infinite height") << QSizeF(200.0, -inf);
}

// An item without an area has no node, and one that it had is deleted.
void tst_GradientCurve::emptySizes()
{
    QFETCH(QSizeF, size);
    struct Witness : QSGNode
    {
        explicit Witness(bool *isGone)
            : m_isGone(isGone)
        {
        }
        ~Witness() override { *m_isGone = true; }
        bool *m_isGone;
    };

    Scene scene;
    scene.curve.setSize(size);
    QVERIFY(!scene.curve.paint());
    QCOMPARE(scene.takeRebuilds(), 0);

    scene.curve.setSize({200, 100});
    QVERIFY(scene.curve.paint());
    const QList<QByteArray> picture = scene.curve.picture();
    QCOMPARE(picture.size(), 2);
    bool isGone = false;
    scene.curve.node()->appendChildNode(new Witness(&isGone));
    scene.curve.setSize(size);
    QVERIFY(!scene.curve.paint());
    QVERIFY(isGone);

    scene.curve.setSize({200, 100});
    QVERIFY(scene.curve.paint());
    QCOMPARE(scene.curve.picture(), picture);
}

// The scene graph may have thrown the nodes away, with the window that they were in.
void tst_GradientCurve::newNode()
{
    Scene scene;
    scene.curve.paint();
    const QList<QByteArray> picture = scene.curve.picture();
    scene.curve.loseNode();
    QVERIFY(scene.curve.paint());
    QCOMPARE(scene.curve.picture(), picture);
    QCOMPARE(scene.takeRebuilds(), 2);
    scene.curve.paint();
    QCOMPARE(scene.takeRebuilds(), 0);
}

QTEST_MAIN(tst_GradientCurve)

#include "tst_gradientcurve.moc"
