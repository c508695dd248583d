// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_GLBOUNDS_H
#define CHARTS_TEST_GLBOUNDS_H

#include "GlProbe.h"

#include <QtCore/QStringList>
#include <QtGui/qopengl.h>

#include <cstdint>
#include <map>

/*!
    Follows the calls of charts and says which of them go beyond the buffer they use: uploads,
    allocations of a negative size, and vertices that are drawn.
*/
class GlBounds
{
public:
    /*! Calls out of bounds since the last time. */
    [[nodiscard]] QStringList takeViolations()
    {
        QStringList wrong;
        for (const GlProbe::Call &call : m_log.everything()) {
            if (call.inSection && !follow(call)) {
                wrong.append(QString::fromLatin1(call.function.data(), int(call.function.size()))
                             + QStringLiteral("(%1, %2, %3)")
                                       .arg(call.argument(0))
                                       .arg(call.argument(1))
                                       .arg(call.argument(2)));
            }
        }
        m_log.clear();
        return wrong;
    }

private:
    bool follow(const GlProbe::Call &call)
    {
        constexpr std::int64_t pointSize = 12;
        const auto number = [&call](std::size_t index) {
            return static_cast<std::int64_t>(call.argument(index));
        };
        if (call.function == "glBindBuffer" && call.integer(0) == GL_ARRAY_BUFFER) {
            m_bound = call.integer(1);
        } else if (call.function == "glBufferData") {
            m_sizes[m_bound] = number(1);
            return m_bound != 0 && number(1) >= 0;
        } else if (call.function == "glBufferSubData") {
            return m_bound != 0 && number(1) >= 0 && number(2) >= 0
                   && number(1) + number(2) <= m_sizes[m_bound];
        } else if (call.function == "glVertexAttribPointer") {
            m_pointed = m_bound;
        } else if (call.function == "glDrawArrays") {
            return m_pointed != 0 && number(1) >= 0 && number(2) > 0
                   && (number(1) + number(2)) * pointSize <= m_sizes[m_pointed];
        }
        return true;
    }

    GlProbe::Log m_log;
    std::map<int, std::int64_t> m_sizes;
    int m_bound = 0;
    int m_pointed = 0; // what the vertices are read from
};

#endif
