#!/bin/bash
# Installs what building, testing and running qt_halvo needs on Debian 12, and nothing
# when it is all there already. Sourced by the other scripts; run it alone to set up.
#   scripts/setup.sh [build] [test] [win32] [fuzz] [bench]   (default: build)

qt_halvo_packages() {
    local part
    for part in "$@"; do
        case "$part" in
            build) echo cmake ninja-build g++ make pkg-config ccache qtbase5-dev qtdeclarative5-dev libqt5svg5 \
                        libx11-dev libxrandr-dev \
                        qttools5-dev qttools5-dev-tools libpoppler-qt5-dev \
                        qml-module-qtquick2 qml-module-qtquick-templates2 qml-module-qtquick-window2 \
                        qml-module-qtquick-layouts ;;
            test) echo openbox libxtst-dev dbus-daemon xvfb xserver-xorg-core xserver-xorg-video-dummy xauth x11-xserver-utils x11-utils fonts-dejavu-core qt5-image-formats-plugins idn2 python3 qml-module-qttest ;;
            win32) echo g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix wine64 wine ;;
            fuzz) echo clang libclang-rt-14-dev ;;
            bench) echo libqt5charts5-dev libkf5widgetsaddons-dev libgdk-pixbuf2.0-bin qml-module-qtquick-controls2 ;;
        esac
    done
}

qt_halvo_setup() {
    local wanted missing=() package
    wanted=$(qt_halvo_packages "${@:-build}")
    for package in $wanted; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" \
            || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local sudo=""
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing: ${missing[*]}" >&2
            echo "Install them as root (apt-get install ${missing[*]}), or install sudo." >&2
            return 1
        fi
        sudo=sudo
    fi
    echo "Installing: ${missing[*]}"
    $sudo apt-get update -qq || return 1
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" \
        >/tmp/qt_halvo-apt.log 2>&1 || { cat /tmp/qt_halvo-apt.log >&2; return 1; }
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
    set -e
    qt_halvo_setup "$@"
fi
