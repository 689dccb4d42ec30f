// The drive train of a physical mode as a drawing: a lane for each rotor, its gears upon it.
//
// The data tells how fast each rotor turns and which order sources sit on it, not what meshes with what. Two wheels
// of different tooth counts on different rotors that make the very same order are drawn in mesh; the count is exact
// as long as the ratios are fractions.

const Train = {left: 284, right: 236, lane: 68, small: 27, top: 34, leastColumn: 40, widestColumn: 80, least: 440};

// The order that a source makes, counted in turns of the reference, as the text of an exact fraction.
function exactOrder(rotor, source) {
    const teeth = source.base_order;
    if (rotor.numerator === null || !Number.isInteger(teeth) || teeth < 2 || rotor.numerator === 0)
        return null;
    let a = BigInt(Math.abs(rotor.numerator)) * BigInt(teeth), b = BigInt(rotor.denominator);
    for (let [x, y] = [a, b]; ; [x, y] = [y, x % y]) {
        if (y === 0n)
            return a / x + "/" + b / x;
    }
}

// The gears of a rotor, each once: a source that stands for a physical gear is another name of that gear.
function gearsOf(rotor) {
    const gears = new Map();
    for (const source of rotor.order_sources) {
        const id = source.gear === null ? source.order_source.id : source.gear.id;
        if (!gears.has(id))
            gears.set(id, {id, name: source.gear ?? source.order_source, base_order: source.base_order, aliases: [],
                order: exactOrder(rotor, source), column: -1});
        if (source.order_source.id !== id)
            gears.get(id).aliases.push(source.order_source);
    }
    return [...gears.values()];
}

// Lanes with their gears, and the pairs in mesh.
function layOut(mode) {
    const lanes = mode.rotors.map(rotor => ({rotor, gears: gearsOf(rotor), isShaft: false}));
    const meshes = [];
    const byOrder = new Map();
    for (const lane of lanes)
        for (const gear of lane.gears)
            if (gear.order !== null)
                byOrder.set(gear.order, [...byOrder.get(gear.order) ?? [], {lane, gear}]);
    for (const wheels of byOrder.values())
        for (const [index, first] of wheels.entries())
            for (const second of wheels.slice(index + 1))
                if (first.lane !== second.lane && first.gear.base_order !== second.gear.base_order)
                    meshes.push([first, second]);
    meshes.sort((a, b) => Math.min(a[0].gear.id, a[1].gear.id) - Math.min(b[0].gear.id, b[1].gear.id));

    let columns = 0;
    for (const pair of meshes) {
        const taken = pair.map(wheel => wheel.gear.column).filter(column => column !== -1);
        const column = taken.length === 0 ? columns++ : taken[0];
        for (const wheel of pair) {
            wheel.lane.isShaft = true;
            if (wheel.gear.column === -1)
                wheel.gear.column = column;
        }
    }
    let most = columns;
    for (const lane of lanes) {
        const isSource = lane.rotor.speed_source !== null && lane.rotor.speed_source.id === lane.rotor.rotor.id;
        lane.isSource = isSource && lane.rotor.speed_source_kind === "source";
        lane.isReference = mode.reference !== null && lane.rotor.rotor.id === mode.reference.id;
        lane.isShaft = lane.isShaft || lane.isReference;
        let free = lane.isShaft ? columns : 0;
        for (const gear of lane.gears)
            if (gear.column === -1)
                gear.column = free++;
        most = Math.max(most, free);
    }
    const shafts = lanes.filter(lane => lane.isShaft), others = lanes.filter(lane => !lane.isShaft);
    return {lanes: [...shafts, ...others], meshes, columns: Math.max(most, 1)};
}

// What the height of a wheel goes by.
function sizeOf(gear) {
    return gear.base_order > 0 && Number.isFinite(gear.base_order) ? gear.base_order : 1;
}

function clipped(text, length) {
    const whole = shown(text);
    return whole.length <= length ? whole : whole.slice(0, length - 1) + "\u2026";
}

function fractionText(rotor) {
    return rotor.numerator === null ? "" : rotor.denominator === 1 ? String(rotor.numerator)
        : rotor.numerator + "/" + rotor.denominator;
}

class DriveTrain {
    constructor(mode) {
        this.mode = mode;
        this.speeds = [];
        const {lanes, meshes, columns} = layOut(mode);
        const space = Math.min(Train.widestColumn, Math.max(Train.leastColumn, Train.least / columns));
        const middle = Math.max(Train.least, columns * space) + 8;
        this.x = column => Train.left + (column + 0.5) * space;
        this.end = Train.left + middle;
        this.width = this.end + Train.right;
        this.teeth = lanes.flatMap(lane => lane.isShaft ? lane.gears : []).map(sizeOf).reduce((a, b) => Math.max(a, b), 1);
        let y = Train.top;
        for (const lane of lanes) {
            const height = lane.isShaft ? Train.lane : Train.small;
            lane.y = y + height / 2;
            y += height;
        }
        const title = "Drive train in " + (mode.physical_mode.name ?? "physical mode " + mode.physical_mode.id);
        this.element = svg("svg", {class: "train", viewBox: "0 0 " + this.width + " " + (y + 6), role: "img",
            "aria-label": title + ": " + counted(lanes.length, "rotor") + ", of which the table below tells all"},
            this.heads(), meshes.map(pair => this.mesh(pair)), lanes.map(lane => this.lane(lane)));
    }

    heads() {
        const head = (x, anchor, text) => svg("text", {x, y: 16, "text-anchor": anchor, class: "head"}, text);
        return [head(0, "start", "Rotor"), head(Train.left, "start", "Gears and other order sources, with base order"),
            head(this.end + 90, "end", "Ratio"), head(this.end + 162, "end", "as number"),
            head(this.width - 2, "end", "1/min"),
            svg("line", {x1: 0, x2: this.width, y1: 24, y2: 24, class: "rule"})];
    }

    lane(lane) {
        const {rotor, y, isShaft} = lane;
        const kind = lane.isReference ? " reference" : "";
        return svg("g", {class: (isShaft ? "lane" : "lane small") + kind},
            svg("line", {x1: Train.left, x2: this.end, y1: y, y2: y, class: "shaft"}),
            lane.isSource ? svg("path", {class: "pick-up", d: "M" + (Train.left - 13) + " " + (y - 8) + "h9l7 8l-7 8h-9z"},
                svg("title", {}, "speed pick-up")) : null,
            this.label(lane), lane.gears.map(gear => isShaft ? this.wheel(gear, y) : this.spot(gear, y)),
            this.figures(lane));
    }

    label({rotor, y, isShaft, isReference}) {
        const from = rotor.speed_source === null ? "no speed source"
            : rotor.speed_source.id === rotor.rotor.id ? (rotor.signal === null ? "its own speed" : named(rotor.signal))
            : "speed from " + named(rotor.speed_source);
        const kind = rotor.speed_source_kind === "reference" ? ", by reference" : "";
        const name = svg("text", {x: 0, y: isShaft ? y - 3 : y + 4, class: "name"}, clipped(named(rotor.rotor), isShaft ? 33 : 42),
            svg("title", {}, named(rotor.rotor) + ": " + from + kind));
        return isShaft ? [name, svg("text", {x: 0, y: y + 14, class: "from"},
            clipped((isReference ? "speed of the page, " : "") + from + kind, 44))] : name;
    }

    // A wheel from the side: the higher, the more teeth.
    wheel(gear, y) {
        const height = 14 + 32 * Math.sqrt(sizeOf(gear) / this.teeth);
        const half = height / 2, x = this.x(gear.column);
        let teeth = "";
        for (let tooth = -half + 3; tooth < half - 1; tooth += 4)
            teeth += "M" + (x - 8) + " " + (y + tooth) + "h16";
        return svg("g", {class: gear.aliases.length > 0 ? "wheel engaged" : "wheel"},
            svg("title", {}, this.gearText(gear)),
            svg("rect", {x: x - 8, y: y - half, width: 16, height, rx: 2}), svg("path", {d: teeth, class: "teeth"}),
            svg("text", {x, y: y - half - 4, "text-anchor": "middle", class: "order"}, gear.base_order === null ? "?" : rounded(gear.base_order)));
    }

    spot(gear, y) {
        const x = this.x(gear.column);
        return svg("g", {class: "spot"}, svg("title", {}, this.gearText(gear)), svg("circle", {cx: x, cy: y, r: 4.5}),
            svg("text", {x: x + 9, y: y + 4, class: "order"}, gear.base_order === null ? "?" : rounded(gear.base_order)));
    }

    gearText(gear) {
        const aliases = gear.aliases.map(alias => ", here also " + named(alias)).join("");
        return named(gear.name) + aliases + ": " +
            (gear.base_order === null ? "no base order" : "base order " + rounded(gear.base_order, 9));
    }

    mesh([first, second]) {
        const [upper, lower] = first.lane.y <= second.lane.y ? [first, second] : [second, first];
        const engaged = [upper, lower].some(wheel => wheel.gear.aliases.length > 0);
        const bent = this.x(lower.gear.column), x = this.x(upper.gear.column);
        return svg("path", {class: engaged ? "mesh engaged" : "mesh",
            d: "M" + x + " " + upper.lane.y + "V" + (lower.lane.y - 34) + "L" + bent + " " + lower.lane.y});
    }

    figures({rotor, y}) {
        const speed = svg("text", {x: this.width - 2, y: y + 4, "text-anchor": "end", class: "speed"});
        this.speeds.push([speed, rotor]);
        return [svg("text", {x: this.end + 90, y: y + 4, "text-anchor": "end", class: "fraction"}, fractionText(rotor)),
            svg("text", {x: this.end + 162, y: y + 4, "text-anchor": "end", class: "ratio"}, rounded(rotor.ratio)), speed];
    }

    showSpeed(rpm) {
        const reference = this.mode.rotors.find(rotor => rotor.rotor.id === this.mode.reference?.id);
        for (const [text, rotor] of this.speeds)
            text.textContent = reference === undefined || !Number.isFinite(rotor.ratio) ? ""
                : rounded(rotor.ratio / reference.ratio * rpm);
    }
}

function rotorTable(mode, speed) {
    const column = (name, type, hint = name) => ({name, type, hint});
    const sources = rotor => rotor.order_sources.map(source => named(source.order_source) +
        (source.base_order === null ? "" : " (" + rounded(source.base_order, 9) + ")")).join(", ");
    const table = new DataTable({
        label: "rotors in " + named(mode.physical_mode),
        columns: [column("Rotor", "int"), column("Name", "text"), column("Fraction", "text"), column("Ratio", "double"),
            column("Speed source", "text"), column("Kind", "text"), column("Signal", "text"),
            {...column("Order sources", "text", "with their base orders"), wide: true}],
        rows: mode.rotors.map(rotor => [rotor.rotor.id, rotor.rotor.name ?? "", fractionText(rotor), rotor.ratio,
            named(rotor.speed_source), rotor.speed_source_kind ?? "", named(rotor.signal), sources(rotor)]),
    });
    return table.element;
}

function driveTrainSection(data, speed) {
    const modes = data.rotors;
    if (modes.length === 0)
        return [element("p", {class: "none"}, "There are no rotors.")];
    const drawing = element("div", {class: "drawing"}), table = element("div");
    const speedLabel = element("span");
    let trains = [];
    const show = chosen => {
        trains = chosen.map(mode => new DriveTrain(mode));
        drawing.replaceChildren(...trains.flatMap(train => chosen.length === 1 ? [train.element]
            : [element("h3", {}, named(train.mode.physical_mode)), train.element]));
        trains.forEach(train => train.showSpeed(speed.rpm));
    };
    const choose = index => {
        show([modes[index]]);
        replaceChildren(table, rotorTable(modes[index]));
        speedLabel.textContent = "Speed of " + shown(named(modes[index].reference) || "the reference");
    };
    const {field, select} = selectField("Physical mode", modes.map((mode, index) => [index, named(mode.physical_mode)]),
        choose);
    // One that is in gear says more than the first, which may be neutral.
    const first = modes.findIndex(mode => mode.rotors.some(rotor => rotor.order_sources.some(
        source => source.gear !== null && source.gear.id !== source.order_source.id)));
    select.value = Math.max(first, 0);
    choose(select.value);
    speed.listen(() => trains.forEach(train => train.showSpeed(speed.rpm)));
    printables.push({prepare: () => show(modes), restore: () => show([modes[select.value]])});
    return [element("p", {class: "lead"}, "How fast each rotor turns for one turn of the reference. Wheels of different " +
        "tooth counts that make the very same order are drawn in mesh; coloured are those in gear. Pointing at a wheel tells its name."),
        element("div", {class: "toolbar control"}, field, speed.control(speedLabel)), drawing, table];
}
