#!/bin/sh
# docs/reference.sh: writes the reference of the exported interface to build/reference/html. Fails on
# anything that is not documented.
set -eu
export PYTHONDONTWRITEBYTECODE=1
cd "$(dirname "$0")/.."
library=BaseVersion/vlcommon
output=build/reference
mkdir -p "$output"
rm -rf "$output/xml"    # a member that is gone would stay
docs/functions_page.py $library/VlCommon.def $library/include/vlcm > "$output/functions.dox"
doxygen docs/Doxyfile
docs/check_reference.py "$output/xml" $library/VlCommon.def
