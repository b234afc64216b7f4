# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
"""The shells offer what the program's own help lists, and names of networks as they are."""

import os
import re
import subprocess
from pathlib import Path

import pytest

BXWIFICTL = Path(os.environ["BXWIFICTL"])
# Given the file and what stands behind the command, each prints what the shell would offer.
BASH = """source "$0"; compopt() { echo "$@"; }; COMP_WORDS=(bxwifictl "$@" after) COMP_CWORD=$#
          COMP_LINE=$(sed 's/ \\([:=]\\) /\\1/g' <<<"bxwifictl $*x")
          COMP_LINE=${COMP_LINE%x} COMP_POINT=${#COMP_LINE}; COMP_LINE+=" after"; _bxwifictl
          last=${!#}; [[ $last != [\\"\\']* ]] || COMPREPLY=("${last:0:1}$COMPREPLY${last:0:1}")
          eval "printf '%s\\n' ${COMPREPLY[*]}" """
ZSH = """_describe() { print -l -- ${verbs%%:*} ${options%%:*} $short }
         compadd() { print -l -- ${@#--} }; _files() { print /proc/ }
         complete() { local CURRENT=$#words; source $1 }; words=(bxwifictl "$@")
         complete $0 || true"""
FISH = """source $argv[1]; complete -C "bxwifictl $(string join -- ' ' $argv[2..])" | cut -f 1"""
SHELLS = [("bash", BASH, "bxwifictl"), ("zsh", ZSH, "_bxwifictl"), ("fish", FISH, "bxwifictl.fish")]
NAMES = "Lab WPA2\n$(echo 'Lab')\nGrüße\nA:b=c\n"


@pytest.mark.parametrize("shell, script, file", SHELLS, ids=["bash", "zsh", "fish"])
def test_completion(tmp_path, shell, script, file):
    (tmp_path / "bxwifictl").mkdir()
    (tmp_path / "bxwifictl" / "networks").write_text(NAMES)
    environment = {"PATH": f"{BXWIFICTL.parent}:/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                   "HOME": str(tmp_path), "XDG_CACHE_HOME": str(tmp_path)}

    def run(*command):
        return subprocess.check_output(command, env=environment, stderr=subprocess.STDOUT,
                                       text=True, timeout=60)

    def offers(*words):
        path = Path(__file__).parents[2] / "client" / "completion" / file
        return set(filter(None, run(shell, "-c", script, path, *words).splitlines()))

    verbs = re.findall(r"^  (?:-., )?([a-z-]+)  ", run(BXWIFICTL, "--help"), re.MULTILINE)
    assert offers("") == set(verbs) >= {"connect", "wired", "--help"}
    assert offers("-") >= {"--help", "--version"}
    for verb in "connect", "scan", "wired":
        options = re.findall(r"--[a-z-]+", run(BXWIFICTL, verb, "--help"))
        assert offers(verb, "--") == {*options, "--help"} >= {"--json"}
    assert offers("connect", "--security", "") == {"open", "wpa", "wpa3", "wep", "peap"}
    assert offers("connect", "--uri-file", "/pro") in ({"-o filenames", "/proc"}, {"/proc/"})
    assert offers("nonsense", "") == set()  # and nothing is said
    assert offers("wired", "") == {"live", "static", "dhcp"}
    assert offers("wired", "dhcp", "") == {"on", "off"}
    assert offers("forget", "") == set(NAMES.splitlines())
    if shell == "bash":  # which takes these for words of their own, and has words as they are typed
        assert offers("forget", "A", ":", "b") == {"b=c"}
        assert offers("connect", "--security", "=", "wpa") == {"wpa", "wpa3"}
        assert offers("forget", "Lab\\ W") == {"Lab WPA2"}
        assert offers("forget", "'$(") == offers("forget", '"$(') == {"$(echo 'Lab')"}
