#include <paramdb/tables/name_index.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <cwchar>
#include <type_traits>

namespace paramdb {
namespace {

constexpr std::size_t WordUnits = 4;

std::uint64_t Unit(wchar_t unit) {
    return static_cast<std::make_unsigned_t<wchar_t>>(unit);
}
// Four code units in one number, in whatever order.
std::uint64_t Word(wchar_t const* units) {
    std::uint64_t words[WordUnits * sizeof(wchar_t) / sizeof(std::uint64_t)];
    std::memcpy(words, units, sizeof words);
    std::uint64_t number = 0;
    for (std::uint64_t const word : words)
        number = number << 16 ^ word;
    return number;
}
// A multiplication carries upwards alone, so the upper half comes down again.
std::uint64_t Mix(std::uint64_t hash) {
    hash *= 0x9E3779B97F4A7C15;
    return hash ^ hash >> 32;
}

// The low bits of the hash of a name are its length, as far as they hold it: of two names whose hashes are
// the same, one is not read beyond its end when they are compared.
constexpr std::uint32_t LengthBits = 0xFF;
std::uint32_t WithLength(std::uint64_t hash, std::size_t length) {
    return (static_cast<std::uint32_t>(hash) & ~LengthBits) |
           static_cast<std::uint32_t>(std::min<std::size_t>(length, LengthBits));
}

// Two chains of words, as one would wait for each multiplication. The last two words end with the name and
// may hold units of those before, so that lengths need no cases of their own.
std::uint32_t Hash(std::wstring_view name) {
    wchar_t const* units = name.data();
    std::size_t const length = name.size();
    std::uint64_t first = length;
    std::uint64_t second = 0x2545F4914F6CDD1D;
    if (length < WordUnits) {
        for (wchar_t const unit : name)
            first = first << 16 ^ Unit(unit);
        return WithLength(Mix(first), length);
    }
    wchar_t const* const end = units + length;
    for (; units + 2 * WordUnits < end; units += 2 * WordUnits) {
        first = Mix(first ^ Word(units));
        second = Mix(second ^ Word(units + WordUnits));
    }
    first = Mix(first ^ Word(length < 2 * WordUnits ? units : end - 2 * WordUnits));
    second = Mix(second ^ Word(end - WordUnits));
    return WithLength(Mix(first ^ std::rotl(second, 32)), length);
}

// Whether a name is the one of a row that has its hash.
bool IsSame(wchar_t const* row_name, std::wstring_view name) {
    if (name.size() < LengthBits)
        return std::memcmp(row_name, name.data(), name.size() * sizeof(wchar_t)) == 0;
    return std::wcscmp(row_name, name.data()) == 0;
}

// So many ids are kept in a plain array, a few for each row.
std::size_t LowIds(std::size_t rows) {
    return 64 + rows * 4;
}

// Ids that follow each other lie far apart.
std::uint32_t Hash(int id) {
    return static_cast<std::uint32_t>(id) * 0x9E3779B9u;
}

} // namespace

template <class Fits>
NameIndex::Place const& NameIndex::Table::Find(std::uint32_t hash, Fits const& fits) const {
    std::size_t place = First(hash);
    while (m_places[place].name != nullptr && !fits(m_places[place]))
        place = Next(place);
    return m_places[place];
}

void NameIndex::Table::Add(Place const& row) {
    if (m_count * 5 >= m_places.size() * 4)
        Grow();
    Insert(row);
    ++m_count;
}

void NameIndex::Table::Insert(Place const& row) {
    std::size_t place = First(row.hash);
    while (m_places[place].name != nullptr)
        place = Next(place);
    m_places[place] = row;
}

void NameIndex::Table::Grow() {
    constexpr std::size_t least = 16;
    std::vector<Place> places(std::max(least, m_places.size() * 2));
    m_places.swap(places);
    m_shift = 32;
    for (std::size_t size = 1; size < m_places.size(); size *= 2)
        --m_shift;
    for (Place const& row : places)
        if (row.name != nullptr)
            Insert(row);
}

void NameIndex::Table::Clear() {
    if (!IsEmpty())
        std::ranges::fill(m_places, Place());
    m_count = 0;
}

NameIndex::Place const* NameIndex::Find(std::wstring_view name, std::uint32_t hash) const {
    if (m_names.IsEmpty())
        return nullptr;
    Place const& place = m_names.Find(
        hash, [name, hash](Place const& row) { return row.hash == hash && IsSame(row.name, name); });
    return place.name != nullptr ? &place : nullptr;
}

void NameIndex::Add(int id, std::wstring_view name) {
    if (auto const place = static_cast<std::size_t>(id); id >= 0 && place < LowIds(++m_rows)) {
        if (place >= m_low_ids.size()) {
            std::size_t const size = std::max(place + 1, m_low_ids.size() * 2);
            m_low_lengths.resize(size);
            m_low_ids.resize(size);
        }
        m_low_ids[place] = name.data();
        m_low_lengths[place] = static_cast<std::uint8_t>(std::min<std::size_t>(name.size(), MeasuredLength));
    } else {
        m_ids.Add({name.data(), Hash(id), id});
    }
    std::uint32_t const hash = Hash(name);
    if (Find(name, hash) == nullptr)
        m_names.Add({name.data(), hash, id});
}

void NameIndex::Clear() {
    m_rows = 0;
    m_low_ids.clear();
    m_low_lengths.clear();
    m_names.Clear();
    m_ids.Clear();
}

int NameIndex::Id(std::wstring_view name) const {
    Place const* const place = Find(name, Hash(name));
    return place != nullptr ? place->id : -1;
}

wchar_t const* NameIndex::Name(int id) const {
    if (auto const place = static_cast<std::uint32_t>(id);
        place < m_low_ids.size() && m_low_ids[place] != nullptr)
        return m_low_ids[place];
    if (m_ids.IsEmpty())
        return nullptr;
    return m_ids.Find(Hash(id), [id](Place const& row) { return row.id == id; }).name;
}

std::wstring_view NameIndex::NameText(int id) const {
    if (auto const place = static_cast<std::uint32_t>(id);
        place < m_low_ids.size() && m_low_ids[place] != nullptr && m_low_lengths[place] != MeasuredLength)
        return {m_low_ids[place], m_low_lengths[place]};
    wchar_t const* const name = Name(id);
    return name != nullptr ? std::wstring_view(name) : std::wstring_view();
}

} // namespace paramdb
