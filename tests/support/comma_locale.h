// A program whose decimal point is a comma and whose digits are grouped.
//
// Two things are changed together while an object lives. The C locale becomes one with a decimal comma: one
// that the system has, else one made for the test by `localedef` in a folder of its own. Where neither is to
// be had, it stays as it is, and the run covers the C++ locale alone. The global C++ locale gets a facet with
// a decimal comma and points between thousands in every case, so that a stream that is not told its locale
// prints and reads differently.
#pragma once

#include <clocale>
#include <cstdlib>
#include <locale>
#include <optional>
#include <string>
#include <tests/support/temp_dir.h>

namespace test_support {

template <class Character>
class CommaPunctuation : public std::numpunct<Character> {
protected:
    Character do_decimal_point() const override { return Character(','); }
    Character do_thousands_sep() const override { return Character('.'); }
    std::string do_grouping() const override { return "\3"; }
};

class CommaLocale {
public:
    CommaLocale() : m_old_c_locale(std::setlocale(LC_ALL, nullptr)) {
        std::locale const commas(std::locale::classic(), new CommaPunctuation<char>);
        m_old_locale = std::locale::global(std::locale(commas, new CommaPunctuation<wchar_t>));
        m_has_c_locale = SetInstalled() || SetMade();
    }
    CommaLocale(CommaLocale const&) = delete;
    CommaLocale& operator=(CommaLocale const&) = delete;
    ~CommaLocale() {
        std::locale::global(m_old_locale);
        std::setlocale(LC_ALL, m_old_c_locale.c_str());
    }

    // False where the system has no such locale and cannot make one.
    bool HasCLocale() const { return m_has_c_locale; }

private:
    static bool SetInstalled() {
        for (char const* const name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "it_IT.UTF-8", "German"})
            if (std::setlocale(LC_ALL, name) != nullptr)
                return true;
        return false;
    }
#ifdef _WIN32
    bool SetMade() {
        return false;
    }
#else
    bool SetMade() {
        auto const path = m_folder / u8"de_DE.UTF-8";
        std::string const command = "localedef -i de_DE -f UTF-8 '" + path.string() + "' > /dev/null 2>&1";
        if (std::system(command.c_str()) != 0)
            return false;
        char const* const before = std::getenv("LOCPATH");
        std::optional<std::string> const old_path =
            before ? std::optional<std::string>(before) : std::nullopt;
        setenv("LOCPATH", m_folder.path().c_str(), 1);
        bool const set = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
        if (old_path)
            setenv("LOCPATH", old_path->c_str(), 1);
        else
            unsetenv("LOCPATH");
        return set;
    }
#endif

    TempDir m_folder;
    std::string m_old_c_locale;
    std::locale m_old_locale;
    bool m_has_c_locale = false;
};

} // namespace test_support
