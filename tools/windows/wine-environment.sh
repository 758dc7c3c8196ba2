# Sourced by the scripts beside it, with $tools naming their folder: the environment in which Wine runs.

export WINEPREFIX="${KILN_WINEPREFIX:-$(readlink -f "$tools/../..")/build/wine}"
export WINEARCH=win64
export WINEDEBUG=-all
# Neither .NET nor a browser is wanted, which Wine would offer to download, nor entries in the desktop's
# menus.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
unset DISPLAY WAYLAND_DISPLAY

# Wine takes the encoding of file names and the language of the system from here. It is fixed, so that a test
# says the same on every machine; KILN_WINE_LOCALE=ja_JP.UTF-8 gives a Japanese system (file names beyond
# ASCII then need that locale installed).
export LC_ALL="${KILN_WINE_LOCALE:-C.UTF-8}"
