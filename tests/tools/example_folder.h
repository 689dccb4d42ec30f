// Where examples of the command run: a folder with the files that they name, and their lines as a shell reads
// them.
#pragma once

#include "tests/support/temp_dir.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

// A folder with the files that examples name, in which the process works while it lives.
class ExampleFolder {
public:
    ExampleFolder() : m_before(std::filesystem::current_path()) {
        std::filesystem::path const gearbox =
            std::filesystem::path(PARAMDB_SOURCE_DIR) / "examples" / "gearbox";
        for (char const* const name : {"gearbox.lake", "customer.lake"})
            std::filesystem::copy_file(gearbox / name, m_folder.path() / name);
        std::string const lake = test_support::ReadBytes(gearbox / "gearbox.lake");
        test_support::WriteBytes(m_folder / u8"gearbox_new.lake", Edited(lake, " Idle\n", " Idling\n"));
        std::string next = Edited(lake, "\t1 3 1 2 30 0.0 12.0 0.1 ", "\t1 3 1 2 30 0.0 12.0 0.2 ");
        next = Edited(next, "\t1019 1 90 6 \"H3-L2;H3+L2\"", "\t1019 1 90 6 \"H3-L3;H3+L3\"");
        test_support::WriteBytes(m_folder / u8"next.lake", Edited(next, "\t1057 1 4 ", "\t1057 2 4 "));
        std::filesystem::current_path(m_folder.path());
    }
    ExampleFolder(ExampleFolder const&) = delete;
    ExampleFolder& operator=(ExampleFolder const&) = delete;
    ~ExampleFolder() { std::filesystem::current_path(m_before); }

    // All files with what is in them.
    std::map<std::string, std::string> Content() const {
        std::map<std::string, std::string> content;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(m_folder.path()))
            if (entry.is_regular_file())
                content[entry.path().string()] = test_support::ReadBytes(entry.path());
        return content;
    }

private:
    static std::string Edited(std::string text, std::string const& from, std::string const& to) {
        std::size_t const place = text.find(from);
        EXPECT_NE(place, text.npos) << from;
        return place != text.npos ? text.replace(place, from.size(), to) : text;
    }

    test_support::TempDir m_folder;
    std::filesystem::path m_before;
};

// The words of a command as a shell takes them: quotes, "*.lake", and the file behind ">".
struct ShellWords {
    std::vector<std::string> words;
    std::string target;
};

inline std::vector<std::string> Lakes() {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator("."))
        if (entry.path().extension() == ".lake")
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

inline ShellWords ReadShellWords(std::string const& line) {
    ShellWords result;
    bool is_target = false;
    for (std::size_t place = 0; place < line.size();) {
        if (line[place] == ' ') {
            ++place;
            continue;
        }
        bool const is_bare = line[place] != '\'' && line[place] != '"';
        std::string word;
        while (place < line.size() && line[place] != ' ') {
            char const quote = line[place];
            if (quote != '\'' && quote != '"') {
                word += line[place++];
                continue;
            }
            std::size_t const end = line.find(quote, place + 1);
            EXPECT_NE(end, std::string::npos) << line;
            word += line.substr(place + 1, end - place - 1);
            place = std::min(end, line.size() - 1) + 1;
        }
        if (is_bare && word == ">")
            is_target = true;
        else if (is_target)
            result.target = word;
        else if (is_bare && word == "*.lake")
            for (std::string const& name : Lakes())
                result.words.push_back(name);
        else
            result.words.push_back(word);
    }
    return result;
}
