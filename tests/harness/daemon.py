# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The daemon as a process."""

import os
import signal
import subprocess

from .waiting import comes_true

EXIT_WAIT = 15  # seconds; a supplicant that does not answer SAVE_CONFIG costs 10


class Daemon:
    def __init__(self, log_file, environment):
        self.log_file = log_file
        # A Qt that is built for it would send the log elsewhere when there is no terminal.
        self.environment = environment | {"QT_FORCE_STDERR_LOGGING": "1"}
        self.process = None

    def start(self, *arguments):
        with open(self.log_file, "wb") as log:
            self.process = subprocess.Popen([os.environ["BXWIFID"], *arguments], stderr=log,
                                            env=os.environ | self.environment)

    def is_running(self):
        return self.process and self.process.poll() is None

    def exit_status(self):
        """Of a daemon that ends by itself."""
        return self.process.wait(EXIT_WAIT)

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        return self.exit_status()

    def log(self):
        return self.log_file.read_text().splitlines()

    def logs(self, line):
        """Whether the log holds this line in time."""
        return comes_true(lambda: line in self.log())
