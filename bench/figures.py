"""Figures as a measurement tells them: a table as Markdown, with what was aimed at."""


class Table:
    def __init__(self):
        self.rows = []
        self.is_missed = False

    def add(self, what, value, unit, aim=None, least=False):
        verdict = ""
        if aim is not None:
            is_met = value >= aim if least else value <= aim
            verdict = "met" if is_met else "missed"
            self.is_missed |= not is_met
            aim = f"{'at least' if least else 'at most'} {aim:g}"
        row = f"| {what} | {value:.3g} | {unit} | {aim or ''} | {verdict} |"
        print(row, flush=True)
        self.rows.append(row)

    def print(self):
        print("\n| measurement | | | aim | |\n|---|--:|---|--:|---|\n" + "\n".join(self.rows))


def percentile(values, share):
    return sorted(values)[min(int(len(values) * share), len(values) - 1)]
