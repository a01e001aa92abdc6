#!/bin/sh
# Starts the demo host of the build in $1 (default: build) on the data directory demo-data/ (or
# $TR_DEMO_DATA), creating the demo company there on first run. `make demo` builds first.
set -eu
build=${1:-build}
host="$build/host/app/treasury-host"
library="$build/entry/libtreasury.so"
data=${TR_DEMO_DATA:-demo-data}

if [ ! -x "$host" ] || [ ! -f "$library" ]; then
    echo "run-demo: $host or $library is missing; build first (make build)" >&2
    exit 1
fi

# A picture instead of a window: for runs without a screen to look at.
smoke() {
    shot="$data/treasury-host.png"
    mkdir -p "$data"
    "$@" "$host" --data "$data" --create-demo --library "$library" --auto-login \
        --screen "ثبت شرح ثابت اسناد" --screenshot "$shot"
    echo "run-demo: no display to show the window; a screenshot of it is in $shot"
}

if [ "${QT_QPA_PLATFORM:-}" = offscreen ]; then
    smoke env
    exit 0
fi
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    cat >&2 <<'TEXT'
run-demo: there is no display ($DISPLAY and $WAYLAND_DISPLAY are empty).
  On a desktop:               make demo
  On a virtual X server:      xvfb-run -a make demo
  Without any display:        QT_QPA_PLATFORM=offscreen make demo   (saves a screenshot)
TEXT
    if command -v xvfb-run >/dev/null 2>&1; then
        echo "run-demo: running it under xvfb-run now" >&2
        smoke xvfb-run -a
        exit 0
    fi
    exit 1
fi
exec "$host" --data "$data" --create-demo --library "$library"
