// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Runs a fuzz target over stored inputs, so that any compiler can repeat what the fuzzer found.
#include "Support.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>

#include <cstdio>
#include <vector>

namespace {

int replay(const QString& path)
{
    if (QFileInfo(path).isDir()) {
        int count = 0;
        QDirIterator files(path, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            count += replay(files.next());
        return count;
    }
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout);
    const QByteArray bytes = fuzz::contentOf(path);
    // A copy that ends with the input, so that a sanitizer notices what reads on after it.
    const std::vector<std::uint8_t> data(bytes.cbegin(), bytes.cend());
    LLVMFuzzerTestOneInput(data.data(), data.size());
    return 1;
}

} // namespace

int main(int argc, char* argv[])
{
    int count = 0;
    for (int i = 1; i < argc; ++i)
        count += replay(QString::fromLocal8Bit(argv[i]));
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
