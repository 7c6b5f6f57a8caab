# Compiler options for everything built here; nothing of it reaches a consumer.
add_library(orvex_options INTERFACE)
# Contraction off: an optimiser must never change a coordinate.
target_compile_options(orvex_options INTERFACE -ffp-contract=off -fno-math-errno -Wall -Wextra -Wpedantic -Wshadow
                                               -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False alarms on std::string concatenation and replacement (GCC bug 105651).
  target_compile_options(orvex_options INTERFACE -Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
  # A unique symbol would keep the library from being unloaded.
  target_compile_options(orvex_options INTERFACE -fno-gnu-unique)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND NOT EMSCRIPTEN)
  # As GCC does unasked: nothing is computed ahead that could raise an exception. Hosts may have unmasked them. On
  # WebAssembly there are none.
  target_compile_options(orvex_options INTERFACE -ffp-exception-behavior=maytrap)
endif()
if(ORVEX_WERROR)
  target_compile_options(orvex_options INTERFACE -Werror)
endif()
if(ORVEX_SANITIZE)
  # Divisions by zero are left to the output screening on purpose, so float-divide-by-zero stays off.
  target_compile_options(orvex_options INTERFACE -fsanitize=${ORVEX_SANITIZE} -fno-sanitize-recover=all
                                                 -fno-omit-frame-pointer)
  target_link_options(orvex_options INTERFACE -fsanitize=${ORVEX_SANITIZE})
endif()
if(ORVEX_BUILD_FUZZ)
  target_compile_options(orvex_options INTERFACE -fsanitize=fuzzer-no-link)  # coverage for the fuzzers
endif()
# For sources compiled with AVX and beyond, in addition to -mavx2 and the like. On 64-bit Windows GCC does not align the
# stack to 32 bytes (bug 54412), so the assembler turns aligned moves into unaligned ones, which cost nothing. On 32-bit
# Windows, where hosts of other compilers keep 4 bytes, it aligns the stack by itself.
set(ORVEX_AVX_OPTIONS)
if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(ORVEX_AVX_OPTIONS -Wa,-muse-unaligned-vector-move)
endif()
