// The vocabulary of the calculation settings: the words for each setting and for its values, in the language
// in force. All functions are for any thread.
#pragma once

#include <paramdb/keys/value_base.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>

#include <cstddef>
#include <list>
#include <tuple>

class PARAMDB_API QVIpCalcParameter : public QValueBase {
public:
    static unsigned int const s_version = 1;
    static unsigned int const NumEnums = 6;

    std::tuple<> tuple() { return {}; }
    std::tuple<> tuple() const { return {}; }

    // The name of a setting, numbered from 0 to 51, such as "Trigger"; "Calculation parameter #60" for one
    // that has none. Settings stand from 100 on in the string table, and a number beyond them finds what
    // stands at its place.
    static CString GetCalcParamEnumText(int parameter);
    // Replaces the list by the names of all settings in order and returns their number.
    static std::size_t GetCalcParamEnumTexts(std::list<CString>& texts);

    // The word for a value of a setting, such as "Maximum"; the value in parentheses if there is no word. A
    // value beyond those of its setting finds the word that stands at its place in the string table.
    static CString GetCalcParamEnumSubText(int parameter, int value);
    // Replaces the list by the words of a setting in order and returns their number; 0 for a setting without
    // words.
    static std::size_t GetCalcParamEnumSubTexts(int parameter, std::list<CString>& texts);
};
