#!/usr/bin/env bash
# A private CUPS scheduler with one cups-pdf queue "PDF", for tests that print
# for real. It never touches the machine's own CUPS: its configuration, spool,
# cache, logs and output folder live in one temporary folder, it listens only
# on a socket in that folder, and cups-pdf sees a configuration of our own
# (the scheduler runs in a mount namespace where /etc/cups is that folder).
#
#   cups-session.sh run COMMAND...  starts it, runs COMMAND with CUPS_SERVER and
#                                   LANTERN_CUPS_PDF_DIR set, stops it; exits
#                                   with COMMAND's status
#   cups-session.sh start DIR       starts it in DIR and prints the variables
#                                   (NAME=value lines) clients need
#   cups-session.sh stop DIR        stops the scheduler started in DIR
#
# Exits with 77 (skipped) when a private scheduler cannot run here: cups-pdf
# must run as root, and the mount namespace needs root too.
set -euo pipefail

ppd_file=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd

can_run() {
  if [ "$(id -u)" -ne 0 ]; then
    echo "cups-session: needs root (cups-pdf and the mount namespace)" >&2; return 1
  fi
  for tool in /usr/sbin/cupsd /usr/sbin/lpadmin /usr/lib/cups/backend/cups-pdf unshare; do
    command -v "$tool" >/dev/null || { echo "cups-session: $tool is missing" >&2; return 1; }
  done
  unshare --mount --propagation private true 2>/dev/null \
    || { echo "cups-session: mount namespaces are not allowed here" >&2; return 1; }
}

write_configuration() {
  local dir=$1
  mkdir -p "$dir"/{etc/ppd,spool,cache,state,tmp,log,PDF,cups-pdf-spool}
  chmod 755 "$dir" "$dir/PDF"
  chmod 1777 "$dir/tmp"

  cat >"$dir/etc/cups-files.conf" <<CONF
ServerRoot $dir/etc
RequestRoot $dir/spool
CacheDir $dir/cache
StateDir $dir/state
TempDir $dir/tmp
AccessLog $dir/log/access_log
ErrorLog $dir/log/error_log
PageLog $dir/log/page_log
Printcap $dir/printcap
SystemGroup root
FileDevice No
CONF

  cat >"$dir/etc/cupsd.conf" <<CONF
LogLevel info
Listen $dir/cups.sock
Browsing No
WebInterface No
DefaultAuthType None
ErrorPolicy abort-job
PreserveJobFiles No
PreserveJobHistory Yes
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
CONF

  cat >"$dir/etc/cups-pdf.conf" <<CONF
Out $dir/PDF
AnonDirName $dir/PDF
Spool $dir/cups-pdf-spool
Log $dir/log
LogType 3
Grp root
CONF
}

start() {
  local dir=$1
  can_run || exit 77
  write_configuration "$dir"

  # In its own mount namespace the scheduler, and every backend it starts,
  # sees our folder as /etc/cups: that is where cups-pdf reads its settings.
  unshare --mount --propagation private sh -c \
    'mount --bind "$1/etc" /etc/cups && exec /usr/sbin/cupsd -f -c "$1/etc/cupsd.conf" -s "$1/etc/cups-files.conf"' \
    sh "$dir" >"$dir/log/cupsd.out" 2>&1 </dev/null &
  echo $! >"$dir/cupsd.pid"

  export CUPS_SERVER="$dir/cups.sock"
  local ready=""
  for _ in $(seq 1 100); do
    if [ -S "$CUPS_SERVER" ] && lpstat -r 2>/dev/null | grep -q 'is running'; then ready=1; break; fi
    kill -0 "$(cat "$dir/cupsd.pid")" 2>/dev/null || break
    sleep 0.1
  done
  if [ -z "$ready" ]; then
    echo "cups-session: the scheduler did not start" >&2
    cat "$dir/log/cupsd.out" "$dir/log/error_log" >&2 2>/dev/null || true
    stop "$dir"
    exit 1
  fi

  # The driver list names the PPD "lsb/usr/cups-pdf/CUPS-PDF_opt.ppd"; take it
  # from there, or the file itself when the list does not have it.
  local model
  model=$(lpinfo -m 2>/dev/null | awk '/CUPS-PDF_opt\.ppd/ {print $1; exit}')
  if [ -n "$model" ]; then
    lpadmin -p PDF -E -v cups-pdf:/ -m "$model"
  else
    lpadmin -p PDF -E -v cups-pdf:/ -P "$ppd_file"
  fi
  lpadmin -d PDF

  echo "CUPS_SERVER=$CUPS_SERVER"
  echo "LANTERN_CUPS_PDF_DIR=$dir/PDF"
}

stop() {
  local dir=$1 pid
  [ -f "$dir/cupsd.pid" ] || return 0
  pid=$(cat "$dir/cupsd.pid")
  kill "$pid" 2>/dev/null || true
  for _ in $(seq 1 50); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.1
  done
  kill -9 "$pid" 2>/dev/null || true
  rm -f "$dir/cupsd.pid"
}

case "${1:-}" in
  start)
    [ $# -eq 2 ] || { echo "usage: $0 start DIR" >&2; exit 2; }
    start "$2"
    ;;
  stop)
    [ $# -eq 2 ] || { echo "usage: $0 stop DIR" >&2; exit 2; }
    stop "$2"
    ;;
  run)
    shift
    [ $# -ge 1 ] || { echo "usage: $0 run COMMAND..." >&2; exit 2; }
    can_run || exit 77
    session=$(mktemp -d "${TMPDIR:-/tmp}/lantern-cups.XXXXXX")
    trap 'stop "$session"; rm -rf "$session"' EXIT
    while IFS='=' read -r name value; do
      export "$name=$value"
    done < <(start "$session")
    [ -n "${CUPS_SERVER:-}" ] || exit 1
    status=0
    "$@" || status=$?
    exit $status
    ;;
  *)
    sed -n '2,20p' "$0" >&2
    exit 2
    ;;
esac
