# ask.zsh PAGES LINE...: prints each line as a zsh with the completion in PAGES completes it, in a terminal of its own.
zmodload zsh/zpty
pages=$1
shift

# A key prints the line as it is, between marks, into a file, and empties it.
lines=$(mktemp)
trap 'rm -f $lines' EXIT
zpty shell zsh -f -i
zpty -w shell "fpath=($pages \$fpath); autoload -Uz compinit; compinit -u -D"
zpty -w shell "show() { print -r -- \$BUFFER >> $lines; BUFFER=''; }; zle -N show; bindkey '^T' show"
for line in "$@"; do
    zpty -w -n shell "$line"$'\t\x14'
done
for ((tries = 0; tries < 200 && $(wc -l < $lines) < $#; ++tries)); do
    zpty -r -t shell ignored
    sleep 0.1
done
sed 's/ *$//' $lines
zpty -d shell
