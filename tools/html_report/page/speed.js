// The speed of the page: turns of the reference rotor in a minute, the same wherever it can be set.

class Speed {
    constructor(rpm) {
        this.rpm = rpm;
        this.top = Math.max(10000, 1000 * Math.ceil(rpm * 1.25 / 1000)); // of the sliders
        this.listeners = [];
    }

    set(rpm, source) {
        if (!(rpm >= 0) || rpm > 1e7)
            return;
        this.rpm = rpm;
        if (rpm > this.top)
            this.top = 1000 * Math.ceil(rpm * 1.25 / 1000);
        for (const listener of this.listeners)
            listener(source);
    }

    // Calls the listener now and whenever the speed has changed.
    listen(listener) {
        this.listeners.push(listener);
        listener(null);
    }

    // A slider with a field for the number. `label` is a text or a node.
    control(label) {
        const id = newId();
        const slider = element("input", {type: "range", id, min: 0, step: 10, class: "slider"});
        const number = element("input", {type: "number", min: 0, step: "any", "aria-label": "Speed in turns in a minute"});
        slider.addEventListener("input", () => this.set(slider.valueAsNumber, slider));
        number.addEventListener("input", () => this.set(number.valueAsNumber, number));
        this.listen(source => {
            slider.max = this.top;
            if (source !== slider)
                slider.value = this.rpm;
            if (source !== number)
                number.value = this.rpm;
            slider.setAttribute("aria-valuetext", rounded(this.rpm) + " turns in a minute");
        });
        return element("span", {class: "field speed control"}, element("label", {for: id}, label), slider, number,
            element("span", {class: "unit"}, "1/min"));
    }
}
