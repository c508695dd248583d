// SPDX-License-Identifier: MIT
#include "ThreadOperations.h"

#include <QtGui/QPointingDevice>

using namespace Charts;

ThreadObjects::ThreadObjects()
    : domain(*trace.domain())
    , press(QEvent::MouseButtonPress, {3.0, 4.0}, {3.0, 4.0}, {3.0, 4.0}, Qt::LeftButton,
              Qt::LeftButton, Qt::NoModifier, QPointingDevice::primaryPointingDevice())
    , mouseEvent(&press, nullptr)
{
    chart.setSize({40.0, 30.0});
    xyGrid.setSize({40.0, 30.0});
    gradientCurve.setGeometryTransform(&line);
    chart.addTrace(&otherTrace);
}

namespace {

using Operations = std::vector<ThreadOperation>;
using Objects = ThreadObjects;

ThreadOperation onGui(const char *name, std::function<void(Objects &)> call)
{
    return {QString::fromLatin1(name), {}, std::move(call), {}, false};
}

/*! Whose check is in a function that they share. */
ThreadOperation onGui(const char *name, const char *assertedIn, std::function<void(Objects &)> call)
{
    return {QString::fromLatin1(name), QString::fromLatin1(assertedIn), std::move(call), {}, false};
}

ThreadOperation onRenderer(const char *name, std::function<void(OpenGLRenderNode &)> call)
{
    return {QString::fromLatin1(name), {}, {}, std::move(call), false};
}

void addDomain(Operations &list)
{
    list.insert(list.end(),
            {
                    onGui("TraceDomain::setRangeX",
                            [](Objects &o) {
                                o.domain.setRangeX({1.0, 2.0});
                            }),
                    onGui("TraceDomain::setRangeX 2", "TraceDomain::setRangeX",
                            [](Objects &o) { o.domain.setRangeX(1.5, 2.0); }),
                    onGui("TraceDomain::setRangeY",
                            [](Objects &o) {
                                o.domain.setRangeY({1.0, 2.0});
                            }),
                    onGui("TraceDomain::setRangeY 2", "TraceDomain::setRangeY",
                            [](Objects &o) { o.domain.setRangeY(1.5, 2.0); }),
                    onGui("TraceDomain::setRangeXY",
                            [](Objects &o) {
                                o.domain.setRangeXY({3.0, 4.0}, {5.0, 6.0});
                            }),
                    onGui("TraceDomain::setRangeXY 4", "TraceDomain::setRangeXY",
                            [](Objects &o) { o.domain.setRangeXY(4.0, 5.0, 6.0, 7.0); }),
                    onGui("TraceDomain::setBaseRangeX",
                            [](Objects &o) { o.domain.setBaseRangeX(1.0, 3.0); }),
                    onGui("TraceDomain::setBaseRangeY",
                            [](Objects &o) {
                                o.domain.setBaseRangeY({1.0, 3.0});
                            }),
                    onGui("TraceDomain::setBaseRangeY 2", "TraceDomain::setBaseRangeY",
                            [](Objects &o) { o.domain.setBaseRangeY(2.0, 3.0); }),
                    onGui("TraceDomain::setRangeArg",
                            [](Objects &o) { o.domain.setRangeArg(1.0, 2.0); }),
                    onGui("TraceDomain::setLeftSmith",
                            [](Objects &o) { o.domain.setLeftSmith(true); }),
                    onGui("TraceDomain::setIsLogX", [](Objects &o) { o.domain.setIsLogX(true); }),
                    onGui("TraceDomain::setSize",
                            [](Objects &o) {
                                o.domain.setSize({10.0, 20.0});
                            }),
                    onGui("TraceDomain::shiftYRange",
                            [](Objects &o) { o.domain.shiftYRange(1.0); }),
                    onGui("TraceDomain::zoomIn",
                            [](Objects &o) {
                                o.domain.zoomIn({2.0, 2.5}, {2.0, 2.5});
                            }),
                    onGui("TraceDomain::zoomIn 1", "TraceDomain::zoomIn",
                            [](Objects &o) { o.domain.zoomIn(QRectF(1.0, 1.0, 5.0, 5.0)); }),
                    onGui("TraceDomain::zoomReset", [](Objects &o) { o.domain.zoomReset(); }),
                    onGui("TraceDomain::setZoomed", [](Objects &o) { o.domain.setZoomed(true); }),
                    onGui("TraceDomain::setFormat",
                            [](Objects &o) { o.domain.setFormat(TraceDomain::PolarFormat); }),
            });
}

void addTrace(Operations &list)
{
    list.insert(list.end(),
            {
                    onGui("AbstractTrace::setName",
                            [](Objects &o) { o.trace.setName(QStringLiteral("name")); }),
                    onGui("AbstractTrace::setVisible",
                            [](Objects &o) { o.trace.setVisible(false); }),
                    onGui("AbstractTrace::setZ", [](Objects &o) { o.trace.setZ(2.0); }),
                    onGui("AbstractTrace::setColor", [](Objects &o) { o.trace.setColor(Qt::red); }),
                    onGui("AbstractTrace::setLineWidth",
                            [](Objects &o) { o.trace.setLineWidth(3.0); }),
            });
}

void addChart(Operations &list)
{
    list.insert(list.end(),
            {
                    onGui("Chart::addTrace", [](Objects &o) { o.chart.addTrace(&o.trace); }),
                    onGui("Chart::includes", [](Objects &o) { (void)o.chart.includes(&o.trace); }),
                    onGui("Chart::resortTraces", [](Objects &o) { o.chart.resortTraces(); }),
                    onGui("Chart::updateTraces", [](Objects &o) { o.chart.updateTraces(); }),
                    onGui("Chart::setIsZoomEnabled",
                            [](Objects &o) { o.chart.setIsZoomEnabled(true); }),
                    onGui("Chart::setRubberBand",
                            [](Objects &o) { o.chart.setRubberBand(&o.rubberBand); }),
                    onGui("Chart::zoomIn",
                            [](Objects &o) {
                                o.chart.zoomIn({1.0, 1.0, 5.0, 5.0});
                            }),
                    onGui("Chart::zoomReset", [](Objects &o) { o.chart.zoomReset(); }),
                    onGui("Chart::removeTrace", [](Objects &o) { o.chart.removeTrace(&o.trace); }),
                    onGui("Chart::setSize", "ChartItem::geometryChange",
                            [](Objects &o) {
                                o.chart.setSize({50.0, 30.0});
                            }),
                    onGui("ZoomDelegate::setMinSize",
                            [](Objects &o) { o.rubberBand.setMinSize(7); }),
                    onGui("ZoomDelegate::setZoomType",
                            [](Objects &o) { o.rubberBand.setZoomType(ZoomDelegate::Vertical); }),
                    onGui("ZoomDelegate::startResize",
                            [](Objects &o) {
                                o.rubberBand.startResize({1.0, 1.0});
                            }),
                    onGui("ZoomDelegate::updatePoint",
                            [](Objects &o) {
                                o.rubberBand.updatePoint({5.0, 5.0});
                            }),
                    onGui("ZoomDelegate::stopResize",
                            [](Objects &o) { o.rubberBand.stopResize(); }),
                    onGui("ChartMouseEvent::setAccepted",
                            [](Objects &o) { o.mouseEvent.setAccepted(false); }),
                    onGui("ChartMouseEvent::reset",
                            [](Objects &o) {
                                o.mouseEvent.reset(1.0, 2.0, Qt::LeftButton, Qt::LeftButton,
                                        Qt::NoModifier, {});
                            }),
            });
}

void addGrids(Operations &list)
{
    constexpr auto mark = "AbstractGrid::markDirty";
    list.insert(list.end(),
            {
                    onGui("AbstractGrid::setInnerGridLinesColor", mark,
                            [](Objects &o) { o.xyGrid.setInnerGridLinesColor(Qt::red); }),
                    onGui("AbstractGrid::setOuterGridLinesColor",
                            [](Objects &o) { o.xyGrid.setOuterGridLinesColor(Qt::red); }),
                    onGui("AbstractGrid::setLineWidth", mark,
                            [](Objects &o) { o.xyGrid.setLineWidth(5.0); }),
                    onGui("XYGrid::setXLayout", mark,
                            [](Objects &o) { o.xyGrid.setXLayout(XYGrid::LogGrid); }),
                    onGui("XYGrid::setXRange", mark,
                            [](Objects &o) {
                                o.xyGrid.setXRange({1.0, 100.0});
                            }),
                    onGui("XYGrid::setYCount", mark, [](Objects &o) { o.xyGrid.setYCount(3); }),
                    onGui("XYGrid::updateGeomerty", [](Objects &o) { o.xyGrid.updateGeomerty(); }),
                    onGui("XYGrid::updateLabels", [](Objects &o) { o.xyGrid.updateLabels(); }),
                    onGui("XYGrid::setSize", "ChartItem::geometryChange",
                            [](Objects &o) {
                                o.xyGrid.setSize({50.0, 30.0});
                            }),
                    onGui("PolarGrid::setScale", mark,
                            [](Objects &o) { o.polarGrid.setScale(0.5); }),
                    onGui("SmithGrid::setScale", mark,
                            [](Objects &o) { o.smithGrid.setScale(0.5); }),
                    onGui("SmithGrid::setFlip", mark,
                            [](Objects &o) { o.smithGrid.setFlip(true); }),
            });
}

void addCurves(Operations &list)
{
    constexpr auto mark = "Curve::markDirty";
    list.insert(list.end(),
            {
                    onGui("Curve::setGeometryTransform", mark,
                            [](Objects &o) { o.curve.setGeometryTransform(&o.logarithm); }),
                    onGui("Curve::setP1", mark,
                            [](Objects &o) {
                                o.curve.setP1({1.0, 2.0});
                            }),
                    onGui("Curve::setP2", mark,
                            [](Objects &o) {
                                o.curve.setP2({3.0, 4.0});
                            }),
                    onGui("Curve::setLineWidth", mark,
                            [](Objects &o) { o.curve.setLineWidth(5.0); }),
                    onGui("Curve::setColor", mark, [](Objects &o) { o.curve.setColor(Qt::red); }),
                    onGui("GradientCurve::setUpDirection", mark,
                            [](Objects &o) {
                                o.gradientCurve.setUpDirection(!o.gradientCurve.upDirection());
                            }),
                    onGui("GradientCurve::setShape", mark,
                            [](Objects &o) { o.gradientCurve.setShape(&o.fill); }),
                    onGui("GradientCurve::setContainsMouseMargin",
                            [](Objects &o) { o.gradientCurve.setContainsMouseMargin(77); }),
                    onGui("GradientCurve::contains",
                            [](Objects &o) {
                                (void)o.gradientCurve.contains({1.0, 1.0});
                            }),
                    onGui("LogarithmicCurveTransform::setDecibel",
                            [](Objects &o) { o.logarithm.setDecibel(0.125); }),
                    onGui("LogarithmicCurveTransform::setPointCount",
                            [](Objects &o) { o.logarithm.setPointCount(17); }),
            });
}

void addRenderer(Operations &list)
{
    using Node = OpenGLRenderNode;
    list.insert(list.end(),
            {
                    onRenderer("OpenGLRenderNode::setTextureSize",
                            [](Node &node) {
                                node.setTextureSize({8, 8});
                            }),
                    onRenderer("OpenGLRenderNode::setRect",
                            [](Node &node) {
                                node.setRect({0.0, 0.0, 8.0, 8.0});
                            }),
                    onRenderer("OpenGLRenderNode::setTraceData",
                            [](Node &node) { node.setTraceData(true, {}); }),
                    onRenderer("OpenGLRenderNode::setAntialiasing",
                            [](Node &node) { node.setAntialiasing(true); }),
                    onRenderer("OpenGLRenderNode::pushMouseEvents",
                            [](Node &node) { node.pushMouseEvents({}); }),
                    onRenderer("OpenGLRenderNode::takeMouseEventResponses",
                            [](Node &node) { (void)node.takeMouseEventResponses(); }),
                    onRenderer("OpenGLRenderNode::render", [](Node &node) { node.render(); }),
                    onRenderer("OpenGLRenderNode::handleMouseEvents",
                            [](Node &node) { node.handleMouseEvents(); }),
                    onRenderer("OpenGLRenderNode::findTraceAtEvent",
                            [](Node &node) {
                                QMouseEvent event(QEvent::MouseButtonPress, {3.0, 4.0}, {3.0, 4.0},
                                        {3.0, 4.0}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier,
                                        QPointingDevice::primaryPointingDevice());
                                (void)node.findTraceAtEvent(&event);
                            }),
                    onRenderer("OpenGLRenderNode::initGL", [](Node &node) { node.initGL(); }),
                    onRenderer("OpenGLRenderNode::recreateFBO",
                            [](Node &node) { node.recreateFBO(); }),
                    onRenderer("OpenGLRenderNode::renderVisual",
                            [](Node &node) { node.renderVisual(); }),
                    onRenderer("OpenGLRenderNode::renderSelection",
                            [](Node &node) { node.renderSelection(); }),
                    onRenderer(
                            "OpenGLRenderNode::renderGL", [](Node &node) { node.renderGL(false); }),
            });
}

} // namespace

const Operations &threadOperations()
{
    static const Operations operations = [] {
        Operations list;
        addDomain(list);
        addTrace(list);
        addChart(list);
        addGrids(list);
        addCurves(list);
        addRenderer(list);
        // One of each family.
        for (const auto *name :
                {"TraceDomain::setRangeX", "AbstractTrace::setName", "Chart::addTrace",
                        "XYGrid::setXLayout", "Curve::setP1", "OpenGLRenderNode::render"}) {
            for (ThreadOperation &operation : list) {
                if (operation.name == QLatin1StringView(name))
                    operation.isExample = true;
            }
        }
        return list;
    }();
    return operations;
}
