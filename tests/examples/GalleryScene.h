// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_GALLERYSCENE_H
#define CHARTS_TEST_GALLERYSCENE_H

#include "Graphics.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QSequentialIterable>
#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuickControls2/QQuickStyle>
#include <QtTest/QTest>

#include <memory>

inline constexpr int patience = 5000; // milliseconds

inline const QStringList pages = {QStringLiteral("Live"), QStringLiteral("Signal"),
        QStringLiteral("Bode"), QStringLiteral("Network"), QStringLiteral("Limits"),
        QStringLiteral("Picking"), QStringLiteral("Large")};

/*! The window of a document, with what there is to see of its chart. */
class Scene
{
public:
    Scene(QQmlComponent &component, const QVariantMap &properties)
        : m_root(component.createWithInitialProperties(properties))
    {
        if (!m_root)
            qFatal("%s", qPrintable(component.errorString()));
    }

    [[nodiscard]] QQuickWindow *window() const
    {
        return qobject_cast<QQuickWindow *>(m_root.get());
    }
    [[nodiscard]] QQuickItem *page() const
    {
        return m_root->property("page").value<QQuickItem *>();
    }
    [[nodiscard]] Charts::Chart *chart() const
    {
        return page()->property("chart").value<Charts::Chart *>();
    }
    [[nodiscard]] Charts::AbstractTrace *hoveredTrace() const
    {
        return chart()->property("hoveredTrace").value<Charts::AbstractTrace *>();
    }
    [[nodiscard]] QString text(const char *name) const
    {
        const auto *item = page()->findChild<QQuickItem *>(QString::fromLatin1(name));
        return item->property("text").toString();
    }

    [[nodiscard]] QObject *object(const char *name) const
    {
        return page()->findChild<QObject *>(QString::fromLatin1(name));
    }

    [[nodiscard]] QList<Charts::AbstractTrace *> traces() const
    {
        QList<Charts::AbstractTrace *> result;
        const QVariant list = page()->property("traces");
        for (const QVariant &value : list.value<QSequentialIterable>())
            result.append(qobject_cast<Charts::AbstractTrace *>(value.value<QObject *>()));
        return result;
    }

    /*! The pixel of the window at a point in data units. */
    [[nodiscard]] QPoint pixelOf(const Charts::AbstractTrace &trace, const QPointF &point) const
    {
        const Charts::TraceDomain &domain = *trace.domain();
        const double x = (point.x() - domain.minX()) / domain.spanX() * chart()->width();
        const double y = (domain.maxY() - point.y()) / domain.spanY() * chart()->height();
        return chart()->mapToScene({x, y}).toPoint();
    }
    [[nodiscard]] QPoint pixelAt(double xShare, double yShare) const
    {
        return chart()
                ->mapToScene({xShare * chart()->width(), yShare * chart()->height()})
                .toPoint();
    }

    void moveTo(const QPoint &pixel) const { QTest::mouseMove(window(), pixel); }
    void click(const QPoint &pixel) const
    {
        QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier, pixel);
    }
    void drag(const QPoint &from, const QPoint &to) const
    {
        QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(window(), (from + to) / 2);
        QTest::mouseMove(window(), to);
        QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, to);
    }

private:
    std::unique_ptr<QObject> m_root;
};

/*! The gallery's window at one of its pages; null if it does not appear. */
inline std::unique_ptr<Scene> openPage(
        QQmlEngine &engine, const QString &page, const QString &theme = QStringLiteral("dark"))
{
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Gallery/Main.qml")));
    auto scene = std::make_unique<Scene>(component,
            QVariantMap{{QStringLiteral("pages"), pages}, {QStringLiteral("currentPage"), page},
                    {QStringLiteral("theme"), theme}});
    return QTest::qWaitForWindowExposed(scene->window()) ? std::move(scene) : nullptr;
}

/*! What the gallery's own main() does before there is an application. */
inline void setUpGallery()
{
    Graphics::setUp();
    QQuickStyle::setStyle(QStringLiteral("Basic"));
}

/*! Lets \a engine find the gallery, and puts the pointer out of the window, lest its coming in be taken
    for a move of the test. */
inline void prepare(QQmlEngine &engine)
{
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    engine.addImportPath(QStringLiteral(":/qt/qml"));
}

#endif
