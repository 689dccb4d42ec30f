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
#include <paramdb/storage/node_runs.h>

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
    ~CLakeNode() { delete extras(); }

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
        if (extras() != nullptr)
            return kept_value_text();
        return m_is_named ? packed_second() : packed_first();
    }
    paramdb::LakeText comment_text() const;

    // True if the key is not empty.
    bool is_named() const { return m_is_named; }
    bool is_section() const { return m_is_section; }

    // Nesting depth: 0 for a top-level line, -1 for the root and for a line that was never linked.
    std::int32_t level() const { return m_level_above != DeepLevel ? m_level_above - 1 : extras()->level; }
    // The list that holds the node; null for a node outside a lake.
    list* collection() const {
        if (m_is_owners)
            return static_cast<list*>(paramdb::NodePool::Owner(this));
        return extras() != nullptr ? extras()->collection : nullptr;
    }
    // The line behind the opener of a section; null for a line that was never a section.
    position first_child() const { return records().first_child; }
    // Where the section's next line goes: behind the closing line of a section read from a file, at the
    // closing line of one made in memory. Null for a line that was never a section.
    position section_end() const { return records().section_end; }

    // Direct children with a key, one for each distinct key, in the order of their code units.
    std::size_t named_size() const { return records().named.size(); }
    named_map::const_iterator begin_named() const { return records().named.begin(); }
    named_map::const_iterator end_named() const { return records().named.end(); }

    // Direct children without a key, in file order: rows, but also comments and blank lines.
    std::size_t unnamed_size() const { return records().unnamed.size(); }
    // The first call makes the vector; to walk unnamed_lines() costs no memory. May throw std::bad_alloc.
    unnamed_vector::const_iterator begin_unnamed() const { return records().unnamed.All().begin(); }
    unnamed_vector::const_iterator end_unnamed() const { return records().unnamed.All().end(); }
    paramdb::NodeRuns<CLakeNode> const& unnamed_lines() const { return records().unnamed; }

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

    void set_collection(list* collection) {
        changed();
        assign_collection(collection);
    }

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
        paramdb::NodeRuns<CLakeNode> unnamed;
        position first_child;
        position section_end;
    };

    // What few lines have: sections, lines whose texts were asked for wide or assigned, very long ones.
    struct Extras {
        ~Extras() { delete texts.load(std::memory_order_relaxed); }

        std::string_view first, second;          // as below, of any length
        std::atomic<WideTexts*> texts = nullptr; // owned; once set it holds, in place of the bytes
        std::unique_ptr<Section> section;        // null while all records are at their defaults
        list* collection = nullptr;              // unless m_is_owners
        std::int32_t level = -1;                 // from DeepLevel on
    };

    // Tells the list that linking its lines again may come to something else.
    void changed() {
        if (list* const lines = collection())
            lines->node_changed();
    }

    Extras* extras() const { return m_extras.load(std::memory_order_acquire); }
    Extras& own_extras() const;
    WideTexts const* wide_if_any() const {
        Extras const* const any = extras();
        return any != nullptr ? any->texts.load(std::memory_order_acquire) : nullptr;
    }
    WideTexts const& wide() const;
    WideTexts& own_texts() { return const_cast<WideTexts&>(wide()); }
    std::string_view packed_first() const { return {m_bytes, m_first_length}; }
    std::string_view packed_second() const { return {m_bytes + m_first_length + m_gap, m_second_length}; }
    std::string_view first_bytes() const { return extras() != nullptr ? extras()->first : packed_first(); }
    std::string_view second_bytes() const { return extras() != nullptr ? extras()->second : packed_second(); }
    paramdb::LakeText kept_value_text() const;

    Section const& records() const {
        Section const* const own = section();
        return own != nullptr ? *own : NoRecords;
    }
    Section* section() const { return extras() != nullptr ? extras()->section.get() : nullptr; }
    Section& own_records();

    void set_level(std::int32_t level) {
        if (level >= -1 && level < DeepLevel - 1)
            m_level_above = static_cast<std::uint16_t>(level + 1);
        else
            keep_level(level);
    }
    void keep_level(std::int32_t level);
    void assign_collection(list* collection) {
        m_is_owners = collection != nullptr && list::stands_in_list(*this) &&
                      paramdb::NodePool::Owner(this) == collection;
        if (!m_is_owners)
            keep_collection(collection);
    }
    void keep_collection(list* collection);

    // Back to the state of a new node, in its place in the list.
    void reset();
    // Takes the texts of a line, as views of bytes that the lake keeps, into a new node.
    void set_line(paramdb::LakeLine const& line) {
        m_is_section = line.value.size() == 1 && line.value.front() == '{';
        m_is_named = !line.key.empty();
        if (m_is_named)
            set_bytes(line.key, line.value);
        else
            set_bytes(line.value, line.comment);
    }
    // The second text stands behind the first, or is empty.
    void set_bytes(std::string_view first, std::string_view second) {
        m_bytes = first.data();
        std::size_t const gap =
            second.empty() ? 0 : static_cast<std::size_t>(second.data() - first.data()) - first.size();
        if ((first.size() | second.size()) > LongestText || gap > LongestGap)
            return keep_bytes(first, second);
        m_first_length = static_cast<std::uint16_t>(first.size());
        m_second_length = static_cast<std::uint16_t>(second.size());
        m_gap = static_cast<std::uint8_t>(gap);
    }
    void keep_bytes(std::string_view first, std::string_view second);
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
    static constexpr std::uint16_t LongestText = 0xFFFF;
    static constexpr std::uint8_t LongestGap = 0xFF;
    static constexpr std::uint16_t DeepLevel = 0xFFFF;

    // The texts stand in the bytes of a file until somebody wants them wide: the key and behind it the value
    // of a named line, the value and behind it the comment of an unnamed one. m_bytes stays as the origin of
    // the line whatever becomes of its texts.
    char const* m_bytes = "";
    mutable std::atomic<Extras*> m_extras = nullptr; // owned; once set it tells the texts
    std::uint16_t m_first_length = 0;
    std::uint16_t m_second_length = 0;
    std::uint16_t m_level_above = 0; // the level of the section, from 0 for the root; DeepLevel: see Extras
    std::uint8_t m_gap = 0;          // between the two texts
    bool m_is_named : 1 = false;
    bool m_is_section : 1 = false;
    bool m_is_owners : 1 = false; // the list is the one that the pool of the node serves
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
    bool found() const {
        return collection != nullptr && position != CLakeNode::position() && position != collection->end();
    }
    // The value of the line found, or an empty text.
    std::wstring text() const;
    // The value of the line found as a decimal integer, read as a stream in the classic locale reads one; 0
    // on a miss or where the value does not begin with a number.
    std::int32_t number() const;

    // Assigns the value of the line found; on a miss first adds a line with the key to the section searched.
    // The line gets its level when its lake is linked again.
    CLakeNodeProxy& operator=(std::wstring value);
};
