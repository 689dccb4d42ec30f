#include <paramdb/storage/lake_node.h>

#include <algorithm>
#include <locale>
#include <sstream>
#include <stdexcept>

using paramdb::LakeText;

CLakeNode::Section const CLakeNode::NoRecords{};

CLakeNode::CLakeNode(list* collection, std::wstring key, std::wstring value, std::wstring comment)
    : m_collection(collection), m_is_named(!key.empty()) {
    m_texts = new WideTexts{std::move(key), std::move(value), std::move(comment)};
}

CLakeNode::CLakeNode(CLakeNode const& other) : NodeLinks(other) {
    *this = other;
}

CLakeNode& CLakeNode::operator=(CLakeNode const& other) {
    if (this == &other)
        return *this;
    auto texts = std::make_unique<WideTexts>(
        WideTexts{other.key_text().wide(), other.value_text().wide(), other.comment_text().wide()});
    auto section = other.m_section ? std::make_unique<Section>(*other.m_section) : nullptr;
    delete m_texts.exchange(texts.release());
    m_section = std::move(section);
    m_collection = other.m_collection;
    m_is_named = other.m_is_named;
    m_is_section = other.m_is_section;
    m_level = other.m_level;
    return *this;
}

CLakeNode& CLakeNode::operator=(std::wstring text) {
    value(std::move(text));
    return *this;
}

void CLakeNode::value(std::wstring text) {
    own_texts().value = std::move(text);
}
void CLakeNode::comment(std::wstring text) {
    own_texts().comment = std::move(text);
}

LakeText CLakeNode::key_text() const {
    if (!holds_bytes())
        return std::wstring_view(wide().key);
    return m_is_named ? first_bytes() : std::string_view();
}

LakeText CLakeNode::comment_text() const {
    if (!holds_bytes())
        return std::wstring_view(wide().comment);
    return m_is_named ? std::string_view() : second_bytes();
}

CLakeNode::WideTexts const& CLakeNode::wide() const {
    if (WideTexts* const texts = m_texts.load(std::memory_order_acquire))
        return *texts;
    auto const first = LakeText(first_bytes()).wide();
    auto const second = LakeText(second_bytes()).wide();
    auto texts =
        std::make_unique<WideTexts>(m_is_named ? WideTexts{first, second, {}} : WideTexts{{}, first, second});
    WideTexts* winner = nullptr;
    if (m_texts.compare_exchange_strong(winner, texts.get(), std::memory_order_acq_rel))
        winner = texts.release();
    return *winner;
}

CLakeNode::Section& CLakeNode::own_records() {
    if (!m_section)
        m_section = std::make_unique<Section>();
    return *m_section;
}

void CLakeNode::reset() {
    delete m_texts.exchange(nullptr);
    m_section.reset();
    m_collection = nullptr;
    m_bytes = "";
    m_first_length = m_second_length = m_second_offset = 0;
    m_is_named = m_is_section = false;
    m_level = -1;
}

void CLakeNode::keep_wide(paramdb::LakeLine const& line) {
    delete m_texts.exchange(
        new WideTexts{LakeText(line.key).wide(), LakeText(line.value).wide(), LakeText(line.comment).wide()});
}

void CLakeNode::copy_line(CLakeNode const& other) {
    if (!other.holds_bytes())
        m_texts = new WideTexts(other.wide());
    m_bytes = other.m_bytes;
    m_first_length = other.m_first_length;
    m_second_offset = other.m_second_offset;
    m_second_length = other.m_second_length;
    m_is_named = other.m_is_named;
    m_is_section = other.m_is_section;
    m_level = other.m_level;
}

CLakeNode::position CLakeNode::find(std::wstring const& key) const {
    if (m_is_section) {
        auto const& named = records().named;
        if (auto const found = named.find(key); found != named.end())
            return found->second;
    }
    return section_end();
}

std::int64_t CLakeNode::find_value(std::wstring const& text) const {
    if (!m_is_section)
        return -1;
    auto const& rows = records().unnamed;
    auto const found =
        std::find_if(rows.begin(), rows.end(), [&](position row) { return row->value_text() == text; });
    return found == rows.end() ? -1 : found - rows.begin();
}

CLakeNodeProxy CLakeNode::operator[](std::wstring const& key) const {
    position start = first_child();
    if (m_collection != nullptr && start == m_collection->end())
        start = m_collection->begin();
    return {m_collection, start, 0, find(key), key, const_cast<CLakeNode*>(this)};
}

std::uint64_t CLakeNode::push_back(std::wstring text) {
    if (m_collection == nullptr)
        throw std::logic_error("CLake::CNode::push_back: the node belongs to no lake");
    make_section();
    Section& section = own_records();
    if (section.section_end == position())
        section.section_end = behind();
    position const row = m_collection->emplace(section.section_end);
    section.unnamed.push_back(row);
    row->m_collection = m_collection;
    row->m_level = m_level + 1;
    row->value(std::move(text));
    return section.unnamed.size() - 1;
}

void CLakeNode::make_section() {
    if (m_is_section)
        return;
    Section& section = own_records();
    position const before = section.section_end == position() ? behind() : section.section_end;
    position const closing =
        m_collection->emplace(before, m_collection, std::wstring(), std::wstring(L"}"), key_text().wide());
    closing->m_level = m_level;
    section.section_end = closing;
    value(L"{");
    m_is_section = true;
}

CLakeNode::position CLakeNode::behind() {
    return list::stands_in_list(*this) ? std::next(list::position(*this)) : m_collection->end();
}

CLakeNode::position CLakeNode::insert(std::wstring const& key) {
    if (m_collection == nullptr)
        throw std::logic_error("CLake::CNode::insert: the node belongs to no lake");
    Section& section = own_records();
    if (section.section_end == position())
        section.section_end = behind();
    position const line =
        m_collection->emplace(section.section_end, m_collection, key, std::wstring(), std::wstring());
    line->own_records().section_end = section.section_end;
    section.named.try_emplace(key, line);
    return line;
}

void CLakeNode::clear() {
    m_collection = nullptr;
    if (WideTexts* const texts = m_texts) {
        texts->key.clear();
        texts->value.clear();
    } else if (m_is_named) {
        m_first_length = m_second_length = 0;
    } else {
        m_second_offset = m_second_length > 0 ? m_second_offset : 0;
        m_first_length = 0;
    }
    m_is_named = false;
    if (m_section) {
        m_section->named.clear();
        m_section->unnamed.clear();
    }
    m_is_section = false;
    m_level = -1;
}

void CLakeNode::clear_section() {
    if (!m_section)
        return;
    if (m_collection != nullptr) {
        for (auto const& [key, line] : m_section->named)
            remove_line(line);
        for (position const line : m_section->unnamed)
            remove_line(line);
    }
    m_section->named.clear();
    m_section->unnamed.clear();
}

void CLakeNode::remove_line(position line) {
    // The records' own positions move on, so that they never name a line that is gone.
    position const next = m_collection->erase(line);
    if (m_section->first_child == line)
        m_section->first_child = next;
    if (m_section->section_end == line)
        m_section->section_end = next;
}

std::wstring CLakeNodeProxy::text() const {
    return found() ? position->value_text().wide() : std::wstring();
}

std::int32_t CLakeNodeProxy::number() const {
    std::wistringstream stream(text());
    stream.imbue(std::locale::classic());
    std::int32_t result = 0;
    stream >> result;
    return result;
}

CLakeNodeProxy& CLakeNodeProxy::operator=(std::wstring value) {
    // Inside a nested section a miss gives a line that is none of its children.
    auto const& children = section->records().named;
    if (auto const child = children.find(key); child != children.end())
        position = child->second;
    else
        position = section->insert(key);
    position->value(std::move(value));
    return *this;
}
