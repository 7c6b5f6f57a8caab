# Toolchain: WebAssembly with Emscripten. Two lanes of double are 128-bit vectors; exceptions are those of WebAssembly
# itself, which cost nothing where none is thrown. Neither has fused operations.
find_program(EMSCRIPTEN_COMPILER em++ REQUIRED)
file(REAL_PATH ${EMSCRIPTEN_COMPILER} emscripten_root)
get_filename_component(emscripten_root ${emscripten_root} DIRECTORY)
foreach(candidate ${emscripten_root} /usr/share/emscripten $ENV{EMSDK}/upstream/emscripten)
  if(EXISTS ${candidate}/cmake/Modules/Platform/Emscripten.cmake)
    include(${candidate}/cmake/Modules/Platform/Emscripten.cmake)
    break()
  endif()
endforeach()
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -fwasm-exceptions")
