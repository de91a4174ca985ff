"""Tables of values, ratios and goals, printed as they are measured and written to a document."""

# Columns: what was measured, its value, its ratio, its goal, and whether the goal is met.
WIDTHS = (42, 11, 23, 11, 6)
HEADINGS = ("measured", "value", "ratio", "goal", "")


class Table:
    def __init__(self):
        self.missed = False
        self.lines = []

    def section(self, title, remarks):
        """Starts a table. The remarks explain it and appear only in the document."""
        print(f"\n{title}\n")
        self.print_cells(HEADINGS)
        self.print_cells(["-" * width for width in WIDTHS])
        self.lines += ["", f"## {title}", "", remarks.strip(), "", "| " + " | ".join(HEADINGS) + " |",
                       "|---|--:|--:|--:|---|"]

    def print_cells(self, cells):
        print("  ".join(text.ljust(width) for text, width in zip(cells, WIDTHS)).rstrip())

    def row(self, what, value, ratio="", goal="", met=None):
        """`met` is True or False if there is a goal, otherwise None."""
        self.missed = self.missed or met is False
        verdict = {None: "", True: "met", False: "MISSED"}[met]
        self.print_cells((what, value, ratio, goal, verdict))
        cells = (what.strip() if what[0] != " " else "&nbsp; " + what.strip(), value, ratio, goal,
                 verdict)
        self.lines.append("| " + " | ".join(cells) + " |")

    def write(self, path, introduction):
        path.write_text(introduction.strip() + "\n" + "\n".join(self.lines) + "\n")
