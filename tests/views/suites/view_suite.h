// A test with a control on the screen.
#pragma once

#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/framework/message_queue.h>

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <tests/views/suites/view_driver.h>
#include <vector>

using Texts = std::vector<std::string>;

class ViewSuite : public testing::Test {
protected:
    ViewSuite() { CLibMgr::SetLanguage(CLibMgr::Language::english); }
    ~ViewSuite() override {
        view.reset();
        CMessageQueue::Clear();
        CLibMgr::ResetLanguage();
    }

    // At a cell, scrolled into sight first: at a place counted from its upper left corner, in its middle
    // without one.
    void ClickCell(int row, int column, Held held = {}, CPoint place = {-1, 0}) {
        ScrollIntoSight(row, column);
        CRect const cell = view->Cell(row, column);
        CPoint const middle(cell.Width() / 2, cell.Height() / 2);
        CPoint const offset = place.x < 0 ? middle : place;
        view->Click(CPoint(static_cast<int>(cell.left + offset.x), static_cast<int>(cell.top + offset.y)),
                    held);
    }
    void ScrollIntoSight(int row, int column) {
        CRect const cell = view->Cell(row, column);
        CRect const sight = view->RowsInSight();
        CPoint to = view->Scroll();
        if (cell.top < sight.top || cell.bottom > sight.bottom)
            to.y += cell.top - sight.top - sight.Height() / 2 / cell.Height() * cell.Height();
        if (cell.left < 0 && cell.Width() <= sight.Width())
            to.x += cell.left;
        else if (cell.right > sight.right)
            to.x += cell.right - sight.right;
        if (!(to == view->Scroll()))
            view->ScrollTo(to);
    }
    [[nodiscard]] bool IsInSight(int row) {
        CRect const cell = view->Cell(row, 0);
        CRect const sight = view->RowsInSight();
        return cell.top >= sight.top && cell.bottom <= sight.bottom;
    }
    // The texts of a column.
    [[nodiscard]] Texts Shown(int column = 0) {
        Texts texts;
        for (int row = 0; row < view->Rows(); ++row)
            texts.push_back(view->Text(row, column));
        return texts;
    }

    std::unique_ptr<ViewDriver> view = MakeViewDriver();
};
