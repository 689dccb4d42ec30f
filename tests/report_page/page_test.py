"""The page of `paramdb report` in a browser without a window, driven by mouse and keys.

    page_test.py --command build/release/tools/paramdb --browser chromium [TEST...]
"""

import argparse
import json
import os
import re
import subprocess
import sys
import tempfile
import time
import unittest

from browser import Browser, Fault

GEARBOX = os.path.join(os.path.dirname(__file__), "../../examples/gearbox/gearbox.lake")
BLANK = "\u00a0"  # between groups of digits

options = None
folder = None
browser = None
pages = {}  # name to what is kept: (path, data)

# Texts that would do harm where they were taken as markup or script, and such as play tricks on a reader.
HOSTILE = ["<img src=x onerror=window.harmed=1>", "</script><script>window.harmed=1</script>",
           "<!--<script>", "' onmouseover='window.harmed=1", "&lt;b&gt; &amp; &quot;", "${window.harmed=1}",
           "\u00ad\u0085\u00a0x", "javascript:window.harmed=1", "__proto__", "constructor", "a\x01b\x7fc\x1bd"]


def run(*arguments):
    return subprocess.run([options.command, *arguments], capture_output=True, check=False)


def make_report(name, lake, *arguments):
    """The path of a report of that lake, made once, and its data. Whether it has findings is no matter here."""
    if name not in pages:
        path = os.path.join(folder, name + ".html")
        result = run("report", lake, "-o", path, *arguments)
        if result.returncode not in (0, 1):
            raise AssertionError((result.returncode, result.stderr))
        with open(path, encoding="ascii") as file:
            html = file.read()
        data = re.search(r'<script type="application/json" id="data">(.*?)</script>', html, re.DOTALL)
        pages[name] = (path, json.loads(data[1]))
    return pages[name]


def write_lake(name, text):
    path = os.path.join(folder, name)
    with open(path, "w", encoding="latin-1", newline="\n") as file:
        file.write("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n" + text)
    return path


def hostile_lake():
    def quoted(text):
        return '"' + text.replace('"', '""') + '"'

    rows = "".join(f"{index + 1} {quoted(text)}\n" for index, text in enumerate(HOSTILE))
    parameters = "".join(f"{index + 1} 1 {quoted(text)} 0 0 0\n" for index, text in enumerate(HOSTILE))
    keys = "".join(f"{index + 1} {index + 1} 1 {index + 1} {index + 1} 1 0 0 0 0 0\n" for index in range(len(HOSTILE)))
    return write_lake("hostile.lake", f"""<QType><FAliasName>: {quoted(HOSTILE[0])}
<TMode>: {{\n{rows}}}\n<TLocation>: {{\n{rows}}}\n<TPhysMode>: {{\n{rows}}}\n<TInstrument>: {{\n{rows}}}
<TInstrumentParam>: {{\n{parameters}}}\n<TIpParamAndStore>: {{\n{keys}}}
<TRotorSpeed>: {{\n1 1 1.0 1 1\n1 2 inf 0 0\n2 1 nan 1 0\n2 3 -0.5 -1 2\n}}
<TOrderSource2Rotor>: {{\n3 1 2\n4 1 1\n}}\n<TBaseOrder>: {{\n4 nan\n}}
<TIpSpectralValue>: {{\n1 1 4 6 "O1*<b>;" 1 1\n2 1 4 6 "H1;H2" 1 1\n3 1 3 6 "F1;F2;F3" 1 1\n4 1 3 6 "L1;L4" 1 1
5 1 4 6 "" 1 1\n6 1 4 6 "O-2;O-1" 1 1\n}}
<TIpPolygon>: {{\n1 1 {quoted(HOSTILE[1])}\n}}\n<TIpPolygonValue>: {{\n1 1 nan\n1 2 inf\n1 3 3\n2 1e38 -1e38\n}}
<TLimSValue>: {{\n-1 1 1 1 1 1 1 nan inf\n1 1 1 1 2 1 1 -1e38 1e38\n}}
""")


class PageTest(unittest.TestCase):
    page = None

    def open(self, path, media=()):
        self.page = browser.open(path, media)
        return self.page

    def tearDown(self):
        if self.page is not None:
            self.page.close()

    def open_gearbox(self, media=()):
        path, data = make_report("gearbox", GEARBOX, "--lang", "de")
        return self.open(path, media), data

    def count(self, section):
        return self.page.value(f"document.querySelector('{section} output.count').textContent")

    def column(self, section, number):
        """The texts of a column in the rows that are in the page."""
        return self.page.value(f"""[...document.querySelectorAll('{section} table.data tbody tr:not(.spacer)')]
            .map(row => row.cells[{number}].textContent)""")

    def search(self, section, text):
        self.page.click(f"{section} input[type=search]")
        self.page.type(text)

    def check_clean(self, path):
        self.assertEqual(self.page.faults(), [])
        self.assertEqual(self.page.requests(), ["file://" + path])


class Opening(PageTest):
    def test_opens_without_a_fault_and_asks_for_nothing(self):
        page, _ = self.open_gearbox()
        self.assertEqual(page.value("document.title"), "TG-6031 A \u2013 parameter report")
        self.assertEqual(page.value("[...document.querySelectorAll('h2')].map(head => head.textContent)"),
                         ["Overview", "Findings", "Drive train", "Orders", "Polygons", "Limits", "Keys", "Parameters",
                          "Tables"])
        self.assertEqual(page.value("[...document.querySelectorAll('.tile dd')].map(tile => tile.textContent)")[:3],
                         ["216.1accepted", "103of 103", "5" + BLANK + "907"])
        self.check_clean(make_report("gearbox", GEARBOX)[0])

    def test_policy_stops_foreign_scripts_and_requests(self):
        page, _ = self.open_gearbox()
        page.value("""(() => {
            const script = document.createElement("script");
            script.textContent = "window.harmed = 1";
            document.body.append(script);
            const image = document.createElement("img");
            image.setAttribute("onerror", "window.harmed = 1");
            image.src = "http://localhost:9/x.png";
            document.body.append(image);
        })()""")
        self.assertEqual(page.value("fetch('http://localhost:9/').then(() => 'sent', () => 'stopped')"), "stopped")
        self.assertIsNone(page.value("window.harmed ?? null"))
        self.assertIn("Content Security Policy", " ".join(page.faults()))

    def test_hostile_texts_are_texts(self):
        path, _ = make_report("hostile", hostile_lake())
        page = self.open(path)
        self.assertEqual(page.value("document.querySelector('h1').textContent"), HOSTILE[0])
        self.assertEqual(page.value("document.title"), HOSTILE[0] + " \u2013 parameter report")
        page.click("#table-TMode summary")
        page.wait_until("document.querySelectorAll('#table-TMode tbody tr:not(.spacer)').length > 0")
        shown = [re.sub("[\x01\x1b\x7f\x85]", "\ufffd", text) for text in HOSTILE]
        self.assertEqual(self.column("#table-TMode", 1), shown)
        page.value("[...document.querySelectorAll('details, .expander')].forEach(node => node.click())")
        self.assertEqual(page.value("document.querySelectorAll('main img, main script, main b').length"), 0)
        self.assertIsNone(page.value("window.harmed ?? null"))
        self.check_clean(path)

    def test_texts_that_cannot_be_seen_are_marked(self):
        """A file of lines has no such characters; tables of a host may."""
        path, _ = make_report("hostile", hostile_lake())
        with open(path, encoding="ascii") as file:
            html = file.read()
        strange = "\\ud800 lone \\udfff, pair \\ud83d\\ude00, line \\u2028, turned \\u202e, mark \\ufeff."
        path = os.path.join(folder, "strange.html")
        with open(path, "w", encoding="ascii") as file:
            file.write(html.replace('[9,"__proto__"]', f'[9,"{strange}"]'))
        page = self.open(path)
        page.click("#table-TMode summary")
        page.wait_until("document.querySelectorAll('#table-TMode tbody tr:not(.spacer)').length > 0")
        self.assertEqual(self.column("#table-TMode", 1)[8],
                         "\ufffd lone \ufffd, pair \U0001f600, line \ufffd, turned \ufffd, mark \ufffd.")
        self.check_clean(path)

    def test_files_without_rows(self):
        path, _ = make_report("empty", write_lake("empty.lake", "<TMode>: {\n}\n"))
        page = self.open(path)
        self.assertEqual(page.value("[...document.querySelectorAll('section > p.none')].map(p => p.textContent)")[1:-1],
                         ["There are no rotors.", "There are no order definitions.", "There are no polygons.",
                          "There are no limits.", "There are no keys.", "There are no instrument parameters."])
        self.check_clean(path)

    def test_dark_where_it_is_asked_for(self):
        brightness = "getComputedStyle(document.body).backgroundColor.match(/\\d+/g).slice(0, 3).map(Number)"
        page, _ = self.open_gearbox()
        self.assertGreater(min(page.value(brightness)), 200)
        page.close()
        page, _ = self.open_gearbox([("prefers-color-scheme", "dark")])
        self.assertLess(max(page.value(brightness)), 60)

    def test_narrow_window_needs_no_sideways_scrolling(self):
        page, _ = self.open_gearbox()
        page.call("Emulation.setDeviceMetricsOverride", width=600, height=900, deviceScaleFactor=1, mobile=False)
        self.assertLessEqual(page.value("document.scrollingElement.scrollWidth"), 600)


class Tables(PageTest):
    def test_search_narrows_and_escape_brings_all_back(self):
        page, data = self.open_gearbox()
        names = {table["tag"]: dict(row[:2] for row in table["rows"]) for table in data["tables"]
                 if table["tag"] in ("<TMode>", "<TChannel>", "<TLocation>", "<TInstrument>", "<TApplicationSignal>")}
        names["<TInstrumentParam>"] = {row[0]: row[2] for table in data["tables"]
                                       if table["tag"] == "<TInstrumentParam>" for row in table["rows"]}
        order = ["<TMode>", "<TInstrument>", "<TChannel>", "<TLocation>", "<TInstrumentParam>", "<TApplicationSignal>"]
        rows = data["keys"]["rows"]
        texts = ["\n".join([row[6]] + [f"{row[place]} {names[tag].get(row[place], '')}" for place, tag in enumerate(order)])
                 .lower() for row in rows]
        expected = [row for row, text in zip(rows, texts) if "crest" in text and "drive" in text]
        self.assertEqual(self.count("#keys"), f"1{BLANK}827 rows")
        self.search("#keys", "Crest  drive")
        page.wait_until(f"document.querySelector('#keys output').textContent === '{len(expected)} of 1{BLANK}827 rows'")
        self.assertEqual(self.column("#keys", 0), [row[6] for row in expected][:len(self.column("#keys", 0))])
        self.assertEqual(page.value("document.querySelector('#keys table').getAttribute('aria-rowcount')"),
                         str(len(expected) + 1))
        page.key("Escape", 27)
        page.wait_until(f"document.querySelector('#keys output').textContent === '1{BLANK}827 rows'")

    def test_words_of_keys_are_in_the_language(self):
        self.open_gearbox()
        self.assertEqual(self.page.value("[...document.querySelectorAll('#keys th')].map(head => head.textContent)"),
                         ["Text", "Prüfschritt", "Instrument", "Kanal", "Objekt", "Parameter", "Sensor"])
        self.assertEqual(self.page.value("document.querySelector('#keys table').lang"), "de")
        self.search("#parameters", "1015 h1-l2")
        self.page.wait_until("document.querySelectorAll('#parameters article').length === 1")
        self.assertEqual(self.page.value("document.querySelector('#parameters .settings').textContent"),
                         "Trigger: Speed (#1)Bezug Basisordnung: Engaged gear, driving wheel (#90)"
                         "Interpretation: Maximum (#6)Definition: H1-L2;H1+L2Quellinstrument: Spectrum (#2500)"
                         "Quellparameter: Order spectrum (#1001)")

    def test_a_click_on_a_head_sorts_by_number(self):
        page, data = self.open_gearbox()
        ratios = next(table for table in data["tables"] if table["tag"] == "<TRotorSpeed>")["rows"]
        section = "#table-TRotorSpeed"
        page.click(section + " summary")
        page.wait_until(f"document.querySelectorAll('{section} tbody tr:not(.spacer)').length > 20")
        head = section + " th:nth-child(3)"
        state = f"document.querySelector('{head}').getAttribute('aria-sort')"
        for expected, rows in (("ascending", sorted(ratios, key=lambda row: row[2])),
                               ("descending", sorted(ratios, key=lambda row: -row[2])), ("none", ratios)):
            page.click(head + " button")
            self.assertEqual(page.value(state), expected)
            shown = [float(text) for text in self.column(section, 2)]
            self.assertGreater(len(shown), 20)
            self.assertEqual(shown, [row[2] for row in rows][:len(shown)])
        page.value(f"document.querySelector('{section} th:nth-child(2) button').focus()")
        page.key("Enter", 13)  # with keys as well
        self.assertEqual(page.value(f"document.querySelector('{section} th:nth-child(2)').ariaSort"), "ascending")
        self.assertEqual(self.column(section, 1)[0], "1 Input shaft")

    def test_one_search_over_all_tables(self):
        page, _ = self.open_gearbox()
        self.search("#tables", "torque")
        visible = "[...document.querySelectorAll('#tables details:not([hidden])')].map(node => node.id)"
        page.wait_until(visible + ".length < 20")
        found = page.value(visible)
        self.assertIn("table-TApplicationSignal", found)
        self.assertNotIn("table-TMode", found)
        self.assertEqual(page.value("document.querySelector('#table-TApplicationSignal .hits').textContent"), "3 hits")
        page.click("#table-TApplicationSignal summary")
        page.wait_until("document.querySelectorAll('#table-TApplicationSignal tbody tr:not(.spacer)').length === 3")
        self.assertEqual(self.column("#table-TApplicationSignal", 1),
                         ["Torque input shaft", "Torque drive flange left", "Torque drive flange right"])

    def test_a_hundred_thousand_rows(self):
        rows = "".join(f"{mode} 1001 3 {place} 7 1 1 0.0 {(mode * 1000 + place) * 7919 % 100000}\n"
                       for mode in range(1, 101) for place in range(1000))
        path, data = make_report("large", write_lake("large.lake", f"<TLimSValue>: {{\n{rows}}}\n"))
        begin = time.monotonic()
        page = self.open(path)
        page.click("#table-TLimSValue summary")
        page.wait_until("document.querySelectorAll('#table-TLimSValue tbody tr').length > 20")
        self.assertLess(time.monotonic() - begin, 15)
        values = sorted(next(table for table in data["tables"] if table["tag"] == "<TLimSValue>")["rows"],
                        key=lambda row: row[8])
        page.click("#table-TLimSValue th:nth-child(9) button")
        page.value("document.querySelector('#table-TLimSValue .scroller').scrollTop = 1e9")
        page.wait_until(f"document.querySelector('#table-TLimSValue tr:nth-last-child(2)').ariaRowIndex === '100001'")
        self.assertLess(page.value("document.querySelectorAll('#table-TLimSValue tr').length"), 100)
        last = [float(text) for text in self.column("#table-TLimSValue", 8)]
        self.assertEqual(last, [row[8] for row in values][-len(last):])
        self.check_clean(path)


class Speeds(PageTest):
    def values(self, number):
        return self.page.value(f"""[...document.querySelectorAll('#orders .bands tbody tr:not(.more-row)')].find(row =>
            row.querySelector('.expander').textContent.startsWith('{number} ')).querySelector('.values').textContent""")

    def place(self, number):
        return self.page.value(f"""(() => {{
            const row = [...document.querySelectorAll('#orders .bands tbody tr:not(.more-row)')].find(row =>
                row.querySelector('.expander').textContent.startsWith('{number} '));
            const box = row.querySelector('.band').getBoundingClientRect();
            return box.x + box.width / 2;
        }})()""")

    def set_number(self, selector, text):
        self.page.click(selector)
        self.page.value(f"document.querySelector('{selector}').select()")
        self.page.type(text)

    def test_dragging_the_speed_moves_bands(self):
        page, _ = self.open_gearbox()
        self.assertEqual(self.values(1028), "50 Hz")  # order 1 of the input shaft at 3000 turns in a minute
        left, fixed = self.place(1028), self.place(1037)
        x, y, width, height = page.box("#orders .slider")
        thumb = 8 + (width - 16) * 0.3
        page.drag((x + thumb, y + height / 2), (x + thumb + width * 0.3, y + height / 2))
        rpm = page.value("document.querySelector('#orders .slider').valueAsNumber")
        self.assertGreater(rpm, 5000)
        self.assertEqual(page.value("document.querySelector('#orders .speed input[type=number]').valueAsNumber"), rpm)
        self.assertEqual(page.value("document.querySelector('#drive-train .slider').valueAsNumber"), rpm)
        self.assertAlmostEqual(float(self.values(1028).split()[0]), rpm / 60, delta=0.01)
        self.assertGreater(self.place(1028), left + 10)
        self.assertEqual(self.place(1037), fixed)  # a band in Hz
        speeds = "[...document.querySelectorAll('#drive-train .train .speed')].map(text => Number(text.textContent))"
        self.assertEqual(page.value(speeds)[0], rpm)
        page.value("document.querySelector('#orders .slider').focus()")
        page.key("ArrowLeft", 37)
        self.assertEqual(page.value(speeds)[0], rpm - 10)
        self.check_clean(make_report("gearbox", GEARBOX)[0])

    def test_bands_are_those_of_the_command(self):
        page, data = self.open_gearbox()
        rpm, distance = 4321.5, 0.25
        self.set_number("#orders .speed input[type=number]", str(rpm))
        distance_field = "#orders .field:not(.speed) input[type=number]"
        self.set_number(distance_field, str(distance))
        for number in (1015, 1023, 1025, 1032, 1037, 1039, 1040, 1047):
            order = next(order for order in data["orders"] if order["parameter"]["id"] == number)
            turns = order["drives"][0]["turns"] or 1
            result = run("interval", GEARBOX, "--parameter", str(number), "--rpm", repr(rpm * turns), "-d", str(distance),
                         "--format", "json")
            expected = [[band["from"], band["to"], band["unit"]] for band in json.loads(result.stdout)["intervals"]]
            bounds = [[band["lower"], band["upper"]] for band in json.loads(result.stdout)["intervals"]]
            page.value(f"""[...document.querySelectorAll('#orders .expander')].find(button =>
                button.textContent.startsWith('{number} ')).click()""")
            cells = page.value("""[...document.querySelectorAll('#orders .more-row:not([hidden]) tbody tr')].map(row =>
                [...row.cells].map(cell => cell.textContent))""")
            page.value("document.querySelector('#orders .expander[aria-expanded=true]').click()")
            self.assertEqual([row[:3] for row in cells], expected, number)
            for row, (lower, upper) in zip(cells, bounds):
                self.assertAlmostEqual(float(row[3]), lower, delta=abs(lower) * 1e-6, msg=number)
                self.assertAlmostEqual(float(row[4]), upper, delta=abs(upper) * 1e-6, msg=number)

    def test_the_drive_train_follows_the_physical_mode(self):
        page, data = self.open_gearbox()
        fractions = "[...document.querySelectorAll('.train .fraction')].map(text => text.textContent)"
        select = "#drive-train select"
        self.assertEqual(page.value(f"document.querySelector('{select}').selectedOptions[0].textContent"), "1 Gear 1")
        self.assertEqual(page.value(fractions)[:3], ["1", "13/46", "221/3266"])
        self.assertEqual(page.value("document.querySelectorAll('.train .wheel.engaged').length"), 2)
        self.assertEqual(page.value("document.querySelectorAll('.train .mesh').length"), 7)
        page.value(f"document.querySelector('{select}').focus()")
        page.key("ArrowDown", 40)
        page.wait_until(f"{fractions}[1] === '22/45'")
        mode = next(mode for mode in data["rotors"] if mode["physical_mode"]["id"] == 2)
        page.wait_until(f"document.querySelectorAll('#drive-train tbody tr:not(.spacer)').length === {len(mode['rotors'])}")
        self.assertEqual(self.column("#drive-train", 3), [repr(rotor["ratio"]).removesuffix(".0")
                                                        for rotor in mode["rotors"]])

    def test_a_physical_mode_keeps_what_is_measured_there(self):
        page, data = self.open_gearbox()
        page.value("document.querySelector('#orders select').focus()")
        for _ in range(3):
            page.key("ArrowDown", 40)
        chosen = page.value("Number(document.querySelector('#orders select').value)")
        here = [order for order in data["orders"]
                if any(drive["physical_mode"] and drive["physical_mode"]["id"] == chosen for drive in order["drives"])]
        page.wait_until(f"document.querySelectorAll('#orders .expander').length === {len(here)}")
        self.assertEqual(self.count("#orders"), f"{len(here)} of 38 definitions" +
                         (f", {38 - len(here)} not measured here" if len(here) < 38 else ""))


class Paper(PageTest):
    def test_everything_is_open_and_nothing_is_to_be_pressed(self):
        page, data = self.open_gearbox()
        before = page.value("document.querySelectorAll('details[open]').length")
        page.call("Emulation.setEmulatedMedia", media="print")
        page.value("dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(page.value("""[...document.querySelectorAll('input, select, .more, nav')].filter(node =>
            node.getClientRects().length > 0).length"""), 0)
        self.assertEqual(page.value("document.querySelectorAll('details.table:not([open])').length"), 0)
        self.assertEqual(page.value("document.querySelectorAll('.train').length"), len(data["rotors"]))
        self.assertEqual(page.value("document.querySelectorAll('#table-TRotorSpeed tbody tr:not(.spacer)').length"),
                         len(next(table for table in data["tables"] if table["tag"] == "<TRotorSpeed>")["rows"]))
        self.assertEqual(page.value("document.querySelector('#table-TLimSValue .paper-note').textContent"),
                         "and 940 more rows, which are not printed")
        self.assertEqual(page.value("""[...document.querySelectorAll('.scroller')].filter(node =>
            node.scrollHeight > node.clientHeight + 1).length"""), 0)
        page.value("dispatchEvent(new Event('afterprint'))")
        page.call("Emulation.setEmulatedMedia", media="")
        self.assertEqual(page.value("document.querySelectorAll('details[open]').length"), before)
        self.assertEqual(page.value("document.querySelectorAll('.train').length"), 1)

    def test_prints(self):
        path, _ = make_report("hostile", hostile_lake())
        page = self.open(path)
        pdf = page.pdf()
        self.assertEqual(pdf[:5], b"%PDF-")
        self.assertGreater(len(re.findall(rb"/Type /Page\b", pdf)), 1)
        self.assertEqual(page.value("document.querySelectorAll('details.table[open]').length"), 0)  # put back
        self.check_clean(path)


class Access(PageTest):
    def test_everything_has_a_name(self):
        page, _ = self.open_gearbox()
        page.click("#table-TIpTrackPolygon summary")
        page.wait_until("document.querySelector('#table-TIpTrackPolygon table') !== null")
        self.assertEqual(page.value("document.documentElement.lang"), "en")
        nameless = page.value("""[...document.querySelectorAll('input, select')].filter(node =>
            !node.getAttribute('aria-label') && !document.querySelector(`label[for="${node.id}"]`)).length""")
        self.assertEqual(nameless, 0)
        self.assertEqual(page.value("document.querySelectorAll('th:not([scope])').length"), 0)
        self.assertEqual(page.value("document.querySelectorAll('table.data th:not([aria-sort])').length"), 0)
        self.assertEqual(page.value("document.querySelectorAll('svg[role=img]:not([aria-label])').length"), 0)
        self.assertEqual(page.value("document.querySelectorAll('svg:not([role=img]):not([aria-hidden])').length"), 0)
        self.assertEqual(page.value("""(() => {
            const ids = [...document.querySelectorAll('[id]')].map(node => node.id);
            return ids.length - new Set(ids).size;
        })()"""), 0)
        self.assertEqual(page.value("""[...document.querySelectorAll('[aria-labelledby], [aria-controls]')].filter(node =>
            !document.getElementById(node.getAttribute('aria-labelledby') ?? node.getAttribute('aria-controls'))).length"""), 0)

    def test_the_first_key_leads_past_the_sections(self):
        page, _ = self.open_gearbox()
        page.key("Tab", 9)
        self.assertEqual(page.value("document.activeElement.textContent"), "Skip to the content")
        page.key("Tab", 9)
        self.assertEqual(page.value("document.activeElement.textContent"), "Overview")


def main():
    global options, folder, browser
    parser = argparse.ArgumentParser()
    parser.add_argument("--command", required=True)
    parser.add_argument("--browser", required=True)
    options, rest = parser.parse_known_args()
    with tempfile.TemporaryDirectory(prefix="paramdb-page-test-") as folder, Browser(options.browser) as browser:
        program = unittest.main(argv=sys.argv[:1] + rest, exit=False)
    sys.exit(0 if program.result.wasSuccessful() else 1)


if __name__ == "__main__":
    main()
