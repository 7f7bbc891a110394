# Asks the live gallery to end while its instrument writes heat maps. Fails unless it ends well and takes its temporary
# folders with it.
folder=$(mktemp -d)
gallery=
trap 'kill $gallery 2>/dev/null; rm -r "$folder"' EXIT
TMPDIR=$folder XDG_RUNTIME_DIR=$folder "$1" --page persistence >"$folder/log" &
gallery=$!
until [ "$(grep -c "parse the heat map" "$folder/log")" -gt 1 ]; do
    kill -0 $gallery || exit 1
    sleep 0.1
done
ls -d "$folder"/graph-gallery-* || exit 1
kill $gallery
wait $gallery && ! ls -d "$folder"/graph-gallery-*
