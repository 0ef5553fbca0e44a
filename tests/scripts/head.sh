# What the scripts begin with: an empty directory of their own, $work, gone at the end.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "$1"; exit 1; }
has() { command -v "$1" >/dev/null || { echo "$1 is not installed: what it would do was not checked"; return 1; }; }
