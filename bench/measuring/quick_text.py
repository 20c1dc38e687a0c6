"""From the press of a key to the text in the field that has the focus, beyond the delay that is meant."""
import json

from measuring.daemons import QuickText
from measuring.memory import wait_for, window
from measuring.table import missing, row, section, spread

# The program's own wait, so that the focus has settled before the paste.
FIXED_MILLISECONDS = 120.0
COLUMNS = ["median ms", "p95 ms", "lost"]

KINDS = {
    "paste": {"mode": "paste", "restoreClipboard": False},
    "paste, and the clipboard given back": {"mode": "paste", "restoreClipboard": True},
}


def measure(plan):
    title = f"Key press → text in the field, over the fixed {FIXED_MILLISECONDS:.0f} ms ({plan.texts} presses each)"
    return [section(title, COLUMNS, [text_row(plan, label, payload) for label, payload in KINDS.items()])]


def text_row(plan, label, payload):
    value = json.dumps({"text": "Tiếng Việt: {date} {time}", **payload}, ensure_ascii=False)
    with QuickText(plan, value) as program:
        # Its window takes the focus when it comes: only then can the field have it.
        wait_for(window, "the window")
        program.wait_live()
        times, lost = plan.times("time_quick_text", program.keycode, plan.texts)
    if not times:
        return missing(label, f"none of {lost} presses was answered")
    found = spread([time - FIXED_MILLISECONDS for time in times])
    return row(label, {"median ms": found["median"], "p95 ms": found["p95"], "lost": lost})
