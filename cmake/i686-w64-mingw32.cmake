# Toolchain: 32-bit Windows with mingw-w64.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(triple i686-w64-mingw32)
set(bits 32)
set(CMAKE_C_FLAGS_INIT "-march=i686 -msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-march=i686 -msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
