// CQtParamInstance: what the load has derived for channels and spectral intervals.
#include <paramdb/query/param_instance.h>

int CQtParamInstance::BaseChannel(int mode, int channel) const {
    return m_distillery->DerivedInfo().ChannelInfo().BaseChannel(VirtMode2BaseMode(mode), channel);
}

int CQtParamInstance::ChannelFlags(int mode, int channel) const {
    return m_distillery->DerivedInfo().ChannelInfo().Flags(VirtMode2BaseMode(mode), channel);
}

int CQtParamInstance::ParentChannel(int mode, int channel) const {
    return m_distillery->DerivedInfo().ChannelInfo().Parent(VirtMode2BaseMode(mode), channel);
}

wchar_t const* CQtParamInstance::SpecIntervalDefinition(unsigned int parameter) const {
    constexpr int spectral_value = 1001;
    constexpr int spectral_track = 2001;
    for (int const instrument : {spectral_value, spectral_track}) {
        auto const& table = IpSvOfSpec().at(instrument);
        auto const row = table.find(static_cast<int>(parameter));
        if (row != table.end())
            return row->second.get<"definition">();
    }
    return nullptr;
}

CQtSpecIntervalStore::Range_t CQtParamInstance::SpecIntervalRange(unsigned int parameter) const {
    return m_distillery->DerivedInfo().SpecIntervals().Entries(parameter);
}
