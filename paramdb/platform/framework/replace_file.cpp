#include <paramdb/platform/framework/file_system.h>
#include <paramdb/platform/framework/replace_file.h>

#include <algorithm>

namespace paramdb {
namespace {

// The file under its temporary name; gone at the end of its life unless it has taken the target's place.
class Temporary {
public:
    explicit Temporary(file_system::Target const& target)
        : m_target(target), m_file(file_system::CreateBeside(target, m_name)) {
        if (!m_file.IsOpen())
            throw CFileException(file_system::LastError());
    }
    Temporary(Temporary const&) = delete;
    Temporary& operator=(Temporary const&) = delete;
    ~Temporary() {
        if (m_moved)
            return;
        m_file = CFile(); // an open file cannot be removed everywhere
        file_system::Remove(m_name);
    }

    CFile& File() { return m_file; }

    void MoveOver() {
        m_file.Flush();
        m_file.Close();
        if (!file_system::MoveOver(m_name, m_target))
            throw CFileException(file_system::LastError());
        m_moved = true;
    }

private:
    file_system::Target const& m_target;
    file_system::NativeText m_name;
    CFile m_file;
    bool m_moved = false;
};

void WriteDirectly(file_system::Target const& target, std::function<void(CFile&)> const& write) {
    CFile file(file_system::OpenDirect(target));
    if (!file.IsOpen())
        throw CFileException(file_system::LastError());
    write(file);
    file.Flush();
    file.Close();
}

} // namespace

bool ReplaceFileWith(std::wstring const& name, std::function<void(CFile&)> const& write,
                     std::wstring& error) {
    try {
        file_system::Target target;
        if (!file_system::FindTarget(name, target))
            throw CFileException(file_system::LastError());
        if (target.direct) {
            WriteDirectly(target, write);
        } else {
            Temporary temporary(target);
            write(temporary.File());
            temporary.MoveOver();
        }
        return true;
    } catch (CFileException const& failure) {
        error = failure.Text();
        return false;
    }
}

bool ReplaceFileWith(std::wstring const& name, std::string_view content, std::wstring& error) {
    auto const write = [content](CFile& file) {
        constexpr std::size_t LargestPiece = std::size_t{1} << 30;
        for (std::string_view rest = content; !rest.empty();) {
            std::size_t const piece = std::min(rest.size(), LargestPiece);
            file.Write(rest.data(), static_cast<unsigned>(piece));
            rest.remove_prefix(piece);
        }
    };
    return ReplaceFileWith(name, std::function<void(CFile&)>(write), error);
}

} // namespace paramdb
