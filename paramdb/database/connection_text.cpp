#include <paramdb/database/connection_text.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace paramdb::database {
namespace {

constexpr std::array<std::string_view, 7> Backends{"sqlite3",  "postgresql", "odbc", "mysql",
                                                   "firebird", "oracle",     "db2"};
constexpr std::array<std::string_view, 5> Secrets{"password", "passwd", "pwd", "pass", "sslpassword"};
constexpr std::size_t LongestSetName = 100;

std::string_view BackendOf(std::string_view text) {
    std::string_view const name = text.substr(0, std::min(text.find(':'), text.size()));
    bool const is_known =
        name.size() < text.size() && std::find(Backends.begin(), Backends.end(), name) != Backends.end();
    return is_known ? name : std::string_view();
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return lower;
}

bool IsWordLetter(char letter) {
    return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') || letter == '_';
}

// Whether one of the names with an equals sign behind them is that of a password.
bool HoldsSecretWord(std::string_view text) {
    for (std::size_t sign = text.find('='); sign != std::string_view::npos; sign = text.find('=', sign + 1)) {
        std::size_t end = sign;
        while (end > 0 && text[end - 1] == ' ')
            --end;
        std::size_t begin = end;
        while (begin > 0 && IsWordLetter(text[begin - 1]))
            --begin;
        std::string const word = Lower(text.substr(begin, end - begin));
        if (std::find(Secrets.begin(), Secrets.end(), word) != Secrets.end())
            return true;
    }
    return false;
}

// Whether a text such as //user:word@host/name has a word behind its user, also one that should not stand
// there as it is: with a slash or a question mark in it.
bool HoldsSecretOfUser(std::string_view text) {
    if (!text.starts_with("//"))
        return false;
    std::string_view const user = text.substr(2, std::min(text.find('@'), text.size()) - 2);
    bool const is_user = user.size() + 2 < text.size();
    bool const is_option = user.find('/') != std::string_view::npos &&
                           user.find('=') != std::string_view::npos; // its value has the @
    return is_user && !is_option && user.find(':') != std::string_view::npos;
}

// What the bytes are that %41 and the like stand for: the name of an option may be written so.
std::string WithoutPercents(std::string_view text) {
    std::string plain;
    for (std::size_t place = 0; place < text.size(); ++place) {
        unsigned byte = 0;
        char const* const digits = text.data() + place + 1;
        bool const is_byte = text[place] == '%' && place + 2 < text.size() &&
                             std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        plain += is_byte ? static_cast<char>(byte) : text[place];
        place += is_byte ? 2 : 0;
    }
    return plain;
}

bool IsControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

} // namespace

bool IsConnectionText(std::string_view text) {
    return !BackendOf(text).empty();
}

std::string SetNameFault(std::string_view name) {
    if (name.empty())
        return "a set needs a name";
    if (name.size() > LongestSetName)
        return "the name of a set has 100 bytes at most";
    if (std::any_of(name.begin(), name.end(), IsControl) ||
        name.find_first_of("#@/\\") != std::string_view::npos)
        return "the name of a set holds no control character and none of # @ / \\";
    return {};
}

std::variant<ConnectionText, std::string> ParseConnectionText(std::string_view text) {
    ConnectionText connection;
    connection.backend = BackendOf(text);
    if (connection.backend.empty())
        return "a connection begins with the name of a database such as sqlite3: or postgresql:";
    std::string_view parameters = text.substr(connection.backend.size() + 1);
    if (std::size_t const mark = parameters.rfind('#');
        mark != std::string_view::npos && parameters.find_first_of("/\\", mark) == std::string_view::npos) {
        std::string_view set = parameters.substr(mark + 1);
        parameters = parameters.substr(0, mark);
        if (std::size_t const at = set.rfind('@'); at != std::string_view::npos) {
            std::string_view const digits = set.substr(at + 1);
            std::int32_t revision = 0;
            auto const [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), revision);
            if (fault != std::errc() || end != digits.data() + digits.size() || revision < 1)
                return "a revision is a number from 1 to 2147483647";
            connection.revision = revision;
            set = set.substr(0, at);
        }
        if (std::string fault = SetNameFault(set); !fault.empty())
            return fault;
        connection.set = set;
    }
    if (parameters.find('\0') != std::string_view::npos)
        return "a connection holds no zero byte";
    if (connection.backend == "sqlite3") {
        if (parameters.empty())
            return "the name of a file is missing behind sqlite3:";
        if (parameters.find('"') != std::string_view::npos)
            return "the name of a SQLite file holds no double quote";
    } else if (HoldsSecretWord(parameters) || HoldsSecretWord(WithoutPercents(parameters)) ||
               HoldsSecretOfUser(parameters)) {
        return "a connection holds no password: the environment (PGPASSWORD) or a password file does";
    }
    connection.parameters = parameters;
    return connection;
}

} // namespace paramdb::database
