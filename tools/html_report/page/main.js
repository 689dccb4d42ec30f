// Puts the page together.

const data = JSON.parse(document.getElementById("data").textContent);
const names = new Names(data);
const speed = new Speed(data.rpm);

const sections = [
    ["overview", "Overview", () => overviewSection(data)],
    ["findings", "Findings", () => findingsSection(data)],
    ["drive-train", "Drive train", () => driveTrainSection(data, speed)],
    ["orders", "Orders", () => ordersSection(data, speed)],
    ["polygons", "Polygons", () => polygonsSection(data, names)],
    ["limits", "Limits", () => limitsSection(data, names)],
    ["keys", "Keys", () => keysSection(data, names)],
    ["parameters", "Parameters", () => parametersSection(data)],
    ["tables", "Tables", () => tablesSection(data, names)],
];

function buildPage() {
    const title = titleOf(data);
    document.title = shown(title) + " \u2013 parameter report";
    const content = document.getElementById("content");
    const contents = document.getElementById("contents");
    replaceChildren(content, element("header", {}, element("p", {class: "kind"}, "Parameter report"), element("h1", {}, title),
        element("p", {class: "files"}, data.sources.map(source => source.file).join(" + "))));
    const links = new Map();
    const list = element("ul");
    append(contents, [element("p", {class: "brand"}, data.program), list,
        element("button", {type: "button", class: "control print", click: () => print()}, "Print\u2026")]);
    for (const [id, heading, make] of sections) {
        const headingId = id + "-heading";
        append(content, [element("section", {id, "aria-labelledby": headingId},
            element("h2", {id: headingId}, heading), make())]);
        links.set(id, element("a", {href: "#" + id}, heading));
        list.append(element("li", {}, links.get(id)));
    }
    append(content, [element("footer", {}, "Made by " + data.program + ". This page loads nothing from anywhere.")]);
    watchSections(links);
}

// Marks the link of the section that is read.
function watchSections(links) {
    const inSight = new Set();
    const observer = new IntersectionObserver(entries => {
        for (const entry of entries)
            inSight[entry.isIntersecting ? "add" : "delete"](entry.target.id);
        const current = [...links.keys()].find(id => inSight.has(id));
        for (const [id, link] of links) {
            if (id === current)
                link.setAttribute("aria-current", "true");
            else
                link.removeAttribute("aria-current");
        }
    }, {rootMargin: "-10% 0px -60% 0px"});
    document.querySelectorAll("main > section").forEach(section => observer.observe(section));
}

let isPrepared = false;

// On paper everything is open. What is made meanwhile is made ready by its maker.
addEventListener("beforeprint", () => {
    if (!isPrepared)
        [...printables].forEach(printable => printable.prepare());
    isPrepared = true;
});
addEventListener("afterprint", () => {
    if (isPrepared)
        printables.forEach(printable => printable.restore());
    isPrepared = false;
});

buildPage();
