#include <paramdb/storage/lake_node.h>

#include <locale>
#include <sstream>
#include <stdexcept>

using paramdb::LakeText;

CLakeNode::Section const CLakeNode::NoRecords{};

CLakeNode::CLakeNode(list* collection, std::wstring key, std::wstring value, std::wstring comment)
    : m_is_named(!key.empty()) {
    auto extras = std::make_unique<Extras>();
    extras->texts = new WideTexts{std::move(key), std::move(value), std::move(comment)};
    extras->collection = collection;
    m_extras = extras.release();
}

CLakeNode::CLakeNode(CLakeNode const& other) : NodeLinks(other) {
    *this = other;
}

CLakeNode& CLakeNode::operator=(CLakeNode const& other) {
    if (this == &other)
        return *this;
    changed();
    auto extras = std::make_unique<Extras>();
    extras->texts =
        new WideTexts{other.key_text().wide(), other.value_text().wide(), other.comment_text().wide()};
    if (other.section() != nullptr)
        extras->section = std::make_unique<Section>(*other.section());
    delete m_extras.exchange(extras.release());
    m_is_named = other.m_is_named;
    m_is_section = other.m_is_section;
    assign_collection(other.collection());
    set_level(other.level());
    return *this;
}

CLakeNode& CLakeNode::operator=(std::wstring text) {
    value(std::move(text));
    return *this;
}

void CLakeNode::value(std::wstring text) {
    changed();
    own_texts().value = std::move(text);
}
void CLakeNode::comment(std::wstring text) {
    own_texts().comment = std::move(text);
}

LakeText CLakeNode::key_text() const {
    if (auto const* const texts = wide_if_any())
        return std::wstring_view(texts->key);
    return m_is_named ? first_bytes() : std::string_view();
}

LakeText CLakeNode::kept_value_text() const {
    if (auto const* const texts = wide_if_any())
        return std::wstring_view(texts->value);
    return m_is_named ? second_bytes() : first_bytes();
}

LakeText CLakeNode::comment_text() const {
    if (auto const* const texts = wide_if_any())
        return std::wstring_view(texts->comment);
    return m_is_named ? std::string_view() : second_bytes();
}

CLakeNode::Extras& CLakeNode::own_extras() const {
    if (Extras* const known = extras())
        return *known;
    auto made = std::make_unique<Extras>();
    made->first = packed_first();
    made->second = packed_second();
    Extras* winner = nullptr;
    if (m_extras.compare_exchange_strong(winner, made.get(), std::memory_order_acq_rel))
        winner = made.release();
    return *winner;
}

CLakeNode::WideTexts const& CLakeNode::wide() const {
    Extras& kept = own_extras();
    if (WideTexts* const texts = kept.texts.load(std::memory_order_acquire))
        return *texts;
    auto const first = LakeText(kept.first).wide();
    auto const second = LakeText(kept.second).wide();
    auto texts =
        std::make_unique<WideTexts>(m_is_named ? WideTexts{first, second, {}} : WideTexts{{}, first, second});
    WideTexts* winner = nullptr;
    if (kept.texts.compare_exchange_strong(winner, texts.get(), std::memory_order_acq_rel))
        winner = texts.release();
    return *winner;
}

CLakeNode::Section& CLakeNode::own_records() {
    auto& section = own_extras().section;
    if (!section)
        section = std::make_unique<Section>();
    return *section;
}

void CLakeNode::keep_level(std::int32_t level) {
    own_extras().level = level;
    m_level_above = DeepLevel;
}

void CLakeNode::keep_collection(list* collection) {
    if (collection != nullptr)
        own_extras().collection = collection;
    else if (Extras* const any = extras())
        any->collection = nullptr;
}

void CLakeNode::keep_bytes(std::string_view first, std::string_view second) {
    Extras& kept = own_extras();
    kept.first = first;
    kept.second = second;
}

void CLakeNode::reset() {
    delete m_extras.exchange(nullptr);
    m_bytes = "";
    m_first_length = 0;
    m_gap = 0;
    m_second_length = 0;
    m_level_above = 0;
    m_is_named = m_is_section = m_is_owners = false;
}

void CLakeNode::copy_line(CLakeNode const& other) {
    m_is_named = other.m_is_named;
    m_is_section = other.m_is_section;
    set_bytes(other.first_bytes(), other.second_bytes());
    m_bytes = other.m_bytes;
    set_level(other.level());
    if (auto const* const texts = other.wide_if_any()) {
        Extras& kept = own_extras(); // before there are texts that a failure would lose
        kept.texts = new WideTexts(*texts);
    }
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
    std::int64_t index = 0;
    for (position const row : unnamed_lines()) {
        if (row->value_text() == text)
            return index;
        ++index;
    }
    return -1;
}

CLakeNodeProxy CLakeNode::operator[](std::wstring const& key) const {
    list* const lines = collection();
    position start = first_child();
    if (lines != nullptr && start == lines->end())
        start = lines->begin();
    return {lines, start, 0, find(key), key, const_cast<CLakeNode*>(this)};
}

std::uint64_t CLakeNode::push_back(std::wstring text) {
    list* const lines = collection();
    if (lines == nullptr)
        throw std::logic_error("CLake::CNode::push_back: the node belongs to no lake");
    make_section();
    Section& section = own_records();
    if (section.section_end == position())
        section.section_end = behind();
    position const row = lines->emplace(section.section_end);
    section.unnamed.push_back(row);
    row->assign_collection(lines);
    row->set_level(level() + 1);
    row->value(std::move(text));
    return section.unnamed.size() - 1;
}

void CLakeNode::make_section() {
    if (m_is_section)
        return;
    changed();
    Section& section = own_records();
    position const before = section.section_end == position() ? behind() : section.section_end;
    position const closing =
        collection()->emplace(before, collection(), std::wstring(), std::wstring(L"}"), key_text().wide());
    closing->set_level(level());
    section.section_end = closing;
    value(L"{");
    m_is_section = true;
}

CLakeNode::position CLakeNode::behind() {
    return list::stands_in_list(*this) ? std::next(list::position(*this)) : collection()->end();
}

CLakeNode::position CLakeNode::insert(std::wstring const& key) {
    list* const lines = collection();
    if (lines == nullptr)
        throw std::logic_error("CLake::CNode::insert: the node belongs to no lake");
    Section& section = own_records();
    if (section.section_end == position())
        section.section_end = behind();
    position const line = lines->emplace(section.section_end, lines, key, std::wstring(), std::wstring());
    line->own_records().section_end = section.section_end;
    section.named.try_emplace(key, line);
    return line;
}

void CLakeNode::clear() {
    changed();
    assign_collection(nullptr);
    if (WideTexts* const texts = const_cast<WideTexts*>(wide_if_any())) {
        texts->key.clear();
        texts->value.clear();
    } else {
        // The second text of an unnamed line is its comment, which stays.
        std::string_view const comment = m_is_named ? std::string_view() : second_bytes();
        if (Extras* const kept = extras()) {
            kept->first = {};
            kept->second = comment;
        } else {
            m_bytes = comment.empty() ? m_bytes : comment.data();
            m_first_length = 0;
            m_gap = 0;
            m_second_length = static_cast<std::uint16_t>(comment.size());
        }
    }
    m_is_named = false;
    if (Section* const own = section()) {
        own->named.clear();
        own->unnamed.clear();
    }
    m_is_section = false;
    set_level(-1);
}

void CLakeNode::clear_section() {
    Section* const own = section();
    if (own == nullptr)
        return;
    changed();
    if (collection() != nullptr) {
        for (auto const& [key, line] : own->named)
            remove_line(line);
        for (position const line : own->unnamed)
            remove_line(line);
    }
    own->named.clear();
    own->unnamed.clear();
}

void CLakeNode::remove_line(position line) {
    // The records' own positions move on, so that they never name a line that is gone.
    position const next = collection()->erase(line);
    Section& own = *section();
    if (own.first_child == line)
        own.first_child = next;
    if (own.section_end == line)
        own.section_end = next;
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
