# Toolchain: 64-bit Windows with mingw-w64.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triple x86_64-w64-mingw32)
set(bits 64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
