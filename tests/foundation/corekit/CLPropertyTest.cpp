#include "foundation/corekit/CLProperty.h"
#include "foundation/corekit/CECadClsLvl.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace
{
struct CountedProperty : CLProperty
{
    explicit CountedProperty(int& count) : m_nDestroyed(count) {}
    CountedProperty(const CountedProperty&) = delete;
    CountedProperty& operator=(const CountedProperty&) = delete;
    ~CountedProperty() override { ++m_nDestroyed; }
    int& m_nDestroyed;
};
} // namespace

static_assert(std::is_base_of_v<CExPtrArray<CLProperty*, CLProperty*>, CLPropertyArray>);

TEST(LProperty, Accessors_GiveWhatWasSet)
{
    CLProperty property;
    EXPECT_TRUE(property.GetName().IsEmpty());
    property.SetName("PART_NAME");
    property.SetValue("ABC 123");
    EXPECT_EQ(property.GetName(), "PART_NAME");
    EXPECT_EQ(property.GetValue(), "ABC 123");
    const std::unique_ptr<CLProperty> clone(property.clone());
    EXPECT_TRUE(*clone == property);
    EXPECT_FALSE(*clone == CLProperty("PART_NAME", "abc 123"));
    EXPECT_FALSE(*clone == CLProperty("part_name", "ABC 123"));
}

TEST(LPropertyArray, Destructor_DeletesItsRecords)
{
    int destroyed = 0;
    {
        CLPropertyArray properties;
        properties.Add(new CountedProperty(destroyed));
        properties.Add(new CountedProperty(destroyed));
    }
    EXPECT_EQ(destroyed, 2);
}

TEST(LPropertyArray, Copies_AreDeepAndLeaveNullsOut)
{
    CLPropertyArray properties;
    properties.Add(new CLProperty("A", "1"));
    properties.Add(nullptr);
    properties.Add(new CLProperty("B", "2"));
    const CLPropertyArray copy(properties);
    const std::unique_ptr<CLPropertyArray> clone(copy.clone());
    ASSERT_EQ(copy.GetSize(), 2);
    EXPECT_NE(copy.GetAt(0), properties.GetAt(0));
    EXPECT_EQ(copy.GetAt(1)->GetName(), "B");
    EXPECT_TRUE(*clone == copy);
    EXPECT_FALSE(copy == properties);
    clone->GetAt(0)->SetValue("x");
    EXPECT_FALSE(*clone == copy);
}

TEST(LPropertyArray, Assignment_ReplacesAndOfItselfKeeps)
{
    CLPropertyArray properties;
    properties.Add(new CLProperty("A", "1"));
    CLPropertyArray other;
    other.Add(new CLProperty("old", ""));
    other = properties;
    ASSERT_EQ(other.GetSize(), 1);
    EXPECT_EQ(other.GetAt(0)->GetName(), "A");
    const CLPropertyArray& same = other;
    other = same;
    ASSERT_EQ(other.GetSize(), 1);
    EXPECT_EQ(other.GetAt(0)->GetName(), "A");
}

TEST(ECadClsLvl, Record_HoldsALabelAndItems)
{
    CECadClsLvl record("PROP");
    record.AddItem("name");
    record.AddItem("value");
    CECadClsLvl copy(record);
    record.SetLabel("X");
    record.m_arrItems[0] = "changed";
    EXPECT_EQ(record.GetLabel(), "X");
    EXPECT_EQ(copy.GetLabel(), "PROP");
    ASSERT_EQ(copy.GetItemList().GetSize(), 2);
    EXPECT_EQ(copy.GetItemList()[0], "name");
    EXPECT_EQ(copy.GetItemList()[1], "value");
}
