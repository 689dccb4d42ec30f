// CQtParamInstance: texts for keys.
#include <paramdb/keys/text_buffer.h>
#include <paramdb/query/param_instance.h>

#include <string>

namespace {

using Rule = CQtParamInstance::show_id_t;
using Mask = std::bitset<Clavis::ElementCount>;

constexpr unsigned int ShownByLocation = 4; // of a location's flags

constexpr wchar_t const* NoElement = L"(Nil)";

Rule RuleOfDialogs() {
    return CQtParamInstance::ShowIdsInDialogs() ? CQtParamInstance::show_id_always
                                                : CQtParamInstance::show_id_if_unnamed;
}

wchar_t const* ElementName(CQtParamInstance const& parameters, int element, int id) {
    return id == -1 ? NoElement : parameters.ClavisElementName(element, id);
}

std::wstring ElementText(CQtParamInstance const& parameters, int element, int id, Rule rule) {
    std::wstring text = ElementName(parameters, element, id);
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
    text += InstrumentName(instrument);
    if (m_distillery->DerivedInfo().InstrumentCounts().Count(instrument) <= 1)
        return;
    text += L" ";
    text += InstrumentParamName(parameter);
}

void CQtParamInstance::AppendLocaChan(KeyText& text, int location, int channel, bool both) const {
    unsigned int const type = ChannelResamplingType(channel);
    bool const several = m_distillery->DerivedInfo().ChannelTypeCounts().Count(type) > 1;
    wchar_t const* const location_name = LocationName(location);
    wchar_t const* const channel_name = ChannelName(channel);
    auto const append = [&](wchar_t const* first, wchar_t const* in_brackets) {
        text += first;
        text += L" (";
        text += in_brackets;
        text += L")";
    };
    if (type == 0 || (type & fix_channel) != 0) {
        auto const property = LocationProperty().find(location);
        if (several)
            append(location_name, channel_name);
        else if (property != LocationProperty().end() &&
                 (property->second.get<"flags">() & ShownByLocation) == 0)
            text += channel_name;
        else
            text += location_name;
    } else if ((type & mix_channel) != 0) {
        if (both || several)
            append(channel_name, location_name);
        else
            text += channel_name;
    } else {
        text += location_name;
        text += L" ";
        text += channel_name;
    }
}

CString CQtParamInstance::FormatClavisTextNice(CClavis const& key, bool both,
                                               wchar_t const* separator) const {
    KeyText text;
    auto const append_separator = [&] {
        text += L" ";
        text += separator;
        text += L" ";
    };
    text += ElementName(*this, Clavis::qMode, key[Clavis::qMode]);
    append_separator();
    AppendInstrParam(text, key[Clavis::qInstrument], key[Clavis::qInstrParam]);
    append_separator();
    AppendLocaChan(text, key[Clavis::qLocation], key[Clavis::qChannel], both);
    append_separator();
    text += ElementName(*this, Clavis::qSignal, key[Clavis::qSignal]);
    return text.c_str();
}

CString CQtParamInstance::FormatClavisTextNice(QClavis const& key, bool both,
                                               wchar_t const* separator) const {
    return FormatClavisTextNice(key.ToClavis(), both, separator);
}

wchar_t const* CQtParamInstance::FormatInstrParamText(CString& out, int instrument, int parameter) const {
    KeyText text;
    AppendInstrParam(text, instrument, parameter);
    out = text.c_str();
    return out;
}

wchar_t const* CQtParamInstance::FormatInstrParamText(CString& out, QClavis const& key) const {
    return FormatInstrParamText(out, key[Clavis::qInstrument], key[Clavis::qInstrParam]);
}

wchar_t const* CQtParamInstance::FormatLocaChanText(CString& out, int location, int channel,
                                                    bool both) const {
    KeyText text;
    AppendLocaChan(text, location, channel, both);
    out = text.c_str();
    return out;
}

wchar_t const* CQtParamInstance::FormatLocaChanText(CString& out, QClavis const& key, bool both) const {
    return FormatLocaChanText(out, key[Clavis::qLocation], key[Clavis::qChannel], both);
}
