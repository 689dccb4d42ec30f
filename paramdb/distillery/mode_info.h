// Virtual modes: a mode (test step) together with a position in a grid of auto mode parameters, packed into
// one id.
//
// From the top bit down a virtual mode id holds bit 31, always 0; the extension, ExtensionBits wide; the id
// of the base mode. From its top bit down the extension holds the interval fields of all parameters in the
// order of their keys (interval index plus 1, or 0 for none), then the state fields of those that have one, 2
// bits each. The layout follows from the data of each load.
//
// -1 stands for no mode everywhere. Shift counts go modulo 32, as the layout of impossible data needs it.
#pragma once

#include <paramdb/distillery/auto_mode_naming.h>
#include <paramdb/distillery/auto_mode_params.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>

#include <cstddef>

class CQtParamStore;

class PARAMDB_API CQtModeInfo {
public:
    // The store must outlive this object.
    explicit CQtModeInfo(CQtParamStore& store) : m_store(&store) {}

    // Takes the parameters from <TAutoModeParam> and <TAutoModeParamOrder> and computes the layout. Tables
    // that do not fit together are reported (category 16, style 1) and leave no parameters. False, reported
    // (category 16, style 3), if the ids of <TMode> need bits that the extension takes.
    bool Build();
    // Computes the layout of the parameters as they are now; true if a bit is left beside it.
    bool UpdateLayout();
    // Makes the rows of the two tables anew from the parameters. Always true.
    bool WriteTables() const;

    int ExtensionBits() const { return m_extension_bits; }
    int StateBits() const { return m_state_bits; }
    unsigned int ExtensionMask() const { return m_extension_mask; }

    CAutoModeParamMap& Params() { return m_params; }
    CAutoModeParamMap const& Params() const { return m_params; }
    CAutoModeNaming const& Naming() const { return m_naming; }
    void SetNaming(CAutoModeNaming const& naming) { m_naming = naming; }

    // Splitting and packing; see the members of CQtParamInstance with these names.
    int BaseMode(int virtual_mode) const;
    int Extension(int virtual_mode) const;
    int Extension(int const* intervals, int const* states) const;
    int GenerateId(int mode, int extension) const;
    bool IsVirtual(int mode) const;
    bool IsValidVirtual(int mode) const;
    static int Intervals(CVAutoModeParams const& params);
    static float Position(CVAutoModeParams const& params, unsigned int index);

    // The physical mode of a mode, which is reduced to its base; -1 without a row in <TModeProperty>.
    int PhysicalMode(int mode) const;

    // Names; see the members of CQtParamInstance.
    CString Name(int virtual_mode) const;
    // The name behind what the text holds; std::wstring and CTextBuffer<500>.
    template <class Text>
    void AppendName(Text& text, int virtual_mode) const;
    CString BaseName(int extension, int physical_mode) const;
    CString NameFragment(CAutoModeParamMap::const_iterator parameter, float value,
                         unsigned int precision) const;

private:
    bool CombineParams();
    // Goes once through all parameters with what of an extension belongs to each: a step each, however many
    // there are.
    class FieldWalk;

    template <class Text>
    void AppendBaseName(Text& text, int extension, int physical_mode) const;
    template <class Text>
    void AppendLabel(Text& text, int signal, unsigned int state) const;
    template <class Text>
    void AppendPosition(Text& text, CVAutoModeParams const& params, unsigned int field) const;

    CQtParamStore* m_store;
    int m_extension_bits = 0;
    int m_state_bits = 0;
    unsigned int m_extension_mask = 0;
    CAutoModeNaming m_naming;
    CAutoModeParamMap m_params;
};
