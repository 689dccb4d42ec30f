"""The text of a parameter file: writing tables as sections, and reading a finished text back for checking."""

from __future__ import annotations

from dataclasses import dataclass, field

from catalogue import Column, Table

Cell = int | float | str
Rows = list[tuple[Cell, ...]]
Tables = dict[str, Rows]

ENCODING = "latin-1"


def _number(value: float, column: Column) -> str:
    """A plain decimal: all digits for a double, six places at most for a float."""
    if column.type == "double":
        return repr(float(value))
    text = f"{value:.6f}".rstrip("0")
    return text + "0" if text.endswith(".") else text


def _cell(value: Cell, column: Column) -> str:
    """A field as `paramdb format` leaves it: a text has quotes where it needs them."""
    if column.type == "text":
        return f'"{value}"' if not value or any(sign in value for sign in " :;{}") else value
    if column.type in ("float", "double"):
        return _number(float(value), column)
    return str(value)


def comment(lines: list[str]) -> str:
    return "".join(f"; {line}\n" if line else ";\n" for line in lines)


def heading(title: str) -> str:
    rule = "=" * 100
    return "\n" + comment([rule, title, rule])


def section(table: Table, rows: Rows) -> str:
    """A table with its comment, rows sorted by key."""
    ordered = sorted(rows, key=lambda row: row[:len(table.key)])
    cells = [[_cell(value, column) for value, column in zip(row, table.columns, strict=True)] for row in ordered]
    lines = ["\t" + " ".join(row) for row in cells]
    names = [" ".join(column.name for column in columns) for columns in (table.key, table.row)]
    about = comment([table.title, f"{names[0]} | {names[1]}"])
    return "\n" + about + f"{table.tag}: {{\n" + "".join(line + "\n" for line in lines) + f"}} ; {table.tag}\n"


@dataclass
class LakeText:
    """What a reader of the file sees: keyed texts, and the row lines of each section by its tag."""
    named: dict[str, str] = field(default_factory=dict)
    sections: dict[str, list[str]] = field(default_factory=dict)
    faults: list[str] = field(default_factory=list)


def _split_line(line: str) -> tuple[str, str]:
    """Key and value of a line; a comment has neither. Colons and semicolons inside quotes do not count."""
    quoted = False
    for place, character in enumerate(line):
        if character == '"':
            quoted = not quoted
        elif not quoted and character == ":":
            return line[:place].strip(), line[place + 1:].strip()
        elif not quoted and character == ";":
            if line.lstrip()[0] in ";}":
                return "", line[:place].strip()
            break
    return "", line.strip()


def read_back(text: str) -> LakeText:
    result = LakeText()
    rows: list[str] | None = None
    for number, line in enumerate(text.split("\n")[:-1], 1):
        key, value = _split_line(line)
        if rows is None:
            if key and value == "{":
                if key in result.sections:
                    result.faults.append(f"line {number}: a second section {key}")
                rows = result.sections.setdefault(key, [])
            elif key:
                result.named.setdefault(key, value)
            elif value:
                result.faults.append(f"line {number}: a row outside of every table: {line}")
        elif key:
            result.faults.append(f"line {number}: a colon outside of quotes takes the row out of its table: {line}")
        elif value.startswith("}"):
            rows = None
        elif not value:
            result.faults.append(f"line {number}: a comment or a blank line inside a table reads as a row")
        else:
            rows.append(value)
    if rows is not None:
        result.faults.append("the last table is not closed")
    return result


def read_row(line: str, table: Table) -> tuple[Cell, ...]:
    """The cells of a row line. A fault raises ValueError."""
    cells: list[Cell] = []
    rest = line
    for column in table.columns:
        if column.type == "text":
            if len(rest) >= 199:
                raise ValueError(f"{len(rest)} characters are left where the text {column.name} begins, 198 may be")
            rest = rest.lstrip()
            if rest.startswith('"'):
                token, closing, rest = rest[1:].partition('"')
                if not closing:
                    raise ValueError(f"the text {column.name} has no closing quote")
            else:
                token, *others = rest.split(None, 1) or [""]
                if not token:
                    raise ValueError(f"the line ends before {column.name}")
                rest = " " + others[0] if others else ""
            cells.append(token)
            continue
        if not rest.strip():
            raise ValueError(f"the line ends before {column.name}")
        token, *others = rest.split(None, 1)
        rest = " " + others[0] if others else ""
        if column.type in ("float", "double"):
            if "e" in token.lower() or "n" in token.lower():
                raise ValueError(f"{column.name} is {token}, not a plain decimal")
            cells.append(float(token))
        else:
            low, high = {"uint": (0, 2**32 - 1), "int64": (-2**63, 2**63 - 1)}.get(column.type, (-2**31, 2**31 - 1))
            if not low <= int(token) <= high:
                raise ValueError(f"{column.name} is {token}, which does not fit {column.type}")
            cells.append(int(token))
    if rest.strip():
        raise ValueError(f"'{rest.strip()}' is left over")
    return tuple(cells)
