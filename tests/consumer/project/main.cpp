// SPDX-License-Identifier: MIT
#include "AllHeaders.h"
#include "RampTrace.h"

#include <QtCore/QFile>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <cstdio>
#include <memory>

// How the library is compiled is none of our business.
#if defined(QT_NO_CAST_FROM_ASCII) || defined(QT_NO_CAST_TO_ASCII) || defined(QT_NO_KEYWORDS)      \
        || defined(QT_NO_FOREACH) || defined(QT_NO_URL_CAST_FROM_STRING)                           \
        || defined(QT_NO_NARROWING_CONVERSIONS_IN_CONNECT) || defined(ChartsLibrary_EXPORTS)
#error "A definition of the library's own build reached this project"
#endif

namespace {

int differences = 0;

void check(bool isTrue, const char *what)
{
    if (isTrue)
        return;
    ++differences;
    std::printf("not as expected: %s\n", what);
}

#define CHECK(condition) check(condition, #condition)

void checkElements(QQmlEngine &engine)
{
    for (const char *element : {"Chart", "ZoomDelegate"}) {
        QQmlComponent component(&engine);
        component.setData("import zel.charts 1.0\n" + QByteArray(element) + " {}", QUrl());
        check(std::unique_ptr<QObject>(component.create()) != nullptr, element);
    }
    for (const char *element : {"AbstractTrace", "TraceDomain", "ChartItem", "ChartMouseEvent"}) {
        QQmlComponent component(&engine);
        component.setData("import zel.charts 1.0\n" + QByteArray(element) + " {}", QUrl());
        check(component.isError(), element);
    }
    QQmlComponent component(&engine);
    component.setData("import QtQml\nimport zel.charts 2.0\nQtObject {}", QUrl());
    check(component.isError(), "import zel.charts 2.0");
}

void checkDocument(QQmlEngine &engine, const QString &path)
{
    RampTrace trace;
    int repaints = 0;
    QObject::connect(&trace, &RampTrace::repainted, [&repaints] { ++repaints; });

    QQmlComponent component(&engine, QUrl::fromLocalFile(path));
    const std::unique_ptr<QObject> root(component.createWithInitialProperties(
            {{"trace", QVariant::fromValue<Charts::AbstractTrace *>(&trace)}}));
    if (!root) {
        check(false, qPrintable(component.errorString()));
        return;
    }

    const auto span = root->property("span").value<Charts::Span>();
    CHECK(span.min == 1.0 && span.max == 2.0);
    CHECK(span == Charts::Span(1.0, 2.0));
    CHECK(root->property("step").toDouble() == 0.125);
    CHECK(root->property("pixel").toDouble() == 50.0);
    CHECK(root->property("lastWidth").toDouble() == 4.0);

    auto *chart = qobject_cast<Charts::Chart *>(root->property("chart").value<QObject *>());
    CHECK(chart != nullptr);
    if (!chart)
        return;
    CHECK(chart->size() == QSizeF(320.0, 200.0));
    CHECK(chart->rubberBand() != nullptr);
    CHECK(chart->rubberBand()
            && chart->rubberBand()->zoomType() == Charts::ZoomDelegate::Horizontal);
    CHECK(chart->includes(&trace));
    CHECK(trace.domain()->size() == QSizeF(320.0, 200.0));
    CHECK(trace.name() == "ramp");
    CHECK(trace.color() == QColor(0x10, 0x20, 0x30));
    CHECK(repaints == 1);

    CHECK(trace.updateCount() == 0);
    chart->updateTraces();
    CHECK(trace.updateCount() == 1);
    const Charts::TraceData &data = *trace.traceData();
    CHECK(data.array().size() == 11 && data.array().back().x == 10.0F);
    CHECK(data.filledRange().size() == 11 && !data.filledRange().isEmpty());
    CHECK(data.dirtyRange().contain(10) && !data.dirtyRange().contain(11));
    CHECK(data.color() == QColor(0x10, 0x20, 0x30) && data.width() == 4.0F && data.isDirty());

    trace.domain()->setRangeXY(0.0, 10.0, 0.0, 1.0);
    CHECK(trace.domain()->domainPoint(QPointF(160.0, 50.0)) == QPointF(5.0, 0.75));
    chart->zoomIn(QRectF(80.0, 50.0, 160.0, 100.0));
    CHECK(chart->isZoomed());
    CHECK(trace.domain()->xRange() == Charts::Span(2.5, 7.5));
    chart->removeTrace(&trace);
    CHECK(!chart->includes(&trace));
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::puts("which document?");
        return 2;
    }
    QQmlEngine engine;
    for (const QString &path : engine.importPathList())
        check(!QFile::exists(path + "/zel/charts/qmldir"), qPrintable(path));
    checkElements(engine);
    checkDocument(engine, argv[1]);
    QFile qmldir(":/qt/qml/zel/charts/qmldir");
    CHECK(qmldir.open(QIODevice::ReadOnly) && qmldir.readAll().size() == 189);
    return differences == 0 ? 0 : 1;
}
