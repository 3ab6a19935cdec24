# 32-bit x86 (i686). VornOptions.cmake adds -msse2 -mfpmath=sse and the 64-bit time
# flags for this processor.
#
# The test programs run on the host kernel when it executes i686 programs. Many x86_64
# kernels are built without 32-bit support and refuse them ("Exec format error"); there
# they run under qemu-i386 (package qemu-user). VORN_I386_EMULATE=1 in the environment
# makes every configuration use qemu.
#
# Debian's i686 cross compiler (g++-i686-linux-gnu) is used when it is installed: it can
# be installed next to the ARM cross compiler, which g++-multilib cannot. Otherwise the
# host compiler builds with -m32 (g++-multilib).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)

find_program(VORN_I686_CXX i686-linux-gnu-g++)
if(VORN_I686_CXX)
  set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
  set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
  set(CMAKE_FIND_ROOT_PATH /usr/i686-linux-gnu)
  set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
  set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
  # The test programs run on the host kernel with the cross compiler's own runtime, so
  # no i386 system libraries are needed.
  set(runtime /usr/i686-linux-gnu/lib)
  set(CMAKE_EXE_LINKER_FLAGS_INIT
      "-Wl,--dynamic-linker=${runtime}/ld-linux.so.2 -Wl,-rpath,${runtime}")
  set(CMAKE_SHARED_LINKER_FLAGS_INIT "-Wl,-rpath,${runtime}")
  set(probe_flags "-Wl,--dynamic-linker=${runtime}/ld-linux.so.2" "-Wl,-rpath,${runtime}")
  set(emulator qemu-i386 -L /usr/i686-linux-gnu)
else()
  set(CMAKE_C_COMPILER gcc)
  set(CMAKE_CXX_COMPILER g++)
  set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
  foreach(kind C CXX)
    set(CMAKE_${kind}_FLAGS_INIT "-m32")
  endforeach()
  foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-m32")
  endforeach()
  set(probe_flags -m32)
  set(emulator qemu-i386)
endif()

# Builds and runs an empty program once per build tree to learn whether the kernel runs
# i686 programs.
if(NOT DEFINED VORN_I386_NATIVE)
  set(probe "${CMAKE_BINARY_DIR}/vorn-i386-probe")
  file(WRITE "${probe}.c" "int main(void) { return 0; }\n")
  execute_process(COMMAND ${CMAKE_C_COMPILER} ${probe_flags} "${probe}.c" -o "${probe}"
                  RESULT_VARIABLE built OUTPUT_QUIET ERROR_QUIET)
  execute_process(COMMAND "${probe}" RESULT_VARIABLE ran OUTPUT_QUIET ERROR_QUIET)
  if(built STREQUAL "0" AND ran STREQUAL "0" AND NOT "$ENV{VORN_I386_EMULATE}" STREQUAL "1")
    set(VORN_I386_NATIVE ON CACHE BOOL "The host kernel runs the i686 test programs")
  else()
    set(VORN_I386_NATIVE OFF CACHE BOOL "The host kernel runs the i686 test programs")
  endif()
endif()
if(NOT VORN_I386_NATIVE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${emulator})
endif()
