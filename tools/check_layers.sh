#!/bin/sh
# Checks that the folders of src/ are layers: each folder includes only
# folders of a lower layer (or of its own). Prints every include that breaks
# the order and exits 1 if any does.
cd "$(dirname "$0")/../src" || exit 2
rank() {
    case "$1" in
    tape) echo 0 ;;
    platform) echo 1 ;;
    catalogue) echo 2 ;;
    widgets) echo 3 ;;
    acquisition | inspector | maintenance) echo 4 ;;
    views | cli) echo 5 ;;
    app) echo 6 ;;
    *) echo 99 ;;
    esac
}
bad=0
for file in */*; do
    from=${file%%/*}
    for to in $(sed -n 's|^#include "\([a-z]*\)/.*|\1|p' "$file" | sort -u); do
        [ "$to" = "$from" ] && continue
        if [ "$(rank "$to")" -ge "$(rank "$from")" ]; then
            echo "$file includes $to/"
            bad=1
        fi
    done
done
[ $bad = 0 ] && echo "Layers in order: tape < platform < catalogue < widgets < acquisition, inspector, maintenance < views, cli < app"
exit $bad
