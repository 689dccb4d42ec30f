// Laying the tree of sections over the lines of a lake, one line after the other.
#pragma once

#include <paramdb/storage/lake_node.h>

#include <cstdint>
#include <vector>

namespace paramdb {

// A section may be nested as deep as the file has lines, so the open ones stand on a stack of its own.
class LakeLinker {
public:
    // Takes no line.
    LakeLinker() = default;
    // Empties the records of the root, which stands in a lake. The first line taken becomes its first child.
    explicit LakeLinker(CLakeNode& root);

    // Records the line, which follows the one before. Once the root is closed no line is taken, and the
    // result is false.
    bool Take(CLakeNode::position line);

    // Ends every section that is open, and the root, at the position behind the last line taken. More lines
    // may be taken afterwards, as if it had not been called, unless the list has changed otherwise.
    void Finish(CLakeNode::position behind);

private:
    struct OpenSection {
        CLakeNode* node;
        CLakeNode::Section* records;
        std::int32_t level; // of its lines
    };

    void Open(CLakeNode& section);

    CLakeNode::list* m_collection = nullptr;
    std::vector<OpenSection> m_open;
    CLakeNode::position* m_wants_next = nullptr; // takes the position of the next line
};

} // namespace paramdb
