#!/usr/bin/env bash
# Checks the macOS sources on a machine without macOS: that every Objective-C++ source compiles against GNUstep's headers
# and the declarations in platform/macos/check, and that the core, the desk player and their tests use nothing of the
# standard library that macOS 12 does not have. The compiler works for macOS 12, so that it also sees calls to what only
# later systems have. Without arguments it also configures the build for macOS and makes of the bundle what can be made
# here.
# usage: scripts/check_macos.sh [SOURCE]...      (default: all of them)
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

compiler=clang++-19
machine=$(uname -m)
libcxx=/usr/lib/llvm-16/include/c++/v1
gnustep=/usr/include/GNUstep
# Those of the Objective-C library lie among GCC's own, and come after all others for that.
objc=$(echo /usr/lib/gcc/*/12/include)
blocks=/usr/include/Block.h
for need in "$(command -v "$compiler" || echo "$compiler")" "$libcxx" "$gnustep" "$objc/objc" "$blocks"; do
    if [[ ! -e $need ]]; then
        echo "check_macos: $need is missing; the packages are clang-19, libc++-16-dev, libgnustep-gui-dev, libobjc-12-dev and libblocksruntime-dev" >&2
        exit 1
    fi
done

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# What CMake would fill in; any value serves to check.
for template in app/*.h.in; do
    mkdir -p "$scratch/generated/app"
    sed 's/@[A-Za-z_]*@/0/g' "$template" >"$scratch/generated/app/$(basename "${template%.in}")"
done

warnings=(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-qual -Woverloaded-virtual
    -Wconversion -Wno-sign-conversion -Wunguarded-availability -Werror)
# This machine's C library serves for that of macOS, and is not told that the compiler works for another system.
common=("$compiler" -std=c++20 "--target=${machine/aarch64/arm64}-apple-macos12" -nostdlibinc -nostdinc++ -U__APPLE__ -U__MACH__ -U__nonnull
    -D_GNU_SOURCE -D__linux__ -D__GNU_LIBOBJC__=1 -isystem "$libcxx" -isystem platform/macos/check
    -isystem "$("$compiler" -print-resource-dir)/include" -isystem "$gnustep"
    -isystem "/usr/include/$machine-linux-gnu" -isystem /usr/include -idirafter "$objc"
    -include platform/macos/check/LibcxxAvailability.h -I. -I "$scratch/generated" "${warnings[@]}")
objective=(-fsyntax-only -fobjc-arc -fblocks -Wno-unused-parameter -Wundeclared-selector -Wobjc-method-access -Wprotocol
    -include platform/macos/check/MacDeclarations.h)

# Parts of the standard library's binary that came after the one of macOS 12. Its headers do not mark all of them.
absent='St3__18to_charsEPcS0_[fde]|from_chars_floating_point|St3__13pmr|__libcpp_verbose_abort|St3__14tzdb'
absent+='|St3__16chrono9time_zone|__is_posix_terminal|__hash_memory|__cxa_init_primary_exception'
absent+='|__atomic_(monitor|wait)_global|__format_error'

# Compiles a source as far as the assembler's text, whose names tell what the program would ask of the library.
check_core() {
    local assembly names
    assembly=$scratch/${1//\//_}.s
    "${common[@]}" -S -o "$assembly" "$1" || return 1
    names=$(grep -oE "_Z[A-Za-z0-9_]*($absent)[A-Za-z0-9_]*" "$assembly" | sort -u || true)
    rm "$assembly"
    if [[ -n $names ]]; then
        echo "$1 needs what the standard library of macOS 12 does not have:" >&2
        printf '  %s\n' "${names//$'\n'/$'\n'  }" >&2
        return 1
    fi
}

check_source() {
    case $1 in
        *.mm) "${common[@]}" "${objective[@]}" "$1" ;;
        *) check_core "$1" ;;
    esac
}

# A check that cannot fail is none: each of these must be refused.
refuses() {
    local file=$scratch/refused.$1
    printf '%s\n' "$3" >"$file"
    if check_source "$file" >"$scratch/said" 2>&1 || ! grep -qE "$2" "$scratch/said"; then
        echo "check_macos: this is not refused as it should be: $3" >&2
        cat "$scratch/said" >&2
        return 1
    fi
}

refuses cpp "'to_chars' is unavailable" $'#include <charconv>\nchar b[9]; auto f() { return std::to_chars(b, b + 9, 0.5); }'
refuses cpp 'pmr19new_delete_resource' $'#include <memory_resource>\nstd::pmr::memory_resource* f() { return std::pmr::new_delete_resource(); }'
refuses mm 'only available on macOS 13' 'id f() { return [SMAppService mainAppService]; }'
refuses mm 'no known class method' 'id f() { return [NSColor colourOfTheDay]; }'
refuses mm 'undeclared selector' 'SEL f() { return @selector(nobodyAnswersThis:); }'

# Configures the build for macOS with this machine's tools in a folder. Prints what was said if that fails.
configure() {
    local build=$1 tool settings=() answered
    shift
    for tool in C CXX OBJCXX; do
        settings+=("-DCMAKE_${tool}_COMPILER=$(command -v "$compiler")" "-DCMAKE_${tool}_COMPILER_WORKS=1" "-DCMAKE_${tool}_ABI_COMPILED=1")
    done
    answered=$(cmake -S . -B "$build" -G Ninja -Wno-dev -DCMAKE_SYSTEM_NAME=Darwin -DCMAKE_SYSTEM_VERSION=21 \
        -DCMAKE_OSX_SYSROOT=/ -DCMAKE_INSTALL_NAME_TOOL="$(command -v true)" -DKELPA_ICONUTIL="$(command -v true)" \
        -DBUILD_TESTING=OFF -DKELPA_DRIVEN=ON -DKELPA_BENCHMARKS=OFF "${settings[@]}" "$@" 2>&1) && return
    printf '%s\n' "$answered" >&2
    return 1
}

# What a Mac compiles of platform/macos. The stand-ins for AppKit are not for one.
mac_sources() {
    git ls-files --cached --others --exclude-standard -- 'platform/macos/*.cpp' 'platform/macos/*.mm' |
        grep -vE '^platform/macos/check/(runtime|standin)/'
}

# The folder's platform/macos sources that are compiled there.
built_in() {
    grep -o '"file": ".*platform/macos/.*"' "$1/compile_commands.json" | sed 's|.*platform/macos/||; s|"||' | sort -u
}

# With a framework and a feed the application updates itself, and each part of the framework is signed.
check_updating_build() {
    local build=$scratch/updating framework=$scratch/Sparkle.framework key
    mkdir -p "$framework/Versions/Current"
    touch "$framework/Versions/Current/Autoupdate"
    printf -v key '%043d=' 0
    configure "$build" -DKELPA_SPARKLE="$framework" -DKELPA_FEED_URL=https://kelpa.example/feed -DKELPA_UPDATE_PUBLIC_KEY="$key" || return 1
    if ! built_in "$build" | grep -qx SparkleUpdater.mm || ! grep -q 'codesign.*Sparkle.framework/Versions/Current/Autoupdate' "$build/build.ninja" ||
        ! grep -q "$key" "$build/Kelpa.app/Contents/Info.plist"; then
        echo 'check_macos: the build with the Sparkle framework lacks it' >&2
        return 1
    fi
}

# Makes of the bundle what this machine's tools can make.
check_build() {
    local build=$scratch/build answered part
    configure "$build" || return 1
    if ! answered=$(ninja -C "$build" kelpa_resources 2>&1); then
        printf '%s\n' "$answered" >&2
        return 1
    fi
    for part in Kelpa.app/Contents/Info.plist KelpaLoginItem.app/Contents/Info.plist \
        platform/macos/bundle/Resources/{kelpa.png,iconfont.ttf,en.lproj/Localizable.strings}; do
        if [[ ! -s $build/$part ]]; then
            echo "check_macos: the build made no $part" >&2
            return 1
        fi
    done
    if ! grep -q 'CPACK_GENERATOR "DragNDrop"' "$build/CPackConfig.cmake"; then
        echo 'check_macos: what would be packed is no disk image' >&2
        return 1
    fi
    # Every source of the face and of the driver is part of a program, or it would be checked and never built.
    comm -13 <(built_in "$build") <(mac_sources | sed 's|^platform/macos/||' | grep -v SparkleUpdater | sort) >"$scratch/unbuilt"
    if [[ -s $scratch/unbuilt ]]; then
        echo 'check_macos: these sources are in no target:' >&2
        cat "$scratch/unbuilt" >&2
        return 1
    fi
}

if (($#)); then
    sources=("$@")
else
    mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- \
        {base,logging,prefs,panes,timer,water,ui,app,platform/posix,desk,tests/core,tests/support}/'*.cpp' && mac_sources)
fi
failed=0
if git grep -nE '#include <(format|memory_resource|syncstream|stop_token|print)>' -- base logging prefs panes timer water ui app platform/ports platform/posix desk tests/core tests/support; then
    echo 'check_macos: these headers are not all there in the oldest library that has to do' >&2
    failed=1
fi
processors=$(nproc)
running=()
wait_for_oldest() {
    wait "${running[0]}" || failed=$((failed + 1))
    running=("${running[@]:1}")
}
for source in "${sources[@]}"; do
    if ((${#running[@]} >= processors)); then
        wait_for_oldest
    fi
    check_source "$source" &
    running+=($!)
done
while ((${#running[@]})); do
    wait_for_oldest
done
if (($# == 0)); then
    check_build || failed=$((failed + 1))
    check_updating_build || failed=$((failed + 1))
fi
if ((failed)); then
    echo "check_macos: $failed checks failed" >&2
    exit 1
fi
echo "${#sources[@]} sources fit macOS 12"
