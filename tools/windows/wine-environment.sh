# Wine's environment; sourced by the scripts in this folder, which $tools must name.

export WINEPREFIX="${KILN_WINEPREFIX:-$(readlink -f "$tools/../..")/build/wine}"
export WINEARCH=win64
export WINEDEBUG=-all
# Disables .NET and the browser, which Wine would offer to download, and desktop menu entries.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
unset DISPLAY WAYLAND_DISPLAY

# Determines Wine's encoding of file names and system language. Fixed, so that tests give the same results on every
# machine; KILN_WINE_LOCALE=ja_JP.UTF-8 gives a Japanese system (non-ASCII file names then need that locale installed).
export LC_ALL="${KILN_WINE_LOCALE:-C.UTF-8}"
