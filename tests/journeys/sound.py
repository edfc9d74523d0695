"""Ears: records what the sound sink was given, and tells level and pitch."""

import array
import math
import subprocess

RATE = 44100


class Recording:
    """One channel of samples, -32768 to 32767, RATE a second."""

    def __init__(self, samples):
        self.samples = samples

    def part(self, start, end):
        """From second `start` to second `end`."""
        return Recording(self.samples[int(start * RATE):int(end * RATE)])

    def level(self):
        """Decibels below full scale (root mean square); -100 for silence."""
        if not self.samples:
            return -100.0
        power = sum(s * s for s in self.samples) / len(self.samples)
        return max(-100.0, 10 * math.log10(power / 32768 ** 2)) if power else -100.0

    def pitch(self):
        """Frequency of a plain tone in hertz, 0 for silence. Counts rises through zero that come
        after a fall well below it, so that noise does not count."""
        threshold = max(map(abs, self.samples), default=0) / 4
        if threshold < 8:
            return 0.0
        rises, below = [], False
        for i, sample in enumerate(self.samples):
            if sample < -threshold:
                below = True
            elif below and sample > 0:
                rises.append(i)
                below = False
        if len(rises) < 2:
            return 0.0
        return (len(rises) - 1) * RATE / (rises[-1] - rises[0])


def record(seconds, env):
    """Listens to the stage's sink for that time."""
    wanted = int(seconds * RATE) * 2
    process = subprocess.Popen(["parec", "-d", "null.monitor", "--raw", "--format=s16le",
                                f"--rate={RATE}", "--channels=1", "--latency-msec=20"],
                               env=env, stdout=subprocess.PIPE)
    data = b""
    while len(data) < wanted:
        chunk = process.stdout.read(wanted - len(data))
        if not chunk:
            break
        data += chunk
    process.kill()
    process.wait()
    return Recording(array.array("h", data[:len(data) // 2 * 2]))
