#!/usr/bin/env bash
# Runs a command inside a private IBus + Mozc session (see im-session.sh):
#   scripts/ibus-session.sh COMMAND [ARGS...]
exec bash "$(dirname "$(readlink -f "$0")")/im-session.sh" ibus "$@"
