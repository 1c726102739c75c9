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

void SectionAccess::load(CPLSection& section, const SourceText& text, QLatin1String body)
{
    section.clearKeyValuePairs();
    section.fileText = text.bytes;
    section.wideText = text.wide;
    section.bodyStart = int(body.data() - text.bytes.constData());
    section.bodySize = int(body.size());
}

void SectionAccess::read(const CPLSection& section, Entries& entries)
{
    SourceText text(section.fileText);
    text.wide = section.wideText;
    const char* const body = section.fileText.constData() + section.bodyStart;
    entries.read(text, QLatin1String(body, section.bodySize));
}

// Most sections of a document are loaded and saved, but never looked into: a body is taken apart
// when somebody does. Of several threads that do so at once, the first one's entries stay.
const Entries& SectionAccess::entries(const CPLSection& section)
{
    Entries* known = section.openEntries.load(std::memory_order_acquire);
    if (known)
        return *known;
    auto opened = std::make_unique<Entries>();
    read(section, *opened);
    if (!section.openEntries.compare_exchange_strong(known, opened.get(),
                                                     std::memory_order_acq_rel))
        return *known;
    return *opened.release();
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
        read(section, unopened);
        entries = &unopened;
    }
    writeSection(section.sectionKey, section.sectionName, *entries, text);
}

} // namespace ovparser::internal
