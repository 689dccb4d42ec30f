// Checking texts as files, with the findings as short texts.
#pragma once

#include "tests/tools/command_run.h"
#include "tools/check/context.h"
#include "tools/check/rules.h"
#include "tools/check/suppression.h"

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

inline std::string const LakeVersion = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";

class CheckTest : public CommandTest {
protected:
    using Texts = std::vector<std::string>;

    // Reads and loads these texts, each a file of its own.
    paramdb::tools::check::CheckContext const& Context(Texts const& files) {
        std::vector<std::string> names;
        for (std::string const& text : files) {
            std::string const name = std::to_string(names.size()) + ".lake";
            names.push_back(File(std::u8string(name.begin(), name.end()), text));
        }
        std::ostringstream err;
        m_context = paramdb::tools::check::CheckContext::Make(names, err);
        EXPECT_EQ(err.str(), "");
        return *m_context;
    }

    // The findings of these families of codes in these texts as "file:line:column CODE message". The first
    // text gets the lines of the version in front, which do not count.
    Texts Findings(Texts files, std::string_view families = "12") {
        using namespace paramdb::tools::check;
        files.front().insert(0, LakeVersion);
        CheckContext const& context = Context(files);
        FindingList list;
        RunRules(context, list);
        Texts texts;
        for (Finding const& finding : Suppress(context, list.Take())) {
            if (families.find(finding.code->code[1]) == std::string_view::npos)
                continue;
            EXPECT_NE(finding.hint, "") << finding.message;
            Place const& place = finding.place;
            std::size_t const version_lines = place.file == 0 && place.line > 0 ? 2 : 0;
            texts.push_back(std::to_string(place.file) + ':' + std::to_string(place.line - version_lines) +
                            ':' + std::to_string(place.column) + ' ' + std::string(finding.code->code) + ' ' +
                            finding.message);
        }
        return texts;
    }

    // The same without messages: "1:2 P204", the line and column in the one file.
    Texts Codes(std::string const& file) {
        Texts texts = Findings({file});
        for (std::string& text : texts)
            text = text.substr(2, text.find(' ', text.find(" P") + 1) - 2);
        return texts;
    }

    // The findings of rules about references and what is derived in the one text, without the file.
    Texts RuleFindings(std::string const& text) {
        Texts texts = Findings({text}, "34");
        for (std::string& finding : texts)
            finding.erase(0, 2);
        return texts;
    }

private:
    std::unique_ptr<paramdb::tools::check::CheckContext> m_context;
};
