"""Reads the help pages: their links, pictures and texts, and what is wrong with them."""

import html.parser
import re

MAKERS_ADDRESS = "https://www.example.com/"
VOID_TAGS = {"br", "hr", "img", "link", "meta"}
# Tags that do not separate words.
INLINE_TAGS = {"a", "b", "code", "i", "kbd", "q", "span"}


class Page(html.parser.HTMLParser):
    """One page: its links, pictures, texts, and what is wrong with its markup."""

    def __init__(self, path):
        super().__init__()
        self.path = path
        self.faults, self.links, self.pictures, self.ids, self.scripts = [], [], [], [], []
        self.relations, self.entries, self.examples, self.runs = {}, [], [], []
        self.title = self.heading = self.text = ""
        self.open_tags = []
        self.feed(path.read_text(encoding="utf-8"))
        self.close()
        if self.open_tags:
            self.faults.append(f"never closed: {self.open_tags}")
        self.text = words(self.text)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if "id" in values:
            self.ids.append(values["id"])
        if tag == "script" or any(name.startswith("on") for name in values):
            self.scripts.append(tag)
        if "href" in values:
            self.links.append(values["href"])
            self.relations[values.get("rel")] = values["href"]
        if tag == "img":
            self.pictures.append(values)
        if tag in VOID_TAGS:
            self.text += " "
            return
        self.open_tags.append((tag, values.get("class", "").split()))
        classes = self.open_tags[-1][1]
        if "entry" in classes:
            self.entries.append("")
        if tag == "tr" and "example" in classes:
            self.examples.append([])
        if tag == "td" and self.examples and self.is_inside("example"):
            self.examples[-1].append("")
        if tag == "pre" and "run" in classes:
            self.runs.append("")

    def handle_endtag(self, tag):
        if not self.open_tags or self.open_tags[-1][0] != tag:
            self.faults.append(f"line {self.getpos()[0]}: </{tag}> closes {self.open_tags[-1:]}")
            return
        self.open_tags.pop()
        if tag not in INLINE_TAGS:
            self.text += " "

    def handle_data(self, data):
        self.text += data
        innermost = self.open_tags[-1][0] if self.open_tags else ""
        if innermost == "title":
            self.title += data
        if innermost == "h1":
            self.heading += data
        if self.is_inside("entry"):
            self.entries[-1] += data
        if innermost == "td" and self.is_inside("example"):
            self.examples[-1][-1] += data
        if self.is_inside("run"):
            self.runs[-1] += data

    def is_inside(self, name):
        return any(name in classes for _, classes in self.open_tags)


def words(text):
    return " ".join(text.split())


def read_pages(folder):
    return {path.name: Page(path) for path in sorted(folder.glob("*.htm"))}


def link_faults(folder):
    """Every link and picture that leads nowhere, or out of the folder."""
    pages = read_pages(folder)
    faults = []
    for name, page in pages.items():
        targets = page.links + [picture["src"] for picture in page.pictures]
        for target in targets:
            if target == MAKERS_ADDRESS:
                continue
            file, _, fragment = target.partition("#")
            file = file or name
            if not re.fullmatch(r"[a-z-]+(/[a-z-]+)*\.[a-z]+", file):
                faults.append(f"{name}: {target} leads out of the folder")
            elif not (folder / file).is_file():
                faults.append(f"{name}: there is no {target}")
            elif fragment and fragment not in pages[file].ids:
                faults.append(f"{name}: there is no {target}")
    return faults


def outside_faults(folder):
    """Every address of another machine except the maker's, and every script."""
    faults = []
    for path in sorted(folder.rglob("*")):
        if path.suffix in (".htm", ".css", ".svg"):
            text = path.read_text(encoding="utf-8").replace(f'"{MAKERS_ADDRESS}"', "")
            faults += [f"{path.name}: {found}"
                       for found in re.findall(r"\w+://[^\s\"<]+|=\"//|@import|url\(", text)]
    for name, page in read_pages(folder).items():
        faults += [f"{name}: {script} runs something" for script in page.scripts]
    return faults
