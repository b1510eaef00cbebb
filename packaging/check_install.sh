#!/usr/bin/env bash
# Installs the build into a scratch root and checks what a desktop sees: the
# files in their places, the desktop entry, the AppStream record and the file
# types accepted by their own tools, the version, and where an installed
# cintal-cli puts its catalogue. With "deb", also makes and reads the package.
# Usage: check_install.sh BUILD VERSION APP_ID [deb]
set -euo pipefail
build=$(cd "$1" && pwd) version=$2 id=$3
scratch=$(mktemp -d)
trap 'chmod -R u+w "$scratch"; rm -rf "$scratch"' EXIT
fail() { echo "FALLO: $*" >&2; exit 1; }

cmake --install "$build" --prefix "$scratch/usr" >/dev/null
root=$scratch/usr
for f in bin/cintal bin/cintal-cli bin/cintal-cli-qt share/applications/$id.desktop \
         share/icons/hicolor/scalable/apps/cintal.svg share/icons/hicolor/16x16/apps/cintal.png \
         share/icons/hicolor/48x48/apps/cintal.png share/icons/hicolor/256x256/apps/cintal.png \
         share/mime/packages/cintal.xml share/metainfo/$id.metainfo.xml share/cintal/z80.scr; do
    [[ -s $root/$f ]] || fail "no se instaló $f"
done
caches=$(find "$root" -name mimeinfo.cache -o -name icon-theme.cache -o -name mime.cache \
         -o -name globs2 -o -name magic)
[[ -z $caches ]] || fail "se instalaron cachés generadas: $caches"

desktop-file-validate "$root/share/applications/$id.desktop"
grep -qx 'Exec=cintal %f' "$root/share/applications/$id.desktop" || fail "Exec"
grep -qx 'Icon=cintal' "$root/share/applications/$id.desktop" || fail "Icon"
appstreamcli validate --no-net "$root/share/metainfo/$id.metainfo.xml" >/dev/null ||
    appstreamcli validate --no-net "$root/share/metainfo/$id.metainfo.xml"

# The MIME package as the desktop reads it: a tape is known by its name and by
# its first bytes.
mkdir -p "$scratch/mime/packages"
cp "$root/share/mime/packages/cintal.xml" "$scratch/mime/packages/"
out=$(XDG_DATA_HOME=$scratch update-mime-database "$scratch/mime" 2>&1)
[[ -z $out ]] || fail "update-mime-database: $out"
grep -q 'application/x-spectrum-tzx:\*\.tzx' "$scratch/mime/globs2" || fail "glob de TZX"
for ext in tap z80 sna; do
    grep -q "application/x-spectrum-$ext:\*\.$ext" "$scratch/mime/globs2" || fail "glob de $ext"
done
grep -aq 'ZXTape!' "$scratch/mime/magic" || fail "magia de TZX"

# The version, without a display.
[[ $(QT_QPA_PLATFORM= DISPLAY= WAYLAND_DISPLAY= "$root/bin/cintal" --version) == "cintal $version" ]] ||
    fail "cintal --version"
[[ $("$root/bin/cintal-cli" --version) == "cintal-cli $version" ]] || fail "cintal-cli --version"

# An installed cintal-cli, in a folder it can't write, keeps its catalogue in
# the user's data folder; a copy in a folder of its own keeps it beside itself.
chmod a-w "$root/bin"
home=$scratch/home
mkdir -p "$home"
user() { env HOME="$home" XDG_DATA_HOME="$home/.local/share" XDG_CONFIG_HOME="$home/.config" "$@"; }
data=$home/.local/share/cintal
said=$(user "$root/bin/cintal-cli" titles 2>&1) && fail "titles sin catálogo"
[[ $said == "No se puede abrir el catálogo $data/cintal.mdb: no existe el archivo
Para crear uno vacío: cintal-cli init" ]] || fail "titles sin catálogo dijo: $said"
said=$(user "$root/bin/cintal-cli" init)
[[ $said == "Catálogo creado: $data/cintal.mdb" ]] || fail "init dijo: $said"
[[ -f $data/cintal.mdb && ! -e $root/bin/cintal.mdb ]] || fail "catálogo"
user "$root/bin/cintal-cli" titles >/dev/null || fail "titles sin --db"
mkdir "$scratch/portable"
cp "$root/bin/cintal-cli" "$root/bin/cintal-cli-qt" "$scratch/portable/"
said=$(user "$scratch/portable/cintal-cli" init)
[[ $said == "Catálogo creado: $scratch/portable/cintal.mdb" ]] || fail "portable dijo: $said"

if [[ ${4:-} == deb ]]; then
    (cd "$scratch" && cpack -G DEB --config "$build/CPackConfig.cmake" -B "$scratch/deb" >/dev/null)
    deb=$(ls "$scratch"/deb/cintal_"$version"_*.deb)
    for field in Package Version Architecture Maintainer Description Depends; do
        [[ -n $(dpkg-deb -f "$deb" "$field") ]] || fail "el paquete no tiene $field"
    done
    [[ $(dpkg-deb -f "$deb" Version) == "$version" ]] || fail "versión del paquete"
    dpkg-deb -f "$deb" Maintainer | grep -q '<.*@.*>' || fail "correo del mantenedor"
    dpkg-deb -f "$deb" Depends | grep -q libqt6widgets6 || fail "dependencias"
    contents=$(dpkg-deb -c "$deb")
    grep -q ' ./usr/bin/cintal$' <<<"$contents" || fail "cintal en el paquete"
    ! grep -q 'cache$' <<<"$contents" || fail "cachés en el paquete"
fi
echo "Instalación comprobada"
