# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""Networks on the air around the supplicant."""

from harness.supplicant import FakeSupplicant


class Radio(FakeSupplicant):
    """A scan finds the networks of a table, in rows as the supplicant prints them, and the first
    can be joined with the right key. It is stored twice then, as after two joins by hand."""

    def __init__(self, journal, table, key):
        self.ssid = table[0].split("\t")[-1]
        self.right_key = key
        self.key = None
        super().__init__(journal)
        self.answer("SCAN_RESULTS", "\n".join(["header", *table, ""]))
        self.answer("ADD_NETWORK", "0\n")
        self.store([])

    def react(self, command):
        if command == "SCAN":
            self.send_event("<3>CTRL-EVENT-SCAN-RESULTS ")
        elif command == "ADD_NETWORK":
            self.store(self.stored + ["0", "1"])
        elif command.startswith("REMOVE_NETWORK "):
            self.store([number for number in self.stored if number != command.split()[1]])
        elif " psk " in command:
            self.key = command.split(" psk ")[1]
        elif command.startswith("SELECT_NETWORK"):
            self.send_event("<3>CTRL-EVENT-SCAN-RESULTS ")  # the supplicant looks for it
            self.associate()

    def store(self, numbers):
        self.stored = numbers
        rows = [f"{number}\t{self.ssid}\tany\t\n" for number in numbers]
        self.answer("LIST_NETWORKS", "header\n" + "".join(rows))
        self.answer("STATUS", "wpa_state=DISCONNECTED\n")

    def associate(self):
        if self.key == self.right_key:
            self.answer("STATUS", f"bssid=02:00:00:00:01:00\nssid={self.ssid}\n"
                        "wpa_state=COMPLETED\nip_address=10.20.2.15\n")
            self.send_event("<3>CTRL-EVENT-CONNECTED - Connection completed")
        elif self.key != "NULL":
            self.send_event("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 reason=WRONG_KEY")
        else:  # it is some other network
            self.send_event("<3>CTRL-EVENT-CONNECTED - Connection completed")
