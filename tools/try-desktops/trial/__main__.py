"""Usage: python3 -m trial SESSION RESULTS PATTERN
Runs the rows whose number begins with PATTERN ("" for all) in a desktop, and writes RESULTS/SESSION.json and
a picture of each."""

import json
import os
import re
import sys
import traceback

import gi

gi.require_version("Gtk", "3.0")

# The modules with rows register them.
from trial import appearance, home, hot_key, sound, starting, terminal, text
from trial.desktop import say
from trial.gnome import GnomeWayland, GnomeX11
from trial.plasma import PlasmaWayland, PlasmaX11
from trial.rows import ROWS, Failed, NotApplicable

SESSIONS = {session.name: session for session in (GnomeWayland, GnomeX11, PlasmaWayland, PlasmaX11)}


def order(entry):
    return [int(part) for part in entry[0].split(".")]


def run_row(desktop, function):
    try:
        desktop.end_program()
        desktop.close_search()
        home.reset()
        return "passed", function(desktop)
    except Failed as failure:
        return "failed", str(failure)
    except NotApplicable as reason:
        return "not applicable", str(reason)
    except Exception as error:  # a fault of one row must not end the trial
        traceback.print_exc()
        return "failed", f"检查中断：{type(error).__name__}: {str(error)[:150]}"


def main():
    name, results, pattern = sys.argv[1:4]
    desktop = SESSIONS[name](results)
    entries = sorted((entry for entry in ROWS if name in entry[2]), key=order)
    entries = [entry for entry in entries if re.match(pattern, entry[0])]
    rows = []
    try:
        home.reset()
        desktop.share_environment(**desktop.environment)
        desktop.start()
        for number, title, _, function in entries:
            result, seen = run_row(desktop, function)
            rows.append({"row": number, "title": title, "session": name, "result": result, "seen": seen})
            say(f"{name} {number} {result}: {seen}")
            try:
                if not desktop.has_picture(number):
                    desktop.save_picture(number)
            except Exception as error:  # the row's result is known
                say(f"{name} {number}: no picture ({error})")
    except Exception as error:
        traceback.print_exc()
        done = {entry["row"] for entry in rows}
        seen = f"桌面没有启动：{error}"
        rows += [
            {"row": number, "title": title, "session": name, "result": "failed", "seen": seen}
            for number, title, _, _ in entries
            if number not in done
        ]
    finally:
        desktop.stop()
    with open(os.path.join(results, f"{name}.json"), "w", encoding="utf-8") as file:
        json.dump(rows, file, ensure_ascii=False, indent=1)
    # Not sys.exit(): threads that wait for ended programs must not keep the process.
    os._exit(0)


main()
