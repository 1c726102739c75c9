// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

// Uses the installed library: reads a value, changes it and saves; asks the exported classes for
// their types.
#include <ParserLibrary.h>

#include <cstdio>
#include <memory>
#include <typeinfo>

namespace {

class Document : public CPLSettingsFileWrapper
{
public:
    tag_estatus addSection(CPLSection* section) override
    {
        ++added;
        return CPLSettingsFileWrapper::addSection(section);
    }

    int added = 0;
};

int check(bool holds, const char* what)
{
    if (!holds)
        std::fprintf(stderr, "fails: %s\n", what);
    return holds ? 0 : 1;
}

// A class whose type information stayed in the library would not link, or not be found.
int checkTypes()
{
    const std::unique_ptr<CPLClickInfo> base = std::make_unique<Document>();
    const std::unique_ptr<CPLClickInfo> camera = std::make_unique<CPLCameraInfo>();
    const CPLClickInfo& instrument = *camera;
    return check(dynamic_cast<CPLSettingsFileWrapper*>(base.get()) != nullptr, "cast down") +
           check(dynamic_cast<CPLCameraInfo*>(base.get()) == nullptr, "cast across") +
           check(typeid(instrument) == typeid(CPLCameraInfo), "type of an instrument") +
           check(typeid(CPLXMLWriter) != typeid(CPLSpectralWrapper), "types differ") +
           check(typeid(AttrMap) != typeid(sIASetupInfo), "records differ");
}

int checkFile(const QString& from, const QString& to)
{
    const QString section = QStringLiteral("User Input");
    const QString key = QStringLiteral("User ID");
    const QString text = QStringLiteral("XYZ");
    QString value;
    CPLClickInfo info;
    CPLClickInfo again;
    return check(info.loadClickInfo(from, false) == eSTATUS_SUCCESS, "load") +
           check(info.getValue(section, key, &value) == eSTATUS_SUCCESS, "read") +
           check(!value.isEmpty() && value != text, "the value read") +
           check(info.setValue(section, key, text) == eSTATUS_SUCCESS, "change") +
           check(info.saveClickInfo(to) == eSTATUS_SUCCESS, "save") +
           check(again.loadClickInfo(to, false) == eSTATUS_SUCCESS, "load again") +
           check(again.getValue(section, key, &value) == eSTATUS_SUCCESS, "read again") +
           check(value == text, "the value written");
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3)
        return check(false, "usage: consumer FROM TO");
    return checkTypes() + checkFile(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
}
