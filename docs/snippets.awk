# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

# Takes the code out of a page:  awk -v name=FILES -f snippets.awk PAGE
#
# The blocks marked "cpp" become one program, FILES.cpp, and those marked "python" another, FILES.py.
# Their output is what the blocks marked "output" show, each that of the program before it. The commands
# of the blocks marked "console" become FILES.sh, whose output is the blocks themselves. What must be
# printed goes to FILES.cpp.txt, FILES.py.txt and FILES.sh.txt.

BEGIN { quote = sprintf("%c", 39) }

/^```/ {
    kind = kind == "" ? substr($0, 4) : ""
    if (kind == "cpp")
        body = body "#line " (FNR + 1) " \"" FILENAME "\"\n"
    next
}

kind == "cpp" && /^#include/ {
    includes = includes $0 "\n"
    body = body "\n"
    next
}

kind == "cpp" {
    body = body $0 "\n"
    program = kind
}

kind == "python" {
    script = script $0 "\n"
    program = kind
}

kind == "output" { printed[program] = printed[program] $0 "\n" }

kind == "console" {
    shown = shown $0 "\n"
    if (sub(/^\$ /, "")) {
        line = $0
        gsub(quote, quote "\\" quote quote, line)
        commands = commands "printf " quote "%s\\n" quote " " quote "$ " line quote "\n" $0 "\n"
    }
}

END {
    if (body != "") {
        print "#include <ParserLibrary.h>\n" includes "int main()\n{\n" body "}" > (name ".cpp")
        printf "%s", printed["cpp"] > (name ".cpp.txt")
    }
    if (script != "") {
        printf "%s", script > (name ".py")
        printf "%s", printed["python"] > (name ".py.txt")
    }
    if (commands != "") {
        printf "%s", commands > (name ".sh")
        printf "%s", shown > (name ".sh.txt")
    }
}
