// The keys that are measured, with the text that operators read.

function keysSection(data, names) {
    const {words, rows} = data.keys;
    if (rows.length === 0)
        return [element("p", {class: "none"}, "There are no keys.")];
    const tables = ["<TMode>", "<TInstrument>", "<TChannel>", "<TLocation>", "<TInstrumentParam>", "<TApplicationSignal>"];
    const columns = words.map((word, index) => ({name: word, type: "int", names: names.ofTable(tables[index])}));
    const table = new DataTable({label: "keys", language: data.language,
        columns: [{name: "Text", type: "text", hint: "as operators read it", wide: true, group: "text"},
            ...columns.map(column => ({...column, group: "key"}))],
        rows: rows.map(row => [row[6], ...row.slice(0, 6)])});
    return [element("p", {class: "lead"}, "Where results come from, as operators read it, with its six elements."), table.element];
}
