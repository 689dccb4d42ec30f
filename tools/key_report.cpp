#include "tools/key_report.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/id_words.h"
#include "tools/nearest_names.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;
using Parameters = CQtParamInstance const&;

std::bitset<Clavis::ElementCount> const AllElements(0x3F);

Kind const& KindOfElement(std::size_t element) {
    return Kinds()[element];
}

KeyElement ResolveId(Kind const& kind, Parameters parameters, int id) {
    KeyElement element;
    element.id = id;
    if (id == -1)
        return element;
    auto const name = NameOf(kind, parameters, id);
    element.name = name.value_or(L"");
    if (!name) {
        element.nearest = NearestIds(id, RowsOf(kind));
        element.fault =
            std::to_string(id) + ": no such " + std::string(kind.word) + DidYouMean(element.nearest);
    }
    return element;
}

// A name that several parameters have; the instruments tell them apart.
std::string SeveralText(Parameters parameters, std::wstring const& name, std::vector<int> const& ids) {
    std::string text = ShownWord(name) + ": several parameters have this name";
    for (int const id : ids) {
        NamedId const instrument =
            Named(parameters.Instrument(), parameters.InstrumentParameterToInstrument(id));
        text += (id == ids.front() ? ": " : ", ") + std::to_string(id) + " of " + Shown(instrument);
    }
    return text;
}

// With an instrument only its parameters count; -1 for all.
KeyElement ResolveName(Kind const& kind, Parameters parameters, std::wstring const& name, int instrument) {
    bool const is_parameter = &kind == &KindOfElement(Clavis::qInstrParam);
    auto const is_other = [&](int id) {
        return is_parameter && instrument != -1 &&
               parameters.InstrumentParameterToInstrument(id) != instrument;
    };
    auto ids = IdsOf(kind, parameters, name);
    std::erase_if(ids, is_other);
    KeyElement element;
    element.name = name;
    if (is_parameter && instrument == -1 && ids.size() > 1) {
        element.fault = SeveralText(parameters, name, ids);
        for (int const id : ids)
            element.nearest.push_back({id, name});
    } else if (ids.empty()) {
        auto rows = RowsOf(kind);
        std::erase_if(rows, [&](NamedId const& row) { return is_other(row.id); });
        element.nearest = NearestNames(name, rows);
        element.fault = ShownWord(name) + ": no such " + std::string(kind.word);
        if (is_parameter && instrument != -1)
            element.fault += " of instrument " + Shown(Named(parameters.Instrument(), instrument));
        element.fault += DidYouMean(element.nearest);
    } else {
        element.id = ids.front();
    }
    return element;
}

std::optional<CClavis> ClavisOf(ResolvedKey const& elements) {
    CClavis key;
    for (int element = 0; element < Clavis::ElementCount; ++element) {
        auto const& id = elements[static_cast<std::size_t>(element)].id;
        if (!id)
            return std::nullopt;
        key[element] = *id;
    }
    return key;
}

struct KeyTexts {
    CString short_text;
    CString nice_text;
};

KeyTexts TextsOf(Parameters parameters, CClavis const& key, bool both) {
    return {parameters.FormatClavisText(key, CQtParamInstance::show_id_always, AllElements),
            parameters.FormatClavisTextNice(key, both, L"/")};
}

std::wstring WordOf(std::size_t element, int form) {
    return Clavis::ElementName(static_cast<int>(element), form).GetString();
}

void PrintText(std::ostream& out, ResolvedKey const& elements, KeyTexts const& texts) {
    using enum TextTable::Align;
    out << "Short  " << Printable(texts.short_text.GetString()) << '\n'
        << "Nice   " << Printable(texts.nice_text.GetString()) << "\n\n";
    TextTable table({Left, Right, Left, Left});
    table.Add({"Element", "Id", "Name", ""});
    for (std::size_t index = 0; index < elements.size(); ++index) {
        KeyElement const& element = elements[index];
        std::string const remark = *element.id == -1 ? "not set" : element.fault.empty() ? "" : "unknown";
        table.Add(
            {Printable(WordOf(index, 1)), std::to_string(*element.id), Printable(element.name), remark});
    }
    table.Print(out);
}

Json JsonElements(ResolvedKey const& elements) {
    Json list = Json::array();
    for (std::size_t index = 0; index < elements.size(); ++index) {
        KeyElement const& element = elements[index];
        Json nearest = Json::array();
        for (NamedId const& row : element.nearest)
            nearest.push_back({{"id", row.id}, {"name", JsonText(row.name)}});
        bool const has_id = element.id && *element.id != -1;
        list.push_back({{"element", ToUtf8(WordOf(index, 0))},
                        {"word", ToUtf8(WordOf(index, 1))},
                        {"id", has_id ? Json(*element.id) : Json(nullptr)},
                        {"name", JsonText(element.name)},
                        {"is_known", element.fault.empty()},
                        {"nearest", std::move(nearest)}});
    }
    return list;
}

Json JsonKey(Parameters parameters, ResolvedKey const& elements, bool both) {
    Json document{{"key", nullptr}, {"short_text", nullptr}, {"nice_text", nullptr}};
    if (auto const key = ClavisOf(elements)) {
        KeyTexts const texts = TextsOf(parameters, *key, both);
        document["key"] = Json::array();
        for (KeyElement const& element : elements)
            document["key"].push_back(*element.id);
        document["short_text"] = ToUtf8(texts.short_text.GetString());
        document["nice_text"] = ToUtf8(texts.nice_text.GetString());
    }
    document["elements"] = JsonElements(elements);
    return document;
}

} // namespace

ResolvedKey ResolveKey(CQtParamInstance const& parameters, KeyWords const& words) {
    ResolvedKey elements;
    for (std::size_t index = 0; index < words.size(); ++index) {
        Kind const& kind = KindOfElement(index);
        if (auto const* const id = std::get_if<int>(&words[index]))
            elements[index] = ResolveId(kind, parameters, *id);
        else
            elements[index] = ResolveName(kind, parameters, std::get<std::wstring>(words[index]),
                                          elements[Clavis::qInstrument].id.value_or(-1));
    }
    return elements;
}

void PrintKey(std::ostream& out, CQtParamInstance const& parameters, ResolvedKey const& elements, bool both,
              ReportFormat format) {
    if (format == ReportFormat::Json)
        PrintJson(out, JsonKey(parameters, elements, both));
    else if (auto const key = ClavisOf(elements))
        PrintText(out, elements, TextsOf(parameters, *key, both));
}

} // namespace paramdb::tools
