#!/usr/bin/python3
"""group_filter.py HEADER: the header as Doxygen reads it, its declarations in their subsystem. The number
of lines stays."""
import pathlib
import sys

from reference_sources import subsystems

path = pathlib.Path(sys.argv[1])
text = path.read_text(encoding="utf-8")
group = subsystems().get(path.name)
if group:
    text = text.replace("\nVLCM_BEGIN\n", f"\nVLCM_BEGIN /** @addtogroup {group} */ /**@{{*/\n")
    text = text.replace("\nVLCM_END\n", "\n/**@}*/ VLCM_END\n")
sys.stdout.write(text)
