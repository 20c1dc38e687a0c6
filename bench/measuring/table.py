"""Sections of rows, and their look on a terminal.

A section is {"title", "columns", "rows"}; a row is {"label", "values", "aims", "missing"}: values by
column, aims as {"text", "reached"}, and, where there is nothing to measure, the reason.
"""
import statistics

MISSING = "–"


def section(title, columns, rows):
    return {"title": title, "columns": columns, "rows": rows}


def row(label, values, *aims):
    return {"label": label, "values": values, "aims": [aim for aim in aims if aim]}


def missing(label, reason):
    return {"label": label, "values": {}, "aims": [], "missing": reason}


def at_most(value, limit, text):
    return {"text": text, "reached": value <= limit}


def percentile(values, share):
    """The smallest value that at least this share of all values does not exceed."""
    ordered = sorted(values)
    return ordered[max(0, -int(-share * len(ordered) // 1) - 1)]


def spread(values):
    """Median and 95th percentile of times in milliseconds."""
    return {"median": round(statistics.median(values), 3), "p95": round(percentile(values, 0.95), 3)}


def cell(value):
    if value is None:
        return MISSING
    if isinstance(value, float):
        return f"{value:.1f}" if value >= 100 else f"{value:.2f}"
    return f"{value:,}" if isinstance(value, int) else str(value)


def cells(columns, entry):
    """A row's texts: label, one for each column, the aim, whether it was reached."""
    aims = entry["aims"]
    return [entry["label"], *(cell(entry["values"].get(column)) for column in columns),
            "; ".join(aim["text"] for aim in aims),
            "; ".join("reached" if aim["reached"] else "MISSED" for aim in aims)]


def render_section(part, label_width):
    columns = part["columns"]
    head = ["", *columns, "aim", "in this run"]
    measured = [cells(columns, entry) for entry in part["rows"] if "missing" not in entry]
    widths = [max(len(line[index]) for line in [head, *measured]) for index in range(len(head))]
    widths[0] = label_width

    def line(texts):
        figures = (text.rjust(width) for text, width in zip(texts[1:-2], widths[1:-2]))
        remarks = (text.ljust(width) for text, width in zip(texts[-2:], widths[-2:]))
        return "  ".join([texts[0].ljust(label_width), *figures, *remarks]).rstrip()

    lines = ["", part["title"], line(head if measured else ["" for _ in head])]
    for entry in part["rows"]:
        lines.append(f"{entry['label'].ljust(label_width)}  not measured: {entry['missing']}"
                     if "missing" in entry else line(cells(columns, entry)))
    return [text for text in lines[:2]] + [text for text in lines[2:] if text]


def render(report):
    machine = report["machine"]
    lines = [f"{machine['processors']} × {machine['processor']}, Linux {machine['kernel']}; load before "
             f"{machine['load'][0]}, after {machine['load after'][0]}; {report['seconds']:.0f} s"]
    if report["quick"]:
        lines.append("QUICK RUN: shows that everything can be measured; its figures carry no weight.")
    width = max(len(entry["label"]) for part in report["sections"] for entry in part["rows"])
    for part in report["sections"]:
        lines += render_section(part, width)
    return "\n".join(lines)
