// What was loaded, at a glance.

function tile(label, value, note = "", kind = "") {
    return element("div", {class: "tile " + kind}, element("dt", {}, label), element("dd", {}, value,
        note === "" ? null : element("span", {class: "note"}, note)));
}

// The name under which the parameters are known.
function titleOf(data) {
    return data.texts.alias_type || data.texts.base_type || data.sources.map(source => source.file).join(", ");
}

function overviewSection(data) {
    const {texts, totals, version} = data;
    const findings = findingCounts(data);
    const tiles = element("dl", {class: "tiles"},
        tile("Version", version.major + "." + version.minor, "accepted"),
        tile("Tables with rows", grouped(totals.tables), "of " + totals.all_tables),
        tile("Rows", grouped(totals.rows)),
        tile("Lines", grouped(totals.lines), totals.bytes === null ? "" : grouped(totals.bytes) + " bytes"),
        tile("Findings", findings.text, findings.note, findings.kind));
    const files = element("table", {class: "plain"}, element("caption", {}, "Files, in the order of merging"),
        element("thead", {}, element("tr", {}, ["File", "Bytes", "Lines", "Sections"].map((text, index) =>
            element("th", {scope: "col", class: index > 0 ? "number" : null}, text)))),
        element("tbody", {}, data.sources.map(source => element("tr", {}, element("th", {scope: "row"}, source.file),
            [source.bytes, source.lines, source.sections].map(count => element("td", {class: "number"},
                count === null ? "" : grouped(count)))))));
    const named = element("table", {class: "plain"}, element("caption", {}, "Named texts"), element("tbody", {},
        [["Base type", texts.base_type], ["Alias type", texts.alias_type], ["Learn file", texts.learn_file],
            ["Calibration file", texts.calib_file]].map(([label, text]) => element("tr", {},
            element("th", {scope: "row"}, label), element("td", {}, text === "" ? element("span", {class: "none"}, "none") : text)))));
    return [data.result === "complete" ? null : element("p", {class: "alert"},
        "The load is incomplete: what is derived from the tables is missing."),
        tiles, element("div", {class: "columns"}, files, named)];
}
