# Shared by every script here: where things are and how they speak. Sourced by bash.
set -euo pipefail

TOP=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
BUILD=$TOP/build
CACHE=${XDG_CACHE_HOME:-$HOME/.cache}/tunovka

say() { printf '== %s\n' "$*" >&2; }
die() { printf '!! %s\n' "$*" >&2; exit 1; }

# Runs a command as root: directly, else through sudo.
as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"
    elif command -v sudo >/dev/null; then sudo "$@"
    else die "'$1' needs root: run this as root or install sudo."
    fi
}

# keep_awake: until this script ends, the processors wait for work without falling asleep, where the
# system lets us ask for that. Under Wine programs and its server wake each other all the time, and a
# virtual machine's processor takes longer to wake than what they do then.
keep_awake() {
    [ -w /dev/cpu_dma_latency ] || return 0
    ( exec >/dev/cpu_dma_latency 2>/dev/null </dev/null
      printf '\0\0\0\0'  # microseconds, as long as this stays open
      exec tail --pid=$$ -f /dev/null ) &
}

# with_lock FILE COMMAND...: one at a time over every script on this machine that uses FILE.
# What the command leaves running must not keep the lock: it closes LOCK_FD. A command that fails
# half-way goes on after with_lock (the shell's -e does not reach inside): it ends by die.
with_lock() {
    local file=$1 fd status=0
    shift
    mkdir -p "$(dirname "$file")"
    exec {fd}>"$file"
    flock "$fd"
    LOCK_FD=$fd "$@" || status=$?
    exec {fd}>&-
    return $status
}
