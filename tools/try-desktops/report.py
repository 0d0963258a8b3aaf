"""Usage: report.py RESULTS DOCUMENT
Writes the results of a trial as the table at the end of a document, in place of the former one."""

import glob
import json
import os
import sys

START = "<!-- 以下由 scripts/try-desktops 写入 -->"
NAMES = {
    "gnome": "GNOME",
    "gnome-wayland": "GNOME，Wayland",
    "gnome-x11": "GNOME，X11",
    "plasma": "Plasma",
    "plasma-wayland": "Plasma，Wayland",
    "plasma-x11": "Plasma，X11",
}
RESULTS = {"passed": "通过", "failed": "**未通过**", "not applicable": "不适用"}


def read(directory):
    """The trials' descriptions, and the rows of all of them."""
    trials, rows = [], []
    for path in sorted(glob.glob(os.path.join(glob.escape(directory), "*.json"))):
        with open(path, encoding="utf-8") as file:
            content = json.load(file)
        if isinstance(content, dict):
            trials.append(content)
        else:
            rows += content
    for path in glob.glob(os.path.join(glob.escape(directory), "*.jsonl")):
        with open(path, encoding="utf-8") as file:
            rows += [json.loads(line) for line in file]
    rows.sort(key=lambda row: ([int(part) for part in row["row"].split(".")], row["session"]))
    return trials, rows


def cell(text):
    return " ".join(text.replace("|", "\\|").split())


def main():
    directory, document = sys.argv[1:3]
    trials, rows = read(directory)
    if not rows:
        sys.exit("there are no results")
    lines = [START, ""]
    for trial in trials:
        lines.append(f"- {NAMES[trial['desktop']]}：{trial['date']}，{trial['versions']}。")
    counts = [
        f"{name.strip('*')} {sum(row['result'] == result for row in rows)}" for result, name in RESULTS.items()
    ]
    lines += ["", "，".join(counts) + "。", "", "| 序号 | 项目 | 桌面 | 结果 | 所见 |", "|---|---|---|---|---|"]
    lines += [
        f"| {row['row']} | {cell(row['title'])} | {NAMES[row['session']]} | {RESULTS[row['result']]} |"
        f" {cell(row['seen'])} |"
        for row in rows
    ]
    with open(document, encoding="utf-8") as file:
        head = file.read().partition(START)[0]
    with open(document, "w", encoding="utf-8") as file:
        file.write(head + "\n".join(lines) + "\n")


main()
