# kestovar_options: what every file of ours is compiled with.
add_library(kestovar_options INTERFACE)
target_compile_options(kestovar_options INTERFACE
    -Wall -Wextra -Wshadow -Wformat=2 -Wcast-qual -Wnull-dereference -Werror
    -fno-exceptions -fno-rtti)

if(WIN32)
    # ANSI on purpose: strings are bytes of the system's code page everywhere.
    target_compile_definitions(kestovar_options INTERFACE
        WIN32_LEAN_AND_MEAN NOMINMAX STRICT WINVER=0x0501 _WIN32_WINNT=0x0501)
    target_compile_options(kestovar_options INTERFACE -ffunction-sections -fdata-sections)
    target_link_options(kestovar_options INTERFACE -static -Wl,--gc-sections)
    if(CMAKE_BUILD_TYPE STREQUAL "Release")
        target_link_options(kestovar_options INTERFACE -s)
    endif()
endif()

if(KESTOVAR_HARDENED)
    # This compiler has no sanitizer run-time for Windows; traps need none. The alignment check is left
    # out: 32-bit Windows passes 64-bit arguments at multiples of 4, and a reference to one would trap.
    # Optimised a little, as the tests drive the program; the tests' own code, which sets KESTOVAR_UNCHECKED, is neither
    # optimised nor checked.
    set(traps -O1 -fsanitize=undefined -fno-sanitize=alignment -fsanitize-undefined-trap-on-error)
    target_compile_options(kestovar_options INTERFACE -fstack-protector-strong
        "$<$<NOT:$<BOOL:$<TARGET_PROPERTY:KESTOVAR_UNCHECKED>>>:${traps}>")
    target_compile_definitions(kestovar_options INTERFACE _GLIBCXX_ASSERTIONS)
    target_link_options(kestovar_options INTERFACE -fstack-protector-strong)
endif()

if(KESTOVAR_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

if(KESTOVAR_FUZZ)
    add_compile_options(-fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
endif()

# kestovar_optimize(FILE...): these files of an unoptimised build are optimised all the same, being the ones in
# which its tests would spend most of their time. The linker keeps one copy of each inline function, and that may
# be an unoptimised one of another file: no register may be taken as kept because the optimised copy keeps it.
# The precompiled header of the others is made at another level: the compiler crashes on it.
function(kestovar_optimize)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS "-O2;$<$<CXX_COMPILER_ID:GNU>:-fno-ipa-ra>" SKIP_PRECOMPILE_HEADERS ON)
endfunction()
