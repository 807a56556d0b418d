#!/usr/bin/python3
"""The page that `ondrel report` writes, in a headless browser.

usage: tests/report/report_test.py COMMAND [--screenshot FILE] [TEST...]
  COMMAND            the command to test: build/release/bin/ondrel
  --screenshot FILE  writes a picture of the example's page instead of testing
  TEST               tests to run, as module or module.Class.test; all of them without one

Needs Debian's chromium, chromium-driver and python3-selenium. Prints "N passed, N failed" last.
"""

import argparse
import sys
import tempfile
import unittest
from pathlib import Path

from browser import Browser
from page_test import Setting, example_page

MODULES = ["example_tests", "look_tests", "hostile_tests"]


def main():
    parser = argparse.ArgumentParser(description="Tests the page of 'ondrel report' in a headless browser.")
    parser.add_argument("command", type=Path)
    parser.add_argument("--screenshot", type=Path, metavar="FILE")
    parser.add_argument("tests", nargs="*", metavar="TEST")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="ondrel-report-") as folder:
        Setting.command = arguments.command.resolve()
        Setting.folder = Path(folder)
        Setting.browser = Browser()
        try:
            if arguments.screenshot:
                Setting.browser.open(example_page(), "#nodes/7", width=1200, height=760)
                Setting.browser.save_picture(arguments.screenshot)
                return 0
            tests = unittest.defaultTestLoader.loadTestsFromNames(arguments.tests or MODULES)
            result = unittest.TextTestRunner(verbosity=2, stream=sys.stdout).run(tests)
        finally:
            Setting.browser.close()
    failed = len({test.id() for test, _ in result.failures + result.errors})  # one test may fail in two places
    print(f"{result.testsRun - failed} passed, {failed} failed")
    return 0 if failed == 0 and result.testsRun > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
