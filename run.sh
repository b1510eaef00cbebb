#!/usr/bin/env bash
# Installs what Cintal needs, builds it and starts it on the demo collection.
set -euo pipefail
cd "$(dirname "$0")"

source scripts/setup.sh

# Without a display the window can't open: say how to give it one, and show
# the demo tapes with the command-line tool meanwhile.
if [[ -z "${DISPLAY:-}" && -z "${WAYLAND_DISPLAY:-}" ]]; then
    echo "No hay pantalla: DISPLAY y WAYLAND_DISPLAY están vacías, y Cintal no puede abrir su ventana."
    echo "Para abrirla en una pantalla virtual (paquete xvfb):"
    echo "    xvfb-run -a ./run.sh"
    echo
    echo "Mientras tanto, las cintas de la colección de ejemplo, con build/cintal-cli list:"
    echo
    # cintal-cli says so when a tape isn't read whole, as some demo tapes aren't.
    find build/demo -type f -iname '*.tzx' -print0 | sort -z | xargs -0 build/cintal-cli list || true
    exit 0
fi

# The build leaves the demo collection in build/demo and its catalogue
# beside the program; Cintal opens that catalogue.
exec build/cintal "$@"
