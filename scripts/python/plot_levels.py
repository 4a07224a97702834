"""Plots the peak levels of a sound file as text: a line for every tenth of a second, a column for every decibel.

PYTHONPATH=python python3 scripts/python/plot_levels.py FILE
"""

import os
import sys

import meridek_felspar as felspar

FLOOR_DB = -60.0
MILLISECONDS = 100  # a line

with felspar.headless.open() as reaper:
    reaper.InsertMedia(os.path.abspath(sys.argv[1]), 0)
    levels = felspar.peak_columns(reaper.GetMediaItem(None, 0))
    for begin in range(0, len(levels), MILLISECONDS):
        stretch = slice(begin, begin + MILLISECONDS)
        loudest = max(max(levels.max_peak[stretch]), max(levels.min_peak[stretch]))
        bar = "#" * max(0, round(loudest - FLOOR_DB))
        print(f"{levels.time[begin]:7.1f} s {loudest:6.1f} dB {bar}")
