# The point core is compiled once more for each instruction set beyond what every processor of the target has; the library
# chooses when it is loaded. The sources are listed by what they are: whatever runs once for each point.
file(GLOB orvex_level_sources CONFIGURE_DEPENDS
     src/points/Elementary.cpp
     src/projections/Prj*.cpp
     src/projections/Conversions.cpp
     src/datum/DatumPoints.cpp
     src/georef/PlanePoints.cpp
     src/shr/WarpPoints.cpp)

set(orvex_level_objects)
set(orvex_level_definition)

function(orvex_add_level level)
  add_library(orvex_${level} OBJECT ${orvex_level_sources})
  target_compile_definitions(orvex_${level} PRIVATE ORVEX_LEVEL=${level})
  target_compile_options(orvex_${level} PRIVATE ${ARGN} ${ORVEX_AVX_OPTIONS})
  target_include_directories(orvex_${level} PRIVATE include src)
  target_link_libraries(orvex_${level} PRIVATE orvex_options)
  list(APPEND orvex_level_objects $<TARGET_OBJECTS:orvex_${level}>)
  set(orvex_level_objects ${orvex_level_objects} PARENT_SCOPE)
endfunction()

# 32-bit hosts stay with AVX2: there are but eight registers for AVX-512 to spill. Sanitizers watch the formulas at the
# narrowest width alone; at the wider ones their checks take minutes to compile.
if(ORVEX_LEVELS AND NOT ORVEX_SANITIZE AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
  set(orvex_level_definition ORVEX_X86_LEVELS)
  orvex_add_level(avx2 -mavx2 -mno-fma)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    list(APPEND orvex_level_definition ORVEX_AVX512_LEVEL)
    orvex_add_level(avx512 -mavx512f -mavx512dq -mavx512vl)
  endif()
endif()
