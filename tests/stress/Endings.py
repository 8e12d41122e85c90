#!/usr/bin/python3
"""Starts the built program and closes it, in every state that something could hold it in:
VELMORA_ENDINGS times each. Each time the process has to end with status 0."""

import contextlib
import fcntl
import socket
import struct
import time

import driver
from driver import CONTROL, PREVIEW, SETTINGS, wait_for
from journey import ENDINGS, Journey, complaints, main

HTTPS_PORT = 443
SET_FLAGS, UP = 0x8914, 1


class Endings(Journey):
    def closing_ends_the_process(self, step):
        longest = 0.0
        for _ in range(ENDINGS):
            program = self.start()
            step()
            begin = time.monotonic()
            self.assertEqual(program.close(), 0)
            longest = max(longest, time.monotonic() - begin)
            self.assertEqual(complaints(program), [])
        print(f"{ENDINGS} of {ENDINGS} processes ended, the slowest after {longest:.3f} s")

    def test_closing_atOnce_endsTheProcess(self):
        self.closing_ends_the_process(lambda: None)

    def test_closing_duringACount_endsTheProcess(self):
        self.closing_ends_the_process(lambda: driver.keys("space"))

    def test_closing_withThePreviewOpen_endsTheProcess(self):
        def open_preview():
            self.program.press("Output preview")
            wait_for(lambda: driver.has_window(PREVIEW), "the preview")

        self.closing_ends_the_process(open_preview)

    # Its × does nothing while the dialog is open; it is closed right after the dialog.
    def test_closing_withTheDialogOpen_endsTheProcess(self):
        def open_and_close_settings():
            self.program.press("Settings")
            self.has_keyboard(SETTINGS)
            driver.close_window(CONTROL)
            # The window manager has passed that on when it has done what it is asked next.
            driver.place(SETTINGS, 900, 500)
            wait_for(lambda: driver.geometry(SETTINGS)[0] > 850, "the dialog to move")
            driver.keys("Escape")
            self.gone(SETTINGS)
            self.assertTrue(self.program.is_running())

        self.closing_ends_the_process(open_and_close_settings)

    # The update check of the start has a connection, and gets no answer.
    def test_closing_duringAnUpdateCheck_endsTheProcess(self):
        with contextlib.ExitStack() as connections, socket.socket() as server:
            try:
                # The virtual desktop's own network, if it has one, starts with nothing.
                fcntl.ioctl(server, SET_FLAGS, struct.pack("16sH14x", b"lo", UP))
                server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
                server.bind(("127.0.0.1", HTTPS_PORT))
            except OSError as reason:
                self.skipTest(f"this user may not open the port of HTTPS here: {reason}")
            server.listen()
            server.settimeout(driver.PATIENCE)
            self.closing_ends_the_process(
                lambda: connections.enter_context(server.accept()[0]))


main()
