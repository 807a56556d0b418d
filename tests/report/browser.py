"""A headless browser of the tests' own, and what they ask of a page."""

import json
import shutil
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

CHROMIUM = "/usr/bin/chromium"
DRIVER = "/usr/bin/chromedriver"
LONGEST_WAIT = 60  # seconds; the machine may be busy with other things


class Browser:
    """One window. It has a profile of its own, and no network to speak of."""

    def __init__(self):
        self._profile = tempfile.mkdtemp(prefix="ondrel-report-")
        options = webdriver.ChromeOptions()
        options.binary_location = CHROMIUM
        for argument in (
            "--headless",
            "--no-sandbox",
            "--disable-gpu",
            "--disable-quic",
            "--no-first-run",
            "--disable-background-networking",
            "--disable-component-update",
            "--disable-sync",
            "--disable-dev-shm-usage",
            "--hide-scrollbars",
            "--window-size=1200,800",
            "--user-data-dir=" + self._profile,
        ):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        try:
            self.driver = webdriver.Chrome(service=Service(DRIVER), options=options)
        except BaseException:
            shutil.rmtree(self._profile, ignore_errors=True)
            raise

    def close(self):
        self.driver.quit()
        shutil.rmtree(self._profile, ignore_errors=True)

    def command(self, name, **parameters):
        return self.driver.execute_cdp_cmd(name, parameters)

    def script(self, text, *arguments):
        return self.driver.execute_script(text, *arguments)

    # The page

    def open(self, page, address="", width=1200, height=800, scheme="light", motion="no-preference", phone=False):
        """Loads a page anew, as a window of that size and a person of that taste would have it."""
        self.command(
            "Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=phone
        )
        self.command("Emulation.setTouchEmulationEnabled", enabled=phone)
        self.command(
            "Emulation.setEmulatedMedia",
            features=[
                {"name": "prefers-color-scheme", "value": scheme},
                {"name": "prefers-reduced-motion", "value": motion},
            ],
        )
        # A change behind the "#" alone would load nothing.
        self.driver.get("about:blank")
        self.driver.get_log("browser")
        self.driver.get_log("performance")
        self.driver.get(page.as_uri() + address)
        self.wait(lambda: self.script("return performance.getEntriesByName('usable').length === 1"))

    def wait(self, condition):
        return WebDriverWait(self.driver, LONGEST_WAIT, poll_frequency=0.02).until(lambda _: condition())

    def complaints(self):
        """What the browser has written to its console since the page was loaded."""
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def requests(self):
        """The addresses that the page asked for since it was loaded."""
        messages = (json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance"))
        sent = (m["params"]["request"]["url"] for m in messages if m["method"] == "Network.requestWillBeSent")
        return [url for url in sent if url != "about:blank"]

    def long_tasks(self):
        """How long the page kept the browser from answering, in milliseconds, each time that it was beyond 50."""
        return self.driver.execute_async_script(
            """const done = arguments[0];
            const tasks = [];
            const observer = new PerformanceObserver((list) => tasks.push(...list.getEntries()));
            observer.observe({ type: 'longtask', buffered: true });
            setTimeout(() => { observer.disconnect(); done(tasks.map((task) => task.duration)); }, 100);"""
        )

    # Elements

    def all(self, selector):
        return [element for element in self.driver.find_elements(By.CSS_SELECTOR, selector) if element.is_displayed()]

    def one(self, selector):
        found = self.all(selector)
        if len(found) != 1:
            raise AssertionError(f"{len(found)} elements are shown for {selector}")
        return found[0]

    def texts(self, selector):
        return [element.text for element in self.all(selector)]

    def text(self, selector):
        return self.one(selector).text

    def keys(self, *keys):
        ActionChains(self.driver).send_keys(*keys).perform()

    def go(self, address):
        """Follows a link of the page's own."""
        self.script("location.hash = arguments[0]", address)
        self.wait(lambda: self.script("return location.hash") == address)
        self.settle()

    def settle(self):
        """Lets the page draw what it has been told."""
        self.driver.execute_async_script(
            "const done = arguments[0]; requestAnimationFrame(() => requestAnimationFrame(() => done()));"
        )

    def type_search(self, text):
        field = self.one("input[type=search]")
        field.clear()
        field.send_keys(text)

    def save_picture(self, file):
        self.settle()
        self.driver.save_screenshot(str(file))
