// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_PAINTEDCURVE_H
#define CHARTS_TEST_PAINTEDCURVE_H

#include "PaintedItem.h"
#include "SmoothVertices.h"

#include <ChartsLibrary/AbstractCurveTransform.h>

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QSizeF>

#include <cmath>
#include <utility>

/*! A curve without a window. Its first node below the paint node is the line. */
template<typename Curve>
class PaintedCurve : public PaintedItem<Curve>
{
public:
    explicit PaintedCurve(const QSizeF &size = {200.0, 100.0}) { this->setSize(size); }

    [[nodiscard]] QSGGeometryNode *lineNode() const
    {
        return static_cast<QSGGeometryNode *>(childrenOf(this->node()).at(0));
    }
    [[nodiscard]] QList<Vertex> lineVertices() const { return verticesOf(*lineNode()); }
};

/*! Gives the points that the test wants, and tells how often and for which ends it was asked. */
class RecordingTransform : public Charts::AbstractCurveTransform
{
public:
    using Ends = std::pair<QPointF, QPointF>;

    explicit RecordingTransform(QList<QPointF> answer = {{0.0, 0.0}, {30.0, 40.0}})
        : m_answer(std::move(answer))
    {
    }

    void setAnswer(const QList<QPointF> &answer) { m_answer = answer; }
    /*! What it was asked since the last call. */
    [[nodiscard]] QList<Ends> takeQuestions() { return std::exchange(m_questions, {}); }

    QList<QPointF> points(QPointF p1, QPointF p2) override
    {
        m_questions.append({p1, p2});
        return m_answer;
    }

private:
    QList<QPointF> m_answer;
    QList<Ends> m_questions;
};

/*!
    The vertices of a smooth polyline. Lengths and edges are computed with more digits than a vertex
    holds; products and quotients of two floats are rounded once.
*/
inline QList<Vertex> smoothPolyline(
        const QList<QPointF> &points, float width, const ColorBytes &color)
{
    constexpr ColorBytes clear = {0, 0, 0, 0};
    const auto reach = float(double(width) * double(0.4F));
    QList<Vertex> vertices;
    for (qsizetype i = 1; i < points.size(); ++i) {
        const QPointF p = points.at(i - 1) + QPointF(0.5, 0.5);
        const QPointF q = points.at(i) + QPointF(0.5, 0.5);
        auto nx = float(p.y() - q.y());
        auto ny = float(q.x() - p.x());
        using Wide = long double;
        const auto length = float(std::sqrt(Wide(nx) * Wide(nx) + Wide(ny) * Wide(ny)));
        if (std::abs(length) <= 1e-5F) {
            nx = ny = 0.0F;
        } else if (!(std::abs(length - 1.0F) <= 1e-5F)) {
            nx = float(double(nx) / double(length));
            ny = float(double(ny) / double(length));
        }
        // Transparent outside, the colour within; the last but one column says on which side.
        struct Pair
        {
            ColorBytes color;
            int edge;
            int offset;
        };
        for (const auto &[bytes, edge, offset] :
                {Pair{clear, 1, 1}, Pair{color, 1, -1}, Pair{color, -1, 1}, Pair{clear, -1, -1}}) {
            for (const QPointF &end : {p, q}) {
                Vertex vertex;
                vertex.x = float(double(Wide(end.x()) + edge * (Wide(width) / 2) * Wide(nx)));
                vertex.y = float(double(Wide(end.y()) + edge * (Wide(width) / 2) * Wide(ny)));
                vertex.color = bytes;
                vertex.dx = float(offset * (double(reach) * double(nx)));
                vertex.dy = float(offset * (double(reach) * double(ny)));
                vertices.append(vertex);
            }
        }
    }
    return vertices;
}

#endif
