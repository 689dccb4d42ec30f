// CQtParamInstance: modes and virtual modes.
#include <paramdb/query/param_instance.h>

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

bool CQtParamInstance::AddVMode(int virtual_mode) {
    if (!IsVirtualMode(virtual_mode))
        return false;
    m_distillery->Tables().Mode.Add(virtual_mode, VirtModeName(virtual_mode));
    return true;
}

bool CQtParamInstance::AddVModeName(int virtual_mode, wchar_t const* name) {
    return IsVirtualMode(virtual_mode) && m_distillery->Tables().Mode.Add(virtual_mode, name);
}
