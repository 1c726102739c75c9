# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

# ovparser_options: what every target of the project compiles with.
add_library(ovparser_options INTERFACE)

target_compile_definitions(ovparser_options INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_KEYWORDS
  QT_STRICT_ITERATORS
  QT_DEPRECATED_WARNINGS)

if(MSVC)
  target_compile_options(ovparser_options INTERFACE /W4 /utf-8 $<$<BOOL:${OVPARSER_WERROR}>:/WX>)
else()
  target_compile_options(ovparser_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Woverloaded-virtual
    $<$<BOOL:${OVPARSER_WERROR}>:-Werror>
    # Qt's macros for tests are called without the arguments that they may take.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
    # Messages name their source file; the folder of the build has no place in them.
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()

if(OVPARSER_SANITIZE)
  target_compile_options(ovparser_options INTERFACE
    -fsanitize=${OVPARSER_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(ovparser_options INTERFACE -fsanitize=${OVPARSER_SANITIZE})
endif()
