// A lake: a text parameter file held in memory.
//
// CLake keeps every line of the file as one node in a flat list, in file order, and lays a tree of sections
// over that list. Comments, blank lines and repeated keys stay in the list, so the file can be written back
// as it was read. The first node of the list is the root: it has no text, is the section of all top-level
// lines and is never written. The file format is told in docs/lake_format.md.
//
//     CLake lake(L"gearbox.lake");
//     auto const version = lake[L"<DbDesign.CacheVersion>"].number();
//     if (auto const modes = lake[L"<TMode>"]; modes.found())
//         for (auto row = modes.position->begin_unnamed(); row != modes.position->end_unnamed(); ++row)
//             Use((*row)->value_text());
//
// Errors: no operation reports anything. A file that cannot be opened is seen by empty(). Running out of
// memory shows as std::bad_alloc; the lake can be used, cleared and read again after it.
//
// Threads: const members may run in several threads at once, the others must run alone.
//
// Where a line comes from, line_origins.h tells.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/storage/lake_bytes.h>
#include <paramdb/storage/lake_linker.h>
#include <paramdb/storage/lake_node.h>
#include <paramdb/storage/node_pool.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class PARAMDB_API CLake {
public:
    using CNode = CLakeNode;
    using CNodeProxy = CLakeNodeProxy;
    using list = CNode::list;
    using iterator = list::iterator;
    using const_iterator = list::const_iterator;

    // Stores the name and, if it is not empty, reads that file.
    explicit CLake(CString const& filename = CString());
    // Copies the lines but not the file name. The root of the source becomes one blank top-level line of the
    // copy, which therefore holds one line more.
    CLake(CLake const& other);
    // Copies the lines, the source's root serving as root; keeps the own file name.
    CLake& operator=(CLake const& other);
    ~CLake() = default;

    // Replaces the content by that of the file. An empty name means filename(), another one is stored there.
    // Returns false if reading failed midway: the complete lines up to there are kept. A file that cannot be
    // opened gives true and leaves the lines in place.
    bool read(CString const& name = CString());

    // Writes all lines but the root, in list order, one tab of indent for each level. An empty name means
    // filename(), another one is stored there. Returns false if the file cannot be opened. The file is
    // emptied first; a fault while writing goes unseen, and a character above U+00FF ends the output there.
    // Throws std::length_error at a line of level -1, which a stray closing line at the top level leaves
    // behind it.
    bool write(CString const& name = CString()) const;

    // Appends the other lake's lines, its root as a blank line, and links again: plain keys keep this lake's
    // value, sections are replaced as a whole by the other's. The other lake is not changed and may be this
    // one.
    void merge(CLake& other);

    // Drops all lines, keeps the file name.
    void clear();

    // True when there is no line but the root.
    bool empty() const { return m_collection.size() <= 1; }
    // Number of nodes, the root counted.
    std::size_t size() const { return m_collection.size(); }
    // The path last given to read, write or the constructor.
    CString const& filename() const { return m_filename; }

    // Looks a key up among the top-level lines; nothing is created. See CLakeNode::operator[].
    CNodeProxy operator[](std::wstring const& key) const { return root()[key]; }

    CNode& root() { return m_collection.front(); }
    CNode const& root() const { return m_collection.front(); }

    // All nodes in list order, the root first.
    iterator begin() { return m_collection.begin(); }
    iterator end() { return m_collection.end(); }
    const_iterator begin() const { return m_collection.begin(); }
    const_iterator end() const { return m_collection.end(); }

private:
    friend class paramdb::LineOrigins;
    using Bytes = std::vector<paramdb::SharedLakeBytes>;

    void SetLines(paramdb::SharedLakeBytes bytes);
    void Append(CLake const& other);
    void CopyLines(CLake const& other, list& copies);
    void RepairCopies(CLake const& other, iterator copies);
    void LinkRoot();
    // Links the lines from here on, behind those that have been linked.
    void LinkLines(iterator first);
    void FinishLinking(iterator behind);

    mutable CString m_filename;
    Bytes m_bytes; // that nodes refer to, each once, in the order of merging
    paramdb::NodePool m_pool{sizeof(CNode), alignof(CNode), &m_collection};
    list m_collection{m_pool};
    paramdb::LakeLinker m_linker;
    std::uint64_t m_linked_revision = 0; // of the list when its last line was linked
};
