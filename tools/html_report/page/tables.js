// All tables, each to be opened, and one search over all of them.

// "mode, rotor | ratio": the columns of the key, then those of the row.
function columnList(table) {
    const list = columns => columns.map(([name]) => name).join(", ");
    return list(table.key) + " | " + list(table.row);
}

class TableEntry {
    constructor(table, names) {
        this.table = table;
        this.names = names;
        this.data = null;
        this.words = [];
        this.hits = element("span", {class: "hits"});
        this.place = element("div");
        this.element = element("details", {class: "table", id: "table-" + table.tag.replace(/[<>]/g, ""),
            toggle: () => this.open()}, element("summary", {}, element("code", {}, table.tag),
            this.hits, element("span", {class: "about"}, columnList(table)), element("span", {class: "rows"}, counted(table.rows.length, "row"))), this.place);
        printables.push({prepare: () => {
            this.wasOpen = this.element.open;
            this.element.open = true;
            const made = this.data !== null;
            this.make();
            if (!made) // it was not among those that are made ready
                this.data.prepare();
        }, restore: () => {
            this.element.open = this.wasOpen;
        }});
    }

    make() {
        if (this.data !== null)
            return this.data;
        const {table, names} = this;
        const columns = [...table.key.map(column => [...column, "key"]), ...table.row.map(column => [...column, "row"])];
        this.data = new DataTable({label: table.tag, rows: table.rows, columns: columns.map(([name, type, group]) => (
            {name, type, group, hint: group + ": " + name + ", " + type, names: names.ofColumn(table.tag, name)}))});
        this.place.append(this.data.element);
        return this.data;
    }

    open() {
        if (this.element.open)
            this.make().search.set(this.words.join(" "));
    }

    // Shows how many rows have all words; false if none.
    find(words) {
        this.words = words;
        const hits = words.length === 0 ? this.table.rows.length
            : hasAll(this.table.tag.toLowerCase(), words) ? this.table.rows.length : this.make().matches(words);
        if (hasAll(this.table.tag.toLowerCase(), words))
            this.words = [];
        this.hits.textContent = words.length === 0 || hits === 0 ? "" : counted(hits, "hit");
        this.element.hidden = hits === 0;
        if (this.data !== null)
            this.data.search.set(this.words.join(" "));
        return hits;
    }
}

function tablesSection(data, names) {
    const entries = data.tables.filter(table => table.rows.length > 0).map(table => new TableEntry(table, names));
    const empty = data.tables.filter(table => table.rows.length === 0).map(table => table.tag);
    const count = element("output", {class: "count", "aria-live": "polite"});
    const search = searchField("Search in all tables", words => {
        let tables = 0, rows = 0;
        for (const entry of entries) {
            const hits = entry.find(words);
            tables += hits > 0 ? 1 : 0;
            rows += hits;
        }
        count.textContent = (words.length === 0 ? "" : grouped(rows) + " hits in ") + counted(tables, "table");
    });
    count.textContent = counted(entries.length, "table");
    const id = newId();
    const box = element("input", {type: "checkbox", id, change: () => document.body.classList.toggle("no-names", !box.checked)});
    box.checked = true;
    return [element("div", {class: "toolbar"}, search.field, count,
        element("span", {class: "field control"}, box, element("label", {for: id}, "Names beside ids"))),
        element("div", {class: "tables"}, entries.map(entry => entry.element)),
        empty.length === 0 ? null : element("p", {class: "none"}, "Without rows: " + empty.join(", "))];
}
