"""Rows on the shell in a terminal."""

import subprocess

from trial.rows import expect, row

COMPLETE = """
source /usr/share/bash-completion/bash_completion
_completion_loader lexiquill
words=$(complete -p lexiquill | sed -n 's/.*-F \\([^ ]*\\).*/\\1/p')
COMP_WORDS=(lexiquill sea) COMP_CWORD=1 COMP_LINE='lexiquill sea' COMP_POINT=13
"$words" lexiquill sea lexiquill
printf '%s\\n' "${COMPREPLY[@]}"
"""


@row("9.3", "bash 补全", ("gnome-wayland", "plasma-wayland"))
def completion(desktop):
    answer = subprocess.run(["bash", "-c", COMPLETE], capture_output=True, text=True, check=False)
    words = answer.stdout.split()
    expect("search" in words, "lexiquill sea 没有补全：" + (answer.stderr.strip()[-100:] or "没有建议"))
    return "lexiquill sea → " + "、".join(words)
