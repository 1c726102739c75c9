// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "SectionAccess.h"

#include "PLKeywords.h"

#include <utility>

namespace ovparser::internal {

namespace {

template <typename Out>
void writeSection(const QString& key, const QString& name, const Entries& entries, Out& out)
{
    appendText(out, PLKeyword::Text::Marker);
    appendText(out, key);
    appendText(out, PLKeyword::Text::KeyEnd);
    appendText(out, name);
    appendText(out, PLKeyword::Text::LineEnd);
    entries.write(out);
    appendText(out, PLKeyword::Text::LineEnd);
}

} // namespace

QLatin1String SectionAccess::bodyOf(const CPLSection& section)
{
    return QLatin1String(section.fileText.constData() + section.bodyStart, section.bodySize);
}

std::unique_ptr<CPLSection> SectionAccess::make(const QString& key, const QString& name,
                                                const QByteArray& text, QLatin1String body)
{
    auto section = std::make_unique<CPLSection>(key, name);
    section->fileText = text;
    section->bodyStart = int(body.data() - text.constData());
    section->bodySize = int(body.size());
    return section;
}

void SectionAccess::load(CPLSection& section, const QString& body)
{
    section.clearKeyValuePairs();
    if (isLatin1(body)) {
        section.fileText = body.toLatin1();
        section.bodySize = int(section.fileText.size());
        return;
    }
    auto entries = std::make_unique<Entries>();
    entries->read(QStringView(body));
    section.openEntries = entries.release();
}

// Most sections of a document are loaded and saved, but never looked into: a body is taken apart
// when somebody does. Of several threads that do so at once, the first one's entries stay.
const Entries& SectionAccess::entries(const CPLSection& section)
{
    Entries* known = section.openEntries.load(std::memory_order_acquire);
    if (known)
        return *known;
    auto read = std::make_unique<Entries>();
    read->read(section.fileText, bodyOf(section));
    if (!section.openEntries.compare_exchange_strong(known, read.get(), std::memory_order_acq_rel))
        return *known;
    return *read.release();
}

Entries& SectionAccess::entries(CPLSection& section)
{
    static_cast<void>(entries(std::as_const(section)));
    return *section.openEntries.load(std::memory_order_acquire);
}

void SectionAccess::write(const CPLSection& section, QString& text)
{
    writeSection(section.sectionKey, section.sectionName, entries(section), text);
}

void SectionAccess::write(const CPLSection& section, Entries& unopened, QByteArray& text)
{
    const Entries* entries = section.openEntries.load(std::memory_order_acquire);
    if (!entries) {
        unopened.clear();
        unopened.read(section.fileText, bodyOf(section));
        entries = &unopened;
    }
    writeSection(section.sectionKey, section.sectionName, *entries, text);
}

} // namespace ovparser::internal
