#include "tools/check/suppression.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/lake_line.h>
#include <paramdb/storage/white_space.h>

#include "tools/check/known_keys.h"
#include "tools/check/wording.h"
#include "tools/key_pattern.h"
#include "tools/row_buffer.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <variant>

namespace paramdb::tools::check {
namespace {

constexpr std::string_view Mark = "paramdb:";

// A comment that disables codes for some lines of its file.
struct Directive {
    struct Word {
        std::string_view text;
        Code const* code; // null for all
        bool is_used = false;
    };
    std::size_t file = 0;
    std::size_t first_line = 0;
    std::size_t last_line = 0;
    std::vector<Word> words;
    TableDescription const* table = nullptr; // of the keys
    std::optional<KeyPattern> keys;
};

LakeLine Split(std::string_view line) {
    char const* begin = line.data();
    return line.empty() ? LakeLine() : TakeLine(begin, begin + line.size());
}

class DirectiveReader {
public:
    DirectiveReader(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings) {}

    std::vector<Directive> Run() {
        for (std::size_t file = 0; file < m_context.Files().size(); ++file) {
            std::string_view const bytes = m_context.Files()[file].bytes;
            for (std::size_t at = bytes.find(Mark); at != std::string_view::npos;
                 at = bytes.find(Mark, at + 1))
                Read(file, m_context.PlaceOf(bytes.substr(at, 1)).line, bytes.data() + at);
        }
        return std::move(m_directives);
    }

private:
    void Read(std::size_t file, std::size_t line, char const* mark) {
        LakeLine const parts = Split(m_context.Files()[file].Line(line));
        if (parts.comment.data() != mark)
            return;
        m_rest = parts.comment.substr(Mark.size());
        Directive directive;
        directive.file = file;
        std::string_view const verb = TakeWord();
        if (verb == "disable-file") {
            directive.last_line = m_context.Files()[file].line_begins.size();
        } else if (verb == "disable") {
            SetLines(directive, line, parts.value.starts_with('}'));
        } else {
            Complain(verb.empty() ? parts.comment.substr(0, Mark.size()) : verb,
                     "is neither disable nor disable-file");
            return;
        }
        if (ReadWords(directive) && !directive.words.empty())
            m_directives.push_back(std::move(directive));
    }

    // The codes and keys; false if it is for no rows.
    bool ReadWords(Directive& directive) {
        for (std::string_view word = TakeWord(); !word.empty(); word = TakeWord()) {
            if (word == "for")
                return ReadKeys(directive, word);
            Code const* const code = FindCode(word);
            if (code != nullptr || word == "all")
                directive.words.push_back({word, code});
            else
                Complain(word, "is no code");
        }
        return true;
    }

    bool ReadKeys(Directive& directive, std::string_view word) {
        OutlineSection const* const section =
            m_context.Lines().SectionAt({directive.file, directive.first_line});
        directive.table = section != nullptr && section->opener.node->is_named()
                              ? TableOf(section->opener.node->key_text())
                              : nullptr;
        if (directive.table == nullptr) {
            Complain(word, "needs a table on the lines it is for");
            return false;
        }
        while (!m_rest.empty() && IsWhiteSpace(m_rest.front()))
            m_rest.remove_prefix(1);
        std::wstring const text = LakeText(m_rest).wide();
        auto pattern = KeyPattern::Parse(text, directive.table->key_columns);
        if (auto const* const fault = std::get_if<KeyFault>(&pattern)) {
            Complain(m_rest.empty() ? word : m_rest, "is no key: " + fault->reason);
            return false;
        }
        directive.keys = std::get<KeyPattern>(std::move(pattern));
        return true;
    }

    // The section that the line closes, else the next line that is no comment, or the section that it opens.
    void SetLines(Directive& directive, std::size_t line, bool closes) {
        LineOrigins::File const& file = m_context.Files()[directive.file];
        std::size_t const target = closes ? line : LineBehindComments(directive.file, line);
        directive.first_line = directive.last_line = target;
        OutlineSection const* const section = m_context.Lines().SectionAt({directive.file, target});
        if (section == nullptr)
            return;
        LinePlace const opener = section->opener.place;
        LinePlace const closer =
            section->closer.node != nullptr ? section->closer.place : LinePlace{directive.file + 1, 0};
        bool const opens = opener.file == directive.file && opener.line == target;
        if (opens || closes) {
            directive.first_line = opener.file == directive.file ? opener.line : 1;
            directive.last_line = closer.file == directive.file ? closer.line : file.line_begins.size();
        }
    }

    // Comments that stand together have the same line behind them, which is looked for once.
    std::size_t LineBehindComments(std::size_t file, std::size_t line) {
        LineOrigins::File const& lines = m_context.Files()[file];
        auto const is_comment = [](LakeLine const& parts) {
            return parts.key.empty() && parts.value.empty();
        };
        if (file == m_comments.file && line >= m_comments.first && line < m_comments.behind)
            return m_comments.behind;
        m_comments = {file, line, line + 1};
        while (m_comments.behind <= lines.line_begins.size() &&
               is_comment(Split(lines.Line(m_comments.behind))))
            ++m_comments.behind;
        return m_comments.behind;
    }

    std::string_view TakeWord() {
        auto const parts_words = [](char byte) { return IsWhiteSpace(byte) || byte == ','; };
        auto const begin = std::find_if_not(m_rest.begin(), m_rest.end(), parts_words);
        auto const end = std::find_if(begin, m_rest.end(), parts_words);
        std::string_view const word(begin, end);
        m_rest = {end, m_rest.end()};
        return word;
    }

    void Complain(std::string_view word, std::string const& fault) {
        m_findings.Add("P192", m_context.PlaceOf(word), Shortened(LakeText(word)) + ' ' + fault)
            .Hint("write \"; paramdb: disable P204\" or \"; paramdb: disable P204 for 11/1\"");
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    std::string_view m_rest;
    struct {
        std::size_t file = 0;
        std::size_t first = 0;
        std::size_t behind = 0;
    } m_comments; // the last ones
    std::vector<Directive> m_directives;
};

// A finding, and the row on its line as soon as a directive for keys asks for it.
class FoundRow {
public:
    FoundRow(CheckContext const& context, Finding const& finding) : m_context(context), m_finding(finding) {}

    bool IsOf(Directive const& directive) {
        Place const& place = m_finding.place;
        if (place.file != directive.file || place.line < directive.first_line ||
            place.line > directive.last_line)
            return false;
        if (!directive.keys)
            return true;
        if (!m_row || m_table != directive.table)
            Read(*directive.table);
        return m_is_row && directive.keys->Matches(m_row->Key());
    }

private:
    void Read(TableDescription const& table) {
        Place const& place = m_finding.place;
        LakeLine const line = Split(m_context.Files()[place.file].Line(place.line));
        m_table = &table;
        m_row.emplace(table);
        m_is_row = line.key.empty() && !line.value.empty() && m_row->Read(line.value);
    }

    CheckContext const& m_context;
    Finding const& m_finding;
    TableDescription const* m_table = nullptr;
    std::optional<RowBuffer> m_row;
    bool m_is_row = false;
};

bool IsDisabled(CheckContext const& context, std::vector<Directive>& directives, Finding const& finding) {
    FoundRow row(context, finding);
    bool is_disabled = false;
    for (Directive& directive : directives) {
        for (Directive::Word& word : directive.words) {
            if ((word.code == nullptr || word.code == finding.code) && row.IsOf(directive))
                is_disabled = word.is_used = true;
        }
    }
    return is_disabled;
}

} // namespace

std::vector<Finding> Suppress(CheckContext const& context, std::vector<Finding> findings) {
    Silence const silence;
    FindingList added;
    std::vector<Directive> directives = DirectiveReader(context, added).Run();
    std::erase_if(findings, [&](Finding const& finding) { return IsDisabled(context, directives, finding); });
    // After a refusal not every rule has been at work.
    for (Directive const& directive : directives)
        for (Directive::Word const& word : directive.words)
            if (!word.is_used && !context.IsRefused())
                added
                    .Add("P193", context.PlaceOf(word.text),
                         "there is no finding of " + Shortened(LakeText(word.text)) + " to disable here")
                    .Hint("leave the code out");
    for (Finding& finding : added.Take())
        findings.push_back(std::move(finding));
    SortFindings(findings);
    return findings;
}

} // namespace paramdb::tools::check
