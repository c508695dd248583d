// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_FIXEDPLACE_H
#define CHARTS_TEST_FIXEDPLACE_H

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

/*! Memory for one object. Each object made here has the address of the one before, as an allocator
    may give it, too, but does not promise. */
template<typename Object>
class FixedPlace
{
public:
    FixedPlace() = default;
    ~FixedPlace() { destroy(); }
    FixedPlace(const FixedPlace &) = delete;
    FixedPlace &operator=(const FixedPlace &) = delete;

    template<typename... Arguments>
    Object &make(Arguments &&...arguments)
    {
        destroy();
        m_object = new (m_memory.data()) Object(std::forward<Arguments>(arguments)...);
        return *m_object;
    }
    void destroy()
    {
        if (Object *object = std::exchange(m_object, nullptr))
            std::destroy_at(object);
    }

private:
    alignas(Object) std::array<std::byte, sizeof(Object)> m_memory;
    Object *m_object = nullptr;
};

#endif
