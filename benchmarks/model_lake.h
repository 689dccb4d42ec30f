// The lake of the plain model: a list of lines with a tree of sections over it, as one would write it first.
#pragma once

#include <cstddef>
#include <filesystem>
#include <list>
#include <map>
#include <string>
#include <vector>

namespace benchmarks {

class ModelLake {
public:
    struct Node {
        using List = std::list<Node>;

        List* collection = nullptr;
        std::wstring key;
        std::wstring value;
        std::wstring comment;
        std::map<std::wstring, List::iterator> named;
        std::vector<List::iterator> unnamed;
        List::iterator first_child;
        List::iterator section_end;
        int level = -1;
        bool is_section = false;

        // Takes a line of a file apart.
        void SetLine(std::wstring const& text);
        // Makes this line the opener of a section that begins at the position; returns the position behind
        // it.
        List::iterator Link(List::iterator position);
    };

    ModelLake() = default;
    ModelLake(ModelLake const&) = delete; // nodes point to the list
    ModelLake& operator=(ModelLake const&) = delete;

    // Throws std::runtime_error for a file that cannot be read.
    void Read(std::filesystem::path const& path);
    // The top-level line with that key, or null.
    Node const* Find(std::wstring const& key) const;
    std::size_t size() const { return m_lines.size(); }

private:
    Node::List m_lines;
};

} // namespace benchmarks
