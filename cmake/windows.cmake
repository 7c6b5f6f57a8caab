# What only the Windows library has: its name, its resources and its import library.
set_target_properties(orvex PROPERTIES OUTPUT_NAME talven PREFIX "" IMPORT_PREFIX "lib")
target_sources(orvex PRIVATE ${PROJECT_SOURCE_DIR}/resources/talven.rc)
set_source_files_properties(${PROJECT_SOURCE_DIR}/resources/talven.rc PROPERTIES
  OBJECT_DEPENDS ${PROJECT_SOURCE_DIR}/resources/messages.def
  INCLUDE_DIRECTORIES ${PROJECT_SOURCE_DIR}/resources)

# Exceptions cross the DLL boundary only through the shared runtimes, so they are put beside the programs.
foreach(runtime libgcc_s_dw2-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime} OUTPUT_VARIABLE runtime_path
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${runtime_path}")
    file(COPY ${runtime_path} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  endif()
endforeach()
