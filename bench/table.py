"""One table of values, ratios and goals."""

# What was measured, its value, its ratio, its goal, and whether it is met.
WIDTHS = (38, 11, 21, 11, 6)


class Table:
    def __init__(self):
        self.missed = False
        self.row("measured", "value", "ratio", "goal")
        self.print_cells(["-" * width for width in WIDTHS])

    def print_cells(self, cells):
        print("  ".join(text.ljust(width) for text, width in zip(cells, WIDTHS)).rstrip())

    def row(self, what, value, ratio="", goal="", met=None):
        """`met` is True or False where there is a goal."""
        self.missed = self.missed or met is False
        verdict = {None: "", True: "met", False: "MISSED"}[met]
        self.print_cells((what, value, ratio, goal, verdict))
