#include "tools/key_words.h"

#include <paramdb/tables/number_text.h>

#include "tools/report.h"

#include <optional>

namespace paramdb::tools {
namespace {

bool IsBlank(wchar_t letter) {
    return letter == L' ' || letter == L'\t';
}

class KeyWordsReader {
public:
    explicit KeyWordsReader(std::wstring_view text) : m_text(text) {}

    std::variant<KeyWords, KeyFault> Read() {
        KeyWords words;
        words.fill(-1);
        for (KeyWord& word : words) {
            word = ReadElement();
            if (m_fault)
                return *m_fault;
            if (m_place == m_text.size())
                return words;
            ++m_place; // the slash
        }
        return KeyFault{m_place - 1, "the key has no more elements"};
    }

private:
    bool IsAtEnd() const { return m_place == m_text.size() || m_text[m_place] == L'/'; }

    void SkipBlanks() {
        while (m_place < m_text.size() && IsBlank(m_text[m_place]))
            ++m_place;
    }

    // Leaves the place at the slash behind the element or at the end.
    KeyWord ReadElement() {
        SkipBlanks();
        std::size_t const start = m_place;
        if (!IsAtEnd() && m_text[m_place] == L'"')
            return ReadQuoted();
        while (!IsAtEnd())
            ++m_place;
        std::wstring_view word = m_text.substr(start, m_place - start);
        while (!word.empty() && IsBlank(word.back()))
            word.remove_suffix(1);
        if (word.empty() || word == L"*")
            return -1;
        std::int32_t id = 0;
        std::wstring_view rest = word;
        NumberFault const number = TakeNumber(rest, id);
        if (number == NumberFault::None && rest.empty())
            return id;
        if (number == NumberFault::OutOfRange && word.find_first_not_of(L"0123456789", 1) == word.npos)
            m_fault = KeyFault{start, "the number is too large"};
        return std::wstring(word);
    }

    KeyWord ReadQuoted() {
        std::size_t const start = m_place++;
        std::wstring name;
        for (;; ++m_place) {
            if (m_place == m_text.size()) {
                m_fault = KeyFault{start, "the quotes are not closed"};
                return name;
            }
            if (m_text[m_place] == L'"' && (++m_place == m_text.size() || m_text[m_place] != L'"'))
                break;
            name += m_text[m_place];
        }
        SkipBlanks();
        if (!IsAtEnd())
            m_fault = KeyFault{m_place, "not expected behind a name in quotes"};
        return name;
    }

    std::wstring_view m_text;
    std::size_t m_place = 0;
    std::optional<KeyFault> m_fault;
};

} // namespace

char const* const KeyWordsHelp =
    "KEY is mode/instrument/channel/location/parameter/signal, each an id or a name. Elements left out at\n"
    "the end, empty ones, * and -1 are not set. A name with a slash, or one that is a number, goes in "
    "double\n"
    "quotes. Quote what the shell would expand. For a KEY that begins with a minus put -- before the "
    "files.\n";

std::variant<KeyWords, KeyFault> ReadKeyWords(std::wstring_view text) {
    return KeyWordsReader(text).Read();
}

std::string KeyWordsFaultText(std::wstring_view text, KeyFault const& fault) {
    std::string shown = "key: " + fault.reason + "\n  " + Printable(text) + "\n  ";
    shown.append(TextWidth(Printable(text.substr(0, fault.place))), ' ');
    return shown + "^\nThe key is mode/instrument/channel/location/parameter/signal\n";
}

} // namespace paramdb::tools
