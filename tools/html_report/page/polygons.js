// Polygons as plots. Those of two points that were made for many keys from one row stand together.

// Curve polygons and variable areas judge by parameter, not by key.
const PolygonColumns = [["<TIpCurvePolygon>", "polygon"], ["<TIpVarAreaTrack>", "polygon"],
    ["<TIpVarAreaTrack>", "second_polygon"]];

// What each polygon judges: {text, keys}, with a count of 0 where it does not go by keys.
function judgements(data, names) {
    const found = new Map();
    const add = (polygon, parameter, source, how, keys) => {
        if (!found.has(polygon))
            found.set(polygon, new Map());
        const text = parameter + (how === "" ? "" : ", " + how) + (source === "" ? "" : ", judges " + source);
        found.get(polygon).set(text, (found.get(polygon).get(text) ?? 0) + keys);
    };
    for (const {polygon, parameter, source_parameter, area_interpretation} of data.polygons.judged)
        add(polygon, named(parameter), named(source_parameter), area_interpretation?.name ?? "", 1);
    for (const [tag, column] of PolygonColumns) {
        const {rows, key, row} = names.tables.get(tag);
        const place = name => key.concat(row).findIndex(([other]) => other === name);
        for (const fields of rows)
            if (fields[place(column)] !== -1)
                add(fields[place(column)], names.text("<TInstrumentParam>", fields[0]),
                    names.text("<TInstrumentParam>", fields[place("source_parameter")]), "", 0);
    }
    return found;
}

function polygonItems(data, names) {
    const judges = judgements(data, names);
    const items = new Map();
    for (const polygon of data.polygons.polygons) {
        const texts = judges.get(polygon.number) ?? new Map();
        const same = polygon.two_points ? JSON.stringify([polygon.points, [...texts.keys()]]) : polygon.number;
        if (!items.has(same))
            items.set(same, {polygon, numbers: [], judges: new Map()});
        const item = items.get(same);
        item.numbers.push(polygon.number);
        for (const [text, keys] of texts)
            item.judges.set(text, (item.judges.get(text) ?? 0) + keys);
    }
    return [...items.values()].map(item => ({...item, judges: [...item.judges].map(([text, keys]) =>
        text + (keys === 0 ? "" : " (" + counted(keys, "key") + ")"))}));
}

function polygonTitle({polygon, numbers}) {
    const number = numbers.length === 1 ? String(numbers[0]) : numbers[0] + " to " + numbers[numbers.length - 1];
    return number + " " + (polygon.name ?? (polygon.two_points ? "two points" : ""));
}

function polygonCard(item) {
    const points = item.polygon.points;
    const {x, y, element: drawing} = plot(points.map(point => point[0]), points.map(point => point[1]),
        "Plot of polygon " + polygonTitle(item));
    const dots = points.length > 60 ? [] : points.filter(point => point.every(Number.isFinite)).map(([px, py]) =>
        svg("circle", {cx: x.place(px), cy: y.place(py), r: 2.2, class: "dot"}, svg("title", {}, rounded(px) + ", " + rounded(py))));
    append(drawing, [svg("path", {class: "curve", d: linePath(points, x, y)}), dots]);
    return element("article", {class: "card"}, element("h3", {}, polygonTitle(item)), drawing,
        element("ul", {class: "notes"}, item.judges.length === 0 ? element("li", {class: "none"}, "judges nothing")
            : item.judges.map(text => element("li", {}, text))),
        element("details", {class: "points"}, element("summary", {}, counted(points.length, "point")),
            element("p", {}, points.map(([px, py]) => rounded(px, 7) + ", " + rounded(py, 7)).join(" | "))));
}

function polygonsSection(data, names) {
    const items = polygonItems(data, names);
    if (items.length === 0)
        return [element("p", {class: "none"}, "There are no polygons.")];
    const list = new ItemList({label: "polygons", items, make: polygonCard, page: 12,
        text: item => polygonTitle(item) + "\n" + item.judges.join("\n")});
    return [element("p", {class: "lead"}, "Each with its x and y, and what it judges."), list.element];
}
