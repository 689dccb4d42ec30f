#include "tools/last_words.h"

#include "tools/databases.h"

#include <CLI/CLI.hpp>

namespace paramdb::tools {
namespace {

class LastWordsFormatter : public CLI::Formatter {
public:
    explicit LastWordsFormatter(std::string names) : m_names(std::move(names)) {}

    std::string make_usage(CLI::App const*, std::string name) const override {
        return "Usage: " + name + " [OPTIONS] FILE... " + m_names + "\n";
    }

private:
    std::string m_names;
};

} // namespace

void AddLastWordsArgument(CLI::App& verb, std::vector<std::string>& words, std::string const& names) {
    verb.formatter(std::make_shared<LastWordsFormatter>(names));
    verb.add_option("FILE", words, "Parameter files as for load, then " + names)->required()->type_name("");
    AddDatabaseOptions(verb);
}

std::optional<LastWords> SplitLastWords(std::vector<std::string> const& words, std::size_t count) {
    if (words.size() <= count)
        return std::nullopt;
    auto const behind = words.end() - static_cast<std::ptrdiff_t>(count);
    return LastWords{.files = {words.begin(), behind}, .words = {behind, words.end()}};
}

} // namespace paramdb::tools
