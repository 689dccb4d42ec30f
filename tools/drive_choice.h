// In which mode, on which rotor and for which gear spectral intervals are placed: what the options say, else
// what fits the data best.
//
//     auto const drive = ChooseDrive(parameters, options, {.parameter = 1025, .gear = 131, .trigger = 1});
//     calculation.LoadTransformParams(drive.mode.id.id, drive.rotor.id.id, drive.gear.id.id);
//
// Without an option
// - the mode is the first of those in which the parameter is measured, or of all if it is measured in none,
//   where the gear turns, the trigger has dimensions, and rotors turn; where that is asking too much, where
//   as much as possible of it holds, the gear counting most;
// - the gear is the one asked for, else the rotor;
// - the rotor is the one of the place where the parameter is measured if its channel is synchronous there,
//   and the one of the speed source if it is mixed; else the speed source of the gear.
#pragma once

#include "tools/drive_options.h"
#include "tools/measured_spots.h"
#include "tools/named_id.h"

#include <string>

namespace paramdb::tools {

// What intervals are asked for; -1 for what there is not.
struct DriveQuestion {
    int parameter = -1;
    int gear = -1; // base order reference of the parameter
    int trigger = -1;
};

struct DrivePart {
    NamedId id;
    std::string reason; // empty where an option said it
};

struct Drive {
    DrivePart mode;
    DrivePart rotor;
    DrivePart gear;
};

// The spots must be of these parameters and hold those of the one in question. Without them they are looked
// up, which takes a pass over all keys.
Drive ChooseDrive(CQtParamInstance const& parameters, MeasuredSpots const& spots, DriveOptions const& options,
                  DriveQuestion const& question);
Drive ChooseDrive(CQtParamInstance const& parameters, DriveOptions const& options,
                  DriveQuestion const& question);

// The base order reference of a spectral value, spectral track or residual track; -1 for any other
// parameter.
int BaseOrderReference(CQtParamInstance const& parameters, int parameter);

// The rotor on which a gear sits: of its physical gear if that one has a speed, else its own. -1 for none.
int RotorOfGear(CQtParamInstance const& parameters, int mode, int gear);

// The rotor whose turns orders count at a spot: in a synchronous channel that of the location, in a mixed one
// that of its speed source. -1 for none, as in any other channel.
int RotorOfSpot(CQtParamInstance const& parameters, Spot const& spot);

// The speed source of a gear, or else of the rotor on which it sits; -1 for none.
int SpeedSourceOfGear(CQtParamInstance const& parameters, int mode, int gear);

// Whether a gear has events and a speed in a mode.
bool GearTurns(CQtParamInstance const& parameters, int mode, int gear);

} // namespace paramdb::tools
