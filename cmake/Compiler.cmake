set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

option(KELPA_WERROR "Treat warnings as errors" ON)

# What goes to users is hardened, and does not tell where it was built. Distributions that build with flags of their
# own have another build type.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
    include(CheckLinkerFlag)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    # The program sleeps nearly all the time, and what it costs meanwhile is memory: small code is half as long as fast
    # code, and relocations that are packed are a tenth as long as others.
    add_compile_options(-Os -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
        -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
    add_link_options(-Wl,-z,relro,-z,now,--as-needed)
    check_linker_flag(CXX -Wl,-z,pack-relative-relocs KELPA_PACKED_RELOCATIONS)
    if(KELPA_PACKED_RELOCATIONS)
        add_link_options(-Wl,-z,pack-relative-relocs)
    endif()
endif()

# Half of what it takes to compile most sources are the headers of the libraries. Without this option each source has to
# include what it uses, so one build that matters always goes without it.
option(KELPA_PRECOMPILED_HEADERS "Compile the headers of the libraries once for many sources" OFF)

# What is compiled once for all libraries, and for all tests, which are position-independent in another way.
function(kelpa_common_headers name)
    file(WRITE ${CMAKE_BINARY_DIR}/headers/${name}.cpp "")
    add_library(kelpa_${name} OBJECT ${CMAKE_BINARY_DIR}/headers/${name}.cpp)
    target_precompile_headers(kelpa_${name} PRIVATE ${ARGN})
    kelpa_warnings(kelpa_${name}) # for pedantic compilers are another dialect
endfunction()
function(kelpa_use_headers target name)
    if(KELPA_PRECOMPILED_HEADERS)
        target_precompile_headers(${target} REUSE_FROM kelpa_${name})
        # Where a target's own options do not go with them, it is compiled without, which takes longer.
        set_target_properties(${target} PROPERTIES PCH_WARN_INVALID OFF)
    endif()
endfunction()
# Every target of ours uses these: the whole tree is clean under them with g++ and clang.
function(kelpa_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
        -Wcast-qual -Woverloaded-virtual -Wconversion -Wno-sign-conversion $<$<BOOL:${KELPA_WERROR}>:-Werror>
        # g++ 12 sees overlapping copies in the standard library's own string concatenation.
        $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
endfunction()

if(KELPA_PRECOMPILED_HEADERS)
    kelpa_common_headers(library_headers <algorithm> <array> <cstdint> <cstdlib> <functional> <map> <memory> <optional>
        <string> <string_view> <utility> <vector>)
endif()

# A part of the core: the standard library and the project's own headers, nothing else, are on its include path.
function(kelpa_core_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_library(kelpa_${name} STATIC ${ARG_SOURCES})
    target_include_directories(kelpa_${name} PUBLIC ${PROJECT_SOURCE_DIR})
    foreach(part IN LISTS ARG_USES)
        target_link_libraries(kelpa_${name} PUBLIC kelpa_${part})
    endforeach()
    kelpa_use_headers(kelpa_${name} library_headers)
    kelpa_warnings(kelpa_${name})
endfunction()
