"""The gearbox under test: shafts, wheels and bearings, and how fast each of them turns.

A transverse two-shaft gearbox. The wheels of the first two gears are fixed on the input shaft and run loose on the
output shaft; those of the other gears are fixed on the output shaft and run loose on the input shaft. The output shaft
carries the pinion of the final drive. The reverse idler is slid in and stands still in every forward gear.

All speeds are exact fractions of the speed of the input shaft. A rotor that stands still has no speed at all here.
"""

from __future__ import annotations

from dataclasses import dataclass
from fractions import Fraction

# Ids of the objects. Rotors, wheels, races and measuring places share one range.
INPUT_SHAFT, OUTPUT_SHAFT, REVERSE_IDLER, DIFFERENTIAL = 1, 2, 3, 4
CAGE, ROLLING_ELEMENT, LOOSE_WHEEL = 10, 20, 30              # plus the number of the bearing or gear
ENGAGED_DRIVING, ENGAGED_DRIVEN = 90, 91                     # virtual gears
DRIVING_WHEEL, DRIVEN_WHEEL = 100, 110                       # plus the gear
REVERSE_PINION, IDLER_WHEEL, REVERSE_WHEEL = 121, 122, 123
FINAL_PINION, FINAL_RING = 131, 132
OUTER_RACE, INNER_RACE, ROLLING_SPIN = 140, 150, 160         # plus the bearing

NEUTRAL, REVERSE = 0, 20                                     # physical modes beside the gears 1, 2, ...

# Teeth of the driving and the driven wheel. No pair has a common divisor: every tooth meets every other.
GEAR_TEETH = ((13, 46), (22, 45), (29, 38), (37, 35), (41, 31), (45, 28), (47, 26), (49, 24))
REVERSE_TEETH = (12, 25, 43)                                 # pinion, idler, wheel
FINAL_TEETH = (17, 71)
LAST_FIXED_ON_INPUT = 2

SHAFT_DISTANCE = 77.0                                        # mm, input to output shaft
FINAL_DISTANCE = 132.0                                       # mm, output shaft to differential
REVERSE_MODULE = 2.5                                         # mm


@dataclass(frozen=True)
class Bearing:
    """A radial ball bearing with a standing outer ring."""
    number: int
    name: str
    shaft: int
    balls: int
    ball_diameter: int
    pitch_diameter: int

    @property
    def _quotient(self) -> Fraction:
        return Fraction(self.ball_diameter, self.pitch_diameter)

    @property
    def cage_speed(self) -> Fraction:
        """Turns of the cage for one turn of the shaft."""
        return (1 - self._quotient) / 2

    @property
    def ball_spin(self) -> Fraction:
        """Turns of a ball about itself for one turn of the shaft."""
        return (1 - self._quotient ** 2) / (2 * self._quotient)

    @property
    def inner_passes(self) -> Fraction:
        """Balls that pass a point of the inner ring in one turn of the shaft."""
        return self.balls * (1 + self._quotient) / 2


BEARINGS = (
    Bearing(1, "input shaft, clutch side", INPUT_SHAFT, 9, 8, 40),
    Bearing(2, "input shaft, cover side", INPUT_SHAFT, 8, 8, 32),
    Bearing(3, "output shaft, clutch side", OUTPUT_SHAFT, 11, 10, 50),
    Bearing(4, "output shaft, cover side", OUTPUT_SHAFT, 10, 10, 50),
    Bearing(5, "differential, clutch side", DIFFERENTIAL, 14, 9, 72),
    Bearing(6, "differential, cover side", DIFFERENTIAL, 14, 9, 72),
)


@dataclass(frozen=True)
class DriveTrain:
    gears: int

    def __post_init__(self) -> None:
        if not 1 <= self.gears <= len(GEAR_TEETH):
            raise ValueError(f"a gearbox of {self.gears} gears cannot be built, 1 to {len(GEAR_TEETH)} can")

    @property
    def gear_numbers(self) -> range:
        return range(1, self.gears + 1)

    @property
    def physical_modes(self) -> list[int]:
        return [NEUTRAL, *self.gear_numbers, REVERSE]

    def output_speed(self, physical_mode: int) -> Fraction:
        """Turns of the output shaft for one of the input shaft; negative in reverse, 0 in neutral."""
        if physical_mode == NEUTRAL:
            return Fraction(0)
        if physical_mode == REVERSE:
            pinion, _, wheel = REVERSE_TEETH
            return -Fraction(pinion, wheel)
        return Fraction(*GEAR_TEETH[physical_mode - 1])

    def rotor_speeds(self, physical_mode: int) -> dict[int, Fraction]:
        """Every rotor that turns, with its speed relative to the input shaft."""
        output = self.output_speed(physical_mode)
        speeds = {INPUT_SHAFT: Fraction(1), OUTPUT_SHAFT: output, DIFFERENTIAL: output * Fraction(*FINAL_TEETH)}
        if physical_mode == REVERSE:
            speeds[REVERSE_IDLER] = Fraction(REVERSE_TEETH[0], REVERSE_TEETH[1])
        for gear in self.gear_numbers:
            driving, driven = GEAR_TEETH[gear - 1]
            if gear <= LAST_FIXED_ON_INPUT:
                speeds[LOOSE_WHEEL + gear] = Fraction(driving, driven)
            else:
                speeds[LOOSE_WHEEL + gear] = output * Fraction(driven, driving)
        for bearing in BEARINGS:
            speeds[CAGE + bearing.number] = speeds[bearing.shaft] * bearing.cage_speed
            speeds[ROLLING_ELEMENT + bearing.number] = speeds[bearing.shaft] * bearing.ball_spin
        return {rotor: speed for rotor, speed in sorted(speeds.items()) if speed != 0}

    def order_sources(self, physical_mode: int) -> dict[int, int]:
        """Every wheel and race that can make orders, with the rotor that it turns with."""
        sources = {REVERSE_PINION: INPUT_SHAFT, IDLER_WHEEL: REVERSE_IDLER, REVERSE_WHEEL: OUTPUT_SHAFT,
                   FINAL_PINION: OUTPUT_SHAFT, FINAL_RING: DIFFERENTIAL}
        if physical_mode != NEUTRAL:
            sources |= {ENGAGED_DRIVING: INPUT_SHAFT, ENGAGED_DRIVEN: OUTPUT_SHAFT}
        for gear in self.gear_numbers:
            fixed_on_input = gear <= LAST_FIXED_ON_INPUT
            engaged = gear == physical_mode
            sources[DRIVING_WHEEL + gear] = INPUT_SHAFT if fixed_on_input or engaged else LOOSE_WHEEL + gear
            sources[DRIVEN_WHEEL + gear] = OUTPUT_SHAFT if not fixed_on_input or engaged else LOOSE_WHEEL + gear
        for bearing in BEARINGS:
            sources[OUTER_RACE + bearing.number] = CAGE + bearing.number
            sources[INNER_RACE + bearing.number] = bearing.shaft
            sources[ROLLING_SPIN + bearing.number] = ROLLING_ELEMENT + bearing.number
        turning = self.rotor_speeds(physical_mode)
        return {source: rotor for source, rotor in sources.items() if rotor in turning}

    def engaged_wheels(self, physical_mode: int) -> dict[int, int]:
        """The wheels behind the two virtual gears."""
        if physical_mode == NEUTRAL:
            return {}
        if physical_mode == REVERSE:
            return {ENGAGED_DRIVING: REVERSE_PINION, ENGAGED_DRIVEN: REVERSE_WHEEL}
        return {ENGAGED_DRIVING: DRIVING_WHEEL + physical_mode, ENGAGED_DRIVEN: DRIVEN_WHEEL + physical_mode}

    def speed_sources(self, physical_mode: int) -> tuple[dict[int, int], dict[int, int]]:
        """For each rotor the pick-up that drives its analysis, and the one to fall back on.

        Everything up to the output shaft goes by the input speed. The differential is followed by the pick-up at its
        flange, which is a reference alone: it gives too few pulses for the orders of the input shaft."""
        sources: dict[int, int] = {}
        references: dict[int, int] = {}
        shaft_of = {base + bearing.number: bearing.shaft for bearing in BEARINGS for base in (CAGE, ROLLING_ELEMENT)}
        for rotor in self.rotor_speeds(physical_mode):
            shaft = shaft_of.get(rotor, rotor)
            if shaft != DIFFERENTIAL:
                sources[rotor] = INPUT_SHAFT
            if shaft in (OUTPUT_SHAFT, DIFFERENTIAL):
                references[rotor] = DIFFERENTIAL
        return sources, references

    def teeth(self) -> dict[int, int]:
        """Teeth of every wheel."""
        wheels = dict(zip((REVERSE_PINION, IDLER_WHEEL, REVERSE_WHEEL), REVERSE_TEETH))
        wheels |= dict(zip((FINAL_PINION, FINAL_RING), FINAL_TEETH))
        for gear in self.gear_numbers:
            wheels[DRIVING_WHEEL + gear], wheels[DRIVEN_WHEEL + gear] = GEAR_TEETH[gear - 1]
        return wheels

    def base_orders(self) -> dict[int, float]:
        """Events in one turn of a rotor: 1 for a shaft, the teeth of a wheel, the passes of a bearing."""
        orders: dict[int, float] = {shaft: 1.0 for shaft in (INPUT_SHAFT, OUTPUT_SHAFT, REVERSE_IDLER, DIFFERENTIAL)}
        orders |= {wheel: float(teeth) for wheel, teeth in self.teeth().items()}
        for bearing in BEARINGS:
            orders[OUTER_RACE + bearing.number] = float(bearing.balls)
            orders[INNER_RACE + bearing.number] = float(bearing.inner_passes)
            orders[ROLLING_SPIN + bearing.number] = 2.0      # a flaw on a ball meets both rings in a turn
        return orders

    def diameters(self) -> dict[int, float]:
        """Pitch diameter of every wheel in mm."""
        diameters = {wheel: teeth * REVERSE_MODULE
                     for wheel, teeth in zip((REVERSE_PINION, IDLER_WHEEL, REVERSE_WHEEL), REVERSE_TEETH)}
        pairs = [(FINAL_PINION, FINAL_RING, FINAL_TEETH, FINAL_DISTANCE)]
        pairs += [(DRIVING_WHEEL + gear, DRIVEN_WHEEL + gear, GEAR_TEETH[gear - 1], SHAFT_DISTANCE)
                  for gear in self.gear_numbers]
        for driving, driven, teeth, distance in pairs:
            diameters[driving] = round(2 * distance * teeth[0] / sum(teeth), 3)
            diameters[driven] = round(2 * distance * teeth[1] / sum(teeth), 3)
        return diameters

    def object_names(self) -> dict[int, str]:
        names = {INPUT_SHAFT: "Input shaft", OUTPUT_SHAFT: "Output shaft", REVERSE_IDLER: "Reverse idler",
                 DIFFERENTIAL: "Differential", ENGAGED_DRIVING: "Engaged gear, driving wheel",
                 ENGAGED_DRIVEN: "Engaged gear, driven wheel", REVERSE_PINION: "Reverse pinion",
                 IDLER_WHEEL: "Reverse idler wheel", REVERSE_WHEEL: "Reverse wheel",
                 FINAL_PINION: "Final drive pinion", FINAL_RING: "Final drive ring gear"}
        for gear in self.gear_numbers:
            names[LOOSE_WHEEL + gear] = f"Loose wheel of gear {gear}"
            names[DRIVING_WHEEL + gear] = f"Gear {gear}, driving wheel"
            names[DRIVEN_WHEEL + gear] = f"Gear {gear}, driven wheel"
        for bearing in BEARINGS:
            names[CAGE + bearing.number] = f"Bearing cage, {bearing.name}"
            names[ROLLING_ELEMENT + bearing.number] = f"Bearing balls, {bearing.name}"
            names[OUTER_RACE + bearing.number] = f"Outer race, {bearing.name}"
            names[INNER_RACE + bearing.number] = f"Inner race, {bearing.name}"
            names[ROLLING_SPIN + bearing.number] = f"Ball spin, {bearing.name}"
        return names

    def description(self) -> list[str]:
        """Tooth counts as lines of text, for the top of the rotor tables."""
        lines = ["Tooth counts, driving / driven wheel, and ratio input / output:"]
        for gear in self.gear_numbers:
            driving, driven = GEAR_TEETH[gear - 1]
            loose = "driven wheel loose" if gear <= LAST_FIXED_ON_INPUT else "driving wheel loose"
            lines.append(f"gear {gear}       {driving:2} / {driven:2}       {driven / driving:7.4f}   {loose}")
        pinion, idler, wheel = REVERSE_TEETH
        lines.append(f"reverse      {pinion:2} / {idler:2} / {wheel:2}  {-wheel / pinion:7.4f}   over the idler")
        pinion, ring = FINAL_TEETH
        lines.append(f"final drive  {pinion:2} / {ring:2}       {ring / pinion:7.4f}")
        lines.append("Ball bearings: balls, ball diameter / pitch diameter in mm:")
        lines += [f"{bearing.name:26} {bearing.balls:2}   {bearing.ball_diameter:2} / {bearing.pitch_diameter}"
                  for bearing in BEARINGS]
        return lines
