#include "lake_support.h"

#include "../support/temp_dir.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <unordered_map>

using lake_model::Line;
using test_support::TempDir;

namespace lake_support {
namespace {

std::string WithPlainLineEnds(std::string bytes) {
#ifdef _WIN32
    for (std::size_t at = 0; (at = bytes.find("\r\n", at)) != std::string::npos; ++at)
        bytes.erase(at, 1);
#endif
    return bytes;
}

/// Compares one lake with one model, node by node.
class Comparison {
public:
    Comparison(CLake& lake, lake_model::Lake const& model, bool wide)
        : m_lake(lake), m_lines(model.lines()), m_places(model.Places()), m_wide(wide) {
        int index = 0;
        for (auto const& node : lake)
            m_index_of.emplace(&node, index++);
    }

    std::string Run() {
        if (m_lake.size() != m_lines.size() || m_index_of.size() != m_lines.size())
            Tell("number of nodes", static_cast<long>(m_lake.size()), static_cast<long>(m_lines.size()));
        auto line = m_lines.begin();
        for (auto node = m_lake.begin(); m_text.empty() && node != m_lake.end(); ++node, ++line) {
            CompareTexts(*node, *line);
            CompareRecords(*node, *line);
            if (!m_text.empty())
                m_text = "node " + std::to_string(line - m_lines.begin()) + ": " + m_text;
        }
        return m_text;
    }

private:
    void Tell(std::string const& what, long found, long expected) {
        if (m_text.empty() && found != expected)
            m_text = what + " is " + std::to_string(found) + ", expected " + std::to_string(expected);
    }
    void TellText(std::string const& what, bool equal) {
        if (m_text.empty() && !equal)
            m_text = what + " differs";
    }

    void CompareTexts(CLake::CNode const& node, Line const& line) {
        TellText("key view", node.key_text() == line.key);
        TellText("value view", node.value_text() == line.value);
        TellText("comment view", node.comment_text() == line.comment);
        if (m_wide) {
            TellText("key", node.key() == line.key);
            TellText("value", node.value() == line.value);
            TellText("comment", node.comment() == line.comment);
        }
        Tell("is_named", node.is_named(), !line.key.empty());
        Tell("is_section", node.is_section(), line.is_section);
        Tell("level", node.level(), line.level);
        TellText("collection", node.collection() == m_lake.root().collection());
    }

    void ComparePosition(std::string const& what, CLake::CNode::position position, lake_model::Ref ref) {
        int const expected = ref < 0 ? ref : m_places[static_cast<std::size_t>(ref)];
        if (expected == lake_model::Lost)
            return;
        int found = lake_model::Lost;
        if (position == CLake::CNode::position())
            found = lake_model::Nowhere;
        else if (position == m_lake.end())
            found = lake_model::End;
        else if (auto const known = m_index_of.find(&*position); known != m_index_of.end())
            found = known->second;
        Tell(what, found, expected);
    }

    void CompareRecords(CLake::CNode const& node, Line const& line) {
        ComparePosition("first_child", node.first_child(), line.first_child);
        ComparePosition("section_end", node.section_end(), line.section_end);
        Tell("named_size", static_cast<long>(node.named_size()), static_cast<long>(line.named.size()));
        Tell("unnamed_size", static_cast<long>(node.unnamed_size()), static_cast<long>(line.unnamed.size()));
        if (!m_text.empty())
            return;
        auto named = node.begin_named();
        for (auto const& [key, ref] : line.named) {
            TellText("a named child's key", named->first == key);
            ComparePosition("a named child", named->second, ref);
            ++named;
        }
        auto unnamed = node.begin_unnamed();
        for (auto const ref : line.unnamed)
            ComparePosition("an unnamed child", *unnamed++, ref);
        TellText("the end of the named children", named == node.end_named());
        TellText("the end of the unnamed children", unnamed == node.end_unnamed());
    }

    CLake& m_lake;
    std::vector<Line> const& m_lines;
    std::vector<int> m_places;
    bool m_wide;
    std::unordered_map<CLake::CNode const*, int> m_index_of;
    std::string m_text;
};

} // namespace

void ReadText(CLake& lake, std::string_view text) {
    TempDir const folder;
    auto const path = folder / u8"text.lake";
    test_support::WriteBytes(path, text);
    if (!lake.read(test_support::WideName(path)))
        throw std::runtime_error("the lake could not be read");
}

lake_model::Written WriteLake(CLake const& lake, std::filesystem::path const& path) {
    std::filesystem::remove(path);
    lake_model::Written result;
    try {
        if (!lake.write(test_support::WideName(path)))
            throw std::runtime_error("the lake could not be written");
    } catch (std::length_error const&) {
        result.throws = true;
    }
    result.bytes = WithPlainLineEnds(test_support::ReadBytes(path));
    return result;
}

std::string WrittenText(CLake const& lake) {
    TempDir const folder;
    lake_model::Written const written = WriteLake(lake, folder / u8"written.lake");
    if (written.throws)
        throw std::length_error("a line of level -1");
    return written.bytes;
}

CLake::CNode& Node(CLake& lake, std::size_t index) {
    return *std::next(lake.begin(), static_cast<std::ptrdiff_t>(index));
}

int IndexOf(CLake& lake, CLake::CNode::position position) {
    if (position == CLake::CNode::position())
        return lake_model::Nowhere;
    int index = 0;
    for (auto node = lake.begin(); node != lake.end(); ++node, ++index)
        if (node == position)
            return index;
    return position == lake.end() ? lake_model::End : lake_model::Lost;
}

std::vector<std::wstring> Rows(CLake::CNode const& section) {
    std::vector<std::wstring> rows;
    for (auto row = section.begin_unnamed(); row != section.end_unnamed(); ++row)
        rows.push_back((*row)->value());
    return rows;
}

std::vector<std::wstring> Keys(CLake::CNode const& section) {
    std::vector<std::wstring> keys;
    for (auto entry = section.begin_named(); entry != section.end_named(); ++entry)
        keys.push_back(entry->first);
    return keys;
}

std::vector<std::wstring> Lines(CLake const& lake) {
    std::vector<std::wstring> lines;
    for (auto node = std::next(lake.begin()); node != lake.end(); ++node)
        lines.push_back(node->key() + L'|' + node->value() + L'|' + node->comment());
    return lines;
}

std::string Difference(CLake& lake, lake_model::Lake const& model, bool wide) {
    return Comparison(lake, model, wide).Run();
}

std::string Escaped(std::string_view bytes) {
    std::ostringstream text;
    for (char const byte : bytes) {
        auto const code = static_cast<unsigned char>(byte);
        if (byte == '\n')
            text << "\\n\n";
        else if (byte == '\\' || code < 0x20 || code > 0x7E)
            text << "\\x"
                 << "0123456789ABCDEF"[code >> 4] << "0123456789ABCDEF"[code & 15];
        else
            text << byte;
    }
    return text.str();
}

} // namespace lake_support
