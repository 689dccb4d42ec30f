"""A headless browser with one page, driven over the pipe of its developer tools. Needs the standard library alone.

    with Browser("chromium") as browser:
        page = browser.open(path)
        page.click("th button")
        assert page.value("document.title") == "..."
        assert page.faults() == []
"""

import base64
import json
import os
import select
import shutil
import signal
import subprocess
import tempfile
import time


class Fault(Exception):
    """What the browser, or a script in the page, has answered in place of a result."""


class Browser:
    """Messages are JSON texts with a zero byte behind each: written to the browser's descriptor 3, read from its 4."""

    def __init__(self, program, width=1280, height=1000):
        self._profile = tempfile.mkdtemp(prefix="paramdb-browser-")
        to_browser, self._out = os.pipe()
        self._in, from_browser = os.pipe()
        # The inherited ends may have any number; a shell puts them where the browser looks for them.
        command = [program, "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                   "--hide-scrollbars", "--no-first-run", "--no-default-browser-check", "--disable-extensions",
                   "--disable-background-networking", "--disable-component-update", "--disable-sync",
                   "--force-device-scale-factor=1", "--lang=en-US", f"--window-size={width},{height}",
                   f"--user-data-dir={self._profile}", "--remote-debugging-pipe", "about:blank"]
        self._process = subprocess.Popen(
            ["/bin/sh", "-c", f'exec "$@" 3<&{to_browser} 4>&{from_browser}', "sh", *command],
            pass_fds=(to_browser, from_browser), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, start_new_session=True)
        os.close(to_browser)
        os.close(from_browser)
        self._size = (width, height)
        self._received = b""
        self._events = []
        self._last_id = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        os.close(self._out)
        os.close(self._in)
        try:
            self._process.wait(timeout=2)
        except subprocess.TimeoutExpired:
            pass
        try:  # its children form a group of their own
            os.killpg(self._process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self._process.wait()
        shutil.rmtree(self._profile, ignore_errors=True)

    def call(self, method, session=None, timeout=30, **parameters):
        """Sends a command and returns its result; events that come meanwhile are kept."""
        self._last_id += 1
        message = {"id": self._last_id, "method": method, "params": parameters}
        if session is not None:
            message["sessionId"] = session
        text = json.dumps(message).encode() + b"\0"
        while text:
            text = text[os.write(self._out, text):]
        end = time.monotonic() + timeout
        while True:
            answer = self._receive(end)
            if answer is None:
                raise Fault(f"no answer to {method} in {timeout} s")
            if answer.get("id") == self._last_id:
                if "error" in answer:
                    raise Fault(f"{method}: {answer['error']['message']}")
                return answer["result"]
            if "method" in answer:
                self._events.append(answer)

    def events(self):
        """All events so far."""
        while (event := self._receive(time.monotonic())) is not None:
            self._events.append(event)
        return self._events

    def wait_for(self, method, timeout=30):
        end = time.monotonic() + timeout
        while not any(event.get("method") == method for event in self._events):
            event = self._receive(end)
            if event is None:
                raise Fault(f"no {method} in {timeout} s")
            self._events.append(event)

    def _receive(self, end):
        while b"\0" not in self._received:
            if not select.select([self._in], [], [], max(0, end - time.monotonic()))[0]:
                return None
            data = os.read(self._in, 1 << 20)
            if not data:
                raise Fault(f"the browser has ended with {self._process.wait()}")
            self._received += data
        message, _, self._received = self._received.partition(b"\0")
        return json.loads(message)

    def open(self, path, media=()):
        """A new page with that file, loaded. `media` are features such as ("prefers-color-scheme", "dark")."""
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        page = Page(self, session, target)
        for domain in ("Page", "Runtime", "Network", "Log"):
            page.call(f"{domain}.enable")
        page.call("Emulation.setDeviceMetricsOverride", width=self._size[0], height=self._size[1], deviceScaleFactor=1,
                  mobile=False)
        page.call("Emulation.setEmulatedMedia",
                  features=[{"name": name, "value": value} for name, value in media])
        self._events = []
        page.call("Page.navigate", url="file://" + os.path.abspath(path))
        self.wait_for("Page.loadEventFired")
        return page


class Page:
    def __init__(self, browser, session, target):
        self._browser = browser
        self._session = session
        self._target = target

    def call(self, method, **parameters):
        return self._browser.call(method, self._session, **parameters)

    def close(self):
        self._browser.call("Target.closeTarget", targetId=self._target)

    def value(self, expression):
        """The value of an expression in the page, which may be a promise."""
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            raise Fault(answer["exceptionDetails"].get("exception", {}).get("description", "an exception"))
        return answer["result"].get("value")

    def wait_until(self, expression, timeout=20):
        end = time.monotonic() + timeout
        while not self.value(expression):
            if time.monotonic() > end:
                raise Fault(f"never true: {expression}")
            time.sleep(0.02)

    def box(self, selector):
        """Where an element stands in the window, which is scrolled to it: (x, y, width, height)."""
        return self.value(f"""(() => {{
            const element = document.querySelector({json.dumps(selector)});
            element.scrollIntoView({{block: "center"}});
            const box = element.getBoundingClientRect();
            return [box.x, box.y, box.width, box.height];
        }})()""")

    def mouse(self, kind, x, y, buttons=0):
        self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, buttons=buttons,
                  button="left" if kind != "mouseMoved" or buttons else "none",
                  clickCount=0 if kind == "mouseMoved" else 1)

    def click(self, selector):
        x, y, width, height = self.box(selector)
        self.mouse("mouseMoved", x + width / 2, y + height / 2)
        self.mouse("mousePressed", x + width / 2, y + height / 2, buttons=1)
        self.mouse("mouseReleased", x + width / 2, y + height / 2)

    def drag(self, start, end, steps=8):
        """Presses the button at one point, moves to another, and lets go there."""
        self.mouse("mouseMoved", *start)
        self.mouse("mousePressed", *start, buttons=1)
        for step in range(1, steps + 1):
            self.mouse("mouseMoved", *(a + (b - a) * step / steps for a, b in zip(start, end)), buttons=1)
        self.mouse("mouseReleased", *end)

    def type(self, text):
        self.call("Input.insertText", text=text)

    def key(self, name, code):
        """Presses a key by its name and its number of old."""
        text = {"text": "\r"} if name == "Enter" else {}
        self.call("Input.dispatchKeyEvent", type="keyDown", key=name, code=name, windowsVirtualKeyCode=code, **text)
        self.call("Input.dispatchKeyEvent", type="keyUp", key=name, code=name, windowsVirtualKeyCode=code)

    def screenshot(self, path, clip=None):
        options = {} if clip is None else {"clip": dict(zip(("x", "y", "width", "height"), clip), scale=1),
                                           "captureBeyondViewport": True}
        data = self.call("Page.captureScreenshot", format="png", **options)["data"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(data))

    def pdf(self):
        return base64.b64decode(self.call("Page.printToPDF", printBackground=True, preferCSSPageSize=True)["data"])

    def requests(self):
        """The addresses of everything the page has asked for."""
        return [event["params"]["request"]["url"] for event in self._events("Network.requestWillBeSent")]

    def faults(self):
        """Errors and warnings of the console, breaches of the page's policy, and exceptions that nobody caught."""
        texts = [event["params"]["exceptionDetails"].get("exception", {}).get("description", "an exception")
                 for event in self._events("Runtime.exceptionThrown")]
        texts += [" ".join(str(argument.get("value", argument.get("description")))
                           for argument in event["params"]["args"])
                  for event in self._events("Runtime.consoleAPICalled")
                  if event["params"]["type"] in ("error", "warning", "assert")]
        texts += [event["params"]["entry"]["text"] for event in self._events("Log.entryAdded")
                  if event["params"]["entry"]["level"] in ("error", "warning")]
        return texts

    def _events(self, method):
        return [event for event in self._browser.events()
                if event["method"] == method and event.get("sessionId") == self._session]
