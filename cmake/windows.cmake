# What only the Windows library has: its name (of both widths, as hosts load it by name; packages keep them in folders of
# their own), its entry point, its resources, its export list, and the runtimes.
set_target_properties(orvex PROPERTIES OUTPUT_NAME talven PREFIX "" IMPORT_PREFIX "lib")
target_sources(orvex PRIVATE src/platform/win32_dll.cpp resources/talven.rc)
target_sources(orvex_static PRIVATE src/platform/win32_static.cpp)
foreach(library orvex orvex_static)
  target_include_directories(${library} PRIVATE src resources)
  target_link_libraries(${library} PRIVATE $<BUILD_INTERFACE:orvex_options>)
endforeach()
set_source_files_properties(${PROJECT_SOURCE_DIR}/resources/talven.rc PROPERTIES
  OBJECT_DEPENDS ${PROJECT_SOURCE_DIR}/resources/messages.def
  INCLUDE_DIRECTORIES ${PROJECT_SOURCE_DIR}/resources
  COMPILE_DEFINITIONS "ORVEX_MAJOR=${PROJECT_VERSION_MAJOR};ORVEX_MINOR=${PROJECT_VERSION_MINOR};ORVEX_PATCH=${PROJECT_VERSION_PATCH}")

# Exceptions cross the DLL boundary only through the shared runtimes, so they are put beside the programs. Stripped: what
# they carry of debug information is ten times their code.
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(ORVEX_WINDOWS_BITS 64)
  set(ORVEX_WINDOWS_ARCHITECTURE x64)
  set(unwinder libgcc_s_seh-1.dll)
else()
  set(ORVEX_WINDOWS_BITS 32)
  set(ORVEX_WINDOWS_ARCHITECTURE x86)
  set(unwinder libgcc_s_dw2-1.dll)
endif()
set(ORVEX_RUNTIME_DLLS)
foreach(runtime ${unwinder} libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime} OUTPUT_VARIABLE runtime_path
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${runtime_path}")
    set(beside_programs ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${runtime})
    if(NOT EXISTS ${beside_programs} OR "${runtime_path}" IS_NEWER_THAN "${beside_programs}")
      file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
      execute_process(COMMAND ${CMAKE_STRIP} -o ${beside_programs} ${runtime_path} COMMAND_ERROR_IS_FATAL ANY)
    endif()
    list(APPEND ORVEX_RUNTIME_DLLS ${beside_programs})
  endif()
endforeach()
