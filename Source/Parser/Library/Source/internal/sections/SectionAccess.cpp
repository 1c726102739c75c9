// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "SectionAccess.h"

#include "PLKeywords.h"

#include <utility>

namespace ovparser::internal {

namespace {

template <typename Out>
void writeHeader(const QString& key, const QString& name, Out& out)
{
    appendText(out, PLKeyword::Text::Marker);
    appendText(out, key);
    appendText(out, PLKeyword::Text::KeyEnd);
    appendText(out, name);
    appendText(out, PLKeyword::Text::LineEnd);
}

} // namespace

void SectionAccess::load(CPLSection& section, const SourceText& text, QLatin1String body)
{
    delete section.openEntries.exchange(nullptr);
    section.fileText = text.bytes;
    section.wideText = text.wide;
    section.bodyStart = int(body.data() - text.bytes.constData());
    section.bodySize = int(body.size());
}

SourceText SectionAccess::textOf(const CPLSection& section)
{
    SourceText text(section.fileText);
    text.wide = section.wideText;
    return text;
}

QLatin1String SectionAccess::bodyOf(const CPLSection& section)
{
    return QLatin1String(section.fileText.constData() + section.bodyStart, section.bodySize);
}

// Most sections of a document are loaded and saved, but never looked into: a body is taken apart
// when somebody does. Of several threads that do so at once, the first one's entries stay.
const Entries& SectionAccess::entries(const CPLSection& section)
{
    Entries* known = section.openEntries.load(std::memory_order_acquire);
    if (known)
        return *known;
    auto opened = std::make_unique<Entries>();
    opened->read(textOf(section), bodyOf(section));
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
    writeHeader(section.sectionKey, section.sectionName, text);
    entries(section).write(text);
    appendText(text, PLKeyword::Text::LineEnd);
}

void SectionAccess::write(const CPLSection& section, QByteArray& text)
{
    writeHeader(section.sectionKey, section.sectionName, text);
    if (const Entries* const entries = section.openEntries.load(std::memory_order_acquire))
        entries->write(text);
    else
        writeBody(textOf(section), bodyOf(section), text);
    appendText(text, PLKeyword::Text::LineEnd);
}

} // namespace ovparser::internal
