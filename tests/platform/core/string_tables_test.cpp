#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/string_tables.h>
#include <paramdb/platform/core/utf8.h>

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using paramdb::ElementWords;
using paramdb::FindElements;
using paramdb::FindString;
using paramdb::StringEntry;
using paramdb::StringTable;
using paramdb::StringTables;
using Texts = std::set<std::wstring>;

constexpr std::uint16_t English = 0x9;
constexpr std::uint16_t Default = 0x800;

// What is particular to a translation: the letters beside ASCII, and the words that read as in English.
struct Translation {
    std::uint16_t language;
    char const* name;
    wchar_t const* letters;
    Texts as_in_english;
};

std::vector<Translation> const& Translations() {
    static std::vector<Translation> const translations{
        {0x16, "Portuguese", L"áâãçéêíóôõúÁÚºö", {L"Offset", L"Sensor"}},
        {0x405,
         "Czech",
         L"áčďéěíňóřšťúůýžöŠŘČŽ",
         {L"Maximum", L"Minimum", L"Trigger", L"Polygon", L"Offset"}},
        {0x407,
         "German",
         L"äöüß",
         {L"Maximum", L"Minimum", L"Interpretation", L"Definition", L"Trigger", L"Polygon", L"Offset",
          L"Standard", L"Median", L"Addition", L"Division", L"Instrument", L"Parameter", L"Sensor"}},
        {0x40C,
         "French",
         L"àâçèéêîôûùÉö",
         {L"Section", L"Maximum", L"Minimum", L"Standard", L"Quantile 95%", L"Quantile 90%", L"Addition",
          L"Multiplication", L"Division", L"Instrument", L"Instruments"}},
        {0x40E, "Hungarian", L"áéíóöőúüűÁÉÍÓÖŐÚÜŰ", {L"Maximum", L"Minimum", L"Trigger", L"Standard"}},
        {0x410,
         "Italian",
         L"àèéìòù°ö",
         {L"Trigger", L"Offset", L"Standard", L"Quantile 95%", L"Quantile 90%"}},
        {0x804, "Chinese", L"ö", {}},
        {0xC0A, "Spanish", L"áéíñóúüÁÚºö", {L"Offset", L"Sensor"}},
    };
    return translations;
}

// Names and numbers, which are the same in every language.
Texts const Names{L"(1)", L"(3)", L"(4)", L"(5)", L"(7)", L"RMS", L"DbMoyenne (Renault)", L"DbMax (Renault)"};

std::wstring Text(std::uint16_t language, unsigned id) {
    wchar_t const* const text = FindString(language, id);
    return text ? text : L"(missing)";
}

std::string Shown(std::uint16_t language, unsigned id) {
    return std::to_string(language) + ' ' + std::to_string(id) + ' ' + paramdb::ToUtf8(Text(language, id));
}

// What a text has of the given characters, in their order.
std::wstring Sorted(std::wstring const& text, std::wstring_view characters) {
    std::wstring found;
    std::copy_if(text.begin(), text.end(), std::back_inserter(found),
                 [&](wchar_t c) { return characters.find(c) != std::wstring_view::npos; });
    std::sort(found.begin(), found.end());
    return found;
}

bool IsCapital(wchar_t c) {
    return (c >= L'A' && c <= L'Z') ||
           std::wstring_view(L"ÁÂÄÉÍÓÖÚÜŐŰČŘŠŽ").find(c) != std::wstring_view::npos;
}

bool IsHan(wchar_t c) {
    return c >= L'\u4E00' && c <= L'\u9FFF';
}

// Whether a word stands in a text, whatever the size of its first letter.
bool Holds(std::wstring const& text, std::wstring const& word) {
    return text.find(word.substr(word.size() > 1 && !IsHan(word.front()) ? 1 : 0)) != std::wstring::npos;
}

std::set<unsigned> AllIds() {
    std::set<unsigned> ids;
    auto const add = [&ids](unsigned first, unsigned last) {
        for (unsigned id = first; id <= last; ++id)
            ids.insert(id);
    };
    add(7, 23), add(30, 31), add(99, 151), add(200, 208), add(220, 223), add(250, 257), add(290, 294);
    add(300, 308), add(400, 407), add(490, 491), add(500, 515), add(550, 551);
    return ids;
}

// All texts of a language, the words for the elements among them.
std::vector<std::wstring> AllTexts(std::uint16_t language) {
    std::vector<std::wstring> texts;
    for (unsigned const id : AllIds())
        texts.push_back(Text(language, id));
    for (ElementWords const& words : FindElements(language))
        texts.insert(texts.end(), {words.singular, words.plural});
    return texts;
}

TEST(StringTables, Languages) {
    std::vector<std::uint16_t> languages;
    for (StringTable const& table : StringTables())
        languages.push_back(table.language);
    EXPECT_EQ(languages, (std::vector<std::uint16_t>{0x9, 0x16, 0x405, 0x407, 0x40C, 0x40E, 0x410, 0x800,
                                                     0x804, 0xC0A}));
}

TEST(StringTables, EveryLanguageHasAllIdsInOrder) {
    std::set<unsigned> const expected = AllIds();
    ASSERT_EQ(expected.size(), 135u);
    std::vector<unsigned> const in_order(expected.begin(), expected.end());
    for (StringTable const& table : StringTables()) {
        std::vector<unsigned> ids;
        for (StringEntry const& entry : table.strings)
            ids.push_back(entry.id);
        EXPECT_EQ(ids, in_order) << table.language;
    }
}

TEST(StringTables, EnglishTextsAtTheEdges) {
    struct Case {
        unsigned id;
        wchar_t const* text;
    };
    Case const cases[] = {
        {7, L"Section"},
        {18, L"not definined"},
        {23, L"Slope"},
        {30, L"not definined"},
        {99, L"Calculation parameter"},
        {148, L"Hölder power"},
        {150, L"Spectral deviaton std.deviation weight"},
        {200, L"not defined"},
        {223, L"Hölder mean p6"},
        {257, L"Quantile Diff. 90%-10%"},
        {294, L"Shifting time"},
        {405, L"Deviation, percent"},
        {491, L"2 point definition"},
        {515, L"Mean value overall"},
        {551, L"Difference"},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(Text(English, c.id), c.text) << c.id;
        EXPECT_EQ(Text(Default, c.id), c.text) << c.id;
    }
}

// One text with each language's own letters, by their numbers: the sources are read as UTF-8.
TEST(StringTables, LettersBesideAscii) {
    struct Case {
        std::uint16_t language;
        unsigned id;
        wchar_t const* text;
    };
    Case const cases[] = {
        {0x16, 7, L"Se\u00E7\u00E3o"},
        {0x405, 134, L"Vyhodnocen\u00ED \u0159azen\u00ED"},
        {0x407, 11, L"alle Pr\u00FCfschritte"},
        {0x40C, 115, L"\u00C9cart-type"},
        {0x40E, 16, L"\u00F6sszes \u00E9rz\u00E9kel\u0151"},
        {0x410, 142, L"Modalit\u00E0 poligono"},
        {0x804, 101, L"\u89E6\u53D1"},
        {0xC0A, 128, L"2.\u00BA instrumento fuente"},
    };
    for (Case const& c : cases)
        EXPECT_EQ(Text(c.language, c.id), c.text) << c.language;
}

TEST(StringTables, TextsAreOfTheirAlphabetAndTidy) {
    for (Translation const& translation : Translations()) {
        std::wstring_view const letters = translation.letters;
        bool const chinese = translation.language == 0x804;
        for (std::wstring const& text : AllTexts(translation.language)) {
            SCOPED_TRACE(translation.name + (' ' + paramdb::ToUtf8(text)));
            ASSERT_FALSE(text.empty());
            EXPECT_LE(text.size(), 60u);
            EXPECT_FALSE(text.front() == L' ' || text.back() == L' ' || text.find(L"  ") != text.npos);
            for (wchar_t const c : text) {
                bool const ascii = c >= L' ' && c <= L'~';
                bool const own = letters.find(c) != letters.npos || (chinese && IsHan(c));
                EXPECT_TRUE(ascii || own) << static_cast<unsigned>(c);
            }
        }
    }
}

TEST(StringTables, TranslationsDifferFromEnglish) {
    for (Translation const& translation : Translations()) {
        Texts same;
        for (unsigned const id : AllIds()) {
            std::wstring const text = Text(translation.language, id);
            if (text == Text(English, id) && Names.count(text) == 0)
                same.insert(text);
        }
        for (std::size_t i = 0; i < paramdb::KeyElements; ++i) {
            ElementWords const own = FindElements(translation.language)[i];
            ElementWords const english = FindElements(English)[i];
            for (auto const word : {&ElementWords::singular, &ElementWords::plural}) {
                if (std::wstring(own.*word) == english.*word)
                    same.insert(own.*word);
            }
        }
        EXPECT_EQ(same, translation.as_in_english) << translation.name;
        for (unsigned const id : {222u, 254u, 255u, 301u, 303u, 304u, 305u, 307u})
            EXPECT_EQ(Text(translation.language, id), Text(English, id)) << translation.name << ' ' << id;
    }
}

TEST(StringTables, NumbersSignsAndNamesAreKept) {
    for (Translation const& translation : Translations()) {
        for (unsigned const id : AllIds()) {
            SCOPED_TRACE(Shown(translation.language, id));
            std::wstring const text = Text(translation.language, id);
            std::wstring const english = Text(English, id);
            EXPECT_EQ(Sorted(text, L"0123456789%()/"), Sorted(english, L"0123456789%()/"));
            for (wchar_t const* const name : {L"SignalGuard", L"RMS", L"Hölder", L"Renault", L" p6"})
                EXPECT_EQ(text.find(name) != std::wstring::npos, english.find(name) != std::wstring::npos);
        }
    }
}

// Headings and labels start with a capital, words inside a sentence do not.
TEST(StringTables, CapitalsAreAsInEnglish) {
    auto const first_letter = [](std::wstring const& text) { return text[text.front() == L'(' ? 1 : 0]; };
    auto const digit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    std::set<unsigned> const ends_of_an_axis{105, 106, 140, 141}; // "x start", but "Début x"
    for (Translation const& translation : Translations()) {
        for (unsigned const id : AllIds()) {
            wchar_t const own = first_letter(Text(translation.language, id));
            wchar_t const english = first_letter(Text(English, id));
            if (digit(own) || digit(english) || IsHan(own) || ends_of_an_axis.count(id) != 0)
                continue;
            EXPECT_EQ(IsCapital(own), IsCapital(english)) << Shown(translation.language, id);
        }
    }
}

// The texts of a series differ in one character alone.
TEST(StringTables, Series) {
    struct Case {
        unsigned id;
        wchar_t mark;
        unsigned other_id;
        wchar_t other_mark;
    };
    Case const cases[] = {
        {105, L'x', 140, L'y'}, {106, L'x', 141, L'y'}, {123, L'1', 124, L'2'}, {123, L'1', 125, L'3'},
        {123, L'1', 126, L'4'}, {135, L'A', 136, L'B'}, {135, L'A', 137, L'C'}, {135, L'A', 138, L'D'},
        {135, L'A', 139, L'E'}, {145, L'A', 146, L'B'},
    };
    for (StringTable const& table : StringTables()) {
        for (Case const& c : cases) {
            std::wstring text = Text(table.language, c.id);
            std::size_t const position = text.rfind(c.mark);
            ASSERT_NE(position, std::wstring::npos) << Shown(table.language, c.id);
            text[position] = c.other_mark;
            EXPECT_EQ(text, Text(table.language, c.other_id)) << Shown(table.language, c.other_id);
        }
    }
}

// Texts that are equal in English are equal everywhere, and texts that differ there differ everywhere: no two
// settings or values read alike.
TEST(StringTables, OneTermOneTranslation) {
    std::set<unsigned> const apart{115, 256, 550}; // a term and its abbreviation; a capital
    for (Translation const& translation : Translations()) {
        std::map<std::wstring, std::wstring> to_own;
        std::map<std::wstring, std::wstring> to_english;
        for (unsigned const id : AllIds()) {
            if (apart.count(id) != 0)
                continue;
            std::wstring const text = Text(translation.language, id);
            std::wstring english = Text(English, id);
            if (english == L"not definined")
                english = L"not defined";
            EXPECT_EQ(to_own.emplace(english, text).first->second, text) << Shown(translation.language, id);
            EXPECT_EQ(to_english.emplace(text, english).first->second, english)
                << Shown(translation.language, id);
        }
    }
}

TEST(StringTables, TermsReturn) {
    struct Case {
        unsigned id;
        unsigned term; // the id whose text the text of `id` holds
    };
    Case const cases[] = {
        {550, 200}, {128, 107}, {129, 108}, {131, 110}, {147, 100},
        {142, 110}, {490, 110}, {204, 203}, {206, 205},
    };
    for (Translation const& translation : Translations()) {
        for (Case const& c : cases) {
            EXPECT_TRUE(Holds(Text(translation.language, c.id), Text(translation.language, c.term)))
                << Shown(translation.language, c.id) << ", " << Shown(translation.language, c.term);
        }
    }
}

TEST(StringTables, AnUnknownLanguageFallsBackToEnglish) {
    EXPECT_EQ(Text(0x411, 101), L"Trigger");
    EXPECT_EQ(FindString(0x411, 98), nullptr);
    EXPECT_EQ(FindString(0x407, 98), nullptr);
    EXPECT_EQ(FindElements(0x411)[0].singular, std::wstring(L"Test step"));
}

TEST(StringTables, TheDefaultIsTheEnglishTable) {
    StringTable const& english = StringTables()[0];
    StringTable const& standard = StringTables()[7];
    ASSERT_EQ(standard.language, Default);
    EXPECT_EQ(standard.strings.data(), english.strings.data());
    EXPECT_EQ(standard.elements.data(), english.elements.data());
}

TEST(ElementWords, InEveryLanguage) {
    struct Case {
        std::uint16_t language;
        wchar_t const* words; // singular and plural of each element
    };
    Case const cases[] = {
        {0x9, L"Test step|Test steps|Instrument|Instruments|Channel|Channels|"
              L"Object|Objects|Parameter|Parameters|Sensor|Sensors"},
        {0x16, L"Etapa de teste|Etapas de teste|Instrumento|Instrumentos|Canal|Canais|"
               L"Objeto|Objetos|Parâmetro|Parâmetros|Sensor|Sensores"},
        {0x405, L"Zkušební krok|Zkušební kroky|Přístroj|Přístroje|Kanál|Kanály|"
                L"Objekt|Objekty|Parametr|Parametry|Snímač|Snímače"},
        {0x407, L"Prüfschritt|Prüfschritte|Instrument|Instrumente|Kanal|Kanäle|"
                L"Objekt|Objekte|Parameter|Parameter|Sensor|Sensoren"},
        {0x40C, L"Étape d'essai|Étapes d'essai|Instrument|Instruments|Voie|Voies|"
                L"Objet|Objets|Paramètre|Paramètres|Capteur|Capteurs"},
        {0x40E, L"Vizsgálati lépés|Vizsgálati lépések|Műszer|Műszerek|Csatorna|Csatornák|"
                L"Objektum|Objektumok|Paraméter|Paraméterek|Érzékelő|Érzékelők"},
        {0x410, L"Passo di prova|Passi di prova|Strumento|Strumenti|Canale|Canali|"
                L"Oggetto|Oggetti|Parametro|Parametri|Sensore|Sensori"},
        {0x800, L"Test step|Test steps|Instrument|Instruments|Channel|Channels|"
                L"Object|Objects|Parameter|Parameters|Sensor|Sensors"},
        {0x804, L"测试步骤|测试步骤|仪器|仪器|通道|通道|"
                L"对象|对象|参数|参数|传感器|传感器"},
        {0xC0A, L"Paso de prueba|Pasos de prueba|Instrumento|Instrumentos|Canal|Canales|"
                L"Objeto|Objetos|Parámetro|Parámetros|Sensor|Sensores"},
    };
    ASSERT_EQ(std::size(cases), StringTables().size());
    for (Case const& c : cases) {
        std::wstring words;
        for (ElementWords const& element : FindElements(c.language))
            words.append(words.empty() ? L"" : L"|")
                .append(element.singular)
                .append(L"|")
                .append(element.plural);
        EXPECT_EQ(words, c.words) << c.language;
    }
}

// The head of a list of elements and the settings that name one take the words for the elements.
TEST(ElementWords, AgreeWithTheStrings) {
    for (StringTable const& table : StringTables()) {
        std::uint16_t const language = table.language;
        bool const hungarian = language == 0x40E; // "all" goes with the singular there
        for (unsigned i = 0; i < paramdb::KeyElements; ++i) {
            ElementWords const words = table.elements[i];
            EXPECT_TRUE(Holds(Text(language, 11 + i), hungarian ? words.singular : words.plural))
                << Shown(language, 11 + i);
        }
        EXPECT_TRUE(Holds(Text(language, 107), table.elements[1].singular)) << language;
        EXPECT_TRUE(Holds(Text(language, 108), table.elements[4].singular)) << language;
        // English alone says "Source location" for an object.
        EXPECT_EQ(Holds(Text(language, 130), table.elements[3].singular),
                  language != English && language != Default)
            << language;
    }
}

// Each test leaves the language as the environment has it.
class TextsInForce : public testing::Test {
protected:
    void TearDown() override { CLibMgr::ResetLanguage(); }
};

TEST_F(TextsInForce, FollowTheLanguage) {
    struct Case {
        CLibMgr::Language language;
        wchar_t const* text;
    };
    using enum CLibMgr::Language;
    Case const cases[] = {
        {german, L"Berechnung"}, {english, L"Calculation"},  {portuguese, L"Cálculo"},
        {czech, L"Výpočet"},     {french, L"Calcul"},        {hungarian, L"Számítás"},
        {italian, L"Calcolo"},   {standard, L"Calculation"}, {chinese, L"计算"},
        {spanish, L"Cálculo"},
    };
    for (Case const& c : cases) {
        CLibMgr::SetLanguage(c.language);
        EXPECT_EQ(CLibMgr().Text(100), c.text);
        for (unsigned const id : AllIds())
            EXPECT_EQ(CLibMgr().Text(id), Text(static_cast<std::uint16_t>(c.language), id).c_str()) << id;
    }
}

} // namespace
