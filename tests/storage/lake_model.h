// A lake in its plainest form, against which CLake is tested on random data.
//
// Lines stand in a vector and name each other by numbers that never change. Nothing here is fast and nothing
// is shared with the library.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace lake_model {

/// The number of a line, or one of the following.
using Ref = int;
constexpr Ref Nowhere = -1; // a position that was never set
constexpr Ref End = -2;     // the end of the list
constexpr Ref Lost = -3;    // a line that was removed

struct Line {
    Ref id = Nowhere;
    std::wstring key;
    std::wstring value;
    std::wstring comment;
    int level = -1;
    bool is_section = false;
    std::map<std::wstring, Ref> named;
    std::vector<Ref> unnamed;
    Ref first_child = Nowhere;
    Ref section_end = Nowhere;
};

/// Splits one line, without its line end.
Line ParseLine(std::string_view bytes);

/// What writing a lake gives. Lines end with LF here on every platform.
struct Written {
    std::string bytes;
    bool throws = false; // a line of level -1 stopped it
};

class Lake {
public:
    Lake() { Clear(); }

    void Read(std::string_view bytes);
    void ReadMissing();
    void Clear();
    void Assign(Lake const& other);
    void Merge(Lake const& other);
    static Lake CopyOf(Lake const& other);
    Written Write() const;

    void PushBack(std::size_t line, std::wstring const& text);
    void ClearSection(std::size_t line);
    void AssignAtTop(std::wstring const& key, std::wstring const& value);
    void SetValue(std::size_t line, std::wstring const& text) { m_lines[line].value = text; }
    void SetComment(std::size_t line, std::wstring const& text) { m_lines[line].comment = text; }

    Ref Find(std::size_t line, std::wstring const& key) const;
    long FindValue(std::size_t line, std::wstring const& text) const;

    std::vector<Line> const& lines() const { return m_lines; }
    /// The index of every line by its number; Lost for the numbers of removed lines.
    std::vector<int> Places() const;
    /// False if a record of the line names a line that was removed.
    bool IsIntact(std::size_t line) const;

private:
    Line& Make(std::size_t index, Line line);
    std::size_t IndexOf(Ref ref) const;
    std::size_t IndexBefore(Ref ref) const;
    void Append(Lake const& other);
    void LinkRoot();
    std::size_t Link(std::size_t section, std::size_t first, std::vector<int> const& places);
    Ref RefAt(std::size_t index) const;

    std::vector<Line> m_lines;
    Ref m_next_id = 0;
};

} // namespace lake_model
