"""Measures kv408-demo against PulseView with its demo device, on this machine and in one run.

Both run on a virtual display of their own kind (Xvfb, the xcb platform plugin, no window manager),
with an empty home directory, one after the other. What is on the screen is read from the display's
memory, what is clicked goes through the XTEST extension, so the same method serves both:

- start to window: until the window is painted, told by the colour of one part of it;
- start to first trace: until 500 pixels of the plot area have a trace's colour. kv408-demo sweeps
  by itself; PulseView's Run is clicked the moment its window is there;
- CPU share: processor time of all threads in the given seconds, while the traces come (running) and
  after Stop (idle). The same for the display server, which shows what the program draws;
- memory: what is resident, shared libraries included, at the first trace and after running.

    bench/compare-programs [--seconds 20] [--starts 7] [--program build/release/kv408-demo]
                           [--pictures FOLDER]
"""

import argparse
import ctypes
import mmap
import os
import pathlib
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile
import time

WIDTH, HEIGHT = 1920, 1080  # the bench stands beside the window of kv408-demo
TRACE_PIXELS = 500
SETTLING_SECONDS = 3


class Screen:
    """A virtual display whose pixels are read from its memory."""

    def __init__(self, folder):
        read_end, write_end = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{WIDTH}x{HEIGHT}x24",
             "-fbdir", folder, "-nolisten", "tcp"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as numbers:
            number = numbers.readline().strip()
        if not number:
            sys.exit("Xvfb does not start")
        self.name = ":" + number
        with open(pathlib.Path(folder) / "Xvfb_screen0", "rb") as pixels:
            self.memory = mmap.mmap(pixels.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self.memory[:100])  # an XWD file
        self.bytes_a_line = header[12]
        self.first = header[0] + 12 * header[19]
        self.xlib = ctypes.CDLL("libX11.so.6")
        self.xtest = ctypes.CDLL("libXtst.so.6")
        self.xlib.XOpenDisplay.restype = ctypes.c_void_p
        self.xlib.XKeysymToKeycode.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
        self.display = ctypes.c_void_p(self.xlib.XOpenDisplay(self.name.encode()))

    def click(self, place):
        self.xtest.XTestFakeMotionEvent(self.display, -1, place[0], place[1], 0)
        for down in (1, 0):
            self.xtest.XTestFakeButtonEvent(self.display, 1, down, 0)
        self.xlib.XSync(self.display, 0)

    def press(self, keysym):
        code = self.xlib.XKeysymToKeycode(self.display, keysym)
        for down in (1, 0):
            self.xtest.XTestFakeKeyEvent(self.display, code, down, 0)
        self.xlib.XSync(self.display, 0)

    def pixels(self, area):
        """The bytes (blue, green, red, unused) of the pixels of area: left, top, right, bottom."""
        left, top, right, bottom = area
        starts = (self.first + y * self.bytes_a_line for y in range(top, bottom))
        return b"".join(self.memory[start + 4 * left:start + 4 * right] for start in starts)

    def count(self, colours, area):
        """How many pixels of area have one of colours, which are 0xRRGGBB."""
        seen = self.pixels(area)
        return sum(seen.count(colour.to_bytes(3, "little")) for colour in colours)

    def save(self, file):
        """Writes the screen to file as a portable pixmap."""
        seen = self.pixels((0, 0, WIDTH, HEIGHT))
        body = bytearray(3 * WIDTH * HEIGHT)
        for component in range(3):
            body[component::3] = seen[2 - component::4]
        pathlib.Path(file).write_bytes(b"P6 %d %d 255\n" % (WIDTH, HEIGHT) + body)

    def close(self):
        self.xlib.XCloseDisplay(self.display)
        self.process.terminate()
        self.process.wait()


class Program:
    """A program to measure, and where its window has what on a screen of WIDTH by HEIGHT.

    A window that looks otherwise is noticed: the traces' colours do not come, or Stop does not stop.
    """

    def __init__(self, name, command, plot, traces, sign):
        self.name, self.command = name, command
        self.plot, self.traces = plot, traces  # an area, and the colours of its traces
        self.sign = sign  # an area and a colour that tell that the window is painted

    def start_traces(self, screen):
        """Called as soon as the window is there."""

    def run_on(self, screen):
        """Called when the first trace is there; makes the traces come until stopped."""


class Kv408(Program):
    FRAMES, BUTTON = 0x24282E, 0x353B44
    STOP = 940  # a column of the button Stop beside its text

    def __init__(self, path):
        # The plot's upper half: a line on the zero row is no trace yet.
        super().__init__("kv408-demo", [path], (46, 94, 684, 340), (0xFFFF00, 0x80DCFF),
                         ((730, 30, 1268, 600), self.FRAMES))

    def stop(self, screen):
        # No button is lower, wherever it is.
        lowest = max(y for y in range(HEIGHT)
                     if screen.count([self.BUTTON], (self.STOP, y, self.STOP + 1, y + 1)))
        screen.click((self.STOP, lowest - 8))


class PulseView(Program):
    RUN = (58, 16)  # the button says "Stop" while it runs
    SAMPLES = (617, 71)
    END, RETURN = 0xFF57, 0xFF0D

    def __init__(self):
        plot = (80, 125, 900, 640)
        super().__init__("PulseView", ["pulseview", "--clean", "--driver", "demo"],
                         plot, (0xC4A000, 0x87207A, 0x204A87, 0x4E9A06), (plot, 0xFAF8EB))

    def start_traces(self, screen):
        screen.click(self.RUN)

    def run_on(self, screen):
        # It takes a million samples unless told to take as many as it can: five seconds.
        screen.click(self.RUN)
        time.sleep(1)
        screen.click(self.SAMPLES)
        time.sleep(0.5)
        screen.press(self.END)
        screen.press(self.RETURN)
        time.sleep(0.5)
        screen.click(self.RUN)

    def stop(self, screen):
        screen.click(self.RUN)


def processor_seconds(pid):
    """Processor time that all threads of pid have taken."""
    return time.clock_gettime((~pid << 3) | 2)  # how the kernel numbers the clock of a process


def megabytes(pid):
    """Resident memory of pid."""
    for line in pathlib.Path(f"/proc/{pid}/status").read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1]) / 1024
    raise RuntimeError("no VmRSS")


def wait_until(condition, what):
    deadline = time.monotonic() + 30
    while not condition():
        if time.monotonic() > deadline:
            sys.exit(f"{what} does not come")
        time.sleep(0.002)


class Run:
    """One start of a program, with a display and a home of its own."""

    def __init__(self, program):
        self.program = program
        self.home = tempfile.mkdtemp(prefix="compare-programs-")
        self.screen = Screen(self.home)
        kept = {key: os.environ[key] for key in ("PATH",) if key in os.environ}
        self.began = time.monotonic()
        self.process = subprocess.Popen(
            program.command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            env=kept | {"HOME": self.home, "XDG_RUNTIME_DIR": self.home, "LC_ALL": "C.UTF-8",
                        "DISPLAY": self.screen.name, "QT_QPA_PLATFORM": "xcb"})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        self.screen.close()
        shutil.rmtree(self.home)

    def measure_start(self):
        """Seconds from the start to the window and to the first trace."""
        program, screen = self.program, self.screen
        area, colour = program.sign
        painted = (area[2] - area[0]) * (area[3] - area[1]) // 4
        wait_until(lambda: screen.count([colour], area) >= painted, f"{program.name}'s window")
        window = time.monotonic() - self.began
        program.start_traces(screen)
        wait_until(self.has_trace, f"{program.name}'s trace")
        return window, time.monotonic() - self.began

    def has_trace(self):
        return self.screen.count(self.program.traces, self.program.plot) >= TRACE_PIXELS

    def shares(self, seconds):
        """Percent of one core that the program and the display server take."""
        watched = (self.process.pid, self.screen.process.pid)
        before, start = [processor_seconds(pid) for pid in watched], time.monotonic()
        time.sleep(seconds)
        after, taken = [processor_seconds(pid) for pid in watched], time.monotonic() - start
        return [100 * (late - early) / taken for early, late in zip(before, after)]

    def changes(self):
        """Whether the plot changes on the screen within a second."""
        before, deadline = self.screen.pixels(self.program.plot), time.monotonic() + 1
        while time.monotonic() < deadline:
            time.sleep(0.05)
            if self.screen.pixels(self.program.plot) != before:
                return True
        return False

    def save(self, folder, what):
        if folder:
            self.screen.save(pathlib.Path(folder) / f"{self.program.name}-{what}.ppm")


def measure_starts(program, count):
    """Medians of count starts after one that brings the files into memory."""
    times = []
    for _ in range(count + 1):
        with Run(program) as run:
            times.append(run.measure_start())
    return [statistics.median(column) for column in zip(*times[1:])]


def measure(program, options):
    """The figures of program by their names in the table."""
    figures = {}
    figures["start to window, s"], figures["start to first trace, s"] = measure_starts(
        program, options.starts)
    with Run(program) as run:
        run.measure_start()
        figures["resident memory at the first trace, MB"] = megabytes(run.process.pid)
        run.save(options.pictures, "first-trace")
        program.run_on(run.screen)
        time.sleep(SETTLING_SECONDS)
        if not run.has_trace():
            sys.exit(f"{program.name} does not run on")
        (figures["CPU share running, %"],
         figures["CPU share of the display server, running, %"]) = run.shares(options.seconds)
        figures["resident memory after running, MB"] = megabytes(run.process.pid)
        run.save(options.pictures, "running")
        program.stop(run.screen)
        time.sleep(SETTLING_SECONDS)
        if run.changes():
            sys.exit(f"{program.name} does not stop")
        (figures["CPU share idle, %"],
         figures["CPU share of the display server, idle, %"]) = run.shares(options.seconds)
        run.save(options.pictures, "idle")
    return figures


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    here = pathlib.Path(__file__).resolve().parent.parent
    parser.add_argument("--program", default=str(here / "build/release/kv408-demo"))
    parser.add_argument("--seconds", type=float, default=20, help="of each CPU share")
    parser.add_argument("--starts", type=int, default=7, help="of which the median is taken")
    parser.add_argument("--pictures", help="a folder for pictures of what was measured")
    options = parser.parse_args()
    ours, theirs = [measure(program, options) for program in (Kv408(options.program), PulseView())]
    load = os.getloadavg()[0]
    print(f"{'':46}{'kv408-demo':>12}{'PulseView':>12}{'ahead by':>12}")
    for name, value in ours.items():
        ahead = f"{theirs[name] / value:.1f}" if value > 0 else "-"
        print(f"{name:46}{value:12.2f}{theirs[name]:12.2f}{ahead:>12}")
    print(f"median of {options.starts} starts; shares over {options.seconds:g} s; load {load:.1f}")


if __name__ == "__main__":
    main()
