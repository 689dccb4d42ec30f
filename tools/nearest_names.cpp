#include "tools/nearest_names.h"

#include "tools/case_fold.h"
#include "tools/report.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace paramdb::tools {
namespace {

constexpr std::size_t MostSuggestions = 3;
constexpr std::size_t ShortestPart = 3;
constexpr std::size_t MostEdits = 8; // also for long names, which take the longest to compare

// The best few, in the order of their distance and then of their coming.
class Best {
public:
    struct Candidate {
        std::size_t distance;
        std::size_t place;
    };

    void Add(Candidate candidate) {
        auto const behind = std::upper_bound(
            m_candidates.begin(), m_candidates.end(), candidate.distance,
            [](std::size_t distance, Candidate const& entry) { return distance < entry.distance; });
        m_candidates.insert(behind, candidate);
        if (m_candidates.size() > MostSuggestions)
            m_candidates.pop_back();
    }

    // Whether one of that distance would stay.
    bool HasRoomFor(std::size_t distance) const {
        return m_candidates.size() < MostSuggestions || distance < m_candidates.back().distance;
    }
    std::size_t Nearest(std::size_t without) const {
        return m_candidates.empty() ? without : m_candidates.front().distance;
    }
    std::vector<Candidate> const& Candidates() const { return m_candidates; }

private:
    std::vector<Candidate> m_candidates;
};

// A third of the letters may be wrong, one in a short name.
std::size_t LimitFor(std::wstring_view sought) {
    return std::min(std::max<std::size_t>((sought.size() + 2) / 3, 1), MostEdits);
}

// Letters of one text by letters of the other; only cells near the diagonal can be within the limit.
class DistanceGrid {
public:
    DistanceGrid(std::wstring_view from, std::wstring_view to, std::size_t limit)
        : m_from(from), m_to(to), m_limit(limit), m_far(limit + 1), m_before(to.size() + 1),
          m_last(to.size() + 1), m_current(to.size() + 1) {
        for (std::size_t column = 0; column <= to.size(); ++column)
            m_current[column] = std::min(column, m_far);
    }

    std::size_t Distance() {
        std::size_t nearest = 0;
        for (std::size_t line = 1; line <= m_from.size(); ++line) {
            std::size_t const nearest_before = nearest;
            nearest = Fill(line);
            if (std::min(nearest, nearest_before) > m_limit) // a swap goes back two lines
                return m_far;
        }
        return std::min(m_current.back(), m_far);
    }

private:
    // Computes a line and returns the smallest number in it.
    std::size_t Fill(std::size_t line) {
        m_before.swap(m_last);
        m_last.swap(m_current);
        std::size_t const first = line > m_limit ? line - m_limit : 1;
        std::size_t const last = std::min(m_to.size(), line + m_limit);
        m_current[first - 1] = first == 1 ? std::min(line, m_far) : m_far;
        std::size_t nearest = m_current[first - 1];
        for (std::size_t column = first; column <= last; ++column) {
            std::size_t const cell = Cell(line, column);
            m_current[column] = cell;
            nearest = std::min(nearest, cell);
        }
        if (last < m_to.size())
            m_current[last + 1] = m_far; // the next line looks at it
        return nearest;
    }

    std::size_t Cell(std::size_t line, std::size_t column) const {
        wchar_t const from = m_from[line - 1];
        wchar_t const to = m_to[column - 1];
        std::size_t cell = m_last[column - 1] + (from == to ? 0 : 1);
        cell = std::min({cell, m_last[column] + 1, m_current[column - 1] + 1});
        bool const is_swap = line > 1 && column > 1 && from == m_to[column - 2] && m_from[line - 2] == to;
        if (is_swap)
            cell = std::min(cell, m_before[column - 2] + 1);
        return std::min(cell, m_far);
    }

    std::wstring_view m_from;
    std::wstring_view m_to;
    std::size_t m_limit;
    std::size_t m_far;
    std::vector<std::size_t> m_before;
    std::vector<std::size_t> m_last;
    std::vector<std::size_t> m_current;
};

} // namespace

std::size_t EditDistance(std::wstring_view from, std::wstring_view to, std::size_t limit) {
    std::size_t const longer = std::max(from.size(), to.size());
    if (longer - std::min(from.size(), to.size()) > limit)
        return limit + 1;
    return DistanceGrid(from, to, std::min(limit, longer)).Distance();
}

std::vector<std::size_t> NearestNames(std::wstring_view sought, std::span<std::wstring_view const> names) {
    if (sought.empty())
        return {};
    std::wstring const wanted = FoldCase(sought);
    std::size_t const limit = LimitFor(wanted);
    Best near;
    Best holding;
    std::wstring name;
    for (std::size_t place = 0; place < names.size(); ++place) {
        if (names[place].empty())
            continue;
        FoldCase(names[place], name);
        if (wanted.size() >= ShortestPart && name.find(wanted) != name.npos) {
            holding.Add({name.size() - wanted.size(), place});
            continue;
        }
        // What is farther off than the nearest one is like it by chance.
        std::size_t const farthest = std::min(limit, near.Nearest(limit) + 1);
        std::size_t const distance = EditDistance(wanted, name, farthest);
        bool const has_common_letters = distance < std::max(wanted.size(), name.size());
        if (distance <= farthest && has_common_letters && near.HasRoomFor(distance))
            near.Add({distance, place});
    }
    // With the very name, in another case, nothing else is meant.
    std::size_t const nearest = std::min(near.Nearest(limit), holding.Nearest(limit));
    std::vector<Best::Candidate> best;
    for (Best::Candidate const& candidate : holding.Candidates()) {
        if (nearest > 0 || candidate.distance == 0)
            best.push_back(candidate);
    }
    for (Best::Candidate const& candidate : near.Candidates()) {
        if (candidate.distance <= (nearest > 0 ? nearest + 1 : 0))
            best.push_back(candidate);
    }
    std::sort(best.begin(), best.end(), [](Best::Candidate const& left, Best::Candidate const& right) {
        return left.distance != right.distance ? left.distance < right.distance : left.place < right.place;
    });
    std::vector<std::size_t> places;
    for (std::size_t index = 0; index < std::min(best.size(), MostSuggestions); ++index)
        places.push_back(best[index].place);
    return places;
}

std::vector<NamedId> NearestNames(std::wstring_view sought, std::span<NamedId const> rows) {
    std::vector<std::wstring_view> names;
    names.reserve(rows.size());
    for (NamedId const& row : rows)
        names.emplace_back(row.name);
    std::vector<NamedId> nearest;
    for (std::size_t const place : NearestNames(sought, names))
        nearest.push_back(rows[place]);
    return nearest;
}

std::vector<NamedId> NearestIds(int sought, std::span<NamedId const> rows) {
    std::vector<NamedId> named;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(named),
                 [](NamedId const& row) { return !row.name.empty(); });
    auto const nearer = [sought](NamedId const& left, NamedId const& right) {
        auto const distance = [sought](int id) { return std::llabs(std::int64_t{id} - sought); };
        return distance(left.id) != distance(right.id) ? distance(left.id) < distance(right.id)
                                                       : left.id < right.id;
    };
    auto const end = named.begin() + static_cast<std::ptrdiff_t>(std::min(named.size(), MostSuggestions));
    std::partial_sort(named.begin(), end, named.end(), nearer);
    named.erase(end, named.end());
    return named;
}

std::string DidYouMean(std::span<std::string const> texts) {
    std::string text;
    char const* separator = "; did you mean ";
    for (std::size_t index = 0; index < texts.size(); ++index) {
        text.append(separator).append(texts[index]);
        separator = index + 2 == texts.size() ? " or " : ", ";
    }
    return texts.empty() ? text : text + '?';
}

std::string DidYouMean(std::span<NamedId const> rows) {
    std::vector<std::string> texts;
    for (NamedId const& row : rows) // -1 is an id here like any other
        texts.push_back(std::to_string(row.id) + ' ' + Printable(row.name));
    return DidYouMean(texts);
}

} // namespace paramdb::tools
