// The window that the controls of a pane belong to: hands on what they tell.
#pragma once

#include <paramdb/platform/framework/wnd.h>

#include <functional>

namespace paramdb::browser {

class ControlOwner : public CWnd {
public:
    using Callback = std::function<void(UINT message)>;

    // The callback gets every message of a control.
    explicit ControlOwner(Callback callback) : m_callback(std::move(callback)) { Create(); }

protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
        m_callback(message);
        return CWnd::OnMessage(message, first, second);
    }

private:
    Callback m_callback;
};

} // namespace paramdb::browser
