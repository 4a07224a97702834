#!/usr/bin/env bash
# Installs on macOS by a double click: runs install.sh, which lies beside this file, with the same options.
exec bash "$(dirname "${BASH_SOURCE[0]}")/install.sh" "$@"
