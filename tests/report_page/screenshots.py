"""Pictures of the page of `paramdb report` for the documentation.

    screenshots.py --command build/release/tools/paramdb --browser chromium --output docs/images
"""

import argparse
import os
import subprocess
import tempfile
import time

from browser import Browser

EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../examples/gearbox")
# The picture, the section at its top and the colours.
PICTURES = (("report_drive_train", "drive-train", "light"), ("report_orders", "orders", "dark"))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--command", required=True)
    parser.add_argument("--browser", required=True)
    parser.add_argument("--output", required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder, Browser(options.browser) as browser:
        report = os.path.join(folder, "report.html")
        subprocess.run([os.path.abspath(options.command), "report", "gearbox.lake", "--lang", "en", "-o", report],
                       cwd=EXAMPLES, check=True, stdout=subprocess.DEVNULL)
        for name, section, colours in PICTURES:
            page = browser.open(report, [("prefers-color-scheme", colours)])
            page.value(f"document.getElementById('{section}').scrollIntoView()")
            time.sleep(0.3)  # the contents mark the section once it has come to rest
            page.screenshot(os.path.join(options.output, name + ".png"))
            page.close()


if __name__ == "__main__":
    main()
