// Axes with round ticks, linear or logarithmic.

class Axis {
    // The range becomes somewhat wider; a range of nothing gets a width.
    constructor(low, high, isLogarithmic, from, to) {
        Object.assign(this, {isLogarithmic, from, to});
        if (isLogarithmic) {
            [this.low, this.high] = low === high ? [low / 2, high * 2] : [low, high];
        } else {
            const width = high - low || Math.abs(high) || 1;
            [this.low, this.high] = [low - width * 0.04, high + width * 0.04];
        }
    }

    // Logarithmic where the values are above 0 and of several powers of ten.
    static of(values, from, to, decades = 2) {
        let low = Infinity, high = -Infinity;
        for (const value of values) {
            if (!Number.isFinite(value))
                continue;
            low = Math.min(low, value);
            high = Math.max(high, value);
        }
        if (low > high)
            [low, high] = [0, 1];
        return new Axis(low, high, low > 0 && high / low >= 10 ** decades, from, to);
    }

    place(value) {
        const scaled = this.isLogarithmic ? Math.log(value / this.low) / Math.log(this.high / this.low)
            : (value - this.low) / (this.high - this.low);
        return this.from + scaled * (this.to - this.from);
    }

    // About that many values, evenly spread.
    ticks(count) {
        return this.isLogarithmic ? this.logarithmicTicks(count) : this.linearTicks(count);
    }

    linearTicks(count) {
        const rough = (this.high - this.low) / count;
        const power = 10 ** Math.floor(Math.log10(rough));
        const step = power * ([1, 2, 5].find(factor => factor * power >= rough) ?? 10);
        const ticks = [];
        for (let tick = Math.ceil(this.low / step); tick * step <= this.high && ticks.length < 100; ++tick)
            ticks.push(Number((tick * step).toPrecision(12)));
        return ticks;
    }

    logarithmicTicks(count) {
        const decades = Math.log10(this.high / this.low);
        const factors = decades * 3 <= count ? [1, 2, 5] : [1];
        const every = Math.max(1, Math.ceil(decades / count));
        const ticks = [];
        for (let power = Math.floor(Math.log10(this.low)); power <= Math.log10(this.high); ++power)
            if (power % every === 0)
                for (const factor of factors) {
                    const tick = Number((factor * 10 ** power).toPrecision(12));
                    if (tick >= this.low && tick <= this.high)
                        ticks.push(tick);
                }
        return ticks;
    }
}

// Short enough for a tick; with "k" for a thousand from that size on.
function tickText(value, thousands = 10000) {
    const size = Math.abs(value);
    if (size >= 1e6 || (size > 0 && size < 1e-3))
        return value.toExponential().replace("e+", "e");
    return size >= thousands ? rounded(value / 1000) + "k" : rounded(value);
}

const Plot = {width: 320, height: 190, left: 44, right: 10, top: 10, bottom: 24};

// An empty plot with axes for the values of both directions: {element, x, y}, to which curves are added.
function plot(xs, ys, label, ticksOfX = null) {
    const x = Axis.of(xs, Plot.left, Plot.width - Plot.right);
    const y = Axis.of(ys, Plot.height - Plot.bottom, Plot.top, 3);
    const right = Plot.width - Plot.right, bottom = Plot.height - Plot.bottom;
    const horizontal = y.ticks(5).map(tick => [
        svg("line", {x1: Plot.left, x2: right, y1: y.place(tick), y2: y.place(tick), class: "grid"}),
        svg("text", {x: Plot.left - 6, y: y.place(tick) + 3.5, "text-anchor": "end", class: "tick"}, tickText(tick))]);
    const vertical = (ticksOfX ?? x.ticks(6).map(tick => [tick, tickText(tick)])).map(([tick, text]) => [
        svg("line", {x1: x.place(tick), x2: x.place(tick), y1: Plot.top, y2: bottom, class: "grid"}),
        svg("text", {x: x.place(tick), y: bottom + 15, "text-anchor": "middle", class: "tick"}, text)]);
    return {x, y, element: svg("svg", {class: "plot", viewBox: "0 0 " + Plot.width + " " + Plot.height, role: "img",
        "aria-label": label}, horizontal, vertical,
        svg("path", {class: "axes", d: "M" + Plot.left + " " + Plot.top + "V" + bottom + "H" + right}))};
}

// A line through points; what is not finite is left out.
function linePath(points, x, y) {
    const places = points.map(([px, py]) => [x.place(px), y.place(py)]).filter(place => place.every(Number.isFinite));
    return places.length === 0 ? "" : "M" + places.map(place => place.map(value => Number(value.toFixed(2))).join(" ")).join("L");
}
