// Where the interval of an order definition lies at a speed. Reckoned in single precision as the measurement does, so
// that the band is the same to the last digit.

const FrequencyDomain = 1, OrderDomain = 2, MixedDomain = 3;
const NoBaseOrder = 2, NoRatio = 3, NoRatioForMixed = 5, Negative = 6;
const single = value => Math.fround(numberOf(value));

// The bound of a position, in the unit of the band.
function boundOf(position, drive, scale, lineDistance) {
    const events = single(single(single(position.harmonic) * single(drive.base_order)) + single(position.modulation));
    const lines = single(single(position.lines) * single(lineDistance));
    return single((events * numberOf(drive.ratio.value) + single(position.order)) * scale + single(position.frequency) + lines);
}

// The band of an interval {lower, upper}. The speed is that of the drive's rotor in Hz. The answer is {result, unit,
// lower, upper, hz}: the unit is "orders", "Hz" or "spectrum" for lines alone, hz a pair or null; without a band the
// result is its number and there is nothing else.
function bandOf({lower, upper}, drive, speed, lineDistance) {
    const has = term => lower[term] !== 0 || upper[term] !== 0;
    if (has("harmonic") && drive.base_order === 0)
        return {result: NoBaseOrder};
    if ((has("harmonic") || has("modulation")) && drive.ratio.value === 0)
        return {result: NoRatio};
    if (has("order") && has("frequency") && drive.ratio.value === 0)
        return {result: NoRatioForMixed};
    const isMixed = lower.domain !== upper.domain || lower.domain === MixedDomain;
    const bounds = [lower, upper].map(position => boundOf(position, drive, isMixed ? speed : 1, lineDistance));
    if (bounds[0] < 0 || bounds[1] < 0 || bounds[0] > bounds[1])
        return {result: Negative};
    const unit = isMixed || lower.domain === FrequencyDomain ? "Hz" : lower.domain === OrderDomain ? "orders" : "spectrum";
    const hz = unit === "Hz" ? bounds : unit === "orders" ? bounds.map(bound => single(bound * speed)) : null;
    return {result: 0, unit, lower: bounds[0], upper: bounds[1], hz};
}

// The speed of the drive's rotor in Hz where the reference turns that often in a minute. Without a known ratio the
// speed of the page is the rotor's own.
function rotorSpeed(drive, rpm) {
    return single(rpm * (drive.turns === 0 ? 1 : numberOf(drive.turns)) / 60);
}
