# Installation and packages: libraries, headers, CMake and pkg-config files, the tool; a zip for Windows, a set of
# Debian packages elsewhere. Components: runtime, development, tools, python.
include(CMakePackageConfigHelpers)

install(TARGETS orvex EXPORT orvex-targets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(TARGETS orvex_static EXPORT orvex-targets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
if(TARGET orvex_tool)
  set_target_properties(orvex_tool PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS orvex_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  if(NOT CMAKE_CROSSCOMPILING)
    install(FILES ${ORVEX_TOOL_PAGES}/orvex.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
    install(FILES ${ORVEX_TOOL_PAGES}/orvex DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tools)
    install(FILES ${ORVEX_TOOL_PAGES}/_orvex DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tools)
    install(FILES ${ORVEX_TOOL_PAGES}/orvex.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tools)
  endif()
endif()
install(DIRECTORY include/orvex include/shr DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN "*.h")

set(orvex_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/orvex)
configure_package_config_file(cmake/orvex-config.cmake.in ${PROJECT_BINARY_DIR}/orvex-config.cmake
  INSTALL_DESTINATION ${orvex_cmake_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orvex-config-version.cmake COMPATIBILITY SameMajorVersion)
install(EXPORT orvex-targets NAMESPACE orvex:: DESTINATION ${orvex_cmake_dir} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/orvex-config.cmake ${PROJECT_BINARY_DIR}/orvex-config-version.cmake
  DESTINATION ${orvex_cmake_dir} COMPONENT development)

# The prefix is found from the file's own place, so that an unpacked or moved tree works.
file(RELATIVE_PATH orvex_pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
get_target_property(orvex_output_name orvex OUTPUT_NAME)
if(NOT orvex_output_name)
  set(orvex_output_name orvex)
endif()
configure_file(cmake/orvex.pc.in ${PROJECT_BINARY_DIR}/orvex.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvex.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(WIN32)  # the runtimes that the library shares with its hosts
  install(FILES ${ORVEX_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
endif()

# The documents with all that they link to, in the places that their links say.
set(orvex_documents README.md CHANGELOG.md CONTRIBUTING.md LICENSE docs examples)
foreach(document IN LISTS orvex_documents)
  if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/${document})
    install(DIRECTORY ${document} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
      PATTERN site EXCLUDE PATTERN __pycache__ EXCLUDE)
  elseif(EXISTS ${PROJECT_SOURCE_DIR}/${document})
    install(FILES ${document} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
  endif()
endforeach()

# ---- packages ----
set(CPACK_PACKAGE_NAME orvex)
set(CPACK_PACKAGE_VENDOR "Orvex developers")
set(CPACK_PACKAGE_CONTACT "Orvex developers <orvex@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET orvex_tool)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
if(TARGET orvex_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME orvex-${PROJECT_VERSION}-windows-${ORVEX_WINDOWS_ARCHITECTURE})
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION science)
  find_program(dpkg_shlibdeps dpkg-shlibdeps)
  if(dpkg_shlibdeps)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  endif()
  set(runtime_package liborvex${PROJECT_VERSION_MAJOR})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liborvex-dev)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
  set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME orvex-tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${runtime_package} (>= ${PROJECT_VERSION})")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-orvex)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${ORVEX_PYTHON_DEPENDS}")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-pandas, python3-geopandas, python3-matplotlib, python3-distributed")
  set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Shared library.")
  set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, static library, CMake and pkg-config files.")
  set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Command-line tool.")
  set(CPACK_COMPONENT_PYTHON_DESCRIPTION "Python package.")
endif()
include(CPack)
