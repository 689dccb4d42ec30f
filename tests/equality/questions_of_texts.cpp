#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/framework/combo_box.h>
#include <paramdb/tables/calc_parameter.h>

#include "questions.h"

#include <list>
#include <stdexcept>
#include <vector>

namespace equality {
namespace {

// All ids that rows have, some that none has, and instrument classes.
std::vector<int> const& Ids() {
    static std::vector<int> const ids = [] {
        std::vector<int> numbers{-2147483647 - 1, -2, 99, 2147483647};
        for (int id = -1; id <= HighestParameter + 1; ++id)
            numbers.push_back(id);
        for (int const instrument :
             {1001, 1002, 1050, 1070, 1700, 2001, 2070, 2500, 2600, 2900, 3500, 10001, 13202})
            numbers.push_back(instrument);
        return numbers;
    }();
    return ids;
}

CLibMgr::Language constexpr Languages[] = {CLibMgr::Language::english, CLibMgr::Language::portuguese,
                                           CLibMgr::Language::czech,   CLibMgr::Language::german,
                                           CLibMgr::Language::french,  CLibMgr::Language::hungarian,
                                           CLibMgr::Language::italian, CLibMgr::Language::standard,
                                           CLibMgr::Language::chinese, CLibMgr::Language::spanish};

} // namespace

void AskNames(CQtParamInstance const& instance, AnswerBook& book) {
    for (int const id : Ids()) {
#define EQUALITY_NAMES(kind)                                                                                 \
    book.Tell(#kind, id, instance.kind##Name(id), instance.kind##Id(instance.kind##Name(id)));
        EQUALITY_NAMES(TypeAlias)
        EQUALITY_NAMES(BenchAlias)
        EQUALITY_NAMES(Channel)
        EQUALITY_NAMES(Location)
        EQUALITY_NAMES(PhysMode)
        EQUALITY_NAMES(ResamplingJob)
        EQUALITY_NAMES(ResamplingSet)
        EQUALITY_NAMES(SensorGroup)
        EQUALITY_NAMES(ApplicationSignal)
        EQUALITY_NAMES(Mode)
        EQUALITY_NAMES(Instrument)
#undef EQUALITY_NAMES
        book.Tell("valid", id, instance.IsValidMode(id), instance.IsValidPhysMode(id),
                  instance.IsValidInstrument(id), instance.IsValidChannel(id), instance.IsValidLocation(id),
                  instance.IsValidApplicationSignal(id));
        std::wstring const parameter = instance.InstrumentParamName(id);
        int const instrument = instance.InstrumentParameterToInstrument(id);
        book.Tell("parameter", id, parameter, instrument, instance.TriggerId(id),
                  instance.InstrumentParamId(parameter.c_str(), instrument),
                  instance.InstrumentParamId(parameter.c_str(), -1));
        book.Tell("trigger", id, instance.TriggerName(id), instance.TriggerId(instance.TriggerName(id)));
        for (int element = -1; element <= Clavis::ElementCount; ++element)
            book.Tell("element", element, id, instance.ClavisElementName(element, id));
    }
    for (unsigned int element = 0; element < 7; ++element)
        for (auto const& [id, name] : instance.IdNameMap(element))
            book.Tell("names", element, id[0], static_cast<wchar_t const*>(name));
}

void AskClassification(CQtParamInstance& instance, AnswerBook& book) {
    for (int number = -1; number < 30000; number += number < 3000 ? 1 : 13)
        book.Tell("class", number, CQtParamInstance::ResultType(number),
                  CQtParamInstance::ScalarInstrumentToTrackInstrument(number),
                  CQtParamInstance::TrackInstrumentToScalarInstrument(number));
    for (int const id : Ids()) {
        book.Tell("instrument", id, instance.IsSingleValueInstrument(id), instance.IsTrackInstrument(id),
                  instance.IsSpectrumInstrument(id), instance.Is2dDataInstrument(id));
        book.Tell("channel", id, instance.ChannelResamplingType(id), instance.ChannelIsSync(id),
                  instance.ChannelIsMix(id), instance.ChannelIsFix(id), instance.LocationPropertyFlag(id));
        CMeasuringUnit const unit = instance.ApplicationSignalUnit(id);
        book.Tell("unit", id, unit.unit(), unit.prefix(), unit.prefixunit(false), unit.prefixunit(true));
    }
    book.Tell("multiple mix locations", instance.IpMultipleMixLocs());
    for (wchar_t const* const name : {L"", L"no such type", instance.TypeAliasName(3)}) {
        CComboBox combo;
        int const types = instance.FillTypeNameCombo(combo, name);
        book.Tell("types", name, types, combo.GetCurSel());
        for (int row = 0; row < combo.GetCount(); ++row) {
            CString text;
            combo.GetLBText(row, text);
            book.Tell("type", text, static_cast<std::int64_t>(combo.GetItemData(row)));
        }
    }
}

void AskKeyTexts(CQtParamInstance const& instance, Random& random, AnswerBook& book) {
    for (int round = 0; round < 400; ++round) {
        CClavis key;
        for (int element = 0; element < Clavis::ElementCount; ++element)
            key[element] = random.Between(-1, element == Clavis::qInstrParam ? HighestParameter : HighestId);
        if (random.OneIn(2))
            key[Clavis::qInstrument] = RandomInstrument(random);
        QClavis const q_key(key);
        std::bitset<Clavis::ElementCount> const mask(random.Bits() % 64);
        bool const both = random.OneIn(2);
        CQtParamInstance::ShowIdsInDialogs(random.OneIn(2));
        book.Tell("key", instance.FormatClavisText(key, mask));
        for (auto const rule : {CQtParamInstance::show_id_never, CQtParamInstance::show_id_always,
                                CQtParamInstance::show_id_if_unnamed})
            book.Tell("key with rule", static_cast<int>(rule), instance.FormatClavisText(q_key, rule, mask));
        book.Tell("nice key", instance.FormatClavisTextNice(q_key, both, L"|"));
        CString text;
        book.Tell("parameter text", instance.FormatInstrParamText(text, q_key));
        book.Tell("location text", instance.FormatLocaChanText(text, q_key, both));
        QClavis base(key);
        instance.BaseModeClavis(base);
        book.Tell("base mode key", base.elements()[0]);
    }
    CQtParamInstance::ShowIdsInDialogs(false);
}

void AskDisplayTexts(CQtParamInstance& instance, AnswerBook& book) {
    for (CLibMgr::Language const language : Languages) {
        CLibMgr::SetLanguage(language);
        for (int parameter = -1; parameter <= HighestParameter; ++parameter) {
            try {
                book.Tell("display", parameter, instance.IpDisplayText(parameter, L"<", L">\n"));
            } catch (std::out_of_range const& fault) {
                book.Tell("display", parameter, fault.what());
            }
        }
        for (unsigned int label = 0; label < 600; label += 7)
            book.Tell("line", label,
                      instance.IpParamDisplayText(label, L"value", static_cast<int>(label) - 20),
                      instance.IpEnumParamDisplayText(label, 3, label + 1));
        for (int accumulation = -1; accumulation < 30; ++accumulation)
            book.Tell("accumulation", accumulation,
                      instance.IpSpectrumAccumulationType(
                          static_cast<ParamDb::time_domain_accumulation_t>(accumulation)));
        for (int setting = -2; setting < 60; ++setting) {
            book.Tell("setting", setting, QVIpCalcParameter::GetCalcParamEnumText(setting));
            for (int value = -2; value < 30; ++value)
                book.Tell("word", setting, value, QVIpCalcParameter::GetCalcParamEnumSubText(setting, value));
            std::list<CString> words;
            book.Tell("words", setting, QVIpCalcParameter::GetCalcParamEnumSubTexts(setting, words));
            for (CString const& word : words)
                book.Tell("", word);
        }
        for (int element = -1; element <= Clavis::ElementCount; ++element)
            for (int form = -1; form < 4; ++form)
                book.Tell("element word", Clavis::ElementName(element, form));
    }
    CLibMgr::SetLanguage(CLibMgr::Language::english);
}

} // namespace equality
