#!/bin/sh
# Brings the data of the spam filter in a directory into the form that this server has. Here all
# servers have one form, so it only refuses what is no such directory.
if [ ! -d "$1" ] || [ ! -w "$1" ]; then
    echo "sa_convert.sh: no directory to write: $1" >&2
    exit 2
fi
