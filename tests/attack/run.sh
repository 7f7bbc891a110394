#!/usr/bin/env bash
# Attacks a live chart in every way there is and prints a table: run.sh BUILD_FOLDER [SOAK_SECONDS]. Fails when a chart
# does not show what was sent last. A scenario that hangs ends after its limit.
set -uo pipefail
bin=$1/bin
failed=0
echo '| attack           | longest gap, ms | memory left, MB | files left | last value right | |'
echo '|------------------|-----------------|-----------------|------------|------------------|-|'
scenarios=(deaf gigabyte labels unfinished names huge restarts frozen mute million-items sparse-heatmap heatmap-folder)
for scenario in "${scenarios[@]}"; do
    timeout 180 "$bin/attack" "$scenario" "$bin/attack_peer" 2>/dev/null | grep "^|" || { echo "$scenario failed"; failed=1; }
done
if [ "${2:-0}" -gt 0 ]; then
    timeout $(($2 + 180)) "$bin/attack" soak "$bin/attack_peer" "$2" 2>/dev/null | grep "^|" || failed=1
fi
exit $failed
