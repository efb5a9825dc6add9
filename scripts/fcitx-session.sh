#!/usr/bin/env bash
# Runs a command inside a private Fcitx 5 + Mozc session (see im-session.sh):
#   scripts/fcitx-session.sh COMMAND [ARGS...]
exec bash "$(dirname "$(readlink -f "$0")")/im-session.sh" fcitx5 "$@"
