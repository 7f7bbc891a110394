# Asks the live gallery to end while its instrument writes heat maps. Fails unless it ends well and takes its temporary
# folders with it.
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
TMPDIR=$folder XDG_RUNTIME_DIR=$folder "$1" --page persistence >"$folder/log" &
until [ "$(grep -c "parse the heat map" "$folder/log")" -gt 1 ]; do
    kill -0 $! || exit 1
    sleep 0.1
done
ls -d "$folder"/gallery-* || exit 1
kill $!
wait $! && ! ls -d "$folder"/gallery-*
