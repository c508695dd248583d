// SPDX-License-Identifier: MIT
#include "ComputedSignal.h"
#include "GalleryScene.h"
#include "LadderFilter.h"
#include "NetworkPlot.h"
#include "SignalPlayer.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtGui/QPalette>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace Charts;

/*! What surrounds the gallery's pages: how they are chosen, sizes, light and dark. */
class tst_GalleryShell : public QObject
{
    Q_OBJECT

public:
    static void initMain() { setUpGallery(); }

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }
    void cleanup();

    void listOrDropDown();
    void clickInList();
    void keysOfList();
    void keysOfDropDown();
    void shortcuts();
    void tabReachesControls();
    void fullScreen();
    void nothingOutside_data();
    void nothingOutside();
    void lightAndDark();
    void followsDesktop();
    void coloursOfTracesComeBack();

private:
    /*! An active window. */
    std::unique_ptr<Scene> open(const QString &page, const QString &theme = QStringLiteral("dark"))
    {
        auto scene = openPage(m_engine, page, theme);
        scene->window()->requestActivate();
        return QTest::qWaitForWindowActive(scene->window()) ? std::move(scene) : nullptr;
    }

    QQmlEngine m_engine;
    QPalette m_palette;
};

namespace {

QString currentPage(const Scene &scene)
{
    return scene.window()->property("currentPage").toString();
}

QQuickItem *shellItem(const Scene &scene, const char *name)
{
    return scene.window()->findChild<QQuickItem *>(QString::fromLatin1(name));
}

bool hasFocusWithin(const QQuickItem *item, const QQuickWindow &window)
{
    const QQuickItem *focus = window.activeFocusItem();
    return focus && (focus == item || item->isAncestorOf(focus));
}

/*! Light parts of a picture are 1, dark ones 0. */
double brightnessOf(const QImage &picture)
{
    double sum = 0.0;
    int count = 0;
    for (int y = 0; y < picture.height(); y += 7) {
        for (int x = 0; x < picture.width(); x += 7) {
            sum += qGray(picture.pixel(x, y)) / 255.0;
            ++count;
        }
    }
    return sum / count;
}

/*! A text of the page that is not all in the window; empty when there is none. */
QString textOutside(const Scene &scene)
{
    const QRectF window(QPointF(), scene.window()->size());
    QList<QQuickItem *> items = {scene.page()};
    while (!items.isEmpty()) {
        QQuickItem *item = items.takeLast();
        if (!item->isVisible())
            continue;
        items += item->childItems();
        const QString text = item->property("text").toString();
        const QRectF rect = item->mapRectToScene(item->boundingRect());
        if (!text.isEmpty() && !rect.isEmpty() && !window.contains(rect))
            return text;
    }
    return {};
}

} // namespace

void tst_GalleryShell::initTestCase()
{
    prepare(m_engine);
    m_palette = QGuiApplication::palette();
    Gallery::SignalPlayer::setSources({{QStringLiteral("signal"),
            std::make_shared<const Charts::Readers::SampleTable>(Gallery::computedSignal())}});
    Gallery::NetworkPlot::setSources({{QStringLiteral("filter"),
            std::make_shared<const Charts::Readers::NetworkData>(
                    Gallery::LadderFilter::butterworth(3, 1e6).measuredAt({1e5, 1e6, 3e6}))}});
}

void tst_GalleryShell::cleanup()
{
    QGuiApplication::setPalette(m_palette);
}

void tst_GalleryShell::listOrDropDown()
{
    const auto scene = open(QStringLiteral("Bode"));
    QVERIFY(scene);
    const QQuickItem *list = shellItem(*scene, "pageList");
    const QQuickItem *selector = shellItem(*scene, "selector");
    QVERIFY(list->isVisible());
    QVERIFY(!selector->isVisible());
    QCOMPARE(list->property("count").toInt(), pages.size());
    const double wideChart = scene->chart()->width();

    scene->window()->resize(600, 500);
    QTRY_VERIFY_WITH_TIMEOUT(selector->isVisible(), patience);
    QVERIFY(!list->isVisible());
    QCOMPARE(selector->property("count").toInt(), pages.size());
    QVERIFY(selector->property("displayText").toString().startsWith(QStringLiteral("Bode:")));
    // The list's place is the chart's.
    QTRY_VERIFY_WITH_TIMEOUT(scene->chart()->width() > 450.0, patience);

    scene->window()->resize(1080, 680);
    QTRY_VERIFY_WITH_TIMEOUT(list->isVisible(), patience);
    QTRY_COMPARE_WITH_TIMEOUT(scene->chart()->width(), wideChart, patience);
}

void tst_GalleryShell::clickInList()
{
    const auto scene = open(QStringLiteral("Bode"));
    QVERIFY(scene);
    const QQuickItem *list = shellItem(*scene, "pageList");
    for (const QString &page : pages) {
        // The entries are items of equal height below each other.
        const double place = (static_cast<double>(pages.indexOf(page)) + 0.5) * 52.0;
        scene->click(list->mapToScene({60.0, place}).toPoint());
        QCOMPARE(currentPage(*scene), page);
        QVERIFY(scene->page()->property("chart").value<Chart *>());
        QCOMPARE(list->property("currentIndex").toInt(), pages.indexOf(page));
    }
}

void tst_GalleryShell::keysOfList()
{
    const auto scene = open(QStringLiteral("Bode"));
    QVERIFY(scene);
    QQuickItem *list = shellItem(*scene, "pageList");
    list->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(scene->window(), Qt::Key_Down);
    QCOMPARE(currentPage(*scene), QStringLiteral("Network"));
    QVERIFY(list->hasActiveFocus()); // still, so that the next key goes on
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(scene->window(), Qt::Key_Up);
    QCOMPARE(currentPage(*scene), pages.first());
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(scene->window(), Qt::Key_Down);
    QCOMPARE(currentPage(*scene), pages.last());
}

void tst_GalleryShell::keysOfDropDown()
{
    const auto scene = open(QStringLiteral("Bode"));
    QVERIFY(scene);
    scene->window()->resize(500, 400);
    QQuickItem *selector = shellItem(*scene, "selector");
    QTRY_VERIFY_WITH_TIMEOUT(selector->isVisible(), patience);
    selector->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(scene->window(), Qt::Key_Down);
    QTRY_COMPARE_WITH_TIMEOUT(currentPage(*scene), QStringLiteral("Network"), patience);
    // What is chosen in another way is shown here, too.
    QTest::keyClick(scene->window(), Qt::Key_1, Qt::AltModifier);
    QTRY_COMPARE_WITH_TIMEOUT(currentPage(*scene), pages.first(), patience);
    QCOMPARE(selector->property("currentIndex").toInt(), 0);
}

void tst_GalleryShell::shortcuts()
{
    const auto scene = open(pages.last());
    QVERIFY(scene);
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(scene->window(), key, modifiers);
        return currentPage(*scene);
    };
    for (const int page : {3, 1, 7, 2}) {
        QCOMPARE(press(static_cast<Qt::Key>(Qt::Key_0 + page), Qt::AltModifier), pages[page - 1]);
    }
    QCOMPARE(press(Qt::Key_8, Qt::AltModifier), pages[1]);
    QCOMPARE(press(Qt::Key_Tab, Qt::ControlModifier), pages[2]);
    QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), pages[3]);
    QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), pages[2]);
    QCOMPARE(press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier), pages[1]);
    QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), pages[0]);
    // Round and round.
    QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), pages.last());
    QCOMPARE(press(Qt::Key_Tab, Qt::ControlModifier), pages[0]);
}

void tst_GalleryShell::tabReachesControls()
{
    const auto scene = open(QStringLiteral("Limits"));
    QVERIFY(scene);
    // Once round: everything that takes keys had them, once.
    QList<QQuickItem *> visited;
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(scene->window(), Qt::Key_Tab);
        QQuickItem *item = scene->window()->activeFocusItem();
        QVERIFY(item);
        if (visited.contains(item))
            break;
        QVERIFY2(item->isVisible() && item->isEnabled(), item->metaObject()->className());
        visited.append(item);
    }
    const auto isVisited = [&](const QQuickItem *item) {
        return std::any_of(visited.begin(), visited.end(),
                [item](const QQuickItem *one) { return one == item || item->isAncestorOf(one); });
    };
    QVERIFY(isVisited(shellItem(*scene, "pageList")));
    for (const char *name : {"start", "end", "bend", "point", "alert", "floor"})
        QVERIFY2(isVisited(qobject_cast<QQuickItem *>(scene->object(name))), name);
    // The list, six sliders and that of the width, pause and three kinds of zoom.
    QVERIFY2(visited.size() >= 12, qPrintable(QString::number(visited.size())));

    // What has them is marked: its picture is another one than without.
    auto *list = shellItem(*scene, "pageList");
    const auto pictureOf = [&](const QQuickItem *item) {
        return scene->window()->grabWindow().copy(
                item->mapRectToScene(item->boundingRect()).toRect());
    };
    list->forceActiveFocus(Qt::TabFocusReason);
    const QImage withKeys = pictureOf(list);
    scene->chart()->forceActiveFocus();
    QVERIFY(!hasFocusWithin(list, *scene->window()));
    QVERIFY(pictureOf(list) != withKeys);
}

void tst_GalleryShell::fullScreen()
{
    const auto scene = open(QStringLiteral("Bode"));
    QVERIFY(scene);
    QCOMPARE(scene->window()->visibility(), QWindow::Windowed);
    QTest::keyClick(scene->window(), Qt::Key_F11);
    QTRY_COMPARE_WITH_TIMEOUT(scene->window()->visibility(), QWindow::FullScreen, patience);
    QTest::keyClick(scene->window(), Qt::Key_F11);
    QTRY_COMPARE_WITH_TIMEOUT(scene->window()->visibility(), QWindow::Windowed, patience);
}

void tst_GalleryShell::nothingOutside_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("smallest") << QSize(400, 300);
    QTest::newRow("narrow") << QSize(400, 900);
    QTest::newRow("low") << QSize(1200, 300);
    QTest::newRow("just a list") << QSize(720, 400);
    QTest::newRow("large") << QSize(1500, 1000);
}

void tst_GalleryShell::nothingOutside()
{
    QFETCH(const QSize, size);
    const auto scene = open(QStringLiteral("Bode"));
    QVERIFY(scene);
    scene->window()->resize(size);
    QTRY_COMPARE_WITH_TIMEOUT(scene->window()->size(), size, patience);
    for (const QString &page : pages) {
        scene->window()->setProperty("currentPage", page);
        // Layouts settle with the next frames.
        QTRY_COMPARE_WITH_TIMEOUT(textOutside(*scene), QString(), patience);
        QTRY_VERIFY_WITH_TIMEOUT(
                scene->chart()->width() > 200.0 && scene->chart()->height() > 60.0, patience);
    }
}

void tst_GalleryShell::lightAndDark()
{
    const auto scene = open(QStringLiteral("Bode"), QStringLiteral("light"));
    QVERIFY(scene);
    QTest::qWait(100);
    QVERIFY(brightnessOf(scene->window()->grabWindow()) > 0.85);
    scene->window()->setProperty("theme", QStringLiteral("dark"));
    QTest::qWait(100);
    QVERIFY(brightnessOf(scene->window()->grabWindow()) < 0.2);
}

void tst_GalleryShell::followsDesktop()
{
    const auto scene = open(QStringLiteral("Bode"), QStringLiteral("system"));
    QVERIFY(scene);
    for (const QColor window : {QColor(0x20, 0x22, 0x26), QColor(0xf0, 0xf0, 0xf0)}) {
        QPalette palette = m_palette;
        palette.setColor(QPalette::Window, window);
        QGuiApplication::setPalette(palette);
        QTest::qWait(100);
        const double brightness = brightnessOf(scene->window()->grabWindow());
        QVERIFY(window.lightness() < 128 ? brightness < 0.2 : brightness > 0.85);
    }
}

void tst_GalleryShell::coloursOfTracesComeBack()
{
    const auto scene = open(QStringLiteral("Picking"));
    QVERIFY(scene);
    QList<QColor> before;
    for (const AbstractTrace *trace : scene->traces())
        before.append(trace->color());
    QVERIFY(before.contains(scene->traces()[0]->color()));

    scene->window()->setProperty("theme", QStringLiteral("light"));
    for (const AbstractTrace *trace : scene->traces()) {
        // Against white.
        const QColor color = trace->color();
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        const double luminance = 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
                                 + 0.0722 * linear(color.blueF());
        QVERIFY2(1.05 / (luminance + 0.05) > 3.0, qPrintable(color.name()));
    }
    scene->window()->setProperty("theme", QStringLiteral("dark"));
    QList<QColor> after;
    for (const AbstractTrace *trace : scene->traces())
        after.append(QColor(trace->color().rgb()));
    for (QColor &color : before)
        color = QColor(color.rgb());
    QCOMPARE(after, before);
}

QTEST_MAIN(tst_GalleryShell)

#include "tst_galleryshell.moc"
