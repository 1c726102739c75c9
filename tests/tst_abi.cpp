// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <QtCore/QBuffer>

#include <cstring>

// The order of the virtual slots is part of the ABI. In the Itanium C++ ABI a pointer to a virtual
// member function holds the offset of its slot, plus one on most processors; the destructor has two
// slots, of which the second also frees the object.
namespace {

template <typename Function>
std::ptrdiff_t slotOf(Function function)
{
    std::ptrdiff_t representation = 0;
    static_assert(sizeof(function) >= sizeof(representation));
    std::memcpy(&representation, &function, sizeof(representation));
    return representation / std::ptrdiff_t(sizeof(void*));
}

template <typename Class>
class Counted : public Class
{
public:
    template <typename... Arguments>
    explicit Counted(int* count, Arguments... arguments)
        : Class(arguments...)
        , m_count(count)
    {}

    ~Counted() override { ++*m_count; }
    Q_DISABLE_COPY(Counted)

private:
    int* m_count;
};

/** How often the destructor runs when the second slot of an object is called. */
template <typename Class, typename... Arguments>
int deletions(Arguments... arguments)
{
    int count = 0;
    using Slot = void (*)(void*);
    void* const object = static_cast<Class*>(new Counted<Class>(&count, arguments...));
    const Slot* table = nullptr;
    std::memcpy(&table, object, sizeof(table));
    table[1](object);
    return count;
}

/** Overrides every slot, and lists those that are called. */
class Overriding : public CPLBkgSummaryInfo
{
public:
    tag_estatus loadSectionData(QString&, QString) override { return called(2); }

    tag_estatus addSection(CPLSection*) override { return called(3); }

    tag_estatus removeSection(QString) override { return called(4); }

    tag_estatus loadTextBuffer(const QString&) override { return called(5); }

    void clearData() override { called(6); }

    tag_estatus load(QString) override { return called(7); }

    tag_estatus SLload(QString) override { return called(8); }

    tag_estatus save(QString) const override { return called(9); }

    CPLSection* getSection(const QString&) const override
    {
        called(10);
        return nullptr;
    }

    tag_estatus getSectionList(QList<CPLSection*>&) const override { return called(11); }

    tag_estatus FLload(QString) override { return called(12); }

    mutable QList<int> calls;

private:
    tag_estatus called(int slot) const
    {
        calls.append(slot);
        return eSTATUS_SUCCESS;
    }
};

} // namespace

class TestAbi : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void slotsKeepTheirOrder()
    {
        const QList<std::ptrdiff_t> slots = {
            slotOf(&CPLClickInfo::loadSectionData), slotOf(&CPLClickInfo::addSection),
            slotOf(&CPLClickInfo::removeSection),   slotOf(&CPLClickInfo::loadTextBuffer),
            slotOf(&CPLClickInfo::clearData),       slotOf(&CPLBkgSummaryInfo::load),
            slotOf(&CPLBkgSummaryInfo::SLload),     slotOf(&CPLBkgSummaryInfo::save),
            slotOf(&CPLBkgSummaryInfo::getSection), slotOf(&CPLBkgSummaryInfo::getSectionList),
            slotOf(&CPLBkgSummaryInfo::FLload),
        };
        QCOMPARE(slots, QList<std::ptrdiff_t>({2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    }

    void everySlotCanBeOverridden()
    {
        Overriding object;
        CPLBkgSummaryInfo& catalogue = object;
        CPLClickInfo& info = catalogue;
        QString text;
        QList<CPLSection*> list;
        info.loadSectionData(text, text);
        info.addSection(nullptr);
        info.removeSection(text);
        info.loadTextBuffer(text);
        info.clearData();
        catalogue.load(text);
        catalogue.SLload(text);
        catalogue.save(text);
        QVERIFY(!catalogue.getSection(text));
        catalogue.getSectionList(list);
        catalogue.FLload(text);
        QCOMPARE(object.calls, (QList<int>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    }

    void destructorsComeFirst()
    {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        const QList<int> counts = {
            deletions<CPLClickInfo>(),
            deletions<CPLBkgSummaryInfo>(),
            deletions<CPLCameraInfo>(),
            deletions<CPLOptPropInfo>(),
            deletions<CPLSection>(),
            deletions<CPLSettingsFileWrapper>(),
            deletions<CPLSequenceInfo>(),
            deletions<CPLSpectralWrapper>(),
            deletions<AttrMap>(),
            deletions<sIASetupInfo>(),
            deletions<CPLBrowseInfo>(),
            deletions<CPLInfoItem>(),
            deletions<CPLLabelDataSet>(),
            deletions<CPLPreferenceKey>(),
            deletions<CPLPreferenceKeyList>(1),
            deletions<CPLXMLWriter, QIODevice*, QTextCodec*>(&device, nullptr),
        };
        QCOMPARE(counts.count(1), counts.size());
    }
};

QTEST_APPLESS_MAIN(TestAbi)
#include "tst_abi.moc"
