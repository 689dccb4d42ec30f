// A list of texts of which one is selected, each with a number of the host's.
//
//     CComboBox combo;
//     combo.SetItemData(combo.AddString(L"Ramp"), 4);
//     combo.SetCurSel(0);
//
// Every operation is there as a message too (CB_ADDSTRING and so on), with the same answers.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/wnd.h>

#include <cstdint>
#include <vector>

class PARAMDB_API CComboBox : public CWnd {
public:
    // A sorted one puts each text in its place, without regard to case; equal ones keep the order in which
    // they came.
    explicit CComboBox(bool sorted = false) noexcept : m_sorted(sorted) {}

    [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(m_rows.size()); }
    // Removes all rows; nothing is selected.
    void ResetContent();
    // Adds a row and returns where it is now: at the end, or where sorting has put it. Its data is 0.
    int AddString(wchar_t const* text);

    // The text of a row: its length, with the text handed over; CB_ERR, and nothing handed over, on a miss.
    int GetLBText(int index, CString& text) const;
    // The data of a row: CB_ERR for a row that is not there, SetItemData then changes nothing and answers
    // CB_ERR, else 0.
    [[nodiscard]] std::intptr_t GetItemData(int index) const noexcept;
    int SetItemData(int index, std::intptr_t data) noexcept;

    // The selected row, or CB_ERR.
    [[nodiscard]] int GetCurSel() const noexcept { return m_selected; }
    // Selects a row and returns it. Any other number leaves none selected and answers CB_ERR.
    int SetCurSel(int index);
    // The first row behind `after` with exactly that text but for case, going on from the top; CB_ERR on a
    // miss.
    [[nodiscard]] int FindStringExact(int after, wchar_t const* text) const;

    // For views: the user has picked a row. Selects it and tells the parent (WM_COMMAND with the id and
    // CBN_SELCHANGE).
    void Choose(int index);

protected:
    void OnDestroy() override; // empties it
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

private:
    struct Row {
        CString text;
        std::intptr_t data = 0;
    };

    [[nodiscard]] bool Has(int index) const noexcept { return index >= 0 && index < GetCount(); }

    std::vector<Row> m_rows;
    int m_selected = CB_ERR;
    bool m_sorted;
};
