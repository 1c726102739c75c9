# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

# The target docs: pages of the public headers and of the documents, in the build's own folder.
find_program(DOXYGEN_EXECUTABLE doxygen)
mark_as_advanced(DOXYGEN_EXECUTABLE)
if(NOT DOXYGEN_EXECUTABLE)
  return()
endif()

set(OVPARSER_REFERENCE ${PROJECT_BINARY_DIR}/reference)
file(WRITE ${OVPARSER_REFERENCE}/Doxyfile
  "@INCLUDE = docs/Doxyfile\nOUTPUT_DIRECTORY = \"${OVPARSER_REFERENCE}\"\nPROJECT_NUMBER = ${PROJECT_VERSION}\n")
add_custom_target(docs
  COMMAND ${DOXYGEN_EXECUTABLE} ${OVPARSER_REFERENCE}/Doxyfile
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "Reference: ${OVPARSER_REFERENCE}/html/index.html"
  VERBATIM)
