// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_RECORDINGPROVIDER_H
#define CHARTS_TEST_RECORDINGPROVIDER_H

#include <ChartsLibrary/GradientProvider.h>

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QRect>

#include <utility>

/*! Gives the heights that the test wants, and tells what it was asked for them. */
class RecordingProvider : public Charts::GradientProvider
{
public:
    struct Question
    {
        QList<QPointF> points;
        QRect rect;
        bool isUp = false;

        friend bool operator==(const Question &, const Question &) = default;
    };

    explicit RecordingProvider(QList<double> answer = {5.0, 7.0})
        : m_answer(std::move(answer))
    {
    }

    void setAnswer(const QList<double> &answer) { m_answer = answer; }
    /*! Since the last call. */
    [[nodiscard]] QList<Question> takeQuestions() { return std::exchange(m_questions, {}); }

    QList<double> gradientHeights(const QList<QPointF> &points, const QRect &rect, bool up) override
    {
        m_questions.append({points, rect, up});
        return m_answer;
    }

private:
    QList<double> m_answer;
    QList<Question> m_questions;
};

#endif
