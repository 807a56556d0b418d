"""What all tests of the page share."""

import subprocess
import unittest

import definitions


class Setting:
    """What all tests share."""

    command = None
    browser = None
    folder = None
    pages = {}

    @classmethod
    def page(cls, name, make):
        """The page of a definition, which `make` writes into a folder; made when it is first asked for."""
        if name not in cls.pages:
            project = make(cls.folder / name)
            page = cls.folder / (name + ".html")
            arguments = [cls.command, "report", project.name, "-o", page]
            subprocess.run(arguments, cwd=project.parent, check=True, stdout=subprocess.DEVNULL)
            cls.pages[name] = page
        return cls.pages[name]


def example_page():
    return Setting.page("example", lambda folder: definitions.EXAMPLE / "disk-console.xml")


class PageTest(unittest.TestCase):
    """After each test the page has complained of nothing and asked for nothing but itself."""

    def setUp(self):
        self.browser = Setting.browser

    def tearDown(self):
        self.assertEqual(self.browser.complaints(), [])
        for url in self.browser.requests():
            self.assertRegex(url, r"^(file:///\S+\.html$|data:)")

    def assert_no_horizontal_scroll(self):
        width, inner = self.browser.script("return [document.documentElement.scrollWidth, innerWidth]")
        self.assertLessEqual(width, inner)
        beyond = self.browser.script(
            """return [...document.querySelectorAll('body *')].filter((element) => {
                 const box = element.getBoundingClientRect();
                 return box.width > 0 && box.right > innerWidth + 1 && !element.closest('.code, .scroll, .unseen');
               }).map((element) => element.outerHTML.slice(0, 120))"""
        )
        self.assertEqual(beyond, [])

    def row(self, name):
        for row in self.browser.all("[role=treeitem]"):
            if self.browser.script("return arguments[0].querySelector('.name').textContent", row) == name:
                return row
        raise AssertionError(f"no row {name}")

    def names(self):
        return self.browser.texts("[role=treeitem] .name")

    def selected(self):
        return self.browser.text("[role=treeitem][aria-selected=true] .name")
