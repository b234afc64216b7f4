# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause
#
# Completion of bxwifictl for fish. Verbs and options are those of its own help.

function __bxwifictl_verbs
    bxwifictl --help 2>/dev/null | string replace --filter --regex '^  (?:-., )?([a-z-]+)  +(.*)' '$1\t$2'
end

function __bxwifictl_options
    set --local words (commandline --tokenize --cut-at-cursor --current-process)
    set --local help (bxwifictl $words[2] --help 2>/dev/null)
    printf '%s\n' $help |
        string replace --filter --regex '^ +(--[a-z-]+)(?: [A-Z]+)?  +(.*)' '$1\t$2'
    string match --all --regex '(?<=\[)--[a-z-]+' -- $help # of those that only the usage names
    printf '%s\t%s\n' --help 'print all about the verb'
end

# Whether the word before the current one is an option that takes this, as its help names it.
function __bxwifictl_takes
    set --local words (commandline --tokenize --cut-at-cursor --current-process)
    set --local option (string escape --style=regex -- $words[-1])
    bxwifictl $words[2] --help 2>/dev/null | string match --quiet --regex -- "^ +$option $argv[1] "
end

function __bxwifictl_follows
    set --local words (commandline --tokenize --cut-at-cursor --current-process)
    test "$words[-1]" = $argv[1]
end

function __bxwifictl_networks
    set --local cache $HOME/.cache
    set --query XDG_CACHE_HOME; and set cache $XDG_CACHE_HOME
    cat $cache/bxwifictl/networks 2>/dev/null
end

set --local operand 'not __fish_use_subcommand; and not __bxwifictl_takes "[A-Z]+"'
set --local option "$operand; and string match --quiet -- '-*' (commandline --current-token)"
complete --command bxwifictl --no-files
complete --command bxwifictl --condition __fish_use_subcommand --arguments '(__bxwifictl_verbs)'
complete --command bxwifictl --condition $option --arguments '(__bxwifictl_options)'
complete --command bxwifictl --condition '__bxwifictl_takes FILE' --force-files
complete --command bxwifictl --condition '__bxwifictl_takes KIND' --arguments 'open wpa wpa3 wep peap'
complete --command bxwifictl --condition "$operand; and __fish_seen_subcommand_from connect forget" \
    --arguments '(__bxwifictl_networks)'
complete --command bxwifictl --condition '__bxwifictl_follows wired' --arguments 'live static dhcp'
complete --command bxwifictl --condition '__bxwifictl_follows dhcp' --arguments 'on off'
