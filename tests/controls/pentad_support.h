// What the tests of the key editor look at.
#pragma once

#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/framework/wnd.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

using Posts = std::vector<std::tuple<UINT, int, int>>;

// A window that notes what it gets to hear.
class Frame : public CWnd {
public:
    Frame() { Create(); }
    Posts posts;

protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
        if (message >= WM_USER)
            posts.emplace_back(message, static_cast<int>(first), static_cast<int>(second));
        return CWnd::OnMessage(message, first, second);
    }
};

using Lines = std::vector<std::vector<std::wstring>>;

inline Lines LinesOf(CXListCtrl const& list) {
    Lines lines;
    for (int row = 0; row < list.GetItemCount(); ++row) {
        lines.emplace_back();
        for (int column = 0; column < list.GetColumnCount(); ++column)
            lines.back().push_back(list.GetItemText(row, column).GetString());
    }
    return lines;
}

using Choices = std::vector<std::pair<int, std::wstring>>;

inline Choices ChoicesOf(CXListCtrl const& list, int row) {
    Choices choices;
    for (auto const& [id, text] : *list.GetComboBox(row, 1))
        choices.emplace_back(id, text.GetString());
    return choices;
}

// How the value -1 reads where nobody has said otherwise.
inline std::wstring const Dash = L"\u2014";
