"""The files of the user on trial."""

import json
import os
import shutil
import subprocess

HOME = os.path.expanduser("~")
WORDBOOK = f"{HOME}/.local/share/Lexiquill/vocabulary.json"
SETTINGS = f"{HOME}/.config/Lexiquill/Lexiquill.conf"
# Shift and Super with D: no desktop uses it.
HOT_KEY = {
    "id": "cmd_shift_d",
    "name": "Command + Shift + D",
    "keyCode": 2,
    "carbonModifiers": 256 + 512,
    "symbolString": "⌘ ⇧ D",
}
HOT_KEY_NAMES = ("Super", "Shift", "d")


def reset(hot_key=None):
    """As on the first start, with the offline dictionary, and with a hotkey of the user's if given."""
    # The directories stay: shells watch those above them, and while they read all programs again because of a
    # change, a search shows nothing.
    os.makedirs(f"{HOME}/.local/share/applications", exist_ok=True)
    for directory in (".local/share/Lexiquill", ".config/Lexiquill", ".cache/Lexiquill"):
        os.makedirs(f"{HOME}/{directory}", exist_ok=True)
        for entry in os.scandir(f"{HOME}/{directory}"):
            if entry.is_dir(follow_symlinks=False):
                shutil.rmtree(entry.path)
            else:
                os.unlink(entry.path)
    with open(SETTINGS, "w", encoding="utf-8") as file:
        file.write("[General]\ndictionarySourceMode=appleOffline\n")
        if hot_key:
            text = json.dumps(hot_key, separators=(",", ":"))
            escaped = text.replace("\\", "\\\\").replace('"', '\\"')
            file.write(f'lexiquill_custom_global_hotkey="@ByteArray({escaped})"\n')


def look_up(word):
    subprocess.run(
        ["lexiquill", "search", word], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
    )


def has_word(word):
    """Whether the wordbook has the word, however it is written there."""
    try:
        with open(WORDBOOK, encoding="utf-8") as file:
            records = json.load(file)
    except (OSError, ValueError):
        return False
    return f'"{word}"' in json.dumps(records, ensure_ascii=False)
