# Installs what Cintal needs to build, test and run (Debian, as root), and
# configures and builds it in build/. Sourced by run.sh and test.sh.

packages=(cmake ninja-build g++ libgtest-dev libbenchmark-dev qt6-base-dev libqt6sql6-sqlite qt6-translations-l10n qt6-multimedia-dev libarchive-dev zlib1g-dev desktop-file-utils appstream dpkg-dev shared-mime-info)
need=()
for pkg in "${packages[@]}"; do
    dpkg -s "$pkg" >/dev/null 2>&1 || need+=("$pkg")
done
if ((${#need[@]})); then
    apt-get update
    DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${need[@]}"
fi

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j 2
