# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The panel, as paneldriver.cpp moves it."""

import json
import os
import subprocess
from pathlib import Path

from harness.bed import comes_true

PANEL = Path(os.environ.get("PANEL", ""))
SCREEN = {"QT_QPA_PLATFORM": "offscreen", "QT_QUICK_BACKEND": "software",
          "ASAN_OPTIONS": "detect_leaks=0"}  # Qt leaves that screen behind
# All visible items, the one of a name, and what they and the focus show.
MEMORY = """memory.items = (parent = contentItem.parent) => [].concat(...Array.from(parent.children)
    .filter(item => item.visible).map(item => [item, ...memory.items(item)])),
memory.item = name => memory.items().find(item => item.objectName === name) || {},
memory.texts = () => Object.assign({focus: activeFocusItem && activeFocusItem.objectName},
    ...memory.items().map(item => ({[item.objectName]: item.text}))),
memory.begin = reply => (memory.outcome = '', memory.reply = reply, reply.finished.connect(
    () => memory.outcome = JSON.stringify([reply.errorText || reply.result])))"""


class Panel:
    def __init__(self, **environment):
        self.process = subprocess.Popen([PANEL], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        env=os.environ | SCREEN | environment, text=True)
        self.run(MEMORY.replace("\n", ""))

    def close(self):
        self.process.stdin.close()
        assert self.process.wait(20) == 0

    def run(self, expression):
        """The value of an expression in the panel's QML."""
        print(f"JSON.stringify([{expression}])", file=self.process.stdin, flush=True)
        return json.loads(self.process.stdout.readline())[-1]

    def begin(self, request):
        self.run(f"memory.begin(wifi.{request})")

    def waits(self, expression, seconds=40):
        """Until it is true."""
        assert comes_true(lambda: self.run(expression), seconds), (
            expression, self.run("driver.hear()"))

    def reaches(self, stage):
        self.waits(f"memory.reply.stage === WifiReply.{stage}")

    def outcome(self, request=None):
        """What it ends with: a sentence, or the result."""
        if request:
            self.begin(request)
        self.waits("memory.outcome", 70)
        return json.loads(self.run("memory.outcome"))[0]

    def all(self, kind, value):
        """What this is of each item of that kind."""
        return self.run(f"memory.items().filter(item => /^{kind}/.test(item)).map(item => {value})")

    def shows(self, **texts):
        """These come to be seen, or not, if None; and what has the focus."""
        def seen():
            found = self.run("memory.texts()")
            return {name: found.get(name) for name in texts}
        assert comes_true(lambda: seen() == texts, 40), seen()

    def hears(self, *expected):
        """Whoever has the screen read comes to hear this, in one go."""
        self.waits(f"driver.hear().join('\\n').includes({json.dumps(chr(10).join(expected))})")

    def press(self, *names, secret=None):
        """One after the other; types what is asked for then."""
        for name in map(json.dumps, names):
            self.waits(f"memory.item({name}).enabled")
            self.run(f"memory.item({name}).forceActiveFocus(), driver.key('Space')")
        if secret:
            self.type("secret", secret)

    def type(self, field, text, end="Return"):
        self.shows(focus=field)
        self.run(f"activeFocusItem.text = '{text}', driver.key('{end}')")
