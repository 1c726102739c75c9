# What is installed, and the config files with which other projects find the library.
include(CMakePackageConfigHelpers)

set(OVPARSER_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ovparser)

install(TARGETS ovparser EXPORT ovparserTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ovparser)
list(TRANSFORM OVPARSER_PUBLIC_HEADERS PREPEND Source/Parser/ OUTPUT_VARIABLE headers)
install(FILES ${headers}
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ovparser COMPONENT development)
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
  PATTERN CMakeLists.txt EXCLUDE
  PATTERN "*.cmake" EXCLUDE
  PATTERN "*.awk" EXCLUDE
  PATTERN "*.sed" EXCLUDE
  PATTERN "*.dot" EXCLUDE
  PATTERN "*.dox" EXCLUDE
  PATTERN Doxyfile EXCLUDE)

install(DIRECTORY tests/consumer
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/tests COMPONENT development)

# CMake: the same files for the installed library and for the one in the build tree.
string(REPLACE ";" " " OVPARSER_QT_COMPONENTS "${OVPARSER_QT_MODULES}")
configure_package_config_file(cmake/ovparserConfig.cmake.in ${CMAKE_BINARY_DIR}/ovparserConfig.cmake
  INSTALL_DESTINATION ${OVPARSER_CONFIG_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/ovparserConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(EXPORT ovparserTargets NAMESPACE ovparser::
  DESTINATION ${OVPARSER_CONFIG_DIR} COMPONENT development)
install(
  FILES ${CMAKE_BINARY_DIR}/ovparserConfig.cmake ${CMAKE_BINARY_DIR}/ovparserConfigVersion.cmake
  DESTINATION ${OVPARSER_CONFIG_DIR} COMPONENT development)
export(EXPORT ovparserTargets NAMESPACE ovparser:: FILE ${CMAKE_BINARY_DIR}/ovparserTargets.cmake)

# pkg-config: the prefix is relative, so that the installed tree can be moved.
file(RELATIVE_PATH OVPARSER_PC_PREFIX
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" OVPARSER_PC_PREFIX "\${pcfiledir}/${OVPARSER_PC_PREFIX}")
list(TRANSFORM OVPARSER_QT_MODULES PREPEND ${OVPARSER_QT} OUTPUT_VARIABLE OVPARSER_PC_REQUIRES)
string(REPLACE ";" " >= ${OVPARSER_QT_VERSION}, " OVPARSER_PC_REQUIRES "${OVPARSER_PC_REQUIRES}")
string(APPEND OVPARSER_PC_REQUIRES " >= ${OVPARSER_QT_VERSION}")
configure_file(cmake/ovparser.pc.in ${CMAKE_BINARY_DIR}/ovparser.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/ovparser.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(OVPARSER_BUILD_TOOL)
  # Anywhere but in the system's folders the program finds the library by its own place.
  set(zsh_completions vendor-completions)
  if(UNIX AND NOT CMAKE_INSTALL_PREFIX MATCHES "^/usr/?$")
    set(zsh_completions site-functions)
    file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(ovinfo PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
  endif()
  install(TARGETS ovinfo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  foreach(entry IN ITEMS
      ovinfo.1:${CMAKE_INSTALL_MANDIR}/man1:ovinfo.1
      completions/ovinfo.bash:${CMAKE_INSTALL_DATADIR}/bash-completion/completions:ovinfo
      completions/_ovinfo:${CMAKE_INSTALL_DATADIR}/zsh/${zsh_completions}:_ovinfo)
    string(REPLACE ":" ";" entry ${entry})
    list(GET entry 0 file)
    list(GET entry 1 folder)
    list(GET entry 2 name)
    if(EXISTS ${PROJECT_SOURCE_DIR}/tool/${file})
      install(FILES tool/${file} DESTINATION ${folder} RENAME ${name} COMPONENT tool)
    endif()
  endforeach()
endif()
