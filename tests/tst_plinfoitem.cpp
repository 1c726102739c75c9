// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "support/Support.h"

#include <cstring>

// The item frees what these tests allocate: the leak detector and the allocator check that.
class TestInfoItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void ownsItsText()
    {
        const auto allocated = [](const QByteArray& text) {
            const auto size = std::size_t(text.size()) + 1;
            return static_cast<char*>(std::memcpy(std::malloc(size), text.constData(), size));
        };
        CPLInfoItem item;
        char* text = nullptr;
        QCOMPARE(item.GetString(&text), eSTATUS_FAILED);
        char* const first = allocated("first");
        QCOMPARE(item = first, eSTATUS_SUCCESS);
        QCOMPARE(item.SetString(first), eSTATUS_SUCCESS);
        QCOMPARE(item.GetString(&text), eSTATUS_SUCCESS);
        QCOMPARE(text, first);
        QCOMPARE(item.SetString(allocated("second")), eSTATUS_SUCCESS);
        QCOMPARE(item.SetString(nullptr), eSTATUS_FAILED);
        CPLInfoItem copy;
        copy = CPLInfoItem(item);
        const CPLInfoItem& same = copy;
        copy = same;
        item = CPLInfoItem();
        QCOMPARE(item.GetString(&text), eSTATUS_FAILED);
        QCOMPARE(copy.GetString(&text), eSTATUS_SUCCESS);
        QCOMPARE(text, "second");
    }

    void browseInfo()
    {
        int type = -1;
        CPLBrowseInfo().getType(&type);
        QCOMPARE(type, 0);
        CPLBrowseInfo entry(5);
        for (const int wrong : {0, 3})
            QCOMPARE(entry.setType(wrong), eSTATUS_INVALID_ARGUMENT);
        entry.getType(&type);
        QCOMPARE(type, 5);
        for (const int right : {1, 2}) {
            QCOMPARE(entry.setType(right), eSTATUS_SUCCESS);
            entry.getType(&type);
            QCOMPARE(type, right);
        }
    }
};

QTEST_GUILESS_MAIN(TestInfoItem)
#include "tst_plinfoitem.moc"
