#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/framework/dialog_template.h>

#include <algorithm>
#include <iterator>

namespace {

using Language = CLibMgr::Language;

// The texts of the key dialog. "OK" is the same everywhere.
struct KeyDialogTexts {
    Language language;
    wchar_t const* title;
    wchar_t const* cancel;
};

// The first is English.
constexpr KeyDialogTexts KeyDialog[] = {
    {Language::english, L"Key Specification", L"Cancel"},
    {Language::portuguese, L"Especifica\u00E7\u00E3o da chave", L"Cancelar"},
    {Language::czech, L"Zad\u00E1n\u00ED kl\u00ED\u010De", L"Storno"},
    {Language::german, L"Schl\u00FCssel festlegen", L"Abbrechen"},
    {Language::french, L"Sp\u00E9cification de la cl\u00E9", L"Annuler"},
    {Language::hungarian, L"Kulcs megad\u00E1sa", L"M\u00E9gse"},
    {Language::italian, L"Specifica della chiave", L"Annulla"},
    {Language::standard, L"Key Specification", L"Cancel"},
    {Language::chinese, L"\u6307\u5B9A\u952E", L"\u53D6\u6D88"},
    {Language::spanish, L"Especificaci\u00F3n de la clave", L"Cancelar"},
};

CDialogTemplate KeyDialogTemplate(KeyDialogTexts const& texts) {
    using Kind = CDialogItem::Kind;
    return {3002,
            texts.title,
            L"MS Shell Dlg",
            8,
            169,
            115,
            {
                {Kind::list, 3000, {}, 7, 7, 155, 80},
                {Kind::default_button, 1, L"OK", 58, 94, 50, 14},
                {Kind::button, 2, texts.cancel, 112, 94, 50, 14},
            }};
}

} // namespace

CDialogTemplate paramdb::FindDialogTemplate(unsigned int id) {
    if (id != 3002)
        return {};
    auto const texts =
        std::find_if(std::begin(KeyDialog), std::end(KeyDialog),
                     [](KeyDialogTexts const& row) { return row.language == CLibMgr::GetLanguage(); });
    return KeyDialogTemplate(texts != std::end(KeyDialog) ? *texts : KeyDialog[0]);
}
