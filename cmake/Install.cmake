# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

# What is installed, and the config files with which other projects find the library.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(OVPARSER_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/${OVPARSER_NAME})
set(OVPARSER_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/${OVPARSER_NAME})
set(OVPARSER_DOC_DIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/ovparser)

install(TARGETS ovparser EXPORT ovparserTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  INCLUDES DESTINATION ${OVPARSER_INCLUDE_DIR})
list(TRANSFORM OVPARSER_PUBLIC_HEADERS PREPEND Source/Parser/ OUTPUT_VARIABLE headers)
install(FILES ${headers} DESTINATION ${OVPARSER_INCLUDE_DIR} COMPONENT development)
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md
  DESTINATION ${OVPARSER_DOC_DIR} COMPONENT documents)
install(DIRECTORY LICENSES docs examples DESTINATION ${OVPARSER_DOC_DIR} COMPONENT documents
  PATTERN CMakeLists.txt EXCLUDE
  PATTERN "*.cmake" EXCLUDE
  PATTERN "*.awk" EXCLUDE
  PATTERN "*.sed" EXCLUDE
  PATTERN "*.dot" EXCLUDE
  PATTERN "*.dox" EXCLUDE
  PATTERN Doxyfile EXCLUDE)
install(DIRECTORY tests/consumer DESTINATION ${OVPARSER_DOC_DIR}/tests COMPONENT documents)

# CMake: the same files for the installed library and for the one in the build tree.
string(REPLACE ";" " " OVPARSER_QT_COMPONENTS "${OVPARSER_QT_MODULES}")
set(config ${PROJECT_BINARY_DIR}/${OVPARSER_NAME}Config)
configure_package_config_file(cmake/ovparserConfig.cmake.in ${config}.cmake
  INSTALL_DESTINATION ${OVPARSER_CONFIG_DIR})
write_basic_package_version_file(${config}Version.cmake COMPATIBILITY SameMajorVersion)
install(EXPORT ovparserTargets NAMESPACE ${OVPARSER_NAME}::
  DESTINATION ${OVPARSER_CONFIG_DIR} COMPONENT development)
install(FILES ${config}.cmake ${config}Version.cmake
  DESTINATION ${OVPARSER_CONFIG_DIR} COMPONENT development)
export(EXPORT ovparserTargets NAMESPACE ${OVPARSER_NAME}::
  FILE ${PROJECT_BINARY_DIR}/ovparserTargets.cmake)

# pkg-config: the prefix is relative, so that the installed tree can be moved.
file(RELATIVE_PATH OVPARSER_PC_PREFIX
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" OVPARSER_PC_PREFIX "\${pcfiledir}/${OVPARSER_PC_PREFIX}")
list(TRANSFORM OVPARSER_QT_MODULES PREPEND ${OVPARSER_QT} OUTPUT_VARIABLE OVPARSER_PC_REQUIRES)
string(REPLACE ";" " >= ${OVPARSER_QT_VERSION}, " OVPARSER_PC_REQUIRES "${OVPARSER_PC_REQUIRES}")
string(APPEND OVPARSER_PC_REQUIRES " >= ${OVPARSER_QT_VERSION}")
set(OVPARSER_PC_STATIC "")
if(NOT BUILD_SHARED_LIBS)
  set(OVPARSER_PC_STATIC " -DOVPARSER_STATIC")
endif()
configure_file(cmake/ovparser.pc.in ${PROJECT_BINARY_DIR}/${OVPARSER_NAME}.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/${OVPARSER_NAME}.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(OVPARSER_BUILD_TOOL)
  # The program finds the library by its own place, wherever both are installed.
  file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(ovinfo PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
  install(TARGETS ovinfo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  set(zsh_completions site-functions)
  if(CMAKE_INSTALL_PREFIX MATCHES "^/usr/?$")
    set(zsh_completions vendor-completions)
  endif()
  install(FILES tool/ovinfo.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
  install(FILES tool/completions/ovinfo.bash RENAME ovinfo
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
  install(FILES tool/completions/_ovinfo
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/${zsh_completions} COMPONENT tool)
endif()

if(OVPARSER_BUILD_PYTHON)
  set(OVPARSER_PYTHON_DIR ${CMAKE_INSTALL_LIBDIR}/python3/site-packages CACHE STRING
    "Folder of Python packages, from the prefix on")
  file(RELATIVE_PATH libraries /prefix/${OVPARSER_PYTHON_DIR}/ovparser /prefix/${CMAKE_INSTALL_LIBDIR})
  set_target_properties(ovparser_python PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
  install(TARGETS ovparser_python LIBRARY DESTINATION ${OVPARSER_PYTHON_DIR}/ovparser COMPONENT python)
  install(DIRECTORY python/ovparser DESTINATION ${OVPARSER_PYTHON_DIR} COMPONENT python
    FILES_MATCHING PATTERN "*.py" PATTERN "*.pyi" PATTERN py.typed)
endif()
