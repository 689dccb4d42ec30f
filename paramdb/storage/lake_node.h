// A line of a lake, and the section that it opens.
//
// Every line of a parameter file is one CLakeNode in the flat list of its lake, in file order. A section is a
// node whose children are recorded as positions in that same list: named children (those with a key) in a
// map, unnamed ones (rows, comments, blank lines) in a vector. Inside CLake the class is known as
// CLake::CNode.
//
// Texts come out of a node in two ways. key(), value() and comment() give wide strings, made at the first
// call and kept with the node. key_text(), value_text() and comment_text() give views of what the lake holds
// and cost nothing; readers of many rows use them.
//
// Threads: const members may run in several threads at once, the others must run alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/storage/lake_line.h>
#include <paramdb/storage/lake_text.h>
#include <paramdb/storage/node_list.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

class CLakeNodeProxy;
namespace paramdb {
class LakeLinker;
class LineOrigins;
} // namespace paramdb

class PARAMDB_API CLakeNode : private paramdb::NodeLinks {
public:
    using list = paramdb::NodeList<CLakeNode>;
    using position = list::iterator;
    using named_map = std::map<std::wstring, position>;
    using unnamed_vector = std::vector<position>;

    // A line with empty texts, in no list, at level -1.
    CLakeNode() = default;
    // A line with these texts that refers to this list (but does not stand in it), at level -1, no section.
    CLakeNode(list* collection, std::wstring key, std::wstring value, std::wstring comment);
    // Copies every member; positions and the list still are those of the source until the copy is linked. The
    // copy owns its texts and does not depend on the lake of the source.
    CLakeNode(CLakeNode const& other);
    CLakeNode& operator=(CLakeNode const& other);
    ~CLakeNode() { delete m_texts.load(std::memory_order_relaxed); }

    // Assigns the value only; as with value(), the section flag stays as it is.
    CLakeNode& operator=(std::wstring value);

    std::wstring const& key() const { return wide().key; }
    std::wstring const& value() const { return wide().value; }
    std::wstring const& comment() const { return wide().comment; }
    void value(std::wstring text);
    void comment(std::wstring text);

    // Views of the texts; valid while the node stays in its lake and the text is not assigned.
    paramdb::LakeText key_text() const;
    paramdb::LakeText value_text() const {
        if (!holds_bytes())
            return std::wstring_view(wide().value);
        return m_is_named ? second_bytes() : first_bytes();
    }
    paramdb::LakeText comment_text() const;

    // True if the key is not empty.
    bool is_named() const { return m_is_named; }
    bool is_section() const { return m_is_section; }

    // Nesting depth: 0 for a top-level line, -1 for the root and for a line that was never linked.
    std::int32_t level() const { return m_level; }
    // The list that holds the node; null for a node outside a lake.
    list* collection() const { return m_collection; }
    // The line behind the opener of a section; null for a line that was never a section.
    position first_child() const { return m_section ? m_section->first_child : position(); }
    // Where the section's next line goes: behind the closing line of a section read from a file, at the
    // closing line of one made in memory. Null for a line that was never a section.
    position section_end() const { return m_section ? m_section->section_end : position(); }

    // Direct children with a key, one for each distinct key, in the order of their code units.
    std::size_t named_size() const { return records().named.size(); }
    named_map::const_iterator begin_named() const { return records().named.begin(); }
    named_map::const_iterator end_named() const { return records().named.end(); }

    // Direct children without a key, in file order: rows, but also comments and blank lines.
    std::size_t unnamed_size() const { return records().unnamed.size(); }
    unnamed_vector::const_iterator begin_unnamed() const { return records().unnamed.begin(); }
    unnamed_vector::const_iterator end_unnamed() const { return records().unnamed.end(); }

    // The child with exactly this key. A miss, also on a line that is no section, gives section_end(), which
    // is the end of the list for the root alone.
    position find(std::wstring const& key) const;

    // The index among the unnamed children of the first whose value is this text, or -1; the empty text finds
    // a comment or a blank line. -1 on a line that is no section.
    std::int64_t find_value(std::wstring const& text) const;

    // find() with all that a caller needs to judge the result. Creates nothing.
    CLakeNodeProxy operator[](std::wstring const& key) const;

    // Appends an unnamed child with this value and returns its index among them. A plain line becomes a
    // section: its value turns into "{" and a closing line with its key as comment is added.
    std::uint64_t push_back(std::wstring text);

    // Builds the children records from the lines that begin at the position, and those of every section
    // below. Returns the position behind the closing line, or the end of the list. A repeated plain key keeps
    // the first line; each opener of a repeated section key links the first line of that key again, so that
    // it shows the last section's lines.
    position link(position first);

    // Empties key, value and children, drops list and section flag, sets the level to -1. The comment and the
    // positions first_child and section_end stay, on purpose.
    void clear();

    // Removes the lines of the children records from the list and empties the records. Closing lines,
    // superseded lines and the lines of child sections stay in the list. Without a list only the records are
    // emptied.
    void clear_section();

    void set_collection(list* collection) { m_collection = collection; }

private:
    friend class CLake;
    friend class CLakeNodeProxy;
    friend class paramdb::LakeLinker;
    friend class paramdb::LineOrigins;
    friend class paramdb::NodeList<CLakeNode>;
    friend class paramdb::NodePosition<CLakeNode>;
    friend class paramdb::NodePosition<CLakeNode const>;

    struct WideTexts {
        std::wstring key, value, comment;
    };
    struct Section {
        named_map named;
        unnamed_vector unnamed;
        position first_child;
        position section_end;
    };

    WideTexts const& wide() const;
    WideTexts& own_texts() { return const_cast<WideTexts&>(wide()); }
    bool holds_bytes() const { return m_texts.load(std::memory_order_acquire) == nullptr; }
    std::string_view first_bytes() const { return {m_bytes, m_first_length}; }
    std::string_view second_bytes() const { return {m_bytes + m_second_offset, m_second_length}; }

    Section const& records() const { return m_section ? *m_section : NoRecords; }
    Section& own_records();

    // Back to the state of a new node, in its place in the list.
    void reset();
    // Takes the texts of a line, as views of bytes that the lake keeps, into a new node.
    void set_line(paramdb::LakeLine const& line) {
        m_is_named = !line.key.empty();
        std::string_view const first = m_is_named ? line.key : line.value;
        std::string_view const second = m_is_named ? line.value : line.comment;
        std::size_t const offset =
            second.empty() ? 0 : static_cast<std::size_t>(second.data() - first.data());
        m_bytes = first.data();
        m_is_section = line.value.size() == 1 && line.value.front() == '{';
        if ((first.size() | second.size() | offset) > LongestBytes)
            return keep_wide(line);
        m_first_length = static_cast<std::uint32_t>(first.size());
        m_second_offset = static_cast<std::uint32_t>(offset) & LongestBytes;
        m_second_length = static_cast<std::uint32_t>(second.size());
    }
    // The same for a line too long for that; the node owns its texts then.
    void keep_wide(paramdb::LakeLine const& line);
    // Makes this new node hold the texts, level and section flag of the other, and refer to the same bytes.
    // No list, no records.
    void copy_line(CLakeNode const& other);

    // The position behind this line, or the end of its list for a node that does not stand in it.
    position behind();
    // Turns a plain line into a section with a closing line.
    void make_section();
    // Adds a line with this key before section_end and returns it.
    position insert(std::wstring const& key);
    void begin_section();
    // Records a line as child and returns the child that its key names, or the line itself.
    position add_child(position line);
    void remove_line(position line);

    static Section const NoRecords;
    static constexpr std::uint32_t LongestBytes = (std::uint32_t{1} << 30) - 1;

    list* m_collection = nullptr;

    // The texts stand in the bytes of a file until somebody wants them wide: the key and behind it the value
    // of a named line, the value and behind it the comment of an unnamed one.
    char const* m_bytes = "";
    mutable std::atomic<WideTexts*> m_texts = nullptr; // owned; once set it holds and m_bytes is the origin
    std::uint32_t m_first_length = 0;
    std::uint32_t m_second_length = 0;
    std::uint32_t m_second_offset : 30 = 0;
    std::uint32_t m_is_named : 1 = false;
    std::uint32_t m_is_section : 1 = false;
    std::int32_t m_level = -1;

    std::unique_ptr<Section> m_section; // null while all records are at their defaults
};

// What operator[] of a lake or node answers. Owns no node. A lookup has failed when `position` is the end of
// the list, which is exact for a search in the root.
class PARAMDB_API CLakeNodeProxy {
public:
    CLakeNode::list* collection = nullptr;
    CLakeNode::position
        section_start; // the searched section's first child, or the list's first node if it has none
    std::uint64_t reserved = 0;
    CLakeNode::position position;
    std::wstring key;
    CLakeNode* section = nullptr; // the node searched

    // True if the position is a line of the list.
    bool found() const { return collection != nullptr && position != collection->end(); }
    // The value of the line found, or an empty text.
    std::wstring text() const;
    // The value of the line found as a decimal integer, read as a stream in the classic locale reads one; 0
    // on a miss or where the value does not begin with a number.
    std::int32_t number() const;

    // Assigns the value of the line found; on a miss first adds a line with the key to the section searched.
    // The line gets its level when its lake is linked again.
    CLakeNodeProxy& operator=(std::wstring value);
};
