// The keys at the top level: unknown ones, repeated ones, those that hold the wrong thing.
#include <paramdb/storage/unquote.h>
#include <paramdb/storage/white_space.h>

#include "tools/check/known_keys.h"
#include "tools/check/rules.h"
#include "tools/check/wording.h"
#include "tools/report.h"
#include "tools/row_buffer.h"

#include <map>
#include <set>

namespace paramdb::tools::check {
namespace {

class KeyCheck {
public:
    KeyCheck(CheckContext const& context, FindingList& findings) : m_context(context), m_findings(findings) {}

    void Run() {
        for (Outline::Key const& key : m_context.Lines().keys) {
            bool const is_known = CheckKnown(key);
            if (is_known && !key.is_behind_end)
                CheckRepeated(key);
        }
    }

private:
    OutlineSection const& SectionOf(Outline::Key const& key) const {
        return m_context.Lines().sections[key.section];
    }
    static bool OpensSection(Outline::Key const& key) { return key.section != OutlineSection::None; }
    Place PlaceOf(Outline::Key const& key) const { return m_context.PlaceOf(*key.line.node); }
    Place ValuePlace(Outline::Key const& key) const {
        return key.line.node->value_text().Visit([&]<class View>(View text) {
            if constexpr (std::is_same_v<View, std::string_view>)
                return m_context.PlaceOf(text);
            else
                return PlaceOf(key);
        });
    }

    // Whether a load looks for the key. Tells of one that it does not, and of one that holds the wrong thing.
    bool CheckKnown(Outline::Key const& key) {
        LakeText const text = key.line.node->key_text();
        LakeText const value = key.line.node->value_text();
        bool const is_table = TableOf(text) != nullptr;
        bool const is_text = IsTextKey(text);
        bool const opens = OpensSection(key);
        if (!opens && !value.empty() && value[0] == L'{') {
            m_findings
                .Add("P114", ValuePlace(key),
                     "this opens no section, since more than the bracket stands behind the colon")
                .Hint("put a comment on a line of its own before the section, and the rows below it");
            return false;
        }
        if (is_table && !opens) {
            m_findings
                .Add("P115", PlaceOf(key),
                     Shortened(text) + " is the tag of a table, but the line opens no section")
                .Hint("put a bracket behind the colon: \"" + Shortened(text) + ": {\"");
        } else if ((is_text || IsVersionKey(text)) && opens) {
            m_findings
                .Add("P115", PlaceOf(key),
                     Shortened(text) + " stands with a single value, but the line opens a section")
                .Hint("put the value behind the colon");
        } else if (is_text) {
            CheckText(key, value.wide());
        }
        if (is_table || is_text || IsVersionKey(text))
            return true;
        if (key.line.place.line != 1 || !HasByteOrderMark(m_context.Files()[key.line.place.file].bytes))
            m_findings
                .Add(opens ? "P111" : "P112", PlaceOf(key),
                     (opens ? "no table has the tag " : "nothing looks for the key ") + Shortened(text) +
                         DidYouMeanKey(text))
                .Hint("correct the key, or disable the code if another program reads it");
        return false;
    }

    // A named text ends at the quote, or else at the first blank.
    void CheckText(Outline::Key const& key, std::wstring const& value) {
        std::wstring const text = paramdb::Unquote(value);
        bool const is_quoted = value.starts_with(L'"');
        std::size_t const taken = text.size() + (is_quoted ? 2 : 0);
        if (taken >= value.size())
            return;
        m_findings
            .Add("P120", ValuePlace(key),
                 "the text is \"" + Shortened(text) + "\": what follows behind the " +
                     (is_quoted ? "quote" : "blank") + " is not read")
            .Hint(is_quoted ? "a text in quotes holds no quote" : "put the whole text in quotes");
    }

    void CheckRepeated(Outline::Key const& key) {
        auto& seen = m_seen[key.line.node->key_text().wide()];
        for (Outline::Key const* const earlier : seen)
            if (Compare(*earlier, key))
                break;
        if (OpensSection(key) && !seen.empty() && OpensSection(*seen.front()))
            seen.clear(); // superseded
        seen.push_back(&key);
    }

    // Tells of a line whose key was there before, if anything is lost; true if the pair is dealt with.
    bool Compare(Outline::Key const& earlier, Outline::Key const& later) {
        std::string const key = Shortened(later.line.node->key_text());
        bool const one_file = earlier.line.place.file == later.line.place.file;
        if (OpensSection(earlier) && OpensSection(later)) {
            if (one_file)
                m_findings
                    .Add("P116", PlaceOf(earlier),
                         Counted(SectionOf(earlier).lines_without_key, "line") +
                             " of this section will not be read: a later section has its key")
                    .Hint("join the two sections, or leave one of them out")
                    .Relate(PlaceOf(later), "the section that is read");
            else
                CompareRows(earlier, later);
            return true;
        }
        if (OpensSection(earlier) != OpensSection(later)) {
            Outline::Key const& plain = OpensSection(earlier) ? later : earlier;
            m_findings.Add("P118", PlaceOf(later), key + " stands with a value and with a section")
                .Hint("leave one of the two out")
                .Relate(PlaceOf(earlier), &plain == &later ? "the section" : "the value");
            return true;
        }
        bool const same = earlier.line.node->value_text() == later.line.node->value_text().wide();
        if (one_file)
            m_findings.Add("P118", PlaceOf(later), key + " is repeated: the first line counts")
                .Hint("leave one of the lines out")
                .Relate(PlaceOf(earlier), "the line that counts");
        else if (!same)
            m_findings
                .Add("P119", PlaceOf(later),
                     key +
                         " keeps its value of an earlier file: " + Shortened(earlier.line.node->value_text()))
                .Hint("put this file first if its value is to count")
                .Relate(PlaceOf(earlier), "the value that counts");
        return true;
    }

    // Tells of the rows of a table that a later file replaces and that have no successor there.
    void CompareRows(Outline::Key const& earlier, Outline::Key const& later) {
        TableDescription const* const table = TableOf(later.line.node->key_text());
        if (table == nullptr)
            return;
        Silence const silence;
        std::set<std::string> keys;
        std::string packed;
        VisitKeys(*table, SectionOf(later), [&](auto key) {
            PackFields(key, packed);
            keys.insert(packed);
        });
        constexpr std::size_t most_shown = 5;
        std::string shown;
        std::size_t lost = 0;
        std::set<std::string> earlier_keys;
        VisitKeys(*table, SectionOf(earlier), [&](auto key) {
            PackFields(key, packed);
            if (!earlier_keys.insert(packed).second || keys.contains(packed))
                return;
            if (++lost <= most_shown)
                shown += (lost == 1 ? "" : ", ") + ShownKey(key);
        });
        if (lost == 0)
            return;
        m_findings
            .Add("P117", PlaceOf(later),
                 "the section replaces one of an earlier file as a whole, of which " + Counted(lost, "row") +
                     " of " + Grouped(earlier_keys.size()) + (lost == 1 ? " has" : " have") +
                     " no successor: " + shown + (lost > most_shown ? ", ..." : ""))
            .Hint("take the rows over if they are to stay")
            .Relate(PlaceOf(earlier), "the section that is replaced");
    }

    template <class Visitor>
    static void VisitKeys(TableDescription const& table, OutlineSection const& section, Visitor visitor) {
        RowBuffer row(table);
        for (CLakeNode const* const line : LinesIn(section))
            if (!line->is_named() && row.Read(line->value_text()))
                visitor(row.Key());
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    std::map<std::wstring, std::vector<Outline::Key const*>> m_seen;
};

} // namespace

void CheckTopLevelKeys(CheckContext const& context, FindingList& findings) {
    KeyCheck(context, findings).Run();
}

} // namespace paramdb::tools::check
