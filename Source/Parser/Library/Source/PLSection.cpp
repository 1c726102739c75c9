#include "PLSection.h"

#include "PLKeywords.h"
#include "internal/InfoText.h"
#include "internal/NumberFormat.h"

using namespace ovparser::internal;

namespace {

QString commentText(QStringView line)
{
    const QChar sign = QLatin1Char('#');
    return line.isEmpty() || line.startsWith(sign) ? line.toString() : sign + line.toString();
}

} // namespace

CPLSection::CPLSection() = default;

CPLSection::CPLSection(QString key, QString name)
    : sectionKey(key)
    , sectionName(name)
{}

CPLSection::CPLSection(const CPLSection& other) = default;
CPLSection& CPLSection::operator=(const CPLSection& other) = default;
CPLSection::~CPLSection() = default;

void CPLSection::loadSectionData(QString text)
{
    clearKeyValuePairs();
    int comments = 0;
    LineReader lines(trimmed(text));
    for (QStringView line; lines.next(&line);) {
        const QStringView content = trimmed(line);
        const ColonCut cut = cutAtColon(content);
        if (cut.kind == ColonCut::Pair) {
            pairIndex.insert(pairIndex.cend(), int(pairIndex.size()), entryCount);
            appendEntry(cut.before.toString(), cut.after.toString());
        } else {
            appendEntry(PLKeyword::Text::CommentKey + QString::number(comments++),
                        commentText(content));
        }
    }
    lineCount = entryCount;
}

void CPLSection::saveSectionData(QString& text) const
{
    text = PLKeyword::Text::Marker + sectionKey + PLKeyword::Text::KeyEnd + sectionName +
           PLKeyword::Text::LineEnd;
    const int written = qMin(lineCount, entryCount);
    for (int i = 0; i < written; ++i) {
        const QString& key = entryKeys.at(i);
        if (!key.contains(PLKeyword::Text::CommentKey, Qt::CaseInsensitive))
            text += key + PLKeyword::Text::KeyEnd;
        text += values.value(mapKey(key)) + PLKeyword::Text::LineEnd;
    }
    text += PLKeyword::Text::LineEnd;
}

tag_estatus CPLSection::addKeyValue(QString key, QString value)
{
    if (key.isEmpty())
        return eSTATUS_INVALID_ARGUMENT;
    const auto entry = values.find(mapKey(key));
    if (entry != values.end()) {
        *entry = value;
        return eSTATUS_SUCCESS;
    }
    pairIndex.insert(int(pairIndex.size()), entryCount);
    appendEntry(key, value);
    ++lineCount;
    return eSTATUS_SUCCESS;
}

void CPLSection::appendEntry(const QString& key, const QString& value)
{
    values.insert(mapKey(key), value);
    entryKeys.append(key);
    ++entryCount;
}

tag_estatus CPLSection::getValue(QString key, QString* value) const
{
    if (!value || key.isEmpty())
        return eSTATUS_NULL_ARGUMENT;
    const auto entry = values.constFind(mapKey(key));
    if (entry == values.cend())
        return eSTATUS_KEY_NOT_FOUND;
    *value = withoutComment(*entry);
    return eSTATUS_SUCCESS;
}

template <typename Number, typename Convert>
tag_estatus CPLSection::getNumber(const QString& key, Number* value, Convert convert) const
{
    if (!value)
        return eSTATUS_NULL_ARGUMENT;
    QString text;
    const tag_estatus status = getValue(key, &text);
    if (status != eSTATUS_SUCCESS)
        return status;
    bool converted = false;
    const Number number = convert(text, &converted);
    *value = converted ? number : Number(0);
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::getValue(QString key, short* value) const
{
    return getNumber(key, value, [](const QString& text, bool* ok) { return text.toShort(ok); });
}

tag_estatus CPLSection::getValue(QString key, int* value) const
{
    return getNumber(key, value, [](const QString& text, bool* ok) { return text.toInt(ok); });
}

tag_estatus CPLSection::getValue(QString key, long* value) const
{
    return getNumber(key, value, [](const QString& text, bool* ok) { return text.toLong(ok); });
}

tag_estatus CPLSection::getValue(QString key, float* value) const
{
    return getNumber(key, value, [](const QString& text, bool* ok) { return text.toFloat(ok); });
}

tag_estatus CPLSection::getValue(QString key, double* value) const
{
    return getNumber(key, value, [](const QString& text, bool* ok) { return text.toDouble(ok); });
}

tag_estatus CPLSection::getRawValue(QString key, QString* value) const
{
    if (!value)
        return eSTATUS_NULL_ARGUMENT;
    const auto entry = values.constFind(mapKey(key));
    if (entry == values.cend())
        return eSTATUS_KEY_NOT_FOUND;
    *value = *entry;
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::setValue(QString key, QString value)
{
    const auto entry = values.find(mapKey(key));
    if (entry == values.end())
        return eSTATUS_KEY_NOT_FOUND;
    *entry = withCommentOf(*entry, value);
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::setValue(QString key, short value)
{
    return setValue(key, QString::number(value));
}

tag_estatus CPLSection::setValue(QString key, int value)
{
    return setValue(key, QString::number(value));
}

tag_estatus CPLSection::setValue(QString key, long value)
{
    return setValue(key, QString::number(value));
}

tag_estatus CPLSection::setValue(QString key, float value)
{
    return setValue(key, fixedText(double(value)));
}

tag_estatus CPLSection::setValue(QString key, double value)
{
    return setValue(key, fixedText(value));
}

tag_estatus CPLSection::setRawValue(QString key, QString value)
{
    const auto entry = values.find(mapKey(key));
    if (entry == values.end())
        return eSTATUS_KEY_NOT_FOUND;
    *entry = value;
    return eSTATUS_SUCCESS;
}

QString CPLSection::operator[](QString key) const
{
    QString value;
    getValue(key, &value);
    return value;
}

QString CPLSection::operator[](int pairOrdinal) const
{
    return isPairOrdinal(pairOrdinal) ? (*this)[pairKey(pairOrdinal)] : QString();
}

bool CPLSection::isKeyPresent(QString key) const
{
    return values.contains(mapKey(key));
}

tag_estatus CPLSection::getKeyValuePairCount(int* count) const
{
    if (!count)
        return eSTATUS_NULL_ARGUMENT;
    *count = this->count();
    return eSTATUS_SUCCESS;
}

int CPLSection::count() const
{
    return int(pairIndex.size());
}

bool CPLSection::isPairOrdinal(int ordinal) const
{
    return ordinal >= 0 && ordinal < count();
}

const QString& CPLSection::pairKey(int ordinal) const
{
    return entryKeys.at(pairIndex.value(ordinal));
}

tag_estatus CPLSection::getKey(int pairOrdinal, QString* key) const
{
    if (!key)
        return eSTATUS_NULL_ARGUMENT;
    if (!isPairOrdinal(pairOrdinal))
        return eSTATUS_FAILED;
    *key = pairKey(pairOrdinal);
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::getKeyList(QStringList* list) const
{
    if (!list)
        return eSTATUS_NULL_ARGUMENT;
    list->clear();
    for (const int position : pairIndex)
        list->append(entryKeys.at(position));
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::getValueList(QStringList* list) const
{
    if (!list)
        return eSTATUS_NULL_ARGUMENT;
    list->clear();
    for (const int position : pairIndex)
        list->append((*this)[entryKeys.at(position)]);
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::getRawValueList(QStringList* list) const
{
    if (!list)
        return eSTATUS_NULL_ARGUMENT;
    list->clear();
    for (const int position : pairIndex)
        list->append(values.value(mapKey(entryKeys.at(position))));
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::getKeylistFromKeyAndSubkey(QString key, QString subkey,
                                                   QStringList* keys) const
{
    if (key.isEmpty() || !keys)
        return eSTATUS_NULL_ARGUMENT;
    for (const int position : pairIndex) {
        const QString& candidate = entryKeys.at(position);
        if (isKeySelected(candidate, key, subkey))
            keys->append(candidate);
    }
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::getRDXAngle(double* angle) const
{
    const bool newer = isKeyPresent(PLKeyword::Key::Rdx2Angle);
    return getValue(newer ? PLKeyword::Key::Rdx2Angle : PLKeyword::Key::RodxAngle, angle);
}

void CPLSection::clearKeyValuePairs()
{
    entryKeys.clear();
    values.clear();
    pairIndex.clear();
    entryCount = 0;
    lineCount = 0;
}

tag_estatus CPLSection::getSectionName(QString* name, bool raw) const
{
    if (!name)
        return eSTATUS_FAILED;
    *name = raw ? sectionName : withoutComment(sectionName);
    return eSTATUS_SUCCESS;
}

tag_estatus CPLSection::setSectionName(QString name)
{
    sectionName = withCommentOf(sectionName, name);
    return eSTATUS_SUCCESS;
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
    sectionKey = key;
    return eSTATUS_SUCCESS;
}
