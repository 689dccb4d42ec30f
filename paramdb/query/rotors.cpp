// CQtParamInstance: rotors and gears.
#include <paramdb/query/param_instance.h>

int CQtParamInstance::PhysicalGear(int mode, int gear) const {
    return Rotors().PhysicalGear(PhysModeId(mode), gear);
}

int CQtParamInstance::OrderSource2Rotor(int mode, int source) const {
    return mode == -1 || source == -1 ? 0 : Rotors().Rotor(PhysModeId(mode), source);
}

float CQtParamInstance::BaseOrder(int mode, int gear) const {
    return Rotors().BaseOrder(PhysicalGear(mode, gear));
}

float CQtParamInstance::GearDiameter(int mode, int gear) const {
    return Rotors().GearDiameter(PhysicalGear(mode, gear));
}

int CQtParamInstance::RotorSpeedSource(int mode, int rotor, bool reference) const {
    if (mode == -1 || rotor == -1)
        return -1;
    int const physical_mode = PhysModeId(mode);
    return Rotors().SpeedSource(physical_mode, Rotors().Rotor(physical_mode, rotor), reference);
}

int CQtParamInstance::RotorSpeedSourceAppId(int mode, int rotor, bool reference) const {
    return Rotors().SpeedSourceSignal(RotorSpeedSource(mode, rotor, reference));
}

int CQtParamInstance::SpeedInfoOfRotor(int mode, int rotor, bool reference) const {
    return Rotors().SpeedSourceSignal(Rotors().SpeedSource(PhysModeId(mode), rotor, reference));
}

int CQtParamInstance::RotorSpeedAppIdSource(int signal) const {
    return Rotors().SpeedSourceOfSignal(signal);
}

double CQtParamInstance::FrequencyRatioToGeneratingRotor(int mode, int a, int b) const {
    if (mode == -1 || a == -1 || b == -1)
        return 0.0;
    int const physical_mode = PhysModeId(mode);
    double const speed = Rotors().Speed(physical_mode, a);
    return speed == 0.0 ? 0.0 : Rotors().Speed(physical_mode, b) / speed;
}

numeric::CRatio CQtParamInstance::RotorSpeedRatio(int mode, int a, int b) const {
    if (mode == -1 || a == -1 || b == -1)
        return numeric::CRatio(0.0);
    int const physical_mode = PhysModeId(mode);
    return Rotors().SpeedRatio(physical_mode, b) / Rotors().SpeedRatio(physical_mode, a);
}

double CQtParamInstance::RotorFrequencyRelativeToSpeedSourceRotor(int mode, int rotor, bool reference) const {
    // The number of a speed source is that of its rotor.
    return FrequencyRatioToGeneratingRotor(mode, RotorSpeedSource(mode, rotor, reference), rotor);
}

CQtRotorInfo::Range CQtParamInstance::OrderSourceRange(int mode, int channel, int rotor,
                                                       bool reference) const {
    return m_distillery->DerivedInfo().RotorInfo().OrderSources(PhysModeId(mode), VirtMode2BaseMode(mode),
                                                                channel, rotor, reference);
}
