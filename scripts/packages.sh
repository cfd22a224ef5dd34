#!/usr/bin/env bash
# The Debian packages that Velmorand needs: the one list, shared by ./run, ./check and README.md.
#
# Other scripts source this file and call `require_packages GROUP...`. Started by itself it prints the list as
# the table that stands in README.md; ./check compares the two.

# group | package | what it is for
package_rows() {
    cat <<'ROWS'
build | build-essential | C++23 compiler (g++ 12 or later) and the sanitizers' run-time libraries
build | cmake | build configuration with presets
build | ninja-build | runs the build
build | pkg-config | finds the X libraries
build | rapidjson-dev | stored form of shortcuts and preferences
build | libfmt-dev | formatting of log lines and messages
build | libicu-dev | whole user-perceived characters and upper-casing of key labels
build | libsystemd-dev | the log goes to the journal; one running copy in a session
build | qt6-base-dev | event loop, session bus (Core, DBus, Gui)
build | qt6-declarative-dev | views of the settings window
build | qt6-svg-dev | their drawings
build | qml6-module-qtquick | modules of the views, to run and to check them
build | qml6-module-qtquick-controls | modules of the views
build | qml6-module-qtquick-templates | modules of the views
build | qml6-module-qtquick-window | modules of the views
build | qml6-module-qtqml | modules of the views
build | qml6-module-qtqml-models | modules of the views
build | qml6-module-qtqml-workerscript | modules of the views
build | libqt6svg6 | draws the symbols when the settings window is shown
build | fonts-inter | the face of the settings window
build | qt6-l10n-tools | template for translations
build | libx11-dev | quiet end of the toolkit's own connection to the X server
build | libxcb1-dev | connection to the X server
build | libxcb-randr0-dev | displays
build | libxcb-res0-dev | the process behind a window
build | libxcb-xinput-dev | hot keys
build | libxcb-xkb-dev | what keys write in the current layout
build | libxcb-xfixes0-dev | for later: owners of selections
build | libxkbcommon-dev | key symbols
build | libxkbcommon-x11-dev | for later: the keymap of the X server
build | libxcb-xtest0-dev | the tests press keys as a keyboard would
build | libgtest-dev | tests
build | libgmock-dev | tests: matchers
build | librapidcheck-dev | tests: what holds for any value at all
display | x11-utils | `./run` asks with `xdpyinfo` whether the display answers
desktop | xvfb | X server of the test desktops, without a screen
desktop | xserver-xorg-core | X server of the test desktops that need several real outputs
desktop | xserver-xorg-video-dummy | its displays, in memory
desktop | x11-xkb-utils | the keyboard of that server
desktop | openbox | window manager: a plain one
desktop | xfwm4 | window manager: one with a compositor, so windows draw their own shadows
desktop | fluxbox | window manager: one whose combined move-and-resize request is broken
desktop | icewm | window manager: one that moves back what would leave the screen for a moment
desktop | marco | window manager: one with a compositor, and borders that nobody sees
desktop | mate-desktop-common | its settings' schemas
desktop | mate-settings-daemon-common | its settings' schemas
desktop | i3-wm | window manager: one that tiles, and does not tell how large its decorations are
desktop | awesome | window manager: one without the combined move-and-resize request
desktop | kwin-x11 | window manager: one with a compositor that draws by OpenGL
desktop | kwin-style-breeze | its decorations
desktop | xfce4-panel | a panel that reserves an edge of the screen and shows status items
desktop | librsvg2-common | its icons
desktop | lxqt-panel | a panel of another toolkit that shows status items
desktop | xfce4-session | a session manager, for the end of a session
desktop | xterm | test window that resizes in steps
desktop | python3-gi | test windows of a toolkit
desktop | gir1.2-gtk-3.0 | test windows of a toolkit
desktop | gir1.2-gtk-4.0 | test windows of its next generation
desktop | dbus-daemon | a private session bus for each test desktop
desktop | at-spi2-core | the bus of assistive technology
desktop | xdg-utils | opens an address with the program that the desktop has for it
desktop | dunst | a server for notifications
desktop | systemd | its generator reads the entry for log-in
desktop | fonts-dejavu-core | text in the test windows
package | debhelper | builds the Debian package
pictures | imagemagick | `scripts/settings-pictures` takes windows with it
pictures | xdotool | moves, sizes and scrolls them
check | clang-format-19 | format check
check | appstream | checks the description for software centres
check | desktop-file-utils | checks the desktop entry
check | mandoc | checks the manual page
full | clang-tidy-19 | static analysis
full | clang-19 | compiler of the fuzz targets
full | libclang-rt-19-dev | the fuzzer and its sanitizers
full | lintian | checks the Debian package
full | debootstrap | the fresh system on which the package is tried
full | libglib2.0-bin | starts the program from its desktop entry there, as a desktop does
full | xdotool | presses its shortcuts there
ROWS
}

group_title() {
    case $1 in
        build) echo "to build and unit-test" ;;
        display) echo "to run on your display" ;;
        desktop) echo "for the test desktops" ;;
        package) echo "for \`scripts/package\`" ;;
        pictures) echo "for the pictures of the settings window" ;;
        check) echo "for \`./check\`" ;;
        full) echo "for \`./check --full\`" ;;
    esac
}

# packages_of GROUP... prints the packages of the groups, one a line.
packages_of() {
    local group
    for group in "$@"; do
        package_rows | sed -n "s/^$group | \([^ ]*\) | .*/\1/p"
    done
}

# missing_packages PACKAGE... prints those that are not installed.
missing_packages() {
    local installed package
    # shellcheck disable=SC2016  # the format is dpkg-query's, not the shell's
    installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
    for package in "$@"; do
        grep -qxF "$package installed" <<<"$installed" || echo "$package"
    done
}

# require_packages GROUP... returns when every package of the groups is installed, installing what is missing if
# this user may. Otherwise it says what to do and ends the script with status 1. Nothing missing: apt is not touched.
require_packages() {
    local packages missing as_root=()
    mapfile -t packages < <(packages_of "$@")
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        echo "This script installs packages with apt, which is not here. CONTRIBUTING.md tells how to build without it." >&2
        echo "What is needed, under the names Debian gives it: ${packages[*]}" >&2
        exit 1
    fi
    mapfile -t missing < <(missing_packages "${packages[@]}")
    ((${#missing[@]})) || return 0

    if (($(id -u) != 0)); then
        if ! command -v sudo >/dev/null || ! sudo -n true 2>/dev/null; then
            echo "Packages are missing. Run this line as root, then start again:" >&2
            echo "apt-get update && apt-get install -y --no-install-recommends ${missing[*]}" >&2
            exit 1
        fi
        as_root=(sudo -n)
    fi

    echo "Installing (this can take some minutes): ${missing[*]}"
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300)
    "${apt[@]}" update || echo "apt-get update failed; going on with the package lists that are here." >&2
    # The package tools would read our standard input, and tell of each of several hundred packages at length.
    if ! "${apt[@]}" install -y --no-install-recommends "${missing[@]}" </dev/null >/dev/null; then
        echo "The packages could not be installed." >&2
        exit 1
    fi
}

# The list as a Markdown table.
package_table() {
    local group package purpose
    echo "| Package | What it is for | Needed |"
    echo "|---|---|---|"
    while IFS='|' read -r group package purpose; do
        echo "| \`${package// /}\` |$purpose | $(group_title "${group// /}") |"
    done < <(package_rows)
}

if [[ ${BASH_SOURCE[0]} == "$0" ]]; then
    set -euo pipefail
    package_table
fi
