#include "foundation/CJOBXtailed.h"

#include "foundation/CJOBXProperty.h"

#include <gtest/gtest.h>

namespace
{
class Record : public CJOBXtailed
{
};

void AddAttribute(Record& record, const char* name)
{
    auto* const property = new CJOBXProperty;
    property->m_sName = name;
    record.pMakeTailAttributes()->Add(property);
}

TEST(Tailed, HasNothingAtFirstAndTakesHalfAWord)
{
    const Record record;
    EXPECT_EQ(record.GetID(), CJOBXtailed::kNoID);
    EXPECT_EQ(record.pGetTailAttributes(), nullptr);
    EXPECT_EQ(sizeof(Record), 4U);
}

TEST(Tailed, KeepsANumberWithAndWithoutAttributes)
{
    Record record;
    for (const __int64 id :
         {__int64{0}, __int64{1}, __int64{61417}, (__int64{1} << 31) - 1, __int64{1} << 31, __int64{1} << 40})
    {
        record.SetID(id);
        EXPECT_EQ(record.GetID(), id);
    }
    AddAttribute(record, ".smd");
    EXPECT_EQ(record.GetID(), __int64{1} << 40) << "the number stays when attributes come";
    record.SetID(5);
    EXPECT_EQ(record.GetID(), 5);
    record.SetID(-3);
    EXPECT_EQ(record.GetID(), CJOBXtailed::kNoID);
    ASSERT_NE(record.pGetTailAttributes(), nullptr);
    EXPECT_EQ(record.pGetTailAttributes()->GetAt(0)->m_sName, ".smd");
}

TEST(Tailed, HasNoNumberWhenItDoesNotFit)
{
    Record record;
    record.SetID(__int64{1} << 62);
    EXPECT_EQ(record.GetID(), CJOBXtailed::kNoID);
    record.SetID((__int64{1} << 62) - 1);
    EXPECT_EQ(record.GetID(), (__int64{1} << 62) - 1);
}

TEST(Tailed, ALargeNumberIsReplacedRemovedAndCopied)
{
    Record record;
    record.SetID(__int64{1} << 40);
    const Record copy(record);
    record.SetID(5);
    EXPECT_EQ(record.GetID(), 5);
    record.SetID(CJOBXtailed::kNoID);
    EXPECT_EQ(record.GetID(), CJOBXtailed::kNoID);
    EXPECT_EQ(record.pGetTailAttributes(), nullptr);
    EXPECT_EQ(copy.GetID(), __int64{1} << 40);
}

TEST(Tailed, HasNoAttributesWhileTheListIsEmpty)
{
    Record record;
    EXPECT_EQ(record.pMakeTailAttributes()->GetSize(), 0);
    EXPECT_EQ(record.pGetTailAttributes(), nullptr);
}

TEST(Tailed, IsCopiedDeeply)
{
    Record source;
    source.SetID(7);
    AddAttribute(source, "a");
    const Record copy(source);
    Record assigned;
    assigned.SetID(9);
    assigned = source;
    source.pMakeTailAttributes()->DeleteAll();
    for (const Record* const record : {&copy, static_cast<const Record*>(&assigned)})
    {
        EXPECT_EQ(record->GetID(), 7);
        ASSERT_NE(record->pGetTailAttributes(), nullptr);
        EXPECT_EQ(record->pGetTailAttributes()->GetAt(0)->m_sName, "a");
    }
    const Record& itself = assigned;
    assigned = itself;
    EXPECT_EQ(assigned.pGetTailAttributes()->GetSize(), 1);
}
} // namespace
