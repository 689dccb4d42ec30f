// Elements, texts and numbers.
//
// Texts of the data reach the page as text nodes and attribute values alone, never as markup.

const SvgSpace = "http://www.w3.org/2000/svg";

// Characters that cannot be seen, or that turn the order of others around.
const Hidden = new RegExp("[\\u0000-\\u001f\\u007f-\\u009f\\u200b-\\u200f\\u2028-\\u202e\\u2066-\\u2069\\ufeff]" +
    "|[\\ud800-\\udbff](?![\\udc00-\\udfff])|(?<![\\ud800-\\udbff])[\\udc00-\\udfff]", "g");

// A text of the data with a mark in place of each such character.
function shown(text) {
    return String(text).replace(Hidden, "\ufffd");
}

function fill(node, attributes, children) {
    for (const [name, value] of Object.entries(attributes)) {
        if (value === null || value === undefined || value === false)
            continue;
        if (typeof value === "function")
            node.addEventListener(name, value);
        else
            node.setAttribute(name, value === true ? "" : typeof value === "string" ? shown(value) : value);
    }
    append(node, children);
    return node;
}

function append(node, children) {
    for (const child of children.flat(Infinity)) {
        if (child === null || child === undefined || child === "")
            continue;
        node.append(child instanceof Node ? child : shown(child));
    }
}

// An element with attributes, listeners (attributes that are functions) and children, which are nodes or texts.
function element(name, attributes = {}, ...children) {
    return fill(document.createElement(name), attributes, children);
}

function svg(name, attributes = {}, ...children) {
    return fill(document.createElementNS(SvgSpace, name), attributes, children);
}

function replaceChildren(node, ...children) {
    node.replaceChildren();
    append(node, children);
}

let lastId = 0;

// An id for an element that labels refer to.
function newId() {
    return "e" + ++lastId;
}

// "12 345", with blanks that do not break.
function grouped(number) {
    return String(number).replace(/\B(?=(\d{3})+$)/g, "\u00a0");
}

// "1 row", "12 345 rows"
function counted(number, one, many = one + "s") {
    return grouped(number) + " " + (number === 1 ? one : many);
}

// A number with that many digits that count, without zeros at the end.
function rounded(number, digits = 5) {
    return Number.isFinite(number) ? String(Number(number.toPrecision(digits))) : String(number);
}

// The value that a number of the data stands for. What is not finite, and what a double has no room for, are texts.
function numberOf(value) {
    if (typeof value !== "string")
        return value;
    if (/^-?\d+$/.test(value))
        return BigInt(value);
    return value === "inf" ? Infinity : value === "-inf" ? -Infinity : NaN;
}

// {id, name} as "10 Input speed"; nothing for none.
function named(object) {
    return object === null ? "" : object.name === null ? String(object.id) : object.id + " " + object.name;
}

// Calls an action once things have been quiet for a moment.
function quietly(action, milliseconds = 120) {
    let timer = 0;
    return () => {
        clearTimeout(timer);
        timer = setTimeout(action, milliseconds);
    };
}

// A labelled field to search in. The action gets the words that are searched for, in lower case.
function searchField(label, action) {
    const id = newId();
    const input = element("input", {type: "search", id, autocomplete: "off", spellcheck: "false", placeholder: label});
    const search = () => action(input.value.toLowerCase().split(/\s+/).filter(word => word !== ""));
    input.addEventListener("input", quietly(search));
    input.addEventListener("keydown", event => {
        if (event.key === "Escape" && input.value !== "") {
            input.value = "";
            search();
            event.preventDefault();
        }
    });
    const field = element("span", {class: "search control"},
        element("label", {for: id, class: "unseen"}, label), input);
    return {field, input, set: words => {
        input.value = words;
        search();
    }};
}

// Whether a text in lower case has all words.
function hasAll(text, words) {
    return words.every(word => text.includes(word));
}

function selectField(label, options, action) {
    const id = newId();
    const select = element("select", {id, change: () => action(select.value)},
        options.map(([value, text]) => element("option", {value}, text)));
    return {field: element("span", {class: "field control"}, element("label", {for: id}, label), select), select};
}

// What has to be made ready before the page goes to paper, and put back afterwards: {prepare(), restore()}.
const printables = [];
