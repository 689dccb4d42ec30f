#include "tools/rewrite/lake_proof.h"

#include <paramdb/storage/lake_line.h>
#include <paramdb/tables/catalogue.h>

#include "tools/rewrite/message_list.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace paramdb::tools {
namespace {

bool IsSameText(LakeText left, LakeText right) {
    if (left.size() != right.size())
        return false;
    for (std::size_t index = 0; index < left.size(); ++index)
        if (left[index] != right[index])
            return false;
    return true;
}

bool IsSameLine(CLake::CNode const& left, CLake::CNode const& right) {
    return left.is_section() == right.is_section() && IsSameText(left.value_text(), right.value_text()) &&
           IsSameText(left.comment_text(), right.comment_text());
}

// The bytes of a value behind all others.
template <class T>
void AppendBits(std::string& bits, T const& value) {
    bits.append(reinterpret_cast<char const*>(&value), sizeof value);
}

void AppendBits(std::string& bits, CQParamTableRows::ConstFields fields) {
    for (ConstField const& field : fields) {
        field.Visit([&bits]<class T>(T const& value) {
            if constexpr (std::is_same_v<T, CFixedText>) {
                AppendBits(bits, value.view().size());
                for (wchar_t const unit : value.view())
                    AppendBits(bits, unit);
            } else {
                AppendBits(bits, value);
            }
        });
    }
}

template <class Source>
TableContents ReadAll(Source&& source) {
    TableContents contents;
    CParamTables tables;
    MessageList messages;
    for (CatalogueEntry const& entry : CatalogueEntries(tables)) {
        entry.table->ReadTable(source);
        std::string& bits = contents.rows.emplace_back();
        entry.rows->VisitRows([&bits](auto key, auto row) {
            AppendBits(bits, key);
            AppendBits(bits, row);
            return true;
        });
        entry.table->Clear();
    }
    contents.messages = messages.Take();
    return contents;
}

} // namespace

void FillLake(CLake& lake, std::string_view bytes) {
    lake.clear();
    CLake::list& lines = *lake.root().collection();
    char const* const end = bytes.data() + bytes.size();
    for (char const* next = bytes.data(); next != end;) {
        LakeLine const line = TakeLine(next, end);
        lines.emplace_back(&lines, LakeText(line.key).wide(), LakeText(line.value).wide(),
                           LakeText(line.comment).wide());
    }
    lake.root().link(std::next(lake.begin()));
}

bool IsSameTree(CLake const& left, CLake const& right) {
    using Pair = std::pair<CLake::CNode const*, CLake::CNode const*>;
    std::vector<Pair> sections{{&left.root(), &right.root()}};
    auto const compare = [&sections](CLake::CNode const& a, CLake::CNode const& b) {
        if (a.is_section())
            sections.emplace_back(&a, &b);
        return IsSameLine(a, b);
    };
    while (!sections.empty()) {
        auto const [a, b] = sections.back();
        sections.pop_back();
        bool const same =
            std::equal(a->begin_unnamed(), a->end_unnamed(), b->begin_unnamed(), b->end_unnamed(),
                       [&](auto line, auto other) { return compare(*line, *other); }) &&
            std::equal(a->begin_named(), a->end_named(), b->begin_named(), b->end_named(),
                       [&](auto const& line, auto const& other) {
                           return line.first == other.first && compare(*line.second, *other.second);
                       });
        if (!same)
            return false;
    }
    return true;
}

TableContents ReadTables(CLake& lake) {
    return ReadAll(lake);
}

TableContents ReadTables(ParamDb::CDbTableSet& set) {
    return ReadAll(set);
}

TableContents ReadTables(CResourceSea& sea) {
    return ReadAll(&sea);
}

} // namespace paramdb::tools
