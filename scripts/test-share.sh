#!/usr/bin/env bash
# Test code as a share of product code: non-blank, non-comment lines of .cpp/.h/.inc files.
# Tests: tests/ and fuzz/. Code: src/, include/, host/, reader/, cli/.
# Usage: scripts/test-share.sh [--files DIR...]   (--files prints the count of every file)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cd "$root"

# Drops blank lines, // lines and /* ... */ blocks (also when they span lines).
count() {
    find "$@" -type f \( -name '*.cpp' -o -name '*.h' -o -name '*.inc' \) -print0 2>/dev/null |
        xargs -0 -r awk '
            FNR == 1 { inblock = 0 }
            {
                line = $0
                if (inblock) {
                    if (index(line, "*/") == 0) next
                    line = substr(line, index(line, "*/") + 2); inblock = 0
                }
                while (match(line, /\/\*/)) {
                    rest = substr(line, RSTART + 2)
                    if (index(rest, "*/") == 0) { line = substr(line, 1, RSTART - 1); inblock = 1; break }
                    line = substr(line, 1, RSTART - 1) substr(rest, index(rest, "*/") + 2)
                }
                sub(/^[ \t]+/, "", line)
                if (line == "" || substr(line, 1, 2) == "//") next
                n[FILENAME]++
            }
            END { for (f in n) printf "%d %s\n", n[f], f }'
}

if [ "${1:-}" = "--files" ]; then
    shift
    [ $# -eq 0 ] && set -- tests fuzz
    count "$@" | sort -k2
    exit 0
fi

tests=$(count tests fuzz | awk '{ s += $1 } END { print s + 0 }')
code=$(count src include host reader cli | awk '{ s += $1 } END { print s + 0 }')
awk -v t="$tests" -v c="$code" 'BEGIN {
    printf "test lines %d, code lines %d, tests are %.1f%% of the code\n", t, c, 100 * t / c }'
