"""Keys and pointer for KWin on Wayland, by its protocol org_kde_kwin_fake_input."""

import os
import socket
import struct

from trial.bus import pause

INTERFACE = b"org_kde_kwin_fake_input"
# Codes of linux/input-event-codes.h.
CODES = {
    "Escape": 1, "Tab": 15, "Return": 28, "Control": 29, "Shift": 42, "Alt": 56, "space": 57, "F2": 60,
    "comma": 51, "End": 107, "Down": 108, "Super": 125,
}
for first, row in ((2, "1234567890"), (16, "qwertyuiop"), (30, "asdfghjkl"), (44, "zxcvbnm")):
    CODES.update({character: first + index for index, character in enumerate(row)})
LEFT_BUTTON = 0x110


def text_argument(text):
    data = text + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)


class FakeInput:
    def __init__(self):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(10)
        self.socket.connect(os.path.join(os.environ["XDG_RUNTIME_DIR"], os.environ["WAYLAND_DISPLAY"]))
        self.last_id = 1
        self.received = b""
        registry = self._new_id()
        self._send(1, 1, struct.pack("=I", registry))
        globals_ = {}
        for sender, opcode, body in self._round_trip():
            if sender == registry and opcode == 0:
                name, length = struct.unpack_from("=II", body)
                interface = body[8 : 8 + length - 1]
                globals_[interface] = (name, struct.unpack_from("=I", body, len(body) - 4)[0])
        if INTERFACE not in globals_:
            raise RuntimeError("KWin does not permit simulated input")
        name, version = globals_[INTERFACE]
        self.device = self._new_id()
        self._send(
            registry,
            0,
            struct.pack("=I", name) + text_argument(INTERFACE) + struct.pack("=II", min(version, 4), self.device),
        )
        self._send(self.device, 0, text_argument(b"trial") + text_argument(b"trial"))
        self._round_trip()

    def key(self, *names):
        """Presses the keys together."""
        codes = [CODES[name] for name in names]
        for code, state in [(code, 1) for code in codes] + [(code, 0) for code in reversed(codes)]:
            self._send(self.device, 10, struct.pack("=II", code, state))
            self._round_trip()
            pause(0.02)
        pause(0.1)

    def type(self, text):
        for character in text:
            self.key("space" if character == " " else character)

    def click(self, x, y):
        self._send(self.device, 9, struct.pack("=ii", round(x * 256), round(y * 256)))
        self._round_trip()
        pause(0.3)
        for state in (1, 0):
            self._send(self.device, 2, struct.pack("=II", LEFT_BUTTON, state))
            self._round_trip()
            pause(0.05)
        pause(0.2)

    def _new_id(self):
        self.last_id += 1
        return self.last_id

    def _send(self, target, opcode, body):
        self.socket.sendall(struct.pack("=II", target, (8 + len(body)) << 16 | opcode) + body)

    def _round_trip(self):
        """The events until the compositor has handled all requests so far."""
        callback = self._new_id()
        self._send(1, 0, struct.pack("=I", callback))
        events = []
        while True:
            while len(self.received) >= 8:
                sender, size_and_opcode = struct.unpack_from("=II", self.received)
                size = size_and_opcode >> 16
                if len(self.received) < size:
                    break
                body, self.received = self.received[8:size], self.received[size:]
                if sender == 1 and size_and_opcode & 0xFFFF == 0:
                    raise RuntimeError(f"KWin refuses simulated input: {body!r}")
                if sender == callback:
                    return events
                events.append((sender, size_and_opcode & 0xFFFF, body))
            data = self.socket.recv(65536)
            if not data:
                raise RuntimeError("KWin has closed the connection")
            self.received += data
