#!/usr/bin/env bash
# The manual page names every option that --help lists, and has no faults that a checker sees; the
# shells' completion offers commands, options and values.
# Arguments: kvprobe, the folder of the page and the completion files, mandoc, fish, zsh.
set -euo pipefail
kvprobe=$1 pages=$2 mandoc=$3 fish=$4 zsh=$5
cd "$pages"
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
status=0

# Arguments: what it is, what is expected, what is there.
expect() {
  [ "$2" = "$3" ] || {
    printf '%s: expected\n%s\ngot\n%s\n' "$1" "$2" "$3"
    status=1
  }
}

expect "the page" "" "$("$mandoc" -T lint -W style kvprobe.1 2>&1 || true)"

# What bash offers for a command line, the word to be completed last.
bash_offers() {
  env -i PATH="$PATH" bash --norc -c '. ./kvprobe.bash
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    _kvprobe
    printf "%s\n" "${COMPREPLY[@]}"' - "$@" | LC_ALL=C sort
}

# Likewise fish, given the line as one word.
fish_offers() {
  HOME=$home "$fish" --no-config -c 'source kvprobe.fish; complete -C $argv[1]' -- "$1" | cut -f 1 |
    LC_ALL=C sort
}

for command in bore fence window cone frustum prism plan; do
  listed=$("$kvprobe" "$command" --help | sed -n 's/^  \(-[a-z],\)\?\(--[a-z]*\).*/\1\2/p' |
    tr , '\n' | LC_ALL=C sort)
  described=$(awk -v own="Options of $command" '/^\.S/ { on = $0 == ".SH OPTIONS" || $0 == ".SS " own } on' \
    kvprobe.1 | grep '^\\fB\\-' | sed 's/ \\fI.*//; s/\\f.//g; s/\\-/-/g; s/, /\n/g' | LC_ALL=C sort)
  expect "the page, $command" "$listed" "$described"
  expect "bash, $command" "$listed" "$(bash_offers kvprobe "$command" -)"
  long=$(grep -- '^--' <<<"$listed")
  expect "fish, $command" "$long" "$(fish_offers "kvprobe $command --")"
done

expect "bash, commands" $'fence\nfrustum' "$(bash_offers kvprobe f)"
expect "bash, files" kvprobe.bash "$(bash_offers kvprobe fence model.ifc --points kvprobe.b)"
expect "bash, without a command" --radius "$(bash_offers kvprobe model.ifc --ra)"
expect "bash, words" $'y\nz' "$(bash_offers kvprobe model.ifc --up '')"
expect "bash, numbers" "" "$(bash_offers kvprobe model.ifc --radius '')"
expect "fish, commands" $'fence\nfrustum' "$(fish_offers 'kvprobe f')"
expect "fish, words" $'y\nz' "$(fish_offers 'kvprobe model.ifc --up ')"

# zsh completes in a terminal only: it gets one, and shows there what the Tab key made of the line.
zsh_completes() {
  "$zsh" -f -c 'zmodload zsh/zpty
    zpty shell "TERM=dumb PS1= PS2= zsh -f -i"
    zpty -w shell "fpath=($1 \$fpath); autoload -U compinit; compinit -D -u; unsetopt zle_bracketed_paste
      show() { print -r -- \"<\$BUFFER>\"; BUFFER=; zle accept-line }; zle -N show; bindkey ^X show; echo re\"\"ady"
    zpty -r shell line "*ready*"
    zpty -w -n shell "$2"$'"'\\t\\x18'"'
    zpty -r shell line "*<*>*"
    print -r -- "$line"' - "$pages" "$1" | sed -n 's/.*<\(.*\)>.*/\1/p'
}
expect "zsh, a command" "kvprobe window " "$(zsh_completes 'kvprobe win')"
expect "zsh, an option" "kvprobe fence m --points " "$(zsh_completes 'kvprobe fence m --points')"
expect "zsh, an option" "kvprobe m --radius " "$(zsh_completes 'kvprobe m --ra')"
exit "$status"
