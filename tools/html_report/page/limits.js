// Limits as plots: the two values of each row over the keys of a parameter. What the values are for is the host's
// business, so they go by the names of their columns.

const LimitTables = [["<TLimSValue>", "value_2", "value_3"], ["<TLimArea>", "value_2", "value_3"],
    ["<TRelativeLimit>", "value_1", "value_2"]];

function limitItems(data, names) {
    const items = [];
    for (const [tag, first, second] of LimitTables) {
        const table = names.tables.get(tag);
        const column = name => table.key.concat(table.row).findIndex(([other]) => other === name);
        const [parameter, low, high] = [column("parameter"), column(first), column(second)];
        const found = new Map();
        for (const row of table.rows) {
            if (!found.has(row[parameter]))
                found.set(row[parameter], {tag, columns: [first, second], id: row[parameter],
                    title: names.text("<TInstrumentParam>", row[parameter]), rows: []});
            found.get(row[parameter]).rows.push({mode: row[0], key: row.slice(0, 6), values: [row[low], row[high]]});
        }
        items.push(...[...found.values()].sort((a, b) => a.id - b.id));
    }
    return items;
}

// Where the mode of the rows changes, as ticks; every so many, so that they have room.
function modeTicks(rows, names) {
    const changes = rows.map((row, index) => [index, row.mode]).filter(([index, mode]) => index === 0 || rows[index - 1].mode !== mode);
    const every = Math.ceil(changes.length / 7);
    return changes.filter((change, index) => index % every === 0)
        .map(([index, mode]) => [index, mode === -1 ? "any" : String(mode)]);
}

function rangeText(values) {
    const finite = values.filter(Number.isFinite);
    if (finite.length === 0)
        return "none that is finite";
    const low = finite.reduce((a, b) => Math.min(a, b)), high = finite.reduce((a, b) => Math.max(a, b));
    return low === high ? rounded(low) : rounded(low) + " to " + rounded(high);
}

// Steps: each row is as wide as any other.
function stepPath(rows, which, x, y) {
    const points = [];
    rows.forEach((row, index) => {
        if (Number.isFinite(row.values[which]))
            points.push([index - 0.5, row.values[which]], [index + 0.5, row.values[which]]);
    });
    return points;
}

function limitCard(item, names) {
    const {rows} = item;
    const values = [0, 1].map(which => rows.map(row => row.values[which]));
    const {x, y, element: drawing} = plot([-0.5, rows.length - 0.5], values.flat(),
        "Values of " + item.tag + " for " + item.title, modeTicks(rows, names));
    const steps = [0, 1].map(which => stepPath(rows, which, x, y));
    const area = linePath([...steps[1], ...[...steps[0]].reverse()], x, y);
    append(drawing, [svg("path", {class: "between", d: area === "" ? "" : area + "Z"}),
        [0, 1].map(which => steps[which].length === 0 ? null
            : svg("path", {class: "curve limit" + which, d: linePath(steps[which], x, y)}))]);
    return element("article", {class: "card"}, element("h3", {}, item.title, " ", element("code", {}, item.tag)), drawing,
        element("ul", {class: "notes"}, [0, 1].map(which => element("li", {class: "key" + which},
            item.columns[which] + " " + rangeText(values[which]))),
            element("li", {}, counted(rows.length, "key") + ", over the modes")));
}

function limitsSection(data, names) {
    const items = limitItems(data, names);
    if (items.length === 0)
        return [element("p", {class: "none"}, "There are no limits.")];
    const list = new ItemList({label: "limits", items, make: item => limitCard(item, names), page: 12,
        text: item => item.title + "\n" + item.tag});
    return [element("p", {class: "lead"}, "The two values of each row, for one parameter after the other, over its keys in " +
        "the order of modes. A key of -1 stands for any."), list.element];
}
