"""A headless Chromium that tests drive over a pair of pipes, and all that it asked for and complained of."""

import json
import os
import select
import shutil
import subprocess
import tempfile
import time

LIMIT_S = 90


class Tab:
    """One page. `send` waits for the answer."""

    def __init__(self, browser, session, url):
        self.browser, self.session, self.url = browser, session, url

    def send(self, method, **parameters):
        return self.browser.send(method, self.session, **parameters)

    def evaluate(self, expression):
        """The value of an expression in the page, awaited where it is a promise."""
        answer = self.send("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            raise AssertionError(f"{expression}: {answer['exceptionDetails']}")
        return answer["result"].get("value")

    def until(self, expression):
        """The first true value."""
        end = time.monotonic() + LIMIT_S
        while time.monotonic() < end:
            value = self.evaluate(expression)
            if value:
                return value
            time.sleep(0.05)
        raise AssertionError(f"waited in vain for {expression}")

    def open(self, url):
        self.send("Page.navigate", url=url)
        self.until("document.readyState === 'complete'")

    def click(self, element):
        """With the mouse, in the middle of what the expression gives."""
        x, y = self.evaluate(f"""(() => {{ const e = {element}; e.scrollIntoView({{block: 'center'}});
            const r = e.getBoundingClientRect(); return [r.x + r.width / 2, r.y + r.height / 2]; }})()""")
        for kind in ("mousePressed", "mouseReleased"):
            self.send("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", clickCount=1)


class Browser:
    def __init__(self):
        self.home = tempfile.mkdtemp(prefix="velmo-browser-")
        to_child, self.writing = os.pipe()
        self.reading, from_child = os.pipe()
        self.process = subprocess.Popen(
            # The pipes go to descriptors 3 and 4 by way of the shell, which needs no code between fork and exec.
            ["sh", "-c", f"exec 3<&{to_child} 4>&{from_child}; exec \"$@\"", "sh",
             "chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
             "--disable-background-networking", "--disable-component-update", "--disable-sync", "--disable-extensions",
             "--disable-dev-shm-usage", "--host-resolver-rules=MAP * ~NOTFOUND", "--window-size=1280,900",
             f"--user-data-dir={self.home}/profile", "--remote-debugging-pipe", "about:blank"],
            pass_fds=(to_child, from_child), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            env={**os.environ, "HOME": self.home})
        os.close(to_child)
        os.close(from_child)
        self.unread = b""
        self.number = 0
        self.answers = {}
        self.tabs = []
        self.requests = []
        self.complaints = []
        self.send("Target.setAutoAttach", autoAttach=True, waitForDebuggerOnStart=True, flatten=True)
        self.wait_for("a tab", lambda: self.tabs)

    def close(self):
        try:
            self.send("Browser.close")
            self.process.wait(20)
        except (subprocess.TimeoutExpired, AssertionError, OSError):
            self.process.kill()
            self.process.wait()
        os.close(self.writing)
        os.close(self.reading)
        for _ in range(50):  # its helpers may still write for a moment
            shutil.rmtree(self.home, ignore_errors=True)
            if not os.path.exists(self.home):
                break
            time.sleep(0.1)

    def post(self, method, session=None, **parameters):
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if session:
            message["sessionId"] = session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self.writing, data):]
        return self.number

    def send(self, method, session=None, **parameters):
        number = self.post(method, session, **parameters)
        self.wait_for(method, lambda: number in self.answers)
        answer = self.answers.pop(number)
        if "error" in answer:
            raise AssertionError(f"{method}: {answer['error']}")
        return answer["result"]

    def wait_for(self, what, condition):
        end = time.monotonic() + LIMIT_S
        while not condition():
            if time.monotonic() > end or not self.read(0.2):
                raise AssertionError(f"waited in vain for {what}")

    def read(self, seconds):
        """Takes in what has come. False when the browser has gone."""
        if not select.select([self.reading], [], [], seconds)[0]:
            return self.process.poll() is None
        data = os.read(self.reading, 1 << 20)
        *messages, self.unread = (self.unread + data).split(b"\0")
        for message in messages:
            self.take(json.loads(message))
        return bool(data)

    def take(self, message):
        if "id" in message:
            self.answers[message["id"]] = message
            return
        method, parameters = message["method"], message["params"]
        if method == "Target.attachedToTarget":
            self.meet(parameters["sessionId"], parameters["targetInfo"])
        elif method == "Network.requestWillBeSent":
            self.requests.append(parameters["request"]["url"])
        elif method == "Runtime.exceptionThrown":
            self.complaints.append(parameters["exceptionDetails"])
        elif method == "Runtime.consoleAPICalled" and parameters["type"] in ("error", "warning", "assert"):
            self.complaints.append(parameters["args"])
        elif method == "Log.entryAdded" and parameters["entry"]["level"] in ("error", "warning"):
            self.complaints.append(parameters["entry"])

    def meet(self, session, target):
        """A new tab waits until we listen to it, so that nothing it does is missed. The browser's own menus do not count."""
        if target["type"] != "browser_ui":
            for domain in ("Network", "Runtime", "Log", "Page"):
                self.post(domain + ".enable", session)
        self.post("Runtime.runIfWaitingForDebugger", session)
        if target["type"] == "page":
            self.tabs.append(Tab(self, session, target["url"]))
