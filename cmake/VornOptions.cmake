include(GNUInstallDirs)

# Line and branch coverage with gcov (g++, build dir build/coverage, see .ci/stages/coverage.sh).
# Unoptimised, and with assertions compiled out as in a release build, so that the branch
# figures count the library's own decisions rather than the failure arm of every assert.
option(VORN_COVERAGE "Instrument every target for gcov line and branch coverage" OFF)

# Flags every target of this project shares: exact floating point on every target,
# 64-bit local-time conversion on 32-bit targets, warnings, coverage, sanitizers.
function(vorn_apply_build_flags target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -ffp-contract=off)
  if(VORN_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_definitions(${target} PRIVATE _TIME_BITS=64 _FILE_OFFSET_BITS=64)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(i.86|x86)$")
      target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
    endif()
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
      target_compile_options(${target} PRIVATE -Wno-psabi)
    endif()
  endif()
  if(VORN_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage -O0)
    target_compile_definitions(${target} PRIVATE NDEBUG)
    target_link_options(${target} PRIVATE --coverage)
  endif()
  if(VORN_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
endfunction()
