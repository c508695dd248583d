// SPDX-License-Identifier: MIT
#include "LivingScene.h"

#include "CreateInQml.h"
#include "ItemPicture.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>

#include <array>
#include <vector>

namespace {

using Charts::DrawType;

constexpr double lineHeights[] = {105.5, 95.5};

struct Place
{
    const char *what;
    QPoint pixel;
    QColor color;
};

/*!
    Rows are counted from the top, as in pictures; the traces count from the bottom of the 120 rows.
    The grid has columns at multiples of 17.9 and rows at multiples of 119 / 3, rounded. Its lines
    are 3 wide and cover the pixels in their middle. The fill begins with the curve in row 85 and
    fades to nothing in row 120: that much of the black is left in the middle of a pixel.
*/
std::array<Place, 15> placesIn(int turn)
{
    const auto gray = [](double row) {
        const double strength = 1.0 - (row - 85.0) / 35.0;
        const int level = qRound(255.0 * (1.0 - strength));
        return QColor(level, level, level);
    };
    const QColor upper = turn == 0 ? Qt::red : Qt::white;
    const QColor lower = turn == 0 ? Qt::white : Qt::red;
    return {{
            {"the line's upper place", {45, 14}, upper},
            {"the line's lower place", {45, 24}, lower},
            {"the line's upper place, further right", {135, 14}, upper},
            {"the line's lower place, further right", {135, 24}, lower},
            {"the first dot", {27, 59}, Qt::blue},
            {"the second dot", {152, 59}, Qt::blue},
            {"the many points, on the left", {12, 49}, Qt::magenta},
            {"the many points, on the right", {168, 48}, Qt::magenta},
            {"a row of the grid", {45, 40}, Qt::green},
            {"a column of the grid", {90, 60}, Qt::green},
            {"nothing", {45, 60}, Qt::white},
            {"nothing above all", {45, 5}, Qt::white},
            {"the curve", {45, 85}, Qt::black},
            {"the fill", {45, 95}, gray(95.5)},
            {"the fill, further down", {135, 110}, gray(110.5)},
    }};
}

} // namespace

QByteArray LivingScene::element(const QByteArray &properties)
{
    return QByteArrayLiteral("Item {") + properties + QByteArrayLiteral(R"(
        width: 180
        height: 120

        XYGrid {
            anchors.fill: parent
            yCount: 3
            lineWidth: 3
            innerGridLinesColor: "#00ff00"
        }
        Chart {
            anchors.fill: parent
            antialiasing: false
        }
        GradientCurve {
            anchors.fill: parent
            p1: Qt.point(0, 85)
            p2: Qt.point(180, 85)
            lineWidth: 2
            color: "black"
            geometryTransform: LinearCurveTransform {}
            shape: FillRectProvider {}
        }
    })");
}

LivingScene::LivingScene()
    : m_line(size, DrawType::LineStrip, 5.0F, Qt::red)
    , m_dots(size, DrawType::Points, 9.0F, Qt::blue)
    , m_many(size, DrawType::LineStrip, 1.0F, Qt::magenta)
{
    m_dots.setPoints(std::vector<QPointF>{{27.5, 60.5}, {152.5, 60.5}});
    // Up and down between two heights so often that no pixel is left out.
    std::vector<QPointF> points;
    for (int i = 0; i <= 1600; ++i)
        points.emplace_back(10.0 + i / 10.0, i % 2 == 0 ? 70.0 : 72.0);
    m_many.setPoints(points);
    setRound(0);
}

std::unique_ptr<QQuickItem> LivingScene::create()
{
    std::unique_ptr<QObject> object = createInQml(element());
    auto *item = qobject_cast<QQuickItem *>(object.get());
    if (!item || !attach(*item))
        return {};
    static_cast<void>(object.release());
    return std::unique_ptr<QQuickItem>(item);
}

bool LivingScene::attach(QQuickItem &item)
{
    const auto charts = item.findChildren<Charts::Chart *>();
    if (charts.size() != 1)
        return false;
    m_chart = charts.front();
    for (PixelTrace *trace : {&m_line, &m_dots, &m_many})
        m_chart->addTrace(trace);
    return true;
}

void LivingScene::setRound(int round)
{
    m_turn = round % 2;
    const double height = lineHeights[m_turn];
    m_line.setPoints(std::vector<QPointF>{{10.0, height}, {170.0, height}});
    if (m_chart)
        m_chart->updateTraces();
}

void LivingScene::clickOnLine()
{
    const QPointF place(45.0, size.height() - lineHeights[m_turn]);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, place, place, Qt::LeftButton,
                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_chart, &event);
    }
}

QString LivingScene::differenceFrom(const QImage &picture, QPoint topLeft, const QString &way)
{
    constexpr int tolerance = 3;
    if (!picture.rect().contains(QRect(topLeft, size)))
        return QStringLiteral("no picture");
    const QImage part = picture.copy(QRect(topLeft, size)).convertToFormat(QImage::Format_RGB32);
    for (const Place &place : placesIn(m_turn)) {
        const QColor actual = part.pixelColor(place.pixel);
        if (distanceOf(actual, place.color) > tolerance) {
            return QStringLiteral("%1 at (%2, %3) is %4, not %5")
                    .arg(QString::fromLatin1(place.what))
                    .arg(place.pixel.x())
                    .arg(place.pixel.y())
                    .arg(actual.name(), place.color.name());
        }
    }

    QImage &first = m_firstPictures[way + QString::number(m_turn)];
    if (first.isNull())
        first = part;
    for (int row = 0; row < size.height(); ++row) {
        for (int column = 0; column < size.width(); ++column) {
            const QColor actual = part.pixelColor(column, row);
            const QColor expected = first.pixelColor(column, row);
            if (actual != expected) {
                return QStringLiteral("(%1, %2) is %3, but was %4 at first")
                        .arg(column)
                        .arg(row)
                        .arg(actual.name(), expected.name());
            }
        }
    }
    return {};
}

QString LivingScene::differenceFromWhite(const QImage &picture, QPoint topLeft)
{
    if (!picture.rect().contains(QRect(topLeft, size)))
        return QStringLiteral("no picture");
    QImage white(size, QImage::Format_RGB32);
    white.fill(Qt::white);
    return picture.copy(QRect(topLeft, size)).convertToFormat(QImage::Format_RGB32) == white
                   ? QString()
                   : QStringLiteral("something is still to be seen");
}
