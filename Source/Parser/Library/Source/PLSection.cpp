#include "PLSection.h"

#include "PLKeywords.h"
#include "internal/InfoText.h"
#include "internal/KeyCache.h"
#include "internal/NumberFormat.h"
#include "internal/SectionAccess.h"

#include <QtCore/QMap>
#include <QtCore/QVarLengthArray>

#include <algorithm>
#include <utility>

using namespace ovparser::internal;

namespace {

void appendComment(QString& text, QStringView comment)
{
    const QChar sign = QLatin1Char('#');
    if (!comment.isEmpty() && !comment.startsWith(sign))
        text += sign;
    text.append(comment.data(), int(comment.size()));
}

/** A number that is the same for keys that differ in letter case only; 0 for a key beyond ASCII. */
uint keyHash(QStringView key)
{
    uint hash = 2166136261U;
    for (const QChar c : key) {
        if (c.unicode() > 0x7F)
            return 0;
        hash = (hash ^ (c.unicode() | 0x20U)) * 16777619U;
    }
    return hash;
}

/** Whether a key, of ASCII, may be taken for that of a comment. */
bool mayBeCommentKey(QStringView key)
{
    const QLatin1String reserved = PLKeyword::Text::CommentKey;
    return std::search(key.begin(), key.end(), reserved.begin(), reserved.end(),
                       [](QChar a, char b) { return (a.unicode() | 0x20) == (b | 0x20); }) !=
           key.end();
}

/**
 * Writes the lines of a section body that nobody has looked into.
 *
 * @return false when a line may depend on another one, as where a key occurs twice: what was
 *         written is no good then
 */
bool writeLines(QStringView body, QString& text)
{
    QVarLengthArray<uint, 64> hashes;
    LineReader lines(trimmed(body));
    for (QStringView line; lines.next(&line);) {
        const QStringView content = trimmed(line);
        const ColonCut cut = cutAtColon(content);
        if (cut.kind == ColonCut::Pair) {
            hashes.append(keyHash(cut.before));
            if (hashes.last() == 0 || mayBeCommentKey(cut.before))
                return false;
            text.append(cut.before.data(), int(cut.before.size()));
            text += PLKeyword::Text::KeyEnd;
            text.append(cut.after.data(), int(cut.after.size()));
        } else {
            appendComment(text, content);
        }
        text += PLKeyword::Text::LineEnd;
    }
    std::sort(hashes.begin(), hashes.end());
    return std::adjacent_find(hashes.begin(), hashes.end()) == hashes.end();
}

} // namespace

/** What a section body holds, in file order. */
struct PARSERLIBRARY_NO_EXPORT CPLSection::Entries
{
    /** Reads a section body. @param cache  the keys that it may share; may be null */
    Entries(QStringView body, KeyCache* cache);

    /** Adds a pair, or replaces the value of its key; without memory nothing changes. */
    void put(const QString& key, const QString& value);

    /** The stored value of a key; null when there is no such key. */
    [[nodiscard]] const QString* find(QString key) const;

    /** The key of the pair with this ordinal; null when there is no such pair. */
    [[nodiscard]] const QString* pairKey(int ordinal) const;

    /** The stored value of an entry. */
    [[nodiscard]] QString valueAt(int position) const
    {
        return values.value(mappedKeys.at(position));
    }

    void write(QString& text) const;

    qint32 entryCount = 0;
    QStringList entryKeys;
    QStringList mappedKeys; ///< the same in the form under which `values` holds them
    QMap<QString, QString> values;
    qint32 lineCount = 0;
    QMap<int, int> pairIndex;

private:
    void append(const KeyForms& key, const QString& value);
};

CPLSection::Entries::Entries(QStringView body, KeyCache* cache)
{
    KeyCache::User keys(cache);
    int comments = 0;
    const QStringView text = trimmed(body);
    const auto lineEnds = std::count(text.begin(), text.end(), QLatin1Char('\n'));
    entryKeys.reserve(int(lineEnds) + 1);
    mappedKeys.reserve(int(lineEnds) + 1);
    LineReader lines(text);
    for (QStringView line; lines.next(&line);) {
        const QStringView content = trimmed(line);
        const ColonCut cut = cutAtColon(content);
        if (cut.kind == ColonCut::Pair) {
            pairIndex.insert(pairIndex.cend(), int(pairIndex.size()), entryCount);
            append(keys.formsOf(cut.before), cut.after.toString());
        } else {
            QString comment = PLKeyword::Value::Empty;
            appendComment(comment, content);
            const QString key = PLKeyword::Text::CommentKey + QString::number(comments++);
            append({key, mapKey(key)}, comment);
        }
    }
    lineCount = entryCount;
}

void CPLSection::Entries::append(const KeyForms& key, const QString& value)
{
    values.insert(key.mapped, value);
    entryKeys.append(key.spelled);
    mappedKeys.append(key.mapped);
    ++entryCount;
}

void CPLSection::Entries::put(const QString& key, const QString& value)
{
    const QString lowerKey = mapKey(key);
    const auto before = values.size();
    const auto entry = values.insert(lowerKey, value);
    if (values.size() == before)
        return;
    try {
        entryKeys.append(key);
        mappedKeys.append(lowerKey);
        pairIndex.insert(pairIndex.cend(), int(pairIndex.size()), entryCount);
    } catch (...) {
        values.erase(entry);
        for (QStringList* const keys : {&entryKeys, &mappedKeys}) {
            while (keys->size() > entryCount)
                keys->removeLast();
        }
        throw;
    }
    ++entryCount;
    ++lineCount;
}

const QString* CPLSection::Entries::find(QString key) const
{
    const auto entry = values.constFind(mapKey(std::move(key)));
    return entry == values.cend() ? nullptr : &*entry;
}

const QString* CPLSection::Entries::pairKey(int ordinal) const
{
    const auto position = pairIndex.constFind(ordinal);
    return position == pairIndex.cend() ? nullptr : &entryKeys.at(*position);
}

void CPLSection::Entries::write(QString& text) const
{
    const int written = qMin(lineCount, entryCount);
    for (int i = 0; i < written; ++i) {
        const QString& key = entryKeys.at(i);
        if (!key.contains(PLKeyword::Text::CommentKey, Qt::CaseInsensitive)) {
            text += key;
            text += PLKeyword::Text::KeyEnd;
        }
        text += valueAt(i);
        text += PLKeyword::Text::LineEnd;
    }
}

CPLSection::CPLSection() = default;

CPLSection::CPLSection(QString key, QString name)
    : sectionKey(std::move(key))
    , sectionName(std::move(name))
{}

CPLSection::CPLSection(const CPLSection& other)
    : sectionKey(other.sectionKey)
    , sectionName(other.sectionName)
    , body(other.body)
    , openEntries(other.openEntries ? new Entries(*other.openEntries) : nullptr)
{}

CPLSection& CPLSection::operator=(const CPLSection& other)
{
    CPLSection copy(other);
    sectionKey.swap(copy.sectionKey);
    sectionName.swap(copy.sectionName);
    body.swap(copy.body);
    openEntries.swap(copy.openEntries);
    return *this;
}

CPLSection::~CPLSection() = default;

// Most sections of a document are loaded and saved, but never looked into: a body is kept as its
// text until somebody does.
void CPLSection::readBody() const
{
    if (openEntries)
        return;
    openEntries = std::make_unique<Entries>(body, keyCache.get());
    body = QString();
}

// A copy has no part in the cache: it may outlive the document.
void CPLSection::shareKeys(std::shared_ptr<KeyCache>* cache)
{
    if (!*cache)
        *cache = std::make_shared<KeyCache>();
    keyCache = *cache;
}

const CPLSection::Entries& CPLSection::entries() const
{
    readBody();
    return *openEntries;
}

CPLSection::Entries& CPLSection::entries()
{
    readBody();
    return *openEntries;
}

void CPLSection::loadSectionData(QString text)
{
    openEntries.reset();
    body = std::move(text);
    // Characters that are not the text's own may be gone when the body is looked into.
    const auto own = [&] {
        if (body.capacity() == 0)
            body.detach();
        return eSTATUS_SUCCESS;
    };
    if (guarded(own) != eSTATUS_SUCCESS)
        body = QString();
}

void CPLSection::saveSectionData(QString& text) const
{
    const tag_estatus status = guarded([&] {
        text = PLKeyword::Text::Marker + sectionKey + PLKeyword::Text::KeyEnd + sectionName +
               PLKeyword::Text::LineEnd;
        const int bodyStart = int(text.size());
        if (openEntries || !writeLines(body, text)) {
            text.truncate(bodyStart);
            entries().write(text);
        }
        text += PLKeyword::Text::LineEnd;
        return eSTATUS_SUCCESS;
    });
    if (status != eSTATUS_SUCCESS)
        text = QString();
}

tag_estatus CPLSection::addKeyValue(QString key, QString value)
{
    if (key.isEmpty())
        return eSTATUS_INVALID_ARGUMENT;
    return guarded([&] {
        entries().put(key, value);
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSection::getValue(QString key, QString* value) const
{
    if (!value || key.isEmpty())
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const QString* const stored = entries().find(std::move(key));
        if (!stored)
            return eSTATUS_KEY_NOT_FOUND;
        *value = withoutComment(*stored);
        return eSTATUS_SUCCESS;
    });
}

template <typename Number, typename Convert>
tag_estatus CPLSection::getNumber(QString key, Number* value, Convert convert) const
{
    if (!value)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        QString text;
        const tag_estatus status = getValue(std::move(key), &text);
        if (status != eSTATUS_SUCCESS)
            return status;
        bool converted = false;
        const Number number = convert(text, &converted);
        *value = converted ? number : Number(0);
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSection::getValue(QString key, short* value) const
{
    return getNumber(std::move(key), value,
                     [](const QString& text, bool* ok) { return text.toShort(ok); });
}

tag_estatus CPLSection::getValue(QString key, int* value) const
{
    return getNumber(std::move(key), value,
                     [](const QString& text, bool* ok) { return text.toInt(ok); });
}

tag_estatus CPLSection::getValue(QString key, long* value) const
{
    return getNumber(std::move(key), value,
                     [](const QString& text, bool* ok) { return text.toLong(ok); });
}

tag_estatus CPLSection::getValue(QString key, float* value) const
{
    return getNumber(std::move(key), value,
                     [](const QString& text, bool* ok) { return text.toFloat(ok); });
}

tag_estatus CPLSection::getValue(QString key, double* value) const
{
    return getNumber(std::move(key), value,
                     [](const QString& text, bool* ok) { return text.toDouble(ok); });
}

tag_estatus CPLSection::getRawValue(QString key, QString* value) const
{
    if (!value)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const QString* const stored = entries().find(std::move(key));
        if (!stored)
            return eSTATUS_KEY_NOT_FOUND;
        *value = *stored;
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSection::setValue(QString key, QString value)
{
    return guarded([&] {
        auto& values = entries().values;
        const auto entry = values.find(mapKey(std::move(key)));
        if (entry == values.end())
            return eSTATUS_KEY_NOT_FOUND;
        *entry = withCommentOf(*entry, value);
        return eSTATUS_SUCCESS;
    });
}

template <typename Number, typename Format>
tag_estatus CPLSection::setNumber(QString key, Number value, Format format)
{
    return guarded([&] { return setValue(std::move(key), format(value)); });
}

tag_estatus CPLSection::setValue(QString key, short value)
{
    return setNumber(std::move(key), value, [](short number) { return QString::number(number); });
}

tag_estatus CPLSection::setValue(QString key, int value)
{
    return setNumber(std::move(key), value, [](int number) { return QString::number(number); });
}

tag_estatus CPLSection::setValue(QString key, long value)
{
    return setNumber(std::move(key), value, [](long number) { return QString::number(number); });
}

tag_estatus CPLSection::setValue(QString key, float value)
{
    return setNumber(std::move(key), double(value), fixedText);
}

tag_estatus CPLSection::setValue(QString key, double value)
{
    return setNumber(std::move(key), value, fixedText);
}

tag_estatus CPLSection::setRawValue(QString key, QString value)
{
    return guarded([&] {
        auto& values = entries().values;
        const auto entry = values.find(mapKey(std::move(key)));
        if (entry == values.end())
            return eSTATUS_KEY_NOT_FOUND;
        *entry = value;
        return eSTATUS_SUCCESS;
    });
}

QString CPLSection::operator[](QString key) const
{
    QString value;
    getValue(std::move(key), &value);
    return value;
}

QString CPLSection::operator[](int pairOrdinal) const
{
    QString key;
    return getKey(pairOrdinal, &key) == eSTATUS_SUCCESS ? (*this)[key] : QString();
}

bool CPLSection::isKeyPresent(QString key) const
{
    QString value;
    return getRawValue(std::move(key), &value) == eSTATUS_SUCCESS;
}

tag_estatus CPLSection::getKeyValuePairCount(int* count) const
{
    if (!count)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        *count = int(entries().pairIndex.size());
        return eSTATUS_SUCCESS;
    });
}

int CPLSection::count() const
{
    int pairs = 0;
    getKeyValuePairCount(&pairs);
    return pairs;
}

tag_estatus CPLSection::getKey(int pairOrdinal, QString* key) const
{
    if (!key)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const QString* const stored = entries().pairKey(pairOrdinal);
        if (!stored)
            return eSTATUS_FAILED;
        *key = *stored;
        return eSTATUS_SUCCESS;
    });
}

template <typename Pick>
tag_estatus CPLSection::listPairs(QStringList* list, Pick pick) const
{
    if (!list)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const Entries& all = entries();
        QStringList picked;
        for (const int position : all.pairIndex)
            picked.append(pick(all, position));
        *list = picked;
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSection::getKeyList(QStringList* list) const
{
    return listPairs(list,
                     [](const Entries& all, int position) { return all.entryKeys.at(position); });
}

tag_estatus CPLSection::getValueList(QStringList* list) const
{
    return listPairs(list, [](const Entries& all, int position) {
        // As getValue() has it: an empty key has no value.
        const bool named = !all.entryKeys.at(position).isEmpty();
        return named ? withoutComment(all.valueAt(position)) : QString();
    });
}

tag_estatus CPLSection::getRawValueList(QStringList* list) const
{
    return listPairs(list, [](const Entries& all, int position) { return all.valueAt(position); });
}

tag_estatus CPLSection::getKeylistFromKeyAndSubkey(QString key, QString subkey,
                                                   QStringList* keys) const
{
    if (key.isEmpty() || !keys)
        return eSTATUS_NULL_ARGUMENT;
    return guarded([&] {
        const Entries& all = entries();
        QStringList selected;
        for (const int position : all.pairIndex) {
            const QString& candidate = all.entryKeys.at(position);
            if (isKeySelected(candidate, key, subkey))
                selected.append(candidate);
        }
        *keys += selected;
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSection::getRDXAngle(double* angle) const
{
    return guarded([&] {
        const bool newer = hasKey(*this, PLKeyword::Key::Rdx2Angle);
        return getValue(newer ? PLKeyword::Key::Rdx2Angle : PLKeyword::Key::RodxAngle, angle);
    });
}

void CPLSection::clearKeyValuePairs()
{
    openEntries.reset();
    body = QString();
}

tag_estatus CPLSection::getSectionName(QString* name, bool raw) const
{
    if (!name)
        return eSTATUS_FAILED;
    return guarded([&] {
        *name = raw ? sectionName : withoutComment(sectionName);
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSection::setSectionName(QString name)
{
    return guarded([&] {
        sectionName = withCommentOf(sectionName, name);
        return eSTATUS_SUCCESS;
    });
}

tag_estatus CPLSection::getSectionKey(QString* key) const
{
    if (!key)
        return eSTATUS_FAILED;
    *key = sectionKey;
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::setSectionKey(QString key)
{
    if (key.isNull())
        return eSTATUS_FAILED;
    sectionKey = std::move(key);
    return eSTATUS_SUCCESS;
}
