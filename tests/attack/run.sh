#!/usr/bin/env bash
# Attacks a live chart in every way there is and prints a table: run.sh [SOAK_SECONDS]. Fails when a chart does not show
# what was sent last. A scenario that hangs ends after its limit.
set -euo pipefail
cd "$(dirname "$0")/../.."
tools/setup.sh dev
cmake --preset dev >/dev/null
cmake --build --preset dev --target attack attack_peer
set +e
bin=build/dev/bin
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software
failed=0
echo '| attack           | longest gap, ms | memory left, MB | files left | last value right | |'
echo '|------------------|-----------------|-----------------|------------|------------------|-|'
scenarios=(deaf gigabyte labels unfinished names huge restarts frozen mute million-items sparse-heatmap heatmap-folder)
for scenario in "${scenarios[@]}"; do
    timeout 180 "$bin/attack" "$scenario" "$bin/attack_peer" 2>/dev/null | grep "^|" || { echo "$scenario failed"; failed=1; }
done
if [ "${1:-0}" -gt 0 ]; then
    timeout $(($1 + 180)) "$bin/attack" soak "$bin/attack_peer" "$1" 2>/dev/null | grep "^|" || failed=1
fi
exit $failed
