// A table of any number of rows that can be searched and sorted. Only the rows in sight are in the page.
//
//     const table = new DataTable({label: "<TMode>", columns: [{name: "mode", type: "int"}], rows: [[1], [2]]});
//     section.append(table.element);
//
// A column is {name, type, names, group, hint, wide}: the type is that of the data ("int", "text", ...); names is a
// map from id to name, shown beside the id; the first column with another group than the one before gets a line.

const RowHeight = 28; // that of the style, in pixels
const TallestBody = 8000000; // browsers have a limit; beyond it the scroll bar stands for the rows in proportion
const RowsOnPaper = 200;
const collator = new Intl.Collator("en", {numeric: true, sensitivity: "base"});

function compareNumbers(left, right) {
    const a = numberOf(left), b = numberOf(right);
    if (a < b)
        return -1;
    if (a > b)
        return 1;
    return Number(Number.isNaN(a)) - Number(Number.isNaN(b)); // behind all others
}

// A name that may be broken behind its underscores.
function breakable(name) {
    return name.split(/(?<=_)/).flatMap((part, index) => index === 0 ? [part] : [element("wbr"), part]);
}

class DataTable {
    constructor({label, columns, rows, language = null, searchable = true}) {
        this.columns = columns;
        this.rows = rows;
        this.texts = new Array(rows.length);
        this.words = [];
        this.sorting = {column: -1, direction: 1};
        this.order = rows.map((row, index) => index);
        this.drawn = [-1, -1];
        this.onPaper = false;

        this.count = element("output", {class: "count", "aria-live": "polite"});
        this.search = searchField("Search in " + label, words => this.filter(words));
        this.spacers = [0, 1].map(() => element("tr", {class: "spacer", "aria-hidden": "true"},
            element("td", {colspan: columns.length})));
        this.body = element("tbody", {}, this.spacers);
        this.heads = columns.map((column, index) => this.makeHead(column, index));
        this.table = element("table", {class: columns.length > 10 ? "data many" : "data", "aria-label": label, lang: language},
            element("colgroup", {}, this.makeWidths()),
            element("thead", {}, element("tr", {"aria-rowindex": 1}, this.heads)), this.body);
        this.scroller = element("div", {class: "scroller", tabindex: 0, role: "region", "aria-label": label + ", rows",
            scroll: () => requestAnimationFrame(() => this.draw())}, this.table);
        this.note = element("p", {class: "paper-note"});
        this.element = element("div", {class: "data-table"},
            element("div", {class: "toolbar"}, searchable ? this.search.field : null, this.count),
            this.scroller, this.note);
        new ResizeObserver(() => this.draw()).observe(this.scroller);
        printables.push(this);
        this.showCount();
        this.draw();
    }

    makeHead(column, index) {
        const button = element("button", {type: "button", title: column.hint ?? column.type,
            click: () => this.sortBy(index)}, element("span", {}, breakable(column.name)), element("span", {class: "mark", "aria-hidden": "true"}));
        return element("th", {scope: "col", "aria-sort": "none", class: this.classOf(index)}, button);
    }

    classOf(index) {
        const column = this.columns[index];
        const begins = index > 0 && column.group !== this.columns[index - 1].group;
        const number = column.type !== "text" && !column.names;
        return [begins ? "begins" : "", number ? "number" : ""].filter(name => name !== "").join(" ") || null;
    }

    // Wide enough for the column's name and the widest of some rows.
    makeWidths() {
        const step = Math.max(1, Math.floor(this.rows.length / 400));
        return this.columns.map((column, index) => {
            let width = column.name.length + 2;
            for (let row = 0; row < this.rows.length; row += step)
                width = Math.max(width, this.cellText(index, this.rows[row][index]).length);
            const col = element("col");
            col.style.width = Math.min(Math.max(width, 4), column.wide ? 96 : 44) * 0.86 + 3 + "ch";
            return col;
        });
    }

    cellText(index, value) {
        const name = this.columns[index].names?.get(value);
        return name ? value + " " + name : String(value);
    }

    // All that is searched in a row, in lower case.
    textOf(index) {
        this.texts[index] ??= this.rows[index].map((value, column) => this.cellText(column, value)).join("\n")
            .toLowerCase();
        return this.texts[index];
    }

    // How many rows have all words.
    matches(words) {
        let count = 0;
        for (let row = 0; row < this.rows.length; ++row)
            count += hasAll(this.textOf(row), words) ? 1 : 0;
        return count;
    }

    filter(words) {
        this.words = words;
        this.arrange();
    }

    sortBy(column) {
        const same = this.sorting.column === column;
        if (!same)
            this.sorting = {column, direction: 1};
        else if (this.sorting.direction === 1)
            this.sorting.direction = -1;
        else
            this.sorting = {column: -1, direction: 1};
        this.heads.forEach((head, index) => head.setAttribute("aria-sort", index !== this.sorting.column ? "none"
            : this.sorting.direction === 1 ? "ascending" : "descending"));
        this.arrange();
    }

    arrange() {
        const order = [];
        for (let row = 0; row < this.rows.length; ++row)
            if (hasAll(this.words.length === 0 ? "" : this.textOf(row), this.words))
                order.push(row);
        const {column, direction} = this.sorting;
        if (column !== -1) {
            const compare = this.columns[column].type === "text" ? collator.compare : compareNumbers;
            const rows = this.rows;
            order.sort((a, b) => direction * compare(rows[a][column], rows[b][column]) || a - b);
        }
        this.order = order;
        this.scroller.scrollTop = 0;
        this.showCount();
        this.redraw();
    }

    showCount() {
        const all = counted(this.rows.length, "row");
        this.count.textContent = this.words.length === 0 ? all : grouped(this.order.length) + " of " + all;
        this.table.setAttribute("aria-rowcount", this.order.length + 1);
    }

    redraw() {
        this.drawn = [-1, -1];
        this.draw();
    }

    // Puts the rows in sight, and some around them, into the page.
    draw() {
        if (this.onPaper)
            return;
        const all = this.order.length * RowHeight;
        const height = Math.min(all, TallestBody);
        const view = this.scroller.clientHeight || 600;
        const top = Math.min(this.scroller.scrollTop, Math.max(0, height - view));
        const pixels = height === all ? top : top / (height - view) * (all - view);
        const first = Math.max(0, Math.floor(pixels / RowHeight) - 8);
        const last = Math.min(this.order.length, Math.ceil((pixels + view) / RowHeight) + 8);
        if (first === this.drawn[0] && last === this.drawn[1] && height === all)
            return;
        this.drawn = [first, last];
        const above = Math.max(0, top - (pixels - first * RowHeight));
        this.setRows(first, last, above, Math.max(0, height - above - (last - first) * RowHeight));
    }

    setRows(first, last, above, below) {
        const rows = [];
        for (let place = first; place < last; ++place)
            rows.push(this.makeRow(place));
        this.spacers[0].firstChild.style.height = above + "px";
        this.spacers[1].firstChild.style.height = below + "px";
        this.spacers[0].hidden = above === 0;
        this.spacers[1].hidden = below === 0;
        this.body.replaceChildren(this.spacers[0], ...rows, this.spacers[1]);
    }

    makeRow(place) {
        const row = this.rows[this.order[place]];
        return element("tr", {"aria-rowindex": place + 2, class: place % 2 === 1 ? "odd" : null},
            row.map((value, index) => this.makeCell(value, index)));
    }

    makeCell(value, index) {
        const name = this.columns[index].names?.get(value);
        const text = this.cellText(index, value);
        return element("td", {class: this.classOf(index), title: text.length > 24 ? text : null},
            name ? [element("span", {class: "id"}, value), " ", element("span", {class: "name"}, name)] : value);
    }

    prepare() {
        this.onPaper = true;
        const last = Math.min(this.order.length, RowsOnPaper);
        this.setRows(0, last, 0, 0);
        const left = this.order.length - last;
        this.note.textContent = left === 0 ? "" : "and " + counted(left, "more row") + ", which are not printed";
    }

    restore() {
        this.onPaper = false;
        this.note.textContent = "";
        this.redraw();
    }
}
