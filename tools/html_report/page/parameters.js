// The instrument parameters with their settings.

function parameterCard(entry, language) {
    const {parameter, instrument, trigger, yields, settings} = entry;
    const about = [instrument === null ? "" : named(instrument), "yields " + yields,
        trigger === null ? "" : "trigger " + named(trigger)];
    return element("article", {class: "card slim"}, element("h3", {}, named(parameter)),
        element("p", {class: "about"}, about.filter(text => text !== "").join(" \u00b7 ")),
        settings === null ? element("p", {class: "none"}, "The settings cannot be shown.")
            : settings.length === 0 ? element("p", {class: "none"}, "No settings that are shown.")
            : element("ul", {class: "settings", lang: language}, settings.map(line => element("li", {}, line))));
}

function parametersSection(data) {
    if (data.parameters.length === 0)
        return [element("p", {class: "none"}, "There are no instrument parameters.")];
    const list = new ItemList({label: "parameters", items: data.parameters, page: 24, kind: "cards many",
        make: entry => parameterCard(entry, data.language),
        text: entry => [named(entry.parameter), named(entry.instrument), named(entry.trigger), entry.yields,
            ...entry.settings ?? []].join("\n")});
    return [list.element];
}
