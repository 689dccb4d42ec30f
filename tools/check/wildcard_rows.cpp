// Rows of <TIpTrackPolygon>, whose keys may hold wildcards: those that match no key, and those that match
// keys of others.
#include "tools/check/known_ids.h"
#include "tools/check/rules.h"
#include "tools/check/wording.h"

#include <algorithm>
#include <array>
#include <bit>
#include <bitset>
#include <cstdint>
#include <limits>
#include <map>
#include <unordered_map>
#include <vector>

namespace paramdb::tools::check {
namespace {

constexpr int Wildcard = -1;

using Elements = std::array<int, QClavis::size()>;

struct ElementsHash {
    std::size_t operator()(Elements const& elements) const {
        std::uint64_t hash = 0;
        for (int const element : elements)
            hash = (hash ^ static_cast<std::uint32_t>(element)) * 0x9E3779B97F4A7C15U + (hash >> 29);
        return static_cast<std::size_t>(hash ^ hash >> 32);
    }
};

// The rows whose keys have wildcards in the same elements. A concrete key matches one of them at most.
class RowsOfMask {
public:
    explicit RowsOfMask(unsigned int mask) : m_mask(mask) {}

    void Add(Elements const& pattern, std::size_t row) {
        m_rows.emplace(pattern, row);
        m_are_there[ElementsHash()(pattern) % m_are_there.size()] = true;
    }

    static constexpr std::size_t None = std::numeric_limits<std::size_t>::max();
    std::size_t Find(Elements key) const {
        for (std::size_t place = 0; place < key.size(); ++place)
            if ((m_mask >> place & 1U) != 0)
                key[place] = Wildcard;
        if (!m_are_there[ElementsHash()(key) % m_are_there.size()])
            return None;
        auto const found = m_rows.find(key);
        return found != m_rows.end() ? found->second : None;
    }

private:
    unsigned int m_mask; // a bit for each element that is a wildcard
    // The hash values of the rows, in short: most keys match none, which is seen here.
    std::bitset<std::size_t{1} << 16> m_are_there;
    std::unordered_map<Elements, std::size_t, ElementsHash> m_rows;
};

unsigned int MaskOf(Elements const& pattern) {
    unsigned int mask = 0;
    for (std::size_t place = 0; place < pattern.size(); ++place)
        mask |= pattern[place] == Wildcard ? 1U << place : 0U;
    return mask;
}

// What becomes of a row.
struct Fate {
    std::size_t wins = 0;
    std::size_t losses = 0;
    std::size_t winner = 0;   // the row that counts instead for the first of the losses
    std::size_t lost_key = 0; // the row of that key
};

class WildcardCheck {
public:
    WildcardCheck(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings), m_rows(context.Table("IpTrackPolygon")),
          m_keys(context.Table("IpParamAndStore")) {}

    void Run() {
        if (m_rows.RowCount() == 0 || m_keys.Section() == nullptr)
            return;
        CollectRows();
        MatchKeys();
        for (std::size_t row = 0; row < m_fates.size(); ++row) {
            Fate const& fate = m_fates[row];
            if (fate.wins == 0 && fate.losses == 0)
                m_findings
                    .Add("P440", m_rows.PlaceOf(row, 0), "no key of " + m_keys.Tag() + " matches this row")
                    .Hint("correct the key, or leave the row out");
            else if (fate.losses > 0)
                ReportLoss(row, fate);
        }
    }

private:
    void CollectRows() {
        for (auto const& [key, row] : m_context.Parameters().IpTrackPolygon()) {
            Elements const& pattern = key.elements();
            unsigned int const mask = MaskOf(pattern);
            m_of_mask.try_emplace(mask, mask).first->second.Add(pattern, m_patterns.size());
            m_patterns.push_back(pattern);
        }
        m_fates.resize(m_patterns.size());
    }

    void MatchKeys() {
        std::size_t index = 0;
        std::vector<std::size_t> matches;
        for (auto const& [key, stored] : m_context.Parameters().IpParamAndStore()) {
            matches.clear();
            std::size_t winner = RowsOfMask::None;
            for (auto const& [mask, rows] : m_of_mask) {
                std::size_t const row = rows.Find(key.elements());
                if (row == RowsOfMask::None)
                    continue;
                matches.push_back(row);
                winner = std::min(winner, row);
            }
            for (std::size_t const row : matches) {
                Fate& fate = m_fates[row];
                if (row == winner) {
                    ++fate.wins;
                    continue;
                }
                if (fate.losses++ == 0) {
                    fate.winner = winner;
                    fate.lost_key = index;
                }
            }
            ++index;
        }
    }

    void ReportLoss(std::size_t row, Fate const& fate) {
        int const own = std::popcount(MaskOf(m_patterns[row]));
        int const others = std::popcount(MaskOf(m_patterns[fate.winner]));
        // -1 comes before all ids, so that of two rows the one with the earlier wildcard counts.
        bool const is_more_special = own < others;
        std::string const count =
            fate.wins == 0 ? "any key" : Counted(fate.losses, "key") + " that it matches";
        m_findings
            .Add(is_more_special ? "P442" : "P441", m_rows.PlaceOf(row, 0),
                 "the row does not count for " + count + ": " +
                     (is_more_special ? "a row with more wildcards" : "another row") +
                     " matches as well and comes first")
            .Hint(
                "of several rows that match a key the first in the order of keys counts, with -1 before all "
                "ids: let only one of them match")
            .Relate(m_rows.PlaceOf(fate.winner), "the row that counts")
            .Relate(m_keys.PlaceOf(fate.lost_key), "a key that both match");
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    CheckedTable const& m_rows;
    CheckedTable const& m_keys;
    std::map<unsigned int, RowsOfMask> m_of_mask;
    std::vector<Elements> m_patterns;
    std::vector<Fate> m_fates;
};

} // namespace

void CheckWildcards(CheckContext const& context, FindingList& findings) {
    WildcardCheck(context, findings).Run();
}

} // namespace paramdb::tools::check
