#!/usr/bin/env bash
# Installs a build, moves it, and uses it as driver teams do: builds the examples by CMake and by pkg-config, and runs
# them and the installed program.
#
#   sdk_test.sh BUILD-FOLDER CXX-COMPILER
set -euo pipefail
build=$1
compiler=$2
work=$(mktemp -d "${TMPDIR:-/tmp}/kiln-sdk-XXXXXX")
trap 'rm -rf "$work"' EXIT
export HOME=$work/home LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
unset CMAKE_PREFIX_PATH DESTDIR XDG_DATA_HOME XDG_CONFIG_HOME XDG_CACHE_HOME
mkdir -p "$HOME"
cd "$work"

fail() {
  echo "Not so: $1" >&2
  [[ ! -s log ]] || tail -n 40 log >&2
  exit 1
}

# fact SENTENCE COMMAND...: the command succeeds.
fact() {
  "${@:2}" >log 2>&1 || fail "$1"
  echo "$1"
}

# The file of a component, from its root.
files() { (cd "$1" && find . -type f | sort); }
contains() { grep -qE "$2" <<<"$1"; }
contains_none() { ! grep -E "$2" <<<"$1"; }

install_component() { DESTDIR=$work/$1 cmake --install "$build" --prefix /opt/kiln --component "$1" >/dev/null; }
for component in runtime pictures window development; do install_component "$component"; done
runtime=$(files runtime/opt/kiln)
pictures=$(files pictures/opt/kiln)
window=$(files window/opt/kiln)
development=$(files development/opt/kiln)
fact "the runtime has the program" contains "$runtime" '^\./bin/kiln$'
fact "the runtime has the plug-in" contains "$runtime" '^\./lib.*/kiln/Zorvueffect\.so$'
fact "the runtime has the layouts and models" contains "$runtime" '^\./share/kiln/effect/content/tab_effect\.xul$'
fact "the runtime has neither the window nor headers" contains_none "$runtime" 'window|\.h$'
fact "the module that draws pages is a component of its own, and nothing else" \
  contains "$pictures" '^\./lib[^[:space:]]*/kiln/kiln-pictures\.so$'
fact "the window is a component of its own" contains "$window" '^\./lib.*/kiln/kiln-window\.so$'
fact "the window is nothing else" contains_none "$window" 'bin/|pictures|\.h$|share/kiln/(base|effect|models)'
fact "development has the headers" contains "$development" '^\./include/kiln/plugin\.h$'
fact "development has no program and no library" contains_none "$development" 'bin/|\.so$|share/kiln/'

cmake --install "$build" --prefix "$work/first" >/dev/null
mv first moved
prefix=$work/moved
modules=$(dirname "$(find "$prefix" -name Zorvueffect.so)")
all=$(files "$prefix")
together=$(printf '%s\n' "$runtime" "$pictures" "$window" "$development" | sort)
fact "the components are all that is installed, each file once" diff <(echo "$all") <(echo "$together")
no_search_path() { ! readelf -d "$prefix/bin/kiln" "$modules"/*.so | grep -E 'RPATH|RUNPATH'; }
fact "no installed file has a search path of its own" no_search_path
no_build_path() { ! grep -rlF -e "$build" -e "$work/first" "$prefix/share"; }
fact "no description names the build, or the prefix before the move" no_build_path

# The examples by CMake, from the installed copy.
examples=$prefix/share/doc/libkiln-dev/examples
configure() {
  cmake -S "$examples" -B examples -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Werror"
}
fact "find_package finds the contract" configure
fact "the examples compile without warnings" cmake --build examples
fact "the example host runs the shipped plug-in and the example plug-in" \
  ctest --test-dir examples --output-on-failure --no-tests=error

mkdir versions
cat >versions/CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.16)
project(versions NONE)
find_package(Kiln ${WANTED} QUIET)
if(NOT Kiln_FOUND STREQUAL EXPECTED)
  message(FATAL_ERROR "Kiln ${WANTED}: found ${Kiln_VERSION}, ${Kiln_FOUND}.")
endif()
END
finds() { cmake -S versions -B "versions-$1" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DWANTED="$1" -DEXPECTED="$2"; }
fact "find_package takes the version of the contract" finds 2 1
fact "find_package refuses an older major version" finds 1 0
fact "find_package refuses a newer minor version" finds 2.99 0
fact "find_package refuses a newer major version" finds 3 0

# The same by pkg-config, without CMake.
export PKG_CONFIG_PATH=$prefix/share/pkgconfig
by_pkgconfig() {
  (
    cd "$examples"
    read -ra flags < <(pkg-config --cflags kiln)
    "$compiler" -std=c++20 -fPIC -shared -fvisibility=hidden -Wl,--version-script=plugin/exports.map \
      "${flags[@]}" plugin/*.cpp -o "$work/stamp.so"
    "$compiler" -std=c++20 "${flags[@]}" host/main.cpp -ldl -o "$work/example_host"
  )
}
fact "pkg-config finds the contract" pkg-config --atleast-version=2.0 --max-version=2.99 kiln
fact "the examples compile by pkg-config" by_pkgconfig
fact "pkg-config knows the resources" test -d "$(pkg-config --variable=resources kiln)/effect"
fact "the example host runs the plug-in that is installed" \
  ./example_host "$(pkg-config --variable=modules kiln)/Zorvueffect.so" "$(pkg-config --variable=resources kiln)" \
  "$examples/host/effect.script"
exports() { [[ $(nm -D --defined-only "$1" | awk '$2 != "A" { print $3 }') == createPlugin ]]; }
fact "the example plug-in exports createPlugin and nothing else" exports stamp.so

# The installed program, from its new place.
kiln=$prefix/bin/kiln
fact "kiln tells its help" "$kiln" help
drives() { [[ $(printf 'click ePTKWPageMirrorImage\nget MirrorImage\n' | "$1" drive) == *'"value":"MirrorImage"'* ]]; }
fact "kiln finds its plug-in and resources" drives "$kiln"
ln -s "$kiln" linked
fact "kiln is found by a link" drives ./linked
fact "kiln makes a sample" "$kiln" sample letter.pdf
fact "kiln prints" "$kiln" print letter.pdf printed.pdf --set MirrorImage=MirrorImage --watermark Draft
fact "kiln finds the module that draws pages" "$kiln" picture printed.pdf page.png
fact "kiln finds the module that packs profiles" "$kiln" profile export settings.zip
fact "kiln finds the window" "$kiln" show letter.pdf --screenshot window.png

# The example plug-in in the installed program.
fact "the example plug-in installs beside the other one" cmake --install examples --prefix "$prefix"
stamps() {
  local answers
  answers=$(printf '%s\n' 'widget cmb_stamp' 'click btn_stamp' 'type txt_stamp Received' ok 'get StampText' \
    'get Stamp' 'widget chk_stamp' ticket ok |
    "$kiln" drive --model stamping --plugin "$modules/stamp.so" --locale "$1" --home "$2")
  echo "$answers"
  [[ $answers != *'"ok":false'* && $answers == *'"shown":"'"$3"'"'* && $answers == *'"value":"Received"'* &&
    $answers == *'"checked":true'* && $answers == *'stamp:JobStampText'* ]]
}
fact "kiln runs the example plug-in, in English" stamps en-US stamp-home 'Stamp the pages'
fact "kiln runs the example plug-in, in German" stamps de-DE stamp-home 'Seiten stempeln'
fact "the example plug-in has kept its file" grep -q Received stamp-home/user/stamps.xml
