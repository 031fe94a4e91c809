#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Functions of the tools that run a command on a private desktop. Those tools source this file, set the options below,
# and call prepare_folders first.
# shellcheck disable=SC2034,SC2317 # the tools use the variables and functions

# tools/, and the name of the tool for its messages.
tools=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tool=${0##*/}
sound=yes
accessibility=no
keep=no
command_pid=
sound_service=
# The process id of the service that was started last, and those of all in order.
service=
services=()
leftovers=()
# Files outside of the desktop's folder, which are removed at the end.
outside_files=()

# Prints the header of the tool, from its fourth line on, as its usage.
usage() {
    sed -n '4,${/^#/!q; s/^# \{0,1\}//; p}' "$0" >&2
    exit 64
}

# Prints the error and the end of the named services' logs.
fail() {
    printf '%s: %s\n' "$tool" "$1" >&2
    shift
    local name log
    for name; do
        log=$QUELTO_TEST_DIR/logs/$name
        if [[ -s $log ]]; then
            printf 'Log of %s:\n' "$name" >&2
            tail -n 20 "$log" >&2
        fi
    done
    exit 125
}

# Runs a command again and again until it succeeds, for at most the given seconds.
wait_until() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < deadline)) || return 1
        sleep 0.02
    done
}

# Starts a service that ignores Ctrl-C and ends with this script. Sets `service` to its process id.
start_service() {
    local name=$1
    shift
    setsid setpriv --pdeathsig TERM -- "$@" >"$QUELTO_TEST_DIR/logs/$name" 2>&1 </dev/null &
    service=$!
    # Without a message when a test kills it.
    disown "$service"
    services+=("$service")
}

is_gone() { ! kill -0 "$1" 2>/dev/null; }

# Stops the services in reverse order, and kills those that do not end.
stop_services() {
    local index pid
    for ((index = ${#services[@]} - 1; index >= 0; --index)); do
        kill -TERM "${services[index]}" 2>/dev/null || true
    done
    for pid in "${services[@]}"; do
        wait_until 3 is_gone "$pid" || kill -KILL "$pid" 2>/dev/null || true
    done
}

# Sets `leftovers` to what the bus or the command started and left: the processes whose environment names this desktop.
find_leftovers() {
    # Without the variable, grep does not find itself. Not every process can be read.
    mapfile -t leftovers < <(env -u QUELTO_TEST_DIR grep -lszxF "QUELTO_TEST_DIR=$QUELTO_TEST_DIR" /proc/[0-9]*/environ)
    leftovers=("${leftovers[@]#/proc/}")
    leftovers=("${leftovers[@]%/environ}")
}

no_leftovers() {
    find_leftovers
    ((${#leftovers[@]} == 0))
}

stop_leftovers() {
    if ! no_leftovers; then
        kill -TERM "${leftovers[@]}" 2>/dev/null || true
        wait_until 2 no_leftovers || kill -KILL "${leftovers[@]}" 2>/dev/null || true
    fi
}

tear_down() {
    trap - EXIT
    trap '' INT TERM HUP
    stop_services
    stop_leftovers
    rm -f "${outside_files[@]}"
    if [[ $keep == yes ]]; then
        printf '%s: kept %s\n' "$tool" "$QUELTO_TEST_DIR" >&2
    else
        # The last service may still be writing. A failure here does not change the exit code.
        wait_until 5 rm -rf "$QUELTO_TEST_DIR" ||
            printf '%s: %s cannot be removed\n' "$tool" "$QUELTO_TEST_DIR" >&2
    fi
}

# Makes the desktop's folders, points the environment at them, and has them removed at the end.
prepare_folders() {
    QUELTO_TEST_DIR=$(mktemp -d "${TMPDIR:-/tmp}/quelto-desktop.XXXXXX")
    trap tear_down EXIT
    local name
    for name in run run/services home config data cache state Videos logs; do
        mkdir -m 700 "$QUELTO_TEST_DIR/$name"
    done
    printf 'XDG_VIDEOS_DIR="%s/Videos"\n' "$QUELTO_TEST_DIR" >"$QUELTO_TEST_DIR/config/user-dirs.dirs"
    export QUELTO_TEST_DIR
    # On the same volume as the other folders, because the home trash takes only files of its own volume.
    export HOME=$QUELTO_TEST_DIR/home
    export XDG_RUNTIME_DIR=$QUELTO_TEST_DIR/run
    export XDG_CONFIG_HOME=$QUELTO_TEST_DIR/config XDG_DATA_HOME=$QUELTO_TEST_DIR/data
    export XDG_CACHE_HOME=$QUELTO_TEST_DIR/cache XDG_STATE_HOME=$QUELTO_TEST_DIR/state
    export LIBGL_ALWAYS_SOFTWARE=1 NO_AT_BRIDGE=1
    unset DISPLAY WAYLAND_DISPLAY XAUTHORITY PULSE_SERVER PIPEWIRE_REMOTE PIPEWIRE_RUNTIME_DIR SESSION_MANAGER \
        DESKTOP_STARTUP_ID XDG_ACTIVATION_TOKEN
}

# Starts a message bus with the socket run/NAME. It starts programs on request only by the service files in run/services,
# so that it starts no others of the real system.
start_bus() {
    local name=$1 configuration=$QUELTO_TEST_DIR/run/$1.conf
    cat >"$configuration" <<XML
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=$QUELTO_TEST_DIR/run/$name</listen>
  <servicedir>$QUELTO_TEST_DIR/run/services</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
XML
    start_service "$name" dbus-daemon --nofork --nopidfile --config-file="$configuration"
    wait_until 10 test -S "$QUELTO_TEST_DIR/run/$name" || fail "the message bus did not start" "$name"
}

start_session_bus() {
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$QUELTO_TEST_DIR/run/bus
    start_bus bus
    export QUELTO_TEST_BUS_PID=$service
}

start_sound() {
    export QUELTO_TEST_SOUND=$tools/private-desktop-sound
    export QUELTO_TEST_SPEAKER=quelto_speaker QUELTO_TEST_MIC=quelto_mic QUELTO_TEST_MIC_SINK=quelto_mic_in
    if [[ $sound == yes ]]; then
        start_service sound "$QUELTO_TEST_SOUND" keep
        sound_service=$service
    fi
}

sound_is_ready() { [[ -e $QUELTO_TEST_DIR/run/sound.ready ]]; }
sound_is_settled() { sound_is_ready || is_gone "$sound_service"; }

wait_for_sound() {
    [[ $sound == yes ]] || return 0
    # The sound service tries several times before it gives up.
    wait_until 120 sound_is_settled || true
    sound_is_ready || fail "the sound server did not start" sound pipewire wireplumber pipewire-pulse
}

start_accessibility_bus() {
    local program
    program=$(sed -n 's/^Exec=//p' /usr/share/dbus-1/services/org.a11y.Bus.service) ||
        fail "no accessibility service is installed"
    unset NO_AT_BRIDGE
    start_service accessibility "$program" --launch-immediately
    export QUELTO_TEST_ACCESSIBILITY=$service
}

accessibility_answers() {
    gdbus call --session --dest org.a11y.Bus --object-path /org/a11y/bus --method org.a11y.Bus.GetAddress
}

wait_for_accessibility() {
    wait_until 10 accessibility_answers || fail "the accessibility service did not start" accessibility
}

report_slow_start() {
    if ((SECONDS >= 5)); then
        printf '%s: the start took %d seconds\n' "$tool" "$SECONDS" >&2
        cat "$QUELTO_TEST_DIR"/logs/sound >&2 2>/dev/null || true
    fi
}

# Runs the command and returns its exit code. Passes signals on to it.
run_command() {
    # In the background, so that traps run at once. `env` restores the signals that a shell ignores for background
    # commands.
    trap 'kill -TERM "$command_pid" 2>/dev/null || true' INT TERM HUP
    env --default-signal=INT --default-signal=QUIT -- setpriv --pdeathsig TERM -- "$@" <&0 &
    command_pid=$!
    local status=0
    wait "$command_pid" || status=$?
    # A trapped signal interrupts `wait`.
    while kill -0 "$command_pid" 2>/dev/null; do
        status=0
        wait "$command_pid" || status=$?
    done
    return "$status"
}
