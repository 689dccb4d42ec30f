// What is wrong or suspicious in the files.

const Severities = ["error", "warning", "note"];

function findingCounts(data) {
    const counts = Severities.map(severity => data.findings.filter(finding => finding.severity === severity).length);
    const worst = counts.findIndex(count => count > 0);
    return {text: worst === -1 ? "none" : grouped(data.findings.length), kind: ["bad", "warn", ""][worst] ?? "good",
        note: Severities.map((severity, index) => counts[index] === 0 ? "" : counted(counts[index], severity))
            .filter(text => text !== "").join(", ")};
}

function placeText({file, line, column}) {
    return file + (line === null ? "" : ":" + line) + (column === null ? "" : ":" + column);
}

// The line with the place in it marked.
function sourceLine({source, column, length}) {
    const from = Math.max(column - 1, 0), to = from + Math.max(length, 1);
    const part = (begin, end) => source.slice(begin, end).replaceAll("\t", "    ");
    return element("pre", {class: "source", tabindex: 0}, part(0, from), element("mark", {}, part(from, to) || " "), part(to));
}

function findingCard(finding) {
    return element("article", {class: "finding " + finding.severity},
        element("p", {class: "head"}, element("span", {class: "severity"}, finding.severity),
            element("code", {title: finding.title}, finding.code), element("span", {class: "place"}, placeText(finding))),
        element("p", {class: "message"}, finding.message),
        finding.source === null ? null : sourceLine(finding),
        finding.hint === null ? null : element("p", {class: "hint"}, finding.hint),
        finding.related.map(related => element("p", {class: "related"},
            placeText({...related, column: null}) + ": " + related.text)));
}

function findingsSection(data) {
    if (data.findings.length === 0)
        return [element("p", {class: "none"}, "Nothing is wrong or suspicious.")];
    const list = new ItemList({label: "findings", items: data.findings, make: findingCard, page: 50, kind: "findings",
        text: finding => [finding.severity, finding.code, finding.title, placeText(finding), finding.message,
            finding.source].join("\n")});
    return [list.element];
}
