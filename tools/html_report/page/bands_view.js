// The order definitions as bands over the frequency, at the speed of the page.

const TickCount = 12;

// What a definition comes to in one place: its drive, and the places of its bands in the row.
class BandRow {
    constructor(definition, view) {
        Object.assign(this, {definition, view});
        this.strip = svg("svg", {class: "strip", viewBox: "0 0 1000 24", preserveAspectRatio: "none", "aria-hidden": "true"});
        this.values = element("td", {class: "values"});
        this.drive = element("span", {class: "drive"});
        this.details = element("td", {colspan: 3});
        this.more = element("tr", {class: "more-row", hidden: true}, this.details);
        const detailsId = newId();
        this.more.id = detailsId;
        this.button = element("button", {type: "button", class: "expander", "aria-expanded": "false",
            "aria-controls": detailsId, click: () => this.expand(this.more.hidden)}, named(definition.parameter));
        this.row = element("tr", {}, element("th", {scope: "row"}, element("div", {class: "head-line"}, this.button,
            element("span", {class: "definition", title: definition.definition}, definition.definition)), this.drive),
            element("td", {class: "strip-cell"}, this.strip), this.values);
        this.bars = definition.intervals.map((interval, index) => svg("rect", {y: 4, height: 16, rx: 1,
            class: "band tone" + index % 2}, svg("title")));
    }

    expand(open) {
        this.more.hidden = !open;
        this.button.setAttribute("aria-expanded", String(open));
        this.showDetails();
    }

    // Takes the drive of the chosen physical mode; null for the one that fits best. False if there is none.
    choose(physicalMode) {
        this.chosen = physicalMode === null ? this.definition.drives[0]
            : this.definition.drives.find(drive => drive.physical_mode?.id === physicalMode);
        if (this.chosen === undefined)
            return false;
        const {mode, rotor, base_order} = this.chosen;
        const place = [rotor === null ? "" : "orders of " + named(rotor),
            base_order === 0 ? "" : "base order " + rounded(base_order, 9), mode === null ? "" : named(mode)];
        this.drive.textContent = this.drive.title = shown(place.filter(part => part !== "").join(" \u00b7 "));
        return true;
    }

    drawGrid(axis) {
        const lines = axis.ticks(TickCount).map(tick => svg("line", {x1: axis.place(tick), x2: axis.place(tick), y1: 0, y2: 24,
            class: "grid", "vector-effect": "non-scaling-stroke"}));
        this.strip.replaceChildren(...lines, ...this.bars);
    }

    move(axis, rpm, lineDistance) {
        const speed = rotorSpeed(this.chosen, rpm);
        this.bands = this.definition.intervals.map(interval => bandOf(interval, this.chosen, speed, lineDistance));
        this.bands.forEach((band, index) => {
            const bar = this.bars[index];
            if (band.result !== 0 || band.hz === null || !band.hz.every(Number.isFinite) || band.hz[1] <= 0) {
                bar.setAttribute("width", 0);
                return;
            }
            const [from, to] = band.hz.map(bound => Math.min(Math.max(axis.place(Math.max(bound, axis.low)), 0), 1000));
            const width = Math.max(to - from, 3.5);
            bar.setAttribute("x", (from + to - width) / 2);
            bar.setAttribute("width", band.hz[0] > axis.high ? 0 : width);
            bar.firstChild.textContent = this.bandText(band);
        });
        replaceChildren(this.values, this.summary());
        if (!this.more.hidden)
            this.showDetails();
    }

    bandText(band) {
        if (band.result !== 0)
            return this.view.data.results[band.result];
        if (band.hz === null)
            return rounded(band.lower) + " to " + rounded(band.upper) + " of the spectrum";
        const [from, to] = band.hz.map(value => rounded(value));
        return from === to ? from + " Hz" : from + " to " + to + " Hz";
    }

    summary() {
        if (this.definition.verdict !== "good")
            return element("span", {class: "fault"}, "the definition is " + this.definition.verdict +
                (this.definition.fault === null ? "" : ": " + this.definition.fault.reason));
        const first = this.bands[0];
        const left = this.bands.length - 1;
        return [element("span", {class: first.result === 0 ? "band-text" : "fault"}, this.bandText(first)),
            left === 0 ? null : element("span", {class: "left"}, ", " + left + " more")];
    }

    showDetails() {
        const rows = this.bands.map((band, index) => {
            const {lower, upper} = this.definition.intervals[index];
            return element("tr", {}, [lower.text, upper.text, band.unit ?? "", band.result === 0 ? rounded(band.lower, 7) : "",
                band.result === 0 ? rounded(band.upper, 7) : "", this.bandText(band)].map(text => element("td", {}, text)));
        });
        const {mode, rotor, gear, base_order, ratio} = this.chosen;
        const turns = ratio.numerator === null ? rounded(ratio.value, 9) : ratio.numerator + "/" + ratio.denominator;
        const facts = [["Definition", this.definition.definition], ["Mode", named(mode) || "none"],
            ["Rotor", named(rotor) || "none"], ["Gear", named(gear) || "none"],
            ["Base order", base_order === 0 ? "none" : rounded(base_order, 9)],
            ["Ratio", ratio.value === 0 ? "none" : turns + " turns of the gear for one of the rotor"]];
        replaceChildren(this.details, element("dl", {class: "facts"}, facts.map(([label, text]) =>
            element("div", {}, element("dt", {}, label), element("dd", {}, text)))), element("table", {class: "plain"}, element("thead", {}, element("tr", {},
            ["From", "To", "Unit", "Lower", "Upper", "In Hz"].map(text => element("th", {scope: "col"}, text)))),
            element("tbody", {}, rows)));
    }
}

class BandsView {
    constructor(data, speed) {
        Object.assign(this, {data, speed});
        this.rows = data.orders.map(definition => new BandRow(definition, this));
        this.found = this.rows;
        this.words = [];
        this.limit = 60;
        this.physicalMode = null;
        this.isLogarithmic = true;
        this.lineDistance = 0;
        this.ticks = element("div", {class: "ticks", "aria-hidden": "true"});
        this.body = element("tbody");
        this.count = element("output", {class: "count", "aria-live": "polite"});
        this.more = element("button", {type: "button", class: "more control", click: () => {
            this.limit += 60;
            this.arrange();
        }}, "Show more");
        this.table = element("table", {class: "bands"},
            element("caption", {class: "unseen"}, "Order definitions with their bands in Hz at the speed of the page"),
            element("thead", {}, element("tr", {}, element("th", {scope: "col"}, "Parameter"),
                element("th", {scope: "col", class: "strip-cell"}, element("span", {class: "unseen"}, "Bands over Hz"), this.ticks),
                element("th", {scope: "col", class: "values"}, "Hz"))), this.body);
        this.arrange();
        speed.listen(() => this.move());
        printables.push({prepare: () => {
            this.limitOnScreen = this.limit;
            this.limit = Math.max(this.limit, RowsOnPaper);
            this.arrange();
        }, restore: () => {
            this.limit = this.limitOnScreen;
            this.arrange();
        }});
    }

    // The axis stays where it is while the speed changes: the bands move.
    makeAxis() {
        let low = Infinity, high = 0;
        for (const row of this.placed)
            for (const interval of row.definition.intervals)
                for (const rpm of [this.speed.top / 10, this.speed.top]) {
                    const band = bandOf(interval, row.chosen, rotorSpeed(row.chosen, rpm), this.lineDistance);
                    if (band.result === 0 && band.hz !== null && band.hz.every(Number.isFinite) && band.hz[1] > 0) {
                        low = Math.min(low, band.hz[0] > 0 ? band.hz[0] : band.hz[1] / 10);
                        high = Math.max(high, band.hz[1]);
                    }
                }
        if (high === 0)
            [low, high] = [1, 1000];
        const axis = this.isLogarithmic ? new Axis(low, high, true, 6, 994) : new Axis(0, high, false, 6, 994);
        if (!this.isLogarithmic)
            axis.low = 0;
        return axis;
    }

    arrange() {
        const matching = this.rows.filter(row => row.choose(this.physicalMode));
        this.found = matching.filter(({definition}) => hasAll((named(definition.parameter) + "\n" + definition.definition +
            "\n" + named(definition.instrument)).toLowerCase(), this.words));
        this.placed = this.found.slice(0, this.limit);
        this.body.replaceChildren(...this.placed.flatMap(row => [row.row, row.more]));
        const elsewhere = this.rows.length - matching.length;
        this.count.textContent = grouped(this.found.length) + " of " + counted(this.rows.length, "definition") +
            (elsewhere === 0 ? "" : ", " + grouped(elsewhere) + " not measured here");
        this.more.hidden = this.found.length <= this.limit;
        this.top = 0;
        this.move();
    }

    move() {
        if (this.top !== this.speed.top) {
            this.top = this.speed.top;
            this.axis = this.makeAxis();
            this.ticks.replaceChildren(...this.axis.ticks(TickCount).map(tick => {
                const mark = element("span", {}, tickText(tick, 1000));
                mark.style.left = this.axis.place(tick) / 10 + "%";
                return mark;
            }));
            this.placed.forEach(row => row.drawGrid(this.axis));
        }
        for (const row of this.placed)
            row.move(this.axis, this.speed.rpm, this.lineDistance);
    }
}

function ordersSection(data, speed) {
    if (data.orders.length === 0)
        return [element("p", {class: "none"}, "There are no order definitions.")];
    const view = new BandsView(data, speed);
    const references = new Set(data.rotors.map(mode => named(mode.reference)).filter(text => text !== ""));
    const label = "Speed of " + (references.size === 1 ? [...references][0] : "the reference rotor");
    const modes = data.rotors.map(mode => [mode.physical_mode.id, named(mode.physical_mode)]);
    const {field: modeField} = selectField("Physical mode", [["", "where each is measured first"], ...modes], value => {
        view.physicalMode = value === "" ? null : Number(value);
        view.arrange();
    });
    const {field: axisField} = selectField("Axis", [["log", "logarithmic"], ["linear", "linear"]], value => {
        view.isLogarithmic = value === "log";
        view.arrange();
    });
    const id = newId();
    const distance = element("input", {type: "number", id, min: 0, step: "any", value: 0, input: () => {
        view.lineDistance = distance.valueAsNumber > 0 ? distance.valueAsNumber : 0;
        view.arrange();
    }});
    const search = searchField("Search order definitions", words => {
        view.words = words;
        view.arrange();
    });
    return [element("p", {class: "lead"}, "The bands that spectral values and tracks take from a spectrum. Drag the speed " +
        "and they move; a name opens the list of its intervals. Lines of a spectrum count once their distance is set."),
        element("div", {class: "toolbar control"}, speed.control(label), modeField, axisField,
            element("span", {class: "field"}, element("label", {for: id,
                title: "in Hz, or in orders for an order spectrum"}, "Line distance"), distance)),
        element("div", {class: "toolbar"}, search.field, view.count),
        element("div", {class: "bands-frame"}, view.table), view.more];
}
