// A view that writes down what it is told.
#pragma once

#include <paramdb/platform/framework/wnd.h>

#include <string>
#include <utility>
#include <vector>

class ViewLog : public CWndView {
public:
    ViewLog() = default;
    explicit ViewLog(CWnd& wnd) { Attach(wnd); }

    // What has come since the last call.
    std::vector<std::string> Take() { return std::exchange(m_events, {}); }

    void OnCreated() override { Add("created"); }
    void OnDestroyed() override { Add("destroyed"); }
    void OnControlGone() override { Add("gone"); }
    void OnVisibilityChanged() override { Add("visibility"); }
    void OnEnabledChanged() override { Add("enabled"); }
    void OnTitleChanged() override { Add("title"); }
    void OnContentChanged() override { Add("content"); }
    void OnItemsInserted(int first, int count) override {
        Add("inserted " + std::to_string(first) + " " + std::to_string(count));
    }
    void OnItemChanged(int item, int column) override {
        Add("item " + std::to_string(item) + " " + std::to_string(column));
    }
    void OnColumnsChanged() override { Add("columns"); }
    void OnHeaderChanged(int column) override { Add("header " + std::to_string(column)); }
    void OnSelectionChanged() override { Add("selection"); }
    void OnScrollChanged() override { Add("scroll"); }

private:
    void Add(std::string event) { m_events.push_back(std::move(event)); }

    std::vector<std::string> m_events;
};

using Events = std::vector<std::string>;
