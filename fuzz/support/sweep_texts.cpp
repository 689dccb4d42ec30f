// The questions that are answered by names and other texts.
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/framework/combo_box.h>
#include <paramdb/tables/calc_parameter.h>

#include "query_sweep.h"

#include <algorithm>
#include <list>
#include <stdexcept>

namespace fuzz {

void AskNames(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers) {
#define FUZZ_NAMES(kind, word)                                                                               \
    for (int const id : ids.Of(word, 12))                                                                    \
        answers.Take(instance.kind##Name(id), instance.kind##Id(instance.kind##Name(id)));
    FUZZ_NAMES(TypeAlias, "type")
    FUZZ_NAMES(BenchAlias, "bench")
    FUZZ_NAMES(Channel, "channel")
    FUZZ_NAMES(Location, "location")
    FUZZ_NAMES(PhysMode, "mode")
    FUZZ_NAMES(ResamplingJob, "job")
    FUZZ_NAMES(ResamplingSet, "set")
    FUZZ_NAMES(SensorGroup, "group")
    FUZZ_NAMES(ApplicationSignal, "signal")
    FUZZ_NAMES(Mode, "mode")
    FUZZ_NAMES(Instrument, "instrument")
#undef FUZZ_NAMES
    for (int const id : ids.Of("mode", 12))
        answers.Take(instance.IsValidMode(id), instance.IsValidPhysMode(id), instance.PhysModeId(id));
    for (int const id : ids.Of("instrument", 12))
        answers.Take(instance.IsValidInstrument(id), instance.IsValidChannel(id),
                     instance.IsValidLocation(id), instance.IsValidApplicationSignal(id));
    for (int const id : ids.Of("parameter", 12)) {
        wchar_t const* const name = instance.InstrumentParamName(id);
        int const instrument = instance.InstrumentParameterToInstrument(id);
        answers.Take(name, instrument, instance.InstrumentParamId(name, instrument),
                     instance.InstrumentParamId(name, -1), instance.TriggerId(id));
    }
    for (int const id : ids.Of("trigger", 12))
        answers.Take(instance.TriggerName(id), instance.TriggerId(instance.TriggerName(id)));
    std::wstring const too_long(300, L'x');
    answers.Take(instance.ModeId(too_long.c_str()), instance.ChannelId(L""), instance.TriggerId(L"\x20AC"));
    for (int element = -1; element <= Clavis::ElementCount; ++element) {
        for (int const id : ids.Of("channel", 4))
            answers.Take(instance.ClavisElementName(element, id));
        if (element >= 0) {
            std::size_t shown = 0;
            for (auto const& [id, name] : instance.IdNameMap(static_cast<unsigned int>(element))) {
                answers.Take(id[0], static_cast<wchar_t const*>(name));
                if (++shown == 50)
                    break;
            }
        }
    }
    for (wchar_t const* const select : {L"", L"no such type", instance.TypeAliasName(0)}) {
        CComboBox combo;
        answers.Take(instance.FillTypeNameCombo(combo, select), combo.GetCurSel());
        for (int row = 0; row < std::min(combo.GetCount(), 20); ++row) {
            CString text;
            combo.GetLBText(row, text);
            answers.Take(text.GetString(), combo.GetItemData(row));
        }
    }
    answers.Take(instance.LearnFileName().GetString(), instance.CalibFileName().GetString(),
                 instance.BaseType().GetString(), instance.AliasType().GetString(),
                 CQtParamInstance::TimeSignalId(), instance.Initialized());
}

void AskKeyTexts(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers) {
    std::vector<QClavis> keys = ids.Keys();
    keys.emplace_back(-1, -1, -1, -1, -1, -1);
    for (int const number : {-2147483647 - 1, 0, 2147483647})
        keys.emplace_back(number, number, number, number, number, number);
    unsigned int round = 0;
    for (QClavis const& key : keys) {
        std::bitset<Clavis::ElementCount> const mask(++round % 7 == 0 ? 63 : round * 5 % 64);
        bool const both = round % 2 == 0;
        CQtParamInstance::ShowIdsInDialogs(both);
        answers.Take(instance.FormatClavisText(key, mask).GetString());
        for (auto const rule : {CQtParamInstance::show_id_never, CQtParamInstance::show_id_always,
                                CQtParamInstance::show_id_if_unnamed})
            answers.Take(instance.FormatClavisText(key, rule, ~mask).GetString());
        answers.Take(instance.FormatClavisTextNice(key, both, L"|").GetString());
        CString text;
        answers.Take(instance.FormatInstrParamText(text, key));
        answers.Take(instance.FormatLocaChanText(text, key, both));
        answers.Take(instance.BaseModeClavis(key).elements()[0]);
    }
    CQtParamInstance::ShowIdsInDialogs(false);
}

void AskDisplayTexts(CQtParamInstance& instance, KnownIds const& ids, Answers& answers) {
    for (auto const language : {CLibMgr::Language::german, CLibMgr::Language::english}) {
        CLibMgr::SetLanguage(language);
        for (int const parameter : ids.Of("parameter", 16)) {
            try {
                answers.Take(instance.IpDisplayText(parameter, L"<", L">\n").GetString());
            } catch (std::out_of_range const&) {
                answers.Take(parameter); // instruments whose table stands in another family
            }
        }
    }
    for (int const value : ids.Of("accumulation", 4)) {
        answers.Take(
            instance.IpSpectrumAccumulationType(static_cast<ParamDb::time_domain_accumulation_t>(value))
                .GetString());
        answers.Take(QVIpCalcParameter::GetCalcParamEnumText(value).GetString(),
                     QVIpCalcParameter::GetCalcParamEnumSubText(value, value).GetString());
    }
}

} // namespace fuzz
