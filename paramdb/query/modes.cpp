// CQtParamInstance: modes and virtual modes.
#include <paramdb/query/param_instance.h>

#include <algorithm>
#include <string>

bool CQtParamInstance::ModeIsOfType(QVModeProps const& properties, QVModeProps::modeFlag flag) {
    return (properties.get<"flags">() & flag) != 0;
}

bool CQtParamInstance::ModeIsHidden(int mode) const {
    auto const row = ModeProperty().find(mode);
    return row != ModeProperty().end() && ModeIsOfType(row->second, QVModeProps::hidden);
}

bool CQtParamInstance::ModeIsOfType(int mode, QVModeProps::modeFlag flag) const {
    auto const row = ModeProperty().find(VirtMode2BaseMode(mode));
    return row != ModeProperty().end() && ModeIsOfType(row->second, flag);
}

wchar_t const* CQtParamInstance::ModeName(int mode) const {
    if (mode == -1)
        return L"";
    if (Mode().IsValidId(mode))
        return Mode().Name(mode);
    thread_local wchar_t buffer[500];
    CString const name = VirtModeName(mode);
    std::size_t const length = std::min(static_cast<std::size_t>(name.GetLength()), std::size(buffer) - 1);
    *std::copy_n(name.GetString(), length, buffer) = L'\0';
    return buffer;
}

bool CQtParamInstance::AddVMode(int virtual_mode) {
    if (!IsVirtualMode(virtual_mode))
        return false;
    m_distillery->Tables().Mode.Add(virtual_mode, VirtModeName(virtual_mode));
    return true;
}

bool CQtParamInstance::AddVModeName(int virtual_mode, wchar_t const* name) {
    return IsVirtualMode(virtual_mode) && m_distillery->Tables().Mode.Add(virtual_mode, name);
}
