"""Programs whose output goes to a pseudo-terminal."""

import os
import struct
import subprocess
import sys
import tempfile
import time

try:
    import fcntl
    import pty
    import termios
except ImportError:
    print("SKIPPED: no pseudo-terminals here")
    sys.exit(77)


class Finished:
    """What a program printed and how it ended."""

    def __init__(self, status, out, shown, seconds):
        self.status = status  # negative: the signal that ended it
        self.out = out  # what did not go to the terminal
        self.shown = shown
        self.seconds = seconds  # after the last key was pressed, else after its start


def run_on_terminal(arguments, streams=("err",), environment=None, columns=80, press=None, keys=b"\x03"):
    """Runs the program with these of its streams, "out" and "err", on a terminal; the other one is a file.

    When `press(shown)` is true, the keys are pressed on the terminal, once.
    """
    master, slave = pty.openpty()
    fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    file = tempfile.TemporaryFile()
    ends = {name: slave if name in streams else file for name in ("out", "err")}

    def take_terminal():
        os.setsid()
        fcntl.ioctl(slave, termios.TIOCSCTTY, 0)

    start = time.monotonic()
    with subprocess.Popen(
        arguments, stdin=slave, stdout=ends["out"], stderr=ends["err"], env=environment, preexec_fn=take_terminal
    ) as process:
        os.close(slave)
        shown = b""
        while True:
            try:
                piece = os.read(master, 65536)
            except OSError:
                break
            if not piece:
                break
            shown += piece
            if press is not None and press(shown.decode(errors="replace")):
                press = None
                os.write(master, keys)
                start = time.monotonic()
        status = process.wait()
    seconds = time.monotonic() - start
    os.close(master)
    with file:
        file.seek(0)
        out = file.read().decode()
    return Finished(status, out, shown.replace(b"\r\n", b"\n").decode(), seconds)
