"""A private sound server for those who drive Velmora."""

import os
import pathlib
import subprocess

from driver import wait_for


class SoundServer:
    """PulseAudio, playing into nothing, to be used in a `with`. What is started from then on finds
    it, and what would be heard can be taken from the monitor of its sink, "cue"."""

    def __init__(self, folder):
        self.socket = pathlib.Path(folder) / "sound"
        os.environ["PULSE_SERVER"] = f"unix:{self.socket}"

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.kill()

    def start(self):
        """Without rewinds: with them, a sink's monitor would have passed on up to 20 ms of silence
        already in place of the first samples."""
        self.socket.unlink(missing_ok=True)  # a killed server leaves it
        self.process = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
             "--high-priority=no", f"--log-target=newfile:{self.socket}.log",
             "-L", f"module-native-protocol-unix auth-anonymous=1 socket={self.socket}",
             "-L", "module-null-sink sink_name=cue norewinds=1"])
        wait_for(lambda: self.control("info").returncode == 0, "a sound server")

    def kill(self):
        self.process.kill()
        self.process.wait()

    def control(self, *arguments):
        return subprocess.run(["pactl", *arguments], capture_output=True, text=True, check=False)

    def listen(self, rate, sink="cue"):
        """A process that writes what the sink plays, as 16-bit samples."""
        return subprocess.Popen(
            ["parec", f"--device={sink}.monitor", "--format=s16le", "--channels=1",
             f"--rate={rate}", "--latency-msec=20", "--raw"], stdout=subprocess.PIPE)
