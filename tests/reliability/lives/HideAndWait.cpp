// SPDX-License-Identifier: MIT
#include "HideAndWait.h"

#include <QtCore/QAbstractNativeEventFilter>
#include <QtCore/QCoreApplication>
#include <QtGui/QWindow>
#include <QtTest/QTest>

#include <xcb/xcb.h>

namespace {

class UnmapFilter : public QAbstractNativeEventFilter
{
public:
    explicit UnmapFilter(WId window)
        : m_window(window)
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    [[nodiscard]] bool isUnmapped() const { return m_isUnmapped; }

    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *) override
    {
        constexpr unsigned sentByClient = 0x80;
        const auto *event = static_cast<const xcb_generic_event_t *>(message);
        if (type == "xcb_generic_event_t"
                && (event->response_type & ~sentByClient) == XCB_UNMAP_NOTIFY) {
            const auto *unmapped = static_cast<const xcb_unmap_notify_event_t *>(message);
            m_isUnmapped = m_isUnmapped || unmapped->window == m_window;
        }
        return false;
    }

private:
    WId m_window;
    bool m_isUnmapped = false;
};

} // namespace

bool hideAndWait(const QWindow &window, const std::function<void()> &hide)
{
    const UnmapFilter filter(window.winId());
    hide();
    return QTest::qWaitFor([&filter] { return filter.isUnmapped(); });
}
