// CQtParamInstance: texts for keys.
#include <paramdb/keys/text_buffer.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/tables/id_search.h>

#include <string>
#include <string_view>

namespace {

using Rule = CQtParamInstance::show_id_t;
using Mask = std::bitset<Clavis::ElementCount>;

constexpr unsigned int ShownByLocation = 4; // of a location's flags

// Views, so that no length is measured when a text is put together.
constexpr std::wstring_view NoElement = L"(Nil)";
constexpr std::wstring_view Blank = L" ";
constexpr std::wstring_view OpeningBracket = L" (";
constexpr std::wstring_view ClosingBracket = L")";

Rule RuleOfDialogs() {
    return CQtParamInstance::ShowIdsInDialogs() ? CQtParamInstance::show_id_always
                                                : CQtParamInstance::show_id_if_unnamed;
}

std::wstring ElementText(CQtParamInstance const& parameters, int element, int id, Rule rule) {
    std::wstring text(id == -1 ? NoElement : parameters.ClavisElementName(element, id));
    bool const shows_id = rule == CQtParamInstance::show_id_always ||
                          (rule == CQtParamInstance::show_id_if_unnamed && text.empty());
    if (!shows_id)
        return text;
    if (!text.empty())
        text += L" ";
    return text + L"[" + std::to_wstring(id) + L"]";
}

CClavis ToClavis(SClavis const& key) {
    return CClavis(key.elements);
}

} // namespace

CString CQtParamInstance::FormatClavisText(CClavis const& key, show_id_t rule, Mask mask) const {
    std::wstring text;
    for (int element = 0; element < Clavis::ElementCount; ++element) {
        if (!mask[static_cast<std::size_t>(element)])
            continue;
        if (!text.empty())
            text += L" / ";
        text += ElementText(*this, element, key[element], rule);
    }
    return text;
}

CString CQtParamInstance::FormatClavisText(SClavis const& key, show_id_t rule, Mask mask) const {
    return FormatClavisText(ToClavis(key), rule, mask);
}

CString CQtParamInstance::FormatClavisText(QClavis const& key, show_id_t rule, Mask mask) const {
    return FormatClavisText(key.ToClavis(), rule, mask);
}

CString CQtParamInstance::FormatClavisText(CClavis const& key, Mask mask) const {
    return FormatClavisText(key, RuleOfDialogs(), mask);
}

CString CQtParamInstance::FormatClavisText(SClavis const& key, Mask mask) const {
    return FormatClavisText(ToClavis(key), RuleOfDialogs(), mask);
}

CString CQtParamInstance::FormatClavisText(QClavis const& key, Mask mask) const {
    return FormatClavisText(key.ToClavis(), RuleOfDialogs(), mask);
}

void CQtParamInstance::AppendInstrParam(KeyText& text, int instrument, int parameter) const {
    if (instrument == -1)
        instrument = InstrumentParameterToInstrument(parameter);
    std::wstring_view const name = Instrument().NameText(instrument);
    text.Append(!name.empty() ? name : InstrumentName(instrument));
    if (m_distillery->DerivedInfo().InstrumentCounts().Count(instrument) <= 1)
        return;
    text += Blank;
    text.Append(m_distillery->DerivedInfo().ParameterNames().Name(parameter));
}

void CQtParamInstance::AppendLocaChan(KeyText& text, int location, int channel, bool both) const {
    unsigned int const type = ChannelResamplingType(channel);
    bool const several = m_distillery->DerivedInfo().ChannelTypeCounts().Count(type) > 1;
    std::wstring_view const location_name = Location().NameText(location);
    std::wstring_view const channel_name = Channel().NameText(channel);
    auto const append = [&](std::wstring_view first, std::wstring_view in_brackets) {
        text.Append(first);
        text += OpeningBracket;
        text.Append(in_brackets);
        text += ClosingBracket;
    };
    if (type == 0 || (type & fix_channel) != 0) {
        if (several) {
            append(location_name, channel_name);
            return;
        }
        auto const property = paramdb::FindById(LocationProperty(), location);
        bool const by_channel =
            property != LocationProperty().end() && (property->second.get<"flags">() & ShownByLocation) == 0;
        text.Append(by_channel ? channel_name : location_name);
    } else if ((type & mix_channel) != 0) {
        if (both || several)
            append(channel_name, location_name);
        else
            text.Append(channel_name);
    } else {
        text.Append(location_name);
        text += Blank;
        text.Append(channel_name);
    }
}

CString CQtParamInstance::FormatClavisTextNice(CClavis const& key, bool both,
                                               wchar_t const* separator) const {
    CTextBuffer<500> between;
    between += Blank;
    between += separator;
    between += Blank;
    KeyText text;
    int const mode = key[Clavis::qMode];
    int const signal = key[Clavis::qSignal];
    std::wstring_view const mode_name = Mode().NameText(mode);
    if (mode == -1)
        text.Append(NoElement);
    else
        text.Append(mode_name.data() != nullptr ? mode_name : ModeName(mode));
    text.Append(between.view());
    AppendInstrParam(text, key[Clavis::qInstrument], key[Clavis::qInstrParam]);
    text.Append(between.view());
    AppendLocaChan(text, key[Clavis::qLocation], key[Clavis::qChannel], both);
    text.Append(between.view());
    text.Append(signal == -1 ? NoElement : ApplicationSignal().NameText(signal));
    return text.view();
}

CString CQtParamInstance::FormatClavisTextNice(QClavis const& key, bool both,
                                               wchar_t const* separator) const {
    return FormatClavisTextNice(key.ToClavis(), both, separator);
}

wchar_t const* CQtParamInstance::FormatInstrParamText(CString& out, int instrument, int parameter) const {
    KeyText text;
    AppendInstrParam(text, instrument, parameter);
    out = text.view();
    return out;
}

wchar_t const* CQtParamInstance::FormatInstrParamText(CString& out, QClavis const& key) const {
    return FormatInstrParamText(out, key[Clavis::qInstrument], key[Clavis::qInstrParam]);
}

wchar_t const* CQtParamInstance::FormatLocaChanText(CString& out, int location, int channel,
                                                    bool both) const {
    KeyText text;
    AppendLocaChan(text, location, channel, both);
    out = text.view();
    return out;
}

wchar_t const* CQtParamInstance::FormatLocaChanText(CString& out, QClavis const& key, bool both) const {
    return FormatLocaChanText(out, key[Clavis::qLocation], key[Clavis::qChannel], both);
}
