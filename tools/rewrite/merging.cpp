#include "tools/rewrite/merging.h"

#include <paramdb/platform/core/line_end.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/lake_text.h>

#include "tools/report.h"
#include "tools/rewrite/file_bytes.h"
#include "tools/rewrite/lake_outline.h"
#include "tools/rewrite/lake_proof.h"

#include <algorithm>
#include <map>
#include <optional>

namespace paramdb::tools {
namespace {

std::string_view LineEndOf(std::string_view bytes) {
    std::size_t const end = bytes.rfind('\n');
    if (end == std::string_view::npos)
        return LineEnd;
    return end > 0 && bytes[end - 1] == '\r' ? "\r\n" : "\n";
}

// All files behind one another, and which line comes from where.
struct Joined {
    std::string bytes;
    std::vector<std::size_t> first_lines; // of each file, counted from 0
};

Joined Join(std::vector<MergeInput> const& inputs) {
    Joined joined;
    std::size_t lines = 0;
    for (MergeInput const& input : inputs) {
        if (&input != &inputs.front()) {
            // The root of a lake that is merged becomes a blank line.
            joined.bytes += LineEndOf(joined.bytes);
            ++lines;
        }
        joined.first_lines.push_back(lines);
        joined.bytes += input.bytes;
        lines += static_cast<std::size_t>(std::ranges::count(input.bytes, '\n'));
        if (!input.bytes.empty() && !input.bytes.ends_with('\n')) {
            ++lines;
            if (&input != &inputs.back())
                joined.bytes += LineEndOf(joined.bytes);
        }
    }
    return joined;
}

// Tells what the lines of the top level came to.
class Account {
public:
    Account(Joined const& joined, LakeOutline const& outline) : m_joined(joined), m_outline(outline) {
        for (std::size_t line = 0; line < outline.lines.size(); line = outline.Next(line)) {
            if (outline.lines[line].kind == LineKind::Unread)
                break;
            if (outline.lines[line].parts.key.empty())
                continue;
            auto const [found, is_new] = m_index.try_emplace(outline.lines[line].parts.key, m_lines.size());
            if (is_new)
                m_lines.emplace_back();
            m_lines[found->second].push_back(line);
        }
    }

    void Tell(Merged& merged) const {
        for (auto const& lines : m_lines) {
            if (auto section = SectionOf(lines))
                merged.sections.push_back(*std::move(section));
            MergedKey key = KeyOf(lines);
            if (!key.passed_over.empty())
                merged.keys.push_back(std::move(key));
        }
    }

private:
    bool Opens(std::size_t line) const { return m_outline.lines[line].kind == LineKind::Opener; }
    std::string KeyText(std::size_t line) const { return std::string(m_outline.lines[line].parts.key); }

    MergePlace PlaceOf(std::size_t line) const {
        auto const& first = m_joined.first_lines;
        auto const file = static_cast<std::size_t>(std::ranges::upper_bound(first, line) - first.begin()) - 1;
        return {file, line - first[file] + 1};
    }

    MergedSection::Occurrence SectionAt(std::size_t opener) const {
        MergedSection::Occurrence occurrence{PlaceOf(opener)};
        for (std::size_t line = opener + 1; line < m_outline.End(opener); line = m_outline.Next(line))
            occurrence.rows += m_outline.lines[line].kind == LineKind::Row ? 1 : 0;
        return occurrence;
    }
    std::optional<MergedSection> SectionOf(std::vector<std::size_t> const& lines) const {
        MergedSection section;
        for (std::size_t const line : lines)
            if (Opens(line))
                section.replaced.push_back(SectionAt(line));
        if (section.replaced.empty())
            return std::nullopt;
        section.key = KeyText(lines.front());
        section.used = section.replaced.back();
        section.replaced.pop_back();
        return section;
    }

    MergedKey::Occurrence ValueAt(std::size_t line) const {
        return {PlaceOf(line), std::string(m_outline.lines[line].parts.value)};
    }
    MergedKey KeyOf(std::vector<std::size_t> const& lines) const {
        MergedKey key{KeyText(lines.front()), ValueAt(lines.front()), {}};
        for (std::size_t const line : lines)
            if (auto other = ValueAt(line); !Opens(line) && other.value != key.used.value)
                key.passed_over.push_back(std::move(other));
        return key;
    }

    Joined const& m_joined;
    LakeOutline const& m_outline;
    std::map<std::string_view, std::size_t> m_index;
    std::vector<std::vector<std::size_t>> m_lines; // of each key
};

bool IsNothing(OutlineLine const& line) {
    return line.parts.key.empty() && line.parts.value.empty() && line.parts.comment.empty();
}

std::string FaultAt(MergeInput const& input, std::size_t line, std::string const& reason) {
    return ShownName(input.name) + ":" + std::to_string(line + 1) + ": " + reason;
}

} // namespace

std::vector<std::string> MergeFaults(std::vector<MergeInput> const& inputs) {
    std::vector<std::string> faults;
    for (MergeInput const& input : inputs) {
        LakeOutline const outline = OutlineOf(input.bytes);
        bool const is_last = &input == &inputs.back();
        if (outline.stray != NoLine) {
            bool const is_end = std::all_of(outline.lines.begin() + std::ptrdiff_t(outline.stray) + 1,
                                            outline.lines.end(), IsNothing);
            if (!is_last || !is_end)
                faults.push_back(FaultAt(input, outline.stray,
                                         "this line closes no section, so nothing behind it would be read"));
        }
        if (outline.unclosed != NoLine && !is_last) {
            auto const key = Printable(LakeText(outline.lines[outline.unclosed].parts.key).wide());
            faults.push_back(
                FaultAt(input, outline.unclosed,
                        "the section " + (key.empty() ? key : key + " ") +
                            "is not closed, so what the next file holds would become a part of it"));
        }
    }
    return faults;
}

Merged MergeFiles(std::vector<MergeInput> const& inputs, MergeLines lines) {
    Joined joined = Join(inputs);
    LakeOutline const outline = OutlineOf(joined.bytes);
    Merged merged;
    Account(joined, outline).Tell(merged);
    for (OutlineLine const& line : outline.lines) {
        if (lines == MergeLines::WithoutSuperseded && line.superseded_by != NoLine) {
            ++merged.left_out;
            continue;
        }
        merged.bytes += line.bytes;
        ++merged.lines;
    }
    return merged;
}

bool IsMergeOf(Merged const& merged, std::vector<MergeInput> const& inputs) {
    CLake expected;
    for (MergeInput const& input : inputs) {
        CLake lake;
        FillLake(&input == &inputs.front() ? expected : lake, input.bytes);
        if (&input != &inputs.front())
            expected.merge(lake);
    }
    CLake written;
    FillLake(written, merged.bytes);
    bool const same_lines = std::equal(expected.begin(), expected.end(), written.begin(), written.end(),
                                       [](CLake::CNode const& left, CLake::CNode const& right) {
                                           return left.key() == right.key() &&
                                                  left.value() == right.value() &&
                                                  left.comment() == right.comment();
                                       });
    return (merged.left_out > 0 || same_lines) && IsSameTree(expected, written);
}

} // namespace paramdb::tools
