"""Definitions that the tests have the command report on."""

import shutil
from pathlib import Path
from xml.sax.saxutils import quoteattr

EXAMPLE = Path(__file__).resolve().parents[2] / "examples" / "disk-console"


def node(cookie, name, inside="", kind="List", icon=1, menu=0, queries=(), scripts=()):
    """A Node element; `queries` are pairs of a tag and a file's cookie."""
    is_view = kind == "HTML"
    query = "".join(f"<Query Tag={quoteattr(tag)} File='{file}'/>" for tag, file in queries)
    script = "".join(f"<Script File='{file}'/>" for file in scripts)
    return (
        f"<Node Cookie='{cookie}' Name={quoteattr(name)} Icon='{icon}' Type='{kind}'>"
        f"<ChildQueries>{query}</ChildQueries><MenuScript File='{menu}'/><Scripts>{script}</Scripts>"
        + ("<StyleSheet/>" if is_view else "")
        + (f"<Nodes>{inside}</Nodes>" if inside else "")
        + "</Node>"
    )


def dialog(cookie, name):
    return f"<Dialog Cookie='{cookie}' Name={quoteattr(name)} Icon='1' Type='Dialog'><MenuScript/><StyleSheet/></Dialog>"


def write_project(folder, nodes, dialogs="", files=()):
    """A project with the icon 1; `files` are names of code files, with cookies from 100, and their contents."""
    folder.mkdir(parents=True)
    shutil.copy(EXAMPLE / "icons" / "disk.ico", folder / "disk.ico")
    entries = "<Icon Cookie='1' Name='disk.ico'/>"
    for cookie, (name, contents) in enumerate(files, 100):
        entries += f"<File Cookie='{cookie}' Name={quoteattr(name)}/>"
        if contents is not None:
            (folder / name).write_bytes(contents)
    project = folder / "console.xml"
    project.write_text(
        f"<Project><NodeGroup>{nodes}</NodeGroup><DialogGroup>{dialogs}</DialogGroup>"
        f"<FileGroup>{entries}</FileGroup></Project>",
        encoding="utf-8",
    )
    return project


def wide(folder, total):
    """A root, and below it groups of a hundred nodes each; node N is named "Node N", and `total` nodes there are."""
    groups = []
    cookie = 1
    while cookie < total:
        first, last = cookie + 1, min(cookie + 100, total)
        leaves = "".join(node(leaf, f"Node {leaf}") for leaf in range(first, last))
        groups.append(node(cookie, f"Node {cookie}", leaves))
        cookie = last
    return write_project(folder, node(0, "Node 0", "".join(groups)))


def deep(folder, levels):
    """Nodes that are each the only child of the one before: "Level 1", "Level 2" and so on."""
    text = ""
    for level in range(levels, 0, -1):
        text = node(level, f"Level {level}", text)
    return write_project(folder, text)


# Each would set window.broken if the page took it for anything but text.
SCRIPT = "</script><script>window.broken = 1</script>"
PICTURE = "<img src=x onerror='window.broken = 1'>"
CLOSING = "]]>--><!-- <script> <svg onload='window.broken = 1'>"
HOSTILE_CODE = "<!-- <script>\n" + SCRIPT + "\n]]>\n" + PICTURE + "\n&lt;b&gt; \\u003c \u2028 \u2029 end\n"


def hostile(folder):
    """Names, tags and contents that try to become markup."""
    children = (
        node(2, PICTURE, queries=[(SCRIPT, 100), (PICTURE, 7)], scripts=[100])
        + node(3, CLOSING)
        + node(4, "turned \u202e round")
        + node(5, "")
        + node(6, "javascript:window.broken=1")
    )
    return write_project(
        folder,
        node(1, SCRIPT, children, menu=100),
        dialog(10, SCRIPT) + dialog(11, PICTURE),
        [
            ("code.js", HOSTILE_CODE.encode("utf-8")),
            ("turned.js", "a \u202e b\n".encode("utf-8")),
            ("binary.bin", bytes(range(256)) * 8),
            ("large.txt", b"line of text\n" * 30_000),
            ("empty.txt", b""),
            ("gone.js", None),
            ("narrow.js", "caf\u00e9 \u20ac\n".encode("cp1252")),
        ],
    )
