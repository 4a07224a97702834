#!/usr/bin/env bash
# Installs what lies beside this script into the workstation's resource folder, or removes it. Does what
# `felspar install` and `felspar uninstall` do and keeps the same list, so each removes what the other installed.
# For Linux and macOS; needs bash 3.2 and the tools that every such system has.
set -euo pipefail
export LC_ALL=C

usage() {
    cat <<'END'
Usage: install.sh [--resource-path FOLDER] [--uninstall] [--replace] [--dry-run]

  --resource-path FOLDER  the workstation's resource folder, when it is not in its usual place
  --uninstall             remove what was installed
  --replace               also install in place of files that are not ours or were changed; they are moved aside
  --dry-run               only show what would be done

The exit status is 1 if a file was kept back or something failed.
END
}

fail() {
    echo "install.sh: $1" >&2
    exit "${2:-1}"
}

newline=$'\n'
unset CDPATH # else cd might go to a folder of that name elsewhere, and print where
here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
list_path=Scripts/MERIDEK_FELSPAR/installed.txt
list_head='# MERIDEK_FELSPAR: installed files with their SHA-256 sums'
resources='' removes=false replaces=false dry_run=false
while [ $# -gt 0 ]; do
    case $1 in
        --resource-path)
            resources=${2:-}
            [ -n "$resources" ] || fail "--resource-path needs a folder" 2
            # No command is to take it for an option.
            case $resources in -*) resources=./$resources ;; esac
            shift
            ;;
        --uninstall) removes=true ;;
        --replace) replaces=true ;;
        --dry-run) dry_run=true ;;
        --help)
            usage
            exit 0
            ;;
        *) fail "unknown option $1; --help lists them" 2 ;;
    esac
    shift
done

# --- The workstation's resource folder

configuration_folder() {
    if [ "$(uname -s)" = Darwin ]; then
        [ -z "${HOME:-}" ] || echo "$HOME/Library/Application Support"
    elif [ -n "${XDG_CONFIG_HOME:-}" ]; then
        echo "$XDG_CONFIG_HOME"
    elif [ -n "${HOME:-}" ]; then
        echo "$HOME/.config"
    fi
}

# Where the program may lie; a portable installation keeps its resource folder there.
program_folders() {
    local program
    if [ "$(uname -s)" = Darwin ]; then
        printf '%s\n' /Applications "${HOME:-}/Applications"
        return
    fi
    type -aP reaper | while IFS= read -r program; do
        dirname "$(readlink -f "$program")"
    done || true
    printf '%s\n' /opt/REAPER "${HOME:-}/opt/REAPER"
}

resource_folders() {
    local configuration folder
    configuration=$(configuration_folder)
    if [ -n "$configuration" ] && [ -d "$configuration/REAPER" ]; then echo "$configuration/REAPER"; fi
    program_folders | while IFS= read -r folder; do
        if [ -f "$folder/reaper.ini" ]; then echo "$folder"; fi
    done
}

# That of the program that saved the last project; nothing if that is not known.
version() {
    local project
    [ -f "$resources/reaper.ini" ] || return 0
    project=$(awk 'tolower($0) ~ /^\[reaper\]/ { inside = 1; next }
                   /^\[/ { inside = 0 }
                   inside && tolower($0) ~ /^lastproject=/ { sub(/\r$/, ""); print substr($0, 13); exit }' \
        "$resources/reaper.ini")
    [ -f "$project" ] || return 0
    { head -c 256 "$project" | head -n 1 || true; } |
        sed -n 's|^<REAPER_PROJECT [^"]*"\([^"/]*\)["/].*|\1|p'
}

sws() {
    local file
    for file in "$resources"/UserPlugins/reaper_sws*; do
        if [ -e "$file" ]; then
            basename "$file"
            return
        fi
    done
}

# --- The list of what was installed: lines "SUM  PATH" and "# folder PATH"

# Each path in one spelling only, or one file would count as two. The steps below are split at "|".
stays_inside() {
    case /$1/ in
        *//* | */./* | */../* | *\\* | *'|'* | *[[:cntrl:]]*) return 1 ;;
    esac
}

# check_list FILE TEXT
check_list() {
    local line number=0 file_line='^[0-9a-f]{64}  .+$'
    [ "${2%%"$newline"*}" = "$list_head" ] || fail "$1: line 1 is damaged"
    while IFS= read -r line; do
        number=$((number + 1))
        case $line in
            '# folder '*) stays_inside "${line#\# folder }" ;;
            '' | '#'*) true ;;
            *) [[ $line =~ $file_line ]] && stays_inside "${line:66}" ;;
        esac || fail "$1: line $number is damaged"
    done <<<"$2"
}

# Sets what was installed: its lines, its paths and the folders that were made.
read_list() {
    local text file=$resources/$list_path
    installed_lines='' installed_paths='' installed_folders=''
    [ -e "$file" ] || [ -L "$file" ] || return 0
    [ -f "$file" ] || fail "$file: is not a file"
    text=$(sed $'s/\r$//' "$file")
    check_list "$file" "$text"
    installed_lines=$(sed '/^#/d' <<<"$text")
    installed_paths=$(cut -c 67- <<<"$installed_lines" | sort -u)
    installed_folders=$(sed -n 's/^# folder //p' <<<"$text")
}

# has_line LINES LINE
has_line() {
    case $newline$1$newline in *"$newline$2$newline"*) return 0 ;; *) return 1 ;; esac
}

# write_list FILE_LINES FOLDERS
write_list() {
    local text
    text=$(
        set -e
        echo "$list_head"
        sort -u <<<"$2" | sed -e '/^$/d' -e 's/^/# folder /'
        sort -u <<<"$1" | sort -k 2 | sed '/^$/d'
    )
    write_file "$resources/$list_path" <<<"$text"
}

# --- Files

sum_of() {
    if command -v sha256sum >/dev/null; then sha256sum; else shasum -a 256; fi <"$1" | cut -c 1-64
}

temporary=''
trap 'if [ -n "$temporary" ]; then rm -f "$temporary"; fi' EXIT

# write_file FILE: the standard input under that name, in one step: a program that has the old file open keeps it.
write_file() {
    temporary=$(dirname "$1")/.felspar-$$-0.tmp
    cat >"$temporary"
    mv -f "$temporary" "$1"
    temporary=''
}

# What killed writers left: files .felspar-PROCESS-NUMBER.tmp whose process has gone.
remove_abandoned() {
    local folder file
    for folder in UserPlugins "${list_path%/*}" "${list_path%/*}/stubs"; do
        for file in "$resources/$folder"/.felspar-*.tmp; do
            [[ ${file##*/} =~ ^\.felspar-([0-9]+)-[0-9]+\.tmp$ ]] || continue
            kill -0 "${BASH_REMATCH[1]}" 2>/dev/null || rm -f "$file"
        done
    done
}

# What is at a path of the resource folder: nothing, "other" for a link or a folder, otherwise the file's sum.
present() {
    if [ -L "$1" ]; then
        echo other
    elif [ -f "$1" ]; then
        sum_of "$1"
    elif [ -e "$1" ]; then
        echo other
    fi
}

reason_to_keep() {
    if [ "$2" = other ]; then
        echo "it is a link or a folder"
    elif ! has_line "$installed_paths" "$1"; then
        echo "it was not installed by this program"
    elif ! has_line "$installed_lines" "$2  $1"; then
        echo "it has been changed since it was installed"
    fi
}

free_name() {
    local name=$1.saved number=2
    while [ -e "$resources/$name" ] || [ -L "$resources/$name" ]; do
        name=$1.saved-$number
        number=$((number + 1))
    done
    echo "$name"
}

plugin_files() {
    local file
    for file in "$here"/reaper_MERIDEK_FELSPAR.so "$here"/reaper_MERIDEK_FELSPAR.dylib; do
        if [ -f "$file" ]; then basename "$file"; fi
    done
}

package_paths() {
    local file
    plugin_files | sed 's|^|UserPlugins/|'
    for file in "$here"/scripts/lua/*.lua; do echo "Scripts/MERIDEK_FELSPAR/$(basename "$file")"; done
    for file in "$here"/stubs/*.lua; do echo "Scripts/MERIDEK_FELSPAR/stubs/$(basename "$file")"; done
}

# The file to install at a path; nothing if there is none, or all are to go.
source_of() {
    local file
    case $1 in
        Scripts/MERIDEK_FELSPAR/stubs/*) file=$here/stubs/${1#Scripts/MERIDEK_FELSPAR/stubs/} ;;
        Scripts/MERIDEK_FELSPAR/*) file=$here/scripts/lua/${1#Scripts/MERIDEK_FELSPAR/} ;;
        *) file=$here/${1#UserPlugins/} ;;
    esac
    if ! $removes && [ -f "$file" ]; then echo "$file"; fi
}

# --- The steps: "PATH|ACTION|SUM|SAVED_AS|REASON", one a line

plan_step() {
    local path=$1 source sum='' now reason='' action saved=''
    source=$(source_of "$path")
    now=$(present "$resources/$path")
    [ -z "$source" ] || sum=$(sum_of "$source")
    [ -z "$now" ] || reason=$(reason_to_keep "$path" "$now")
    if [ -z "$now" ]; then
        [ -n "$source" ] || return 0
        action=installed
    elif [ -n "$source" ] && [ "$now" = "$sum" ]; then
        action=unchanged reason=''
    elif [ -z "$source" ] && [ -z "$reason" ]; then
        action=removed
    elif [ -n "$source" ] && [ -z "$reason" ]; then
        action=replaced
    elif [ -n "$source" ] && $replaces; then
        action=replaced reason='' saved=$(free_name "$path")
    else
        action=kept
    fi
    echo "$path|$action|$sum|$saved|$reason"
}

plan() {
    local path
    { $removes || package_paths && echo "$installed_paths"; } | sort -u | sed '/^$/d' |
        while IFS= read -r path; do plan_step "$path"; done
}

# The lines of the list once the steps are done.
lines_after() {
    local path action sum saved reason
    while IFS='|' read -r path action sum saved reason; do
        case $action in
            installed | replaced) echo "$sum  $path" ;;
            unchanged) ! has_line "$installed_paths" "$path" || echo "$sum  $path" ;;
            kept) [ -z "$sum" ] || awk -v path="$path" 'substr($0, 67) == path' <<<"$installed_lines" ;;
        esac
    done
}

carry_out() {
    local path action sum saved reason
    while IFS='|' read -r path action sum saved reason; do
        [ -z "$saved" ] || mv "$resources/$path" "$resources/$saved"
        case $action in
            installed | replaced) write_file "$resources/$path" <"$(source_of "$path")" ;;
            removed) rm -f "$resources/$path" ;;
        esac
    done
}

# Makes the folders that paths, one a line, lie in; prints those that had to be made.
make_folders() {
    local path made part rest
    while IFS= read -r path; do
        made='' rest=$path
        while [ "$rest" != "${rest#*/}" ]; do
            part=${rest%%/*} rest=${rest#*/}
            made=$made${made:+/}$part
            if [ ! -d "$resources/$made" ]; then
                mkdir "$resources/$made"
                echo "$made"
            fi
        done
    done
}

# release_from_quarantine STEPS: a quarantined library is not loaded. One that was kept is not ours to release.
release_from_quarantine() {
    local path=UserPlugins/reaper_MERIDEK_FELSPAR.dylib
    case $newline$1 in *"$newline$path|kept|"*) return 0 ;; esac
    if [ "$(uname -s)" = Darwin ]; then
        xattr -d com.apple.quarantine "$resources/$path" 2>/dev/null || true
    fi
}

# What is to be done is listed first, so an installation that was cut off can be repeated or removed.
install() {
    local lines folders
    lines=$(set -e; lines_after <<<"$1")
    folders=$(set -e; { cut -c 67- <<<"$lines" && echo "$list_path"; } | make_folders)
    folders=$installed_folders$newline$folders
    write_list "$lines$newline$installed_lines" "$folders"
    carry_out <<<"$1"
    write_list "$lines" "$folders"
    release_from_quarantine "$1"
}

uninstall() {
    local folder
    carry_out <<<"$1"
    rm -f "$resources/$list_path"
    while IFS= read -r folder; do
        if [ -n "$folder" ] && [ ! -L "$resources/$folder" ]; then
            rmdir "$resources/$folder" 2>/dev/null || true
        fi
    done < <(sort -r <<<"$installed_folders") # the inner ones first
}

# --- What is shown

report_found() {
    local found
    echo "Resource folder: $resources"
    if [ -n "$others" ]; then
        while IFS= read -r found; do
            echo "There is also $found; --resource-path names the one to use."
        done <<<"$others"
    fi
    found=$(version)
    if [ -n "$found" ]; then found="version $found saved the last project"; fi
    echo "Workstation: ${found:-version not known}"
    found=$(sws)
    echo "SWS extension: ${found:-not there; the ride and the loudness functions need it}"
}

report_steps() {
    local path action sum saved reason
    while IFS='|' read -r path action sum saved reason; do
        printf '  %-10s%s%s%s\n' "$action" "$path" "${reason:+: $reason}" \
            "${saved:+, the file that was there is now $saved}"
    done
}

others=''
if [ -z "$resources" ]; then
    found=$(resource_folders | awk '!seen[$0]++')
    resources=${found%%"$newline"*}
    [ -n "$resources" ] || fail "the workstation's resource folder was not found: start the workstation once, \
or name the folder with --resource-path"
    others=${found#"$resources"}
    others=${others#"$newline"}
elif [ ! -d "$resources" ]; then
    fail "$resources: is not a folder"
fi
if ! $removes && { [ ! -d "$here/scripts/lua" ] || [ ! -d "$here/stubs" ] || [ -z "$(plugin_files)" ]; }; then
    fail "the library and the folders scripts and stubs are not beside this script: unpack the whole archive"
fi
read_list

# A command in $(...) does not end the script when it fails, unless this is asked for there.
steps=$(set -e; plan)
if ! $dry_run; then
    remove_abandoned
    if ! $removes; then
        install "$steps"
    elif [ -f "$resources/$list_path" ]; then
        uninstall "$steps"
    fi
fi
kept=false
case $steps in *'|kept|'*) kept=true ;; esac

report_found
if [ -n "$steps" ]; then report_steps <<<"$steps"; fi
if $removes && [ -z "$steps" ]; then echo "Nothing is installed there."; fi
if ! $removes && $kept; then
    echo "To install in place of files that were kept, add --replace: they are moved aside."
fi
if $dry_run; then
    echo "Nothing was written."
elif ! $removes; then
    echo "The workstation loads the library when it is next started."
fi
! $kept
