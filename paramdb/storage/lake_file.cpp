// Reading and writing lake files: one byte is one character, U+0000 to U+00FF.
#include <paramdb/platform/core/line_end.h>
#include <paramdb/platform/framework/cfile.h>
#include <paramdb/platform/framework/read_file.h>
#include <paramdb/storage/lake.h>
#include <paramdb/storage/lake_linker.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace {

// The bytes of a file, taken in one pass.
struct FileText : paramdb::LakeBytes {
    bool complete = true; // false: reading failed behind the bytes
};

FileText ReadAll(CFile& file) {
    constexpr std::size_t chunk = std::size_t{1} << 30;
    // One byte more than the file is long, so that the read that meets the end needs no further room. The
    // length is a guess: other programs may write the file meanwhile, and a pipe has none.
    std::size_t capacity = 4096;
    try {
        capacity = std::max(capacity, static_cast<std::size_t>(file.GetLength()) + 1);
    } catch (CFileException const&) {
    }
    std::uint64_t const most = paramdb::MostBytesOf(file);
    FileText text;
    text.block = paramdb::LargeBlock(capacity);
    while (text.size <= most) {
        if (text.size == capacity) {
            paramdb::LargeBlock larger(capacity * 2);
            std::memcpy(larger.data(), text.block.data(), text.size);
            text.block = std::move(larger);
            capacity *= 2;
        }
        std::size_t taken = 0;
        std::uint64_t const allowed = std::min<std::uint64_t>(most - text.size, chunk) + 1;
        std::size_t const wanted = std::min(capacity - text.size, static_cast<std::size_t>(allowed));
        try {
            taken = file.Read(text.block.data() + text.size, static_cast<unsigned>(wanted));
        } catch (CFileException const&) {
            text.complete = false;
            return text;
        }
        text.size += taken;
        if (taken < wanted)
            return text;
    }
    text.complete = false;
    return text;
}

// Collects output in a buffer on its way to a file. After a failure, or a character that has no byte, it
// swallows everything.
class LakePrinter {
public:
    explicit LakePrinter(CFile& file) : m_file(file) { m_buffer.reserve(BufferSize); }

    void Print(char byte, std::size_t count = 1) {
        for (; count > 0 && m_good; --count)
            Add(byte);
    }
    void Print(std::string_view bytes) {
        for (char const byte : bytes)
            Add(byte);
    }
    void Print(paramdb::LakeText text) {
        text.Visit([this](auto characters) {
            for (auto const character : characters)
                PrintCharacter(paramdb::Widen(character));
        });
    }
    void EndLine() { Print(std::string_view(paramdb::LineEnd)); }

    void Flush() {
        if (m_good && !m_buffer.empty()) {
            try {
                m_file.Write(m_buffer.data(), static_cast<unsigned>(m_buffer.size()));
            } catch (CFileException const&) {
                m_good = false;
            }
        }
        m_buffer.clear();
    }

private:
    static constexpr std::size_t BufferSize = std::size_t{1} << 16;

    void PrintCharacter(wchar_t character) {
        if (character == L'\n') {
            EndLine();
            return;
        }
        if (static_cast<unsigned long>(character) > 0xFF) {
            Flush();
            m_good = false;
        }
        Print(static_cast<char>(character));
    }
    void Add(char byte) {
        if (!m_good)
            return;
        m_buffer.push_back(byte);
        if (m_buffer.size() == BufferSize)
            Flush();
    }

    CFile& m_file;
    std::string m_buffer;
    bool m_good = true;
};

} // namespace

bool CLake::read(CString const& name) {
    if (!name.IsEmpty())
        m_filename = name;
    bool complete = true;
    if (CFile file; file.Open(m_filename, CFile::modeRead | CFile::shareDenyNone | CFile::typeBinary)) {
        FileText text = ReadAll(file);
        complete = text.complete;
        // A failed read leaves half a line behind it, which does not count.
        while (!complete && text.size > 0 && text.block.chars()[text.size - 1] != '\n')
            --text.size;
        text.file = m_filename;
        SetLines(std::make_shared<paramdb::LakeBytes>(std::move(text)));
    } else {
        root().reset();
        LinkRoot();
    }
    return complete;
}

void CLake::SetLines(paramdb::SharedLakeBytes bytes) {
    // Old lines are overwritten in place, so that the blocks of their nodes serve again. Their bytes are kept
    // until no line refers to them any more. A line is linked at once, while the processor's cache has it.
    m_bytes.push_back(std::move(bytes));
    m_collection.node_changed(); // all of them, whatever may end this
    std::string_view const text = m_bytes.back()->text();
    m_pool.Expect(text.size()); // a line takes about as many bytes as its node
    char const* next = text.data();
    char const* const text_end = next + text.size();
    root().reset();
    root().set_collection(&m_collection);
    m_linker = paramdb::LakeLinker(root());
    auto const take_line = [&](iterator line) {
        line->set_line(paramdb::TakeLine(next, text_end));
        if (!m_linker.Take(line))
            line->assign_collection(&m_collection);
    };
    try {
        iterator line = std::next(begin());
        for (; next != text_end && line != end(); ++line) {
            line->reset();
            take_line(line);
        }
        m_collection.erase(line, end());
        while (next != text_end)
            take_line(m_collection.emplace(end()));
    } catch (...) {
        // Some lines of the new file before the rest of the old ones are no lake.
        m_collection.erase(std::next(begin()), end());
        root().reset();
        m_linker = paramdb::LakeLinker();
        throw;
    }
    FinishLinking(end());
    m_bytes.erase(m_bytes.begin(), std::prev(m_bytes.end()));
}

bool CLake::write(CString const& name) const {
    if (!name.IsEmpty())
        m_filename = name;
    CFile file;
    if (!file.Open(m_filename,
                   CFile::modeCreate | CFile::modeWrite | CFile::shareDenyNone | CFile::typeBinary))
        return false;
    LakePrinter printer(file);
    for (auto line = std::next(begin()); line != end(); ++line) {
        if (line->level() < 0) {
            printer.Flush();
            throw std::length_error("string too long");
        }
        printer.Print('\t', static_cast<std::size_t>(line->level()));
        if (auto const key = line->key_text(); !key.empty()) {
            printer.Print(key);
            printer.Print(std::string_view(": "));
        }
        printer.Print(line->value_text());
        if (auto const comment = line->comment_text(); !comment.empty()) {
            printer.Print(std::string_view("\t; "));
            printer.Print(comment);
        }
        printer.EndLine();
    }
    printer.Flush();
    try {
        file.Close();
    } catch (CFileException const&) {
        // Whether everything arrived is not this operation's promise.
    }
    return true;
}
