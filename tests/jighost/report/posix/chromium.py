"""A Chromium without a window, driven by the WebDriver protocol.

Whatever becomes of it, it is gone when its `with` block is left, and in SECONDS at the latest.
"""
import base64
import json
import os
import signal
import subprocess
import tempfile
import threading
import urllib.request
from pathlib import Path

SECONDS = 480
SIZE = (1280, 900)  # of its window
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"  # the protocol's name for a found element


def descendants(process):
    """A process and all that it started."""
    found = [process]
    for children in Path(f"/proc/{process}/task").glob("*/children"):
        try:
            for child in children.read_text(encoding="ascii").split():
                found += descendants(int(child))
        except OSError:  # gone
            pass
    return found


def end(processes):
    for process in processes:
        try:
            os.kill(process, signal.SIGKILL)
        except ProcessLookupError:
            pass


class Chromium:
    def __enter__(self):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                       text=True, env={**os.environ, "HOME": self.profile.name})
        self.watch = threading.Timer(SECONDS, self.kill)
        self.watch.start()
        try:
            self.begin()
        except BaseException:
            self.__exit__()
            raise
        return self

    def begin(self):
        line = next(line for line in self.driver.stdout if "successfully on port" in line)
        self.url = f"http://127.0.0.1:{int(line.split()[-1].rstrip('.'))}/session"
        arguments = ["--headless=new", "--no-first-run", "--disable-background-networking",
                     "--disable-dev-shm-usage",  # which may be small in a container
                     f"--window-size={SIZE[0]},{SIZE[1]}", f"--user-data-dir={self.profile.name}/p"]
        if os.geteuid() == 0:  # for whom it has no sandbox
            arguments.append("--no-sandbox")
        session = self.call("POST", "", {"capabilities": {"alwaysMatch": {
            "goog:chromeOptions": {"args": arguments},
            "goog:loggingPrefs": {"browser": "ALL", "performance": "ALL"}}}})
        self.url += "/" + session["sessionId"]
        self.call("POST", "/url", {"url": "about:blank"})
        self.log("performance")  # of the page that it begins with

    def __exit__(self, *_):
        self.watch.cancel()
        self.kill()
        self.driver.wait()
        self.profile.cleanup()

    def kill(self):
        end(descendants(self.driver.pid))

    def call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.url + path, data, method=method)
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        with opener.open(request, timeout=SECONDS) as answer:
            return json.load(answer)["value"]

    def open(self, path):
        self.call("POST", "/url", {"url": Path(path).resolve().as_uri()})

    def run(self, script, *arguments):
        """What a function's body returns, run in the page."""
        return self.call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def find(self, selector):
        return self.call("POST", "/element", {"using": "css selector", "value": selector})[ELEMENT]

    def click(self, selector):
        self.call("POST", f"/element/{self.find(selector)}/click", {})

    def type(self, selector, text):
        self.call("POST", f"/element/{self.find(selector)}/value", {"text": text})

    def command(self, name, **parameters):
        """A command of the browser's own protocol."""
        return self.call("POST", "/goog/cdp/execute", {"cmd": name, "params": parameters})

    def log(self, kind):
        """What came into a log since the last time."""
        return self.call("POST", "/se/log", {"type": kind})

    def print(self):
        """The page on paper, as PDF."""
        return base64.b64decode(self.call("POST", "/print", {}))

    def picture(self, file):
        Path(file).write_bytes(base64.b64decode(self.call("GET", "/screenshot")))
