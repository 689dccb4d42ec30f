#include "tools/db/database_options.h"

#include <paramdb/database/revision.h>

#include <CLI/CLI.hpp>
#include <charconv>
#include <optional>

namespace paramdb::tools::db {
namespace {

constexpr int LongestTimeOut = 86400;

DatabaseOptions& Options() {
    static DatabaseOptions options{ParamDb::DatabaseTimeout, {}};
    return options;
}

std::optional<int> ReadSeconds(std::string const& text) {
    int seconds = 0;
    auto const [end, fault] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    bool const is_good =
        fault == std::errc() && end == text.data() + text.size() && seconds >= 1 && seconds <= LongestTimeOut;
    return is_good ? std::optional(seconds) : std::nullopt;
}

CLI::Option* TimeOutOption(CLI::App& verb) {
    Options() = {ParamDb::DatabaseTimeout, {}};
    auto const store = [](std::string const& text) {
        auto const seconds = ReadSeconds(text);
        if (!seconds) // a check would leave out the name of an option that the help does not show
            throw CLI::ValidationError("--timeout", text + " is no number of seconds from 1 to 86400");
        Options().timeout = std::chrono::seconds(*seconds);
    };
    return verb
        .add_option_function<std::string>(
            "--timeout", store,
            "How long to wait for a database to connect, to give a lock free and to "
            "answer (default: " +
                std::to_string(ParamDb::DatabaseTimeout.count()) + ")")
        ->type_name("SECONDS");
}

CLI::Option* CacheOption(CLI::App& verb) {
    return verb
        .add_option_function<std::string>(
            "--cache", [](std::string const& file) { Options().local_copy = file; },
            "A local copy that is kept of the revision, and used when its database is away")
        ->type_name("FILE");
}

} // namespace

DatabaseOptions const& OptionsOfRun() {
    return Options();
}

void AddTimeOut(CLI::App& verb) {
    TimeOutOption(verb);
}

void AddTimeOutAndCache(CLI::App& verb) {
    TimeOutOption(verb);
    CacheOption(verb);
}

void AddHiddenOptions(CLI::App& verb) {
    TimeOutOption(verb)->group("");
    CacheOption(verb)->group("");
}

} // namespace paramdb::tools::db
