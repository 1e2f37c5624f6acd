#!/usr/bin/env bash
# quiet_link.sh COMMAND...: runs a link command without one harmless complaint. clang emits the type
# information of the standard exceptions into every program that throws them, with another padding than
# libstdc++'s own copy, and ld 2.40 says so line by line, without a switch to stop it.
set -o pipefail
"$@" 2>&1 | { grep -v "duplicate section .* has different size$" || true; }
