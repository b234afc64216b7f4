# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The panel, as paneldriver.cpp moves it."""

import json
import os
import subprocess
from pathlib import Path

from harness.bed import comes_true

from radio import SECRET

PANEL = Path(os.environ.get("PANEL", ""))
SCREEN = {"QT_QPA_PLATFORM": "offscreen", "QT_QUICK_BACKEND": "software",
          "ASAN_OPTIONS": "detect_leaks=0"}  # Qt leaves that screen behind


class Panel:
    def __init__(self, **environment):
        self.process = subprocess.Popen([PANEL], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        env=os.environ | SCREEN | environment, text=True)

    def close(self):
        self.process.stdin.close()
        assert self.process.wait(20) == 0

    def ask(self, command, what=""):
        print(command, what, sep="\t", file=self.process.stdin, flush=True)
        return json.loads(self.process.stdout.readline())

    def run(self, expression):
        """The value of an expression in the panel's QML."""
        return self.ask("run", expression)[0]

    def begin(self, request):
        """Has the client begin this."""
        self.run(f"memory.outcome = '', memory.reply = wifi.{request}, (reply => reply.finished."
                 "connect(() => (memory.outcome = JSON.stringify([reply.errorText, reply.result]),"
                 " reply === memory.reply && (memory.reply = null))))(memory.reply)")

    def reaches(self, stage):
        assert comes_true(lambda: self.run(f"memory.reply.stage === WifiReply.{stage}"), 40)

    def outcome(self, request=None):
        """What it ends with: a sentence, or the result."""
        if request:
            self.begin(request)
        assert comes_true(lambda: self.run("memory.outcome"), 70), request
        problem, result = json.loads(self.run("memory.outcome"))
        return problem or result

    def item(self, name):
        """What is to be seen of it; nothing is hidden."""
        return next((item for item in self.ask("look") if item["objectName"] == name), {})

    def all(self, field, kind=None):
        """This of each item that has it and is of that kind."""
        return [item[field] for item in self.ask("look")
                if field in item and kind in (None, item["type"])]

    def shows(self, focus=None, **texts):
        """These come to be seen, or not, if None."""
        def look():
            items = {item["objectName"]: item for item in self.ask("look")}
            return focus and items.get(focus, {}).get("activeFocus"), {
                name: items.get(name, {}).get("text") for name in texts}
        expected = (focus and True, texts)
        assert comes_true(lambda: look() == expected, 40), look()

    def hears(self, *expected):
        """Whoever has the screen read comes to hear this, in one go."""
        assert comes_true(lambda: "\n".join(expected) in "\n".join(self.ask("hear")), 40), (
            self.ask("hear"))

    def press(self, name):
        assert comes_true(lambda: self.item(name).get("enabled"), 40), name
        self.ask("focus", name)
        self.ask("key", "Space")

    def type(self, field, text, end="Return"):
        self.shows(focus=field)
        self.ask("key", "Ctrl+A")
        self.ask("type", text)
        self.ask("key", end)

    def join_nowhere(self):
        self.press("hidden")
        self.type("name", "Nowhere", "Tab")
        self.type("kinds", "", "Tab")
        self.type("secret", SECRET)
        self.shows(progress="Joining the network …")
