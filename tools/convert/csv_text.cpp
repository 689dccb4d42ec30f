#include "tools/convert/csv_text.h"

namespace paramdb::tools {
namespace {

// Takes one record after the other from the front of a text.
class CsvReader {
public:
    CsvReader(std::string_view text, CsvFault& fault) : m_rest(text), m_fault(fault) {}

    std::vector<CsvRecord> Read() {
        std::vector<CsvRecord> records;
        while (!m_rest.empty() && m_fault.line == 0) {
            CsvRecord record{m_line, {}};
            do
                record.cells.push_back(m_rest.starts_with('"') ? TakeQuoted() : TakeBare());
            while (m_fault.line == 0 && TakeComma());
            TakeLineEnd();
            records.push_back(std::move(record));
        }
        return m_fault.line == 0 ? std::move(records) : std::vector<CsvRecord>();
    }

private:
    void Fault(std::size_t line, std::string text) {
        if (m_fault.line == 0)
            m_fault = {line, std::move(text)};
    }

    std::string TakeBare() {
        std::size_t end = 0;
        while (end < m_rest.size() && m_rest[end] != ',' && !IsLineEnd(m_rest.substr(end)))
            if (m_rest[end++] == '"')
                Fault(m_line, "a quote inside a cell without quotes");
        std::string cell(m_rest.substr(0, end));
        m_rest.remove_prefix(end);
        return cell;
    }

    std::string TakeQuoted() {
        std::size_t const begin = m_line;
        std::string cell;
        for (m_rest.remove_prefix(1); !m_rest.empty(); m_rest.remove_prefix(1)) {
            if (m_rest.front() == '"' && m_rest.substr(1).starts_with('"')) {
                m_rest.remove_prefix(1);
            } else if (m_rest.front() == '"') {
                m_rest.remove_prefix(1);
                if (!m_rest.empty() && m_rest.front() != ',' && !IsLineEnd(m_rest))
                    Fault(m_line, "something behind the closing quote of a cell");
                return cell;
            }
            m_line += m_rest.front() == '\n' ? 1 : 0;
            cell += m_rest.front();
        }
        Fault(begin, "a cell without its closing quote");
        return cell;
    }

    bool TakeComma() {
        if (!m_rest.starts_with(','))
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    static bool IsLineEnd(std::string_view text) {
        return text.starts_with('\n') || text.starts_with("\r\n");
    }
    void TakeLineEnd() {
        if (!IsLineEnd(m_rest))
            return;
        m_rest.remove_prefix(m_rest.front() == '\r' ? 2 : 1);
        ++m_line;
    }

    std::string_view m_rest;
    CsvFault& m_fault;
    std::size_t m_line = 1;
};

} // namespace

std::vector<CsvRecord> ReadCsv(std::string_view text, CsvFault& fault) {
    fault = {};
    return CsvReader(text, fault).Read();
}

void AppendCsv(std::string& text, std::vector<std::string> const& cells) {
    bool is_first = true;
    for (std::string const& cell : cells) {
        if (!is_first)
            text += ',';
        is_first = false;
        bool const is_alone = cells.size() == 1 && cell.empty();
        if (!is_alone && cell.find_first_of(",\"\r\n") == std::string::npos) {
            text += cell;
            continue;
        }
        text += '"';
        for (char const letter : cell)
            text.append(letter == '"' ? 2 : 1, letter);
        text += '"';
    }
    text += "\r\n";
}

} // namespace paramdb::tools
