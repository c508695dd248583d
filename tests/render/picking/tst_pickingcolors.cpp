// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelBlock.h"
#include "RenderNodeItem.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! What the selection image looks like: nothing but the traces' numbers. */
class tst_PickingColors : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void colors();
    void colorsOfManyTraces();
    void threeBytes();
    void neverBlended();

private:
    static void draw(OpenGLRenderNode &node, const std::vector<AbstractTrace *> &traces)
    {
        node.setTextureSize(size);
        node.setTraceData(true, traces);
        node.render();
    }
    [[nodiscard]] static std::unique_ptr<QMouseEvent> pressAt(const QPointF &place)
    {
        return std::make_unique<QMouseEvent>(QEvent::MouseButtonPress, place, place, place,
                Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    }
    /*! The selection image, drawn anew. */
    [[nodiscard]] static QImage selectionImage(OpenGLRenderNode &node)
    {
        node.renderSelection();
        // The pass leaves its image bound.
        const QSize imageSize = node.textureSize();
        QImage image(imageSize, QImage::Format_RGBA8888);
        QOpenGLContext::currentContext()->functions()->glReadPixels(0, 0, imageSize.width(),
                imageSize.height(), GL_RGBA, GL_UNSIGNED_BYTE, image.bits());
        // Lines from the top, as an image has them.
        return image.mirrored();
    }

    static constexpr QSize size = {200, 100};
    std::unique_ptr<ChartWindow> m_window;
    RenderNodeItem *m_item = nullptr;
    std::unique_ptr<PixelBlock> m_trace;
};

void tst_PickingColors::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_window = std::make_unique<ChartWindow>(size, ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
    m_item = new RenderNodeItem(*m_window);
    m_trace = std::make_unique<PixelBlock>(size, QRect(50, 40, 20, 20));
}

void tst_PickingColors::cleanup()
{
    m_window.reset();
    m_trace.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_PickingColors::colors()
{
    // Invisible traces use up no number, and those that show no pixel do.
    const auto second = std::make_unique<PixelBlock>(size, QRect(80, 40, 20, 20));
    const auto third = std::make_unique<PixelBlock>(size, QRect(110, 40, 20, 20));
    const auto fourth = std::make_unique<PixelBlock>(size, QRect(140, 40, 20, 20));
    second->data.setVisible(false);
    third->data.filledRange().pop(true);
    QImage image;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        draw(node, {m_trace.get(), second.get(), third.get(), fourth.get()});
        image = selectionImage(node);
    }));
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const bool isRow = y >= 40 && y < 60;
            const QRgb color = isRow && x >= 50 && x < 70     ? qRgba(0, 0, 0, 255)
                               : isRow && x >= 140 && x < 160 ? qRgba(2, 0, 0, 255)
                                                              : qRgba(0, 0, 0, 0);
            if (image.pixel(x, y) != color) {
                QFAIL(qPrintable(u"%1 at %2, %3"_s.arg(image.pixel(x, y), 8, 16).arg(x).arg(y)));
            }
        }
    }
}

void tst_PickingColors::colorsOfManyTraces()
{
    // One pixel each.
    std::vector<std::unique_ptr<PixelBlock>> traces;
    std::vector<AbstractTrace *> list;
    for (int i = 0; i < 520; ++i) {
        traces.push_back(std::make_unique<PixelBlock>(size, QRect(i % 200, i / 200, 1, 1)));
        list.push_back(traces.back().get());
    }
    QImage image;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        draw(node, list);
        image = selectionImage(node);
    }));
    const auto colorOf = [&image](int i) { return image.pixel(i % 200, 99 - i / 200); };
    QCOMPARE(colorOf(0), qRgba(0, 0, 0, 255));
    QCOMPARE(colorOf(1), qRgba(1, 0, 0, 255));
    QCOMPARE(colorOf(127), qRgba(127, 0, 0, 255));
    QCOMPARE(colorOf(128), qRgba(128, 0, 0, 255));
    QCOMPARE(colorOf(255), qRgba(255, 0, 0, 255));
    QCOMPARE(colorOf(256), qRgba(0, 1, 0, 255));
    QCOMPARE(colorOf(257), qRgba(1, 1, 0, 255));
    QCOMPARE(colorOf(511), qRgba(255, 1, 0, 255));
    QCOMPARE(colorOf(512), qRgba(0, 2, 0, 255));
    for (int i = 0; i < 520; ++i)
        QCOMPARE(colorOf(i), qRgba(i % 256, i / 256, 0, 255));
    QCOMPARE(colorOf(520), qRgba(0, 0, 0, 0));
}

void tst_PickingColors::threeBytes()
{
    // A trace can be listed more than once and has a number each time: one that shows nothing
    // makes up most of the 65 538.
    const auto filler = std::make_unique<PixelBlock>(size, QRect(0, 0, 1, 1));
    filler->data.filledRange().pop(true);
    const auto before = std::make_unique<PixelBlock>(size, QRect(80, 40, 20, 20));
    const auto after = std::make_unique<PixelBlock>(size, QRect(110, 40, 20, 20));
    std::vector<AbstractTrace *> list(65535, filler.get());
    list.push_back(before.get());
    list.push_back(m_trace.get());
    list.push_back(after.get());

    QImage image;
    QList<AbstractTrace *> found;
    GlProbe::setErrorChecks(false);
    const bool isRun = m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setTraceData(true, list);
        // The other one draws the image for the screen, too.
        node.initGL();
        image = selectionImage(node);
        for (const double x : {90.0, 60.0, 120.0, 30.0})
            found.append(node.findTraceAtEvent(pressAt({x, 50.0}).get()));
    });
    GlProbe::setErrorChecks(true);
    QVERIFY(isRun);
    QCOMPARE(image.pixel(90, 50), qRgba(255, 255, 0, 255));
    QCOMPARE(image.pixel(60, 50), qRgba(0, 0, 1, 255));
    QCOMPARE(image.pixel(120, 50), qRgba(1, 0, 1, 255));
    QCOMPARE(found, QList<AbstractTrace *>({before.get(), m_trace.get(), after.get(), nullptr}));
}

void tst_PickingColors::neverBlended()
{
    // The traces 1 and 3 touch and cross at slanted edges; mixed, their colours would be that of 2.
    const auto line = [](float width, const std::vector<QPointF> &points) {
        auto trace = std::make_unique<PixelTrace>(size, DrawType::LineStrip, width, Qt::red);
        trace->setPoints(points);
        return trace;
    };
    const auto zero = std::make_unique<PixelBlock>(size, QRect(0, 0, 2, 2));
    const auto one = line(15.0F, {{10.2, 10.9}, {190.7, 60.1}});
    const auto two = std::make_unique<PixelBlock>(size, QRect(198, 0, 2, 2));
    const auto three = line(6.0F, {{10.6, 80.3}, {190.1, 20.8}});
    QImage image;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setAntialiasing(true);
        draw(node, {zero.get(), one.get(), two.get(), three.get()});
        image = selectionImage(node);
    }));
    QHash<QRgb, int> counts;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            ++counts[image.pixel(x, y)];
    }
    QCOMPARE(counts.size(), 5);
    QCOMPARE(counts.value(qRgba(0, 0, 0, 255)), 4);
    QCOMPARE(counts.value(qRgba(2, 0, 0, 255)), 4);
    // Lengths times widths, roughly.
    QVERIFY(counts.value(qRgba(1, 0, 0, 255)) > 180 * 20 - 60 * 11);
    QVERIFY(counts.value(qRgba(3, 0, 0, 255)) > 175 * 11);
    QVERIFY(counts.value(qRgba(0, 0, 0, 0)) > 10000);
}

QTEST_MAIN(tst_PickingColors)

#include "tst_pickingcolors.moc"
