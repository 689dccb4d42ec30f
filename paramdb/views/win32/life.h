// Whether an object that called out is still there when the call comes back: hosts may destroy a view, or the
// dialog around it, in whatever a view tells them. A helper of the views.
//
//     Life::Watch const watch(m_life);
//     CallControl([&] { m_list->Click(flags, point); });
//     if (watch.IsOver())
//         return; // this object is gone
#pragma once

#include <memory>

namespace paramdb::win32 {

class Life {
public:
    Life() = default;
    Life(Life const&) = delete;
    Life& operator=(Life const&) = delete;

    class Watch {
    public:
        explicit Watch(Life const& life) : m_token(life.m_token) {}
        [[nodiscard]] bool IsOver() const noexcept { return m_token.expired(); }

    private:
        std::weak_ptr<char> m_token;
    };

private:
    std::shared_ptr<char> m_token = std::make_shared<char>();
};

// Holds a mark for the time of a block.
class Mark {
public:
    explicit Mark(bool& mark) : m_mark(mark), m_before(mark) { m_mark = true; }
    Mark(Mark const&) = delete;
    Mark& operator=(Mark const&) = delete;
    ~Mark() { m_mark = m_before; }

private:
    bool& m_mark;
    bool m_before;
};

} // namespace paramdb::win32
