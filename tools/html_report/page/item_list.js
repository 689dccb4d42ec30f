// A list of items of any number, such as plots, of which the first ones are in the page and more on request.
//
//     new ItemList({label: "polygons", items, text: item => "searched in", make: item => element, page: 24})

const ItemsOnPaper = 120;

class ItemList {
    constructor({label, items, text, make, page, kind = "cards"}) {
        Object.assign(this, {label, items, text, make, page});
        this.found = items;
        this.shown = page;
        this.words = [];
        this.count = element("output", {class: "count", "aria-live": "polite"});
        this.search = searchField("Search " + label, words => {
            this.words = words;
            this.found = items.filter(item => hasAll(text(item).toLowerCase(), words));
            this.shown = page;
            this.draw();
        });
        this.list = element("div", {class: kind});
        this.more = element("button", {type: "button", class: "more control", click: () => {
            const first = this.shown;
            this.shown += page;
            this.draw();
            const next = this.list.children[first];
            next.setAttribute("tabindex", -1);
            next.focus({preventScroll: true});
        }});
        this.note = element("p", {class: "paper-note"});
        this.element = element("div", {}, element("div", {class: "toolbar"}, this.search.field, this.count),
            this.list, this.more, this.note);
        printables.push(this);
        this.draw();
    }

    draw() {
        const all = grouped(this.items.length) + " " + this.label;
        this.count.textContent = this.words.length === 0 ? all : grouped(this.found.length) + " of " + all;
        this.list.replaceChildren(...this.found.slice(0, this.shown).map(this.make));
        const left = this.found.length - this.shown;
        this.more.hidden = left <= 0;
        this.more.textContent = "Show " + grouped(Math.min(left, this.page)) + " of " + grouped(left) + " more";
    }

    prepare() {
        this.shownOnScreen = this.shown;
        this.shown = Math.max(this.shown, ItemsOnPaper);
        this.draw();
        const left = this.found.length - this.shown;
        this.note.textContent = left <= 0 ? "" : "and " + grouped(left) + " more, which are not printed";
    }

    restore() {
        this.shown = this.shownOnScreen;
        this.note.textContent = "";
        this.draw();
    }
}
