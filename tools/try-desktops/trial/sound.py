"""Rows on sound: what the program plays is heard at the output."""

import array
import math
import os
import subprocess
import wave

from trial.bus import pause, wait_until
from trial.rows import NotApplicable, expect, row

RATE = 44100
PITCH = 880
LENGTH = 3  # seconds
AUDIBLE = 1000  # of 32767
SINK = "trial"


def write_tone(path):
    samples = array.array(
        "h", (round(12000 * math.sin(2 * math.pi * PITCH * i / RATE)) for i in range(LENGTH * RATE))
    )
    with wave.open(path, "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(samples.tobytes())


def share_of(pitch, samples):
    """The part of the samples' energy at this pitch, 0 to 1."""
    energy = sum(sample * sample for sample in samples)
    if energy == 0:
        return 0.0
    step = 2 * math.pi * pitch / RATE
    cosine = sum(sample * math.cos(step * index) for index, sample in enumerate(samples))
    sine = sum(sample * math.sin(step * index) for index, sample in enumerate(samples))
    return 2 * (cosine * cosine + sine * sine) / (len(samples) * energy)


def seconds_of(pitch, path):
    """How long the recording has nothing but this pitch, and how long it has any sound, in seconds."""
    with open(path, "rb") as file:
        data = file.read()
    samples = array.array("h", data[: len(data) // 2 * 2])
    # A busy machine breaks a tone into pieces, so look at short parts.
    length = RATE // 20
    parts = [samples[start : start + length] for start in range(0, len(samples) - length, length)]
    loud = [part for part in parts if max(part) > AUDIBLE]
    return sum(share_of(pitch, part) > 0.9 for part in loud) / 20, len(loud) / 20


def answers():
    return subprocess.run(["pactl", "info"], capture_output=True, check=False).returncode == 0


def start_server(desktop):
    if answers():
        return
    desktop.spawn(
        "pulseaudio", "--daemonize=no", "-n", "--exit-idle-time=-1", "--use-pid-file=no",
        "--load=module-native-protocol-unix", f"--load=module-null-sink sink_name={SINK}",
    )
    expect(wait_until(answers, 15), "PulseAudio 没有启动")


def play(desktop, path):
    player = next(
        (
            line
            for line in subprocess.run(
                ["dpkg", "-L", "lexiquill-desktop"], capture_output=True, text=True, check=True
            ).stdout.split()
            if os.path.basename(line) == "lexiquill-sound-player"
        ),
        None,
    )
    expect(player, "软件包中没有播放程序")
    recording = "/tmp/recording"
    with open(recording, "wb") as file:
        recorder = subprocess.Popen(
            [
                "parec", "-d", f"{SINK}.monitor", "--latency-msec=50",
                "--format=s16le", f"--rate={RATE}", "--channels=1",
            ],
            stdout=file,
        )
        pause(1)
        try:
            # The player stops when its input ends.
            process = subprocess.Popen([player, path], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
            status = process.wait(timeout=40)
        finally:
            pause(0.5)
            recorder.terminate()
            recorder.wait()
    meaning = {3: "没有多媒体组件", 4: "没有输出设备", 5: "无法播放"}.get(status, f"状态 {status}")
    if status < 0:
        meaning = f"崩溃，信号 {-status}"
    expect(status == 0, f"播放程序退出：{meaning}")
    pure, loud = seconds_of(PITCH, recording)
    seen = f"监听中 {PITCH} Hz 的声音 {pure:.1f} 秒，共有声音 {loud:.1f} 秒"
    expect(pure > LENGTH / 2, seen)
    return seen


@row("4.1", "声音：播放 WAV，在空设备的监听中听到", ("gnome-wayland", "plasma-wayland"))
def wav(desktop):
    start_server(desktop)
    write_tone("/tmp/tone.wav")
    return play(desktop, "/tmp/tone.wav")


@row("4.2", "声音：播放 MP3，在空设备的监听中听到", ("gnome-wayland", "plasma-wayland"))
def mp3(desktop):
    start_server(desktop)
    write_tone("/tmp/tone.wav")
    done = subprocess.run(["lame", "--quiet", "/tmp/tone.wav", "/tmp/tone.mp3"], check=False)
    if done.returncode:
        raise NotApplicable("无法生成 MP3")
    return play(desktop, "/tmp/tone.mp3")
