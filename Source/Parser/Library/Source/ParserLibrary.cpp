// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "ParserLibrary.h"

const int nParserLibrary = 0;

CParserLibrary::CParserLibrary() = default;
CParserLibrary& CParserLibrary::operator=(const CParserLibrary&) = default;

int fnParserLibrary()
{
    constexpr int identity = 42;
    return identity;
}
