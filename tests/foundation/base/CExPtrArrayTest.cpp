// The pointer arrays: search, removal, deletion, moving, and that the library exports every instantiation.
#include "JOBXCLSDLL.h"
#include "compact/CODB.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{
// Counts the living, so that the tests see what is deleted.
struct Counted
{
    Counted() { ++living; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    virtual ~Counted() { --living; }
    static inline int living = 0;
};

using Plain = CExPtrArray<Counted*, Counted*>;
using Owning = COwningPtrArray<Counted>;

template <class Array>
std::vector<Counted*> Fill(Array& array, int count)
{
    std::vector<Counted*> made;
    for (int i = 0; i < count; ++i)
    {
        made.push_back(new Counted);
        array.Add(made.back());
    }
    return made;
}

std::vector<Counted*> Contents(const Plain& array)
{
    return {array.GetData(), array.GetData() + array.GetSize()};
}

template <class Work>
bool RaisesInvalidArgument(Work work)
{
    try
    {
        work();
    }
    catch (CInvalidArgException* exception)
    {
        exception->Delete();
        return true;
    }
    return false;
}
} // namespace

TEST(PtrArray, StartsEmpty)
{
    const Plain array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetLastIndex(), -1);
    EXPECT_EQ(array.GetLastElement(), nullptr);
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(PtrArray, AddsOnlyWhatIsNotThere)
{
    Plain array;
    Counted a;
    Counted b;
    EXPECT_EQ(array.Add_if_only_do_not_exists(&a), 0);
    EXPECT_EQ(array.Add_if_only_do_not_exists(&b), 1);
    EXPECT_EQ(array.Add_if_only_do_not_exists(&a), -1);
    EXPECT_EQ(array.GetSize(), 2);
    EXPECT_EQ(array.Add_if_only_do_not_exists(nullptr), 2);
    EXPECT_EQ(array.Add_if_only_do_not_exists(nullptr), -1);
}

TEST(PtrArray, AccessorsAnswerNullForBadIndices)
{
    Plain array;
    Counted a;
    array.Add(&a);
    EXPECT_EQ(array.GetAt(-1), nullptr);
    EXPECT_EQ(array.GetAt(1), nullptr);
    EXPECT_EQ(array.GetAt(0), &a);
    Counted b;
    array.SetAt(-1, &b);
    array.SetAt(1, &b);
    EXPECT_EQ(array.GetSize(), 1);
    array.SetAt(0, &b);
    EXPECT_EQ(array.GetAt(0), &b);
    EXPECT_TRUE(array.IsValidIndex(0));
    EXPECT_FALSE(array.IsValidIndex(1));
    EXPECT_FALSE(array.IsValidIndex(-1));
    EXPECT_TRUE(RaisesInvalidArgument([&] { (void)array[1]; }));
    EXPECT_TRUE(RaisesInvalidArgument([&] { (void)array[-1]; }));
}

TEST(PtrArray, FindsTheFirstOccurrence)
{
    Plain array;
    Counted a;
    Counted b;
    for (Counted* const element : {&b, &a, static_cast<Counted*>(nullptr), &a})
        array.Add(element);
    EXPECT_EQ(array.FindIndex(&a), 1);
    EXPECT_EQ(array.FindIndex(nullptr), 2);
    Counted c;
    EXPECT_EQ(array.FindIndex(&c), -1);
    EXPECT_TRUE(array.Exists(&b));
    EXPECT_FALSE(array.Exists(&c));
}

TEST(PtrArray, RemoveDetachesWithoutDeleting)
{
    Plain array;
    Counted a;
    Counted b;
    for (Counted* const element : {&a, &b, &a})
        array.Add(element);
    EXPECT_TRUE(array.Remove(&a));
    EXPECT_EQ(Contents(array), (std::vector<Counted*>{&b, &a}));
    Counted c;
    EXPECT_FALSE(array.Remove(&c));
    EXPECT_EQ(array.RemoveLastElement(), &a);
    EXPECT_EQ(array.RemoveLastElement(), &b);
    EXPECT_EQ(array.RemoveLastElement(), nullptr);
}

TEST(PtrArray, DeleteDestroysTheFirstOccurrenceOnly)
{
    Plain array;
    const auto made = Fill(array, 3);
    array.Add(nullptr);
    Counted stranger;
    const int before = Counted::living;
    EXPECT_FALSE(array.Delete(&stranger));
    EXPECT_EQ(Counted::living, before);
    EXPECT_TRUE(array.Delete(made[1]));
    EXPECT_EQ(Counted::living, before - 1);
    EXPECT_TRUE(array.Delete(nullptr));
    EXPECT_EQ(Contents(array), (std::vector<Counted*>{made[0], made[2]}));
    EXPECT_TRUE(array.DeleteLastElement());
    EXPECT_TRUE(array.DeleteLastElement());
    EXPECT_FALSE(array.DeleteLastElement());
    EXPECT_EQ(Counted::living, before - 3);
}

TEST(PtrArray, DeleteAtDestroysARun)
{
    Plain array;
    const auto made = Fill(array, 5);
    const int before = Counted::living;
    array.DeleteAt(1, 0);
    array.DeleteAt(1, -3);
    array.DeleteAt(99, 0);
    EXPECT_EQ(array.GetSize(), 5);
    array.DeleteAt(1, 2);
    EXPECT_EQ(Contents(array), (std::vector<Counted*>{made[0], made[3], made[4]}));
    EXPECT_EQ(Counted::living, before - 2);
    EXPECT_TRUE(RaisesInvalidArgument([&] { array.DeleteAt(-1, 1); }));
    EXPECT_TRUE(RaisesInvalidArgument([&] { array.DeleteAt(3, 1); }));
    EXPECT_TRUE(RaisesInvalidArgument([&] { array.DeleteAt(1, 5); })); // what was inside is gone by then
    EXPECT_EQ(Contents(array), std::vector<Counted*>{made[0]});
    array.DeleteAll();
    EXPECT_EQ(Counted::living, before - 5);
}

TEST(PtrArray, DeleteAllReleasesTheBuffer)
{
    Plain array;
    Fill(array, 3);
    array.Add(nullptr);
    const int before = Counted::living;
    array.DeleteAll();
    EXPECT_EQ(Counted::living, before - 3);
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(PtrArray, MoveElementToAppendsTheRunInOrder)
{
    Owning source;
    Owning destination;
    const auto made = Fill(source, 6);
    const auto there = Fill(destination, 1);
    EXPECT_TRUE(source.MoveElementTo(destination, 2, 4));
    EXPECT_EQ(Contents(source), (std::vector<Counted*>{made[0], made[1], made[5]}));
    EXPECT_EQ(Contents(destination), (std::vector<Counted*>{there[0], made[2], made[3], made[4]}));
    EXPECT_FALSE(source.MoveElementTo(destination, 3, 2));
    EXPECT_EQ(destination.GetSize(), 4);
    EXPECT_TRUE(source.MoveElementTo(destination, 1, 1));
    EXPECT_EQ(destination.GetLastElement(), made[1]);
}

TEST(PtrArray, MoveElementToItselfIsRefused)
{
    Owning array;
    Fill(array, 3);
    EXPECT_FALSE(array.MoveElementTo(array, 0, 1));
    EXPECT_EQ(array.GetSize(), 3);
}

TEST(PtrArray, MoveElementToPastTheEndRaises)
{
    Owning source;
    Owning destination;
    const auto made = Fill(source, 2);
    EXPECT_TRUE(RaisesInvalidArgument([&] { source.MoveElementTo(destination, 0, 2); }));
    EXPECT_EQ(source.GetSize(), 2);
    EXPECT_EQ(Contents(destination), std::vector<Counted*>{nullptr}); // the null of the bad index
    EXPECT_TRUE(RaisesInvalidArgument([&] { source.MoveElementTo(destination, -1, 0); }));
    EXPECT_EQ(Contents(source), std::vector<Counted*>{made[1]});
}

TEST(PtrArray, SubtractRemovesFirstOccurrencesOnly)
{
    Plain array;
    Plain other;
    Counted a;
    Counted b;
    Counted c;
    for (Counted* const element : {&a, &b, &a, &c, &a})
        array.Add(element);
    for (Counted* const element : {&a, &a, &c, &c})
        other.Add(element);
    array.Subtract(other);
    EXPECT_EQ(Contents(array), (std::vector<Counted*>{&b, &a}));
    array.Subtract(array);
    EXPECT_EQ(array.GetSize(), 0);
}

TEST(PtrArray, RemovesNullsAndDuplicates)
{
    Plain array;
    Counted a;
    Counted b;
    Counted c;
    for (Counted* const element : {&a, &b, &a, &c, &b})
        array.Add(element);
    array.RemoveDuplicatedElements();
    EXPECT_EQ(Contents(array), (std::vector<Counted*>{&a, &b, &c}));
    Plain nulls;
    for (Counted* const element : {static_cast<Counted*>(nullptr), &a, static_cast<Counted*>(nullptr)})
        nulls.Add(element);
    Plain same;
    same.Append(nulls);
    nulls.RemoveDuplicatedElements();
    EXPECT_EQ(Contents(nulls), (std::vector<Counted*>{nullptr, &a}));
    same.RemoveNullElement();
    EXPECT_EQ(Contents(same), std::vector<Counted*>{&a}) << "the first and the last, too";
    same.Add(nullptr);
    same.Add(&b);
    same.RemoveNullElement();
    EXPECT_EQ(Contents(same), (std::vector<Counted*>{&a, &b})) << "the last stays";
    Plain empty;
    empty.RemoveNullElement();
    empty.RemoveDuplicatedElements();
    EXPECT_EQ(empty.GetSize(), 0);
}

TEST(PtrArray, ReverseKeepsTheMiddle)
{
    Plain array;
    Counted a;
    Counted b;
    Counted c;
    for (Counted* const element : {&a, &b, &c})
        array.Add(element);
    array.Reverse();
    EXPECT_EQ(Contents(array), (std::vector<Counted*>{&c, &b, &a}));
}

TEST(PtrArray, EqualityIsIdentityInOrder)
{
    Plain one;
    Plain two;
    EXPECT_TRUE(one.IsElementEqual(two));
    Counted a;
    Counted b;
    one.Add(&a);
    EXPECT_FALSE(one.IsElementEqual(two));
    two.Add(&b);
    EXPECT_FALSE(one.IsElementEqual(two));
    two.SetAt(0, &a);
    EXPECT_TRUE(one.IsElementEqual(two));
}

TEST(PtrArray, PlainArrayLeavesItsElementsAliveOwningArrayDeletesThem)
{
    const int before = Counted::living;
    std::vector<Counted*> made;
    {
        Plain array;
        made = Fill(array, 2);
    }
    EXPECT_EQ(Counted::living, before + 2);
    for (const Counted* const element : made)
        delete element;
    {
        Owning array;
        Fill(array, 2);
        array.Add(nullptr);
    }
    EXPECT_EQ(Counted::living, before);
}

TEST(PtrArray, AssigningAnOwningArrayToItselfKeepsItsElements)
{
    CJOBXPropertyArray properties;
    CJOBXProperty* const property = properties.Own(std::make_unique<CJOBXProperty>());
    const CJOBXPropertyArray& self = properties;
    properties = self;
    ASSERT_EQ(properties.GetSize(), 1);
    EXPECT_EQ(properties.GetAt(0), property);
}

TEST(PtrArray, GrowsByAnEighthWithinFourAndAThousandElements)
{
    Plain array;
    int moves = 0;
    const Counted* const* buffer = nullptr;
    for (int i = 0; i < 200'000; ++i)
    {
        array.Add(nullptr);
        if (array.GetData() != buffer)
            ++moves;
        buffer = array.GetData();
    }
    EXPECT_EQ(array.GetSize(), 200'000);
    EXPECT_LT(moves, 400);
}

TEST(PtrArray, RemovingDuplicatesOfAMillionIsQuick)
{
    Plain array;
    std::vector<std::unique_ptr<Counted>> made(500'000);
    for (auto& element : made)
        element = std::make_unique<Counted>();
    for (int round = 0; round < 2; ++round)
        for (const auto& element : made)
            array.Add(element.get());
    array.RemoveDuplicatedElements(); // would take hours if each element were compared with each
    EXPECT_EQ(array.GetSize(), 500'000);
}

// Every element type that the library is built for. The deleting operations are compiled into the library only: what is
// missing there does not link.
template <class T>
class PtrArrayOf : public testing::Test
{
};

using FoundationTypes =
    testing::Types<CArrayN, CArrayPointD, CArrayPointN, CLProperty, CPoint3D, CRectD, CJOBXProperty>;
using MainTypes =
    testing::Types<CJOBXSnt, CJOBXSpecialSymbol, CJOBXcmp, CJOBXcmpTop, CJOBXcomponents, CJOBXdataNet, CJOBXdataNetObj,
                   CJOBXdataPkg, CJOBXdataPkgObj, CJOBXdataPkgPin, CJOBXfontsStandard, CJOBXfontsStandardObj,
                   CJOBXlayObj, CJOBXlayObjOX, CJOBXlayObjSurfaceOB, CJOBXlayer, CJOBXmatrixLayer, CJOBXmatrixStep,
                   CJOBXnet, CJOBXnetPt, CJOBXstepObj, CJOBXstepRepeat, CJOBXstephdr, CJOBXsysAttrData, CJOBXtoolData>;
using CompactTypes =
    testing::Types<CODBSnt, CODBSpecialSymbol, CODBcmp, CODBcmpToe, CODBdataNet, CODBdataNetObj, CODBdataPkg,
                   CODBdataPkgObj, CODBdataPkgPin, CODBlayObj, CODBlayObjOX, CODBlayObjSurfaceOB, CODBlayer,
                   CODBmatrixLayer, CODBnet, CODBnetPt, CODBstepRepeat, CODBstephdr, CODBsysAttrData>;

TYPED_TEST_SUITE_P(PtrArrayOf);

TYPED_TEST_P(PtrArrayOf, DeletesItsElements)
{
    static_assert(std::has_virtual_destructor_v<TypeParam>);
    CExPtrArray<TypeParam*, TypeParam*> array;
    for (int i = 0; i < 4; ++i)
        array.Add(new TypeParam);
    EXPECT_TRUE(array.Delete(array.GetAt(1)));
    EXPECT_TRUE(array.DeleteLastElement());
    array.DeleteAt(0, 1);
    EXPECT_EQ(array.GetSize(), 1);
    array.DeleteAll();
    EXPECT_EQ(array.GetSize(), 0);
}

REGISTER_TYPED_TEST_SUITE_P(PtrArrayOf, DeletesItsElements);
INSTANTIATE_TYPED_TEST_SUITE_P(Foundation, PtrArrayOf, FoundationTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(Main, PtrArrayOf, MainTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(Compact, PtrArrayOf, CompactTypes);

TEST(PtrArray, RecordsAreThoseThatAreNotNullInOrder)
{
    Owning array;
    EXPECT_EQ(array.Records().begin(), array.Records().end());
    std::vector<Counted*> made = Fill(array, 3);
    array.InsertAt(0, nullptr, 2);
    array.InsertAt(3, nullptr, 1);
    array.Add(nullptr);
    std::vector<const Counted*> seen;
    for (const Counted& record : std::as_const(array).Records())
        seen.push_back(&record);
    EXPECT_EQ(seen, std::vector<const Counted*>(made.begin(), made.end()));
    Owning nulls;
    nulls.SetSize(3);
    EXPECT_EQ(nulls.Records().begin(), nulls.Records().end());
}

TEST(PtrArray, RecordsMayBeChangedAndReplacedWhileIterating)
{
    COwningPtrArray<CLProperty> array;
    for (const char* const name : {"a", "b", "c"})
        array.Own(std::make_unique<CLProperty>(name, ""));
    CString names;
    for (CLProperty& property : array.Records())
    {
        names += property.m_sName;
        property.m_sValue = "changed";
        if (property.m_sName == "a")
        {
            delete array.GetAt(1);
            array.SetAt(1, nullptr);
        }
    }
    EXPECT_EQ(names, "ac");
    EXPECT_EQ(array.GetAt(2)->m_sValue, "changed");
}

TEST(PtrArray, RecordsWorkWithTheStandardAlgorithms)
{
    COwningPtrArray<CLProperty> array;
    array.Own(std::make_unique<CLProperty>("a", "1"));
    array.Add(nullptr);
    array.Own(std::make_unique<CLProperty>("b", "2"));
    const auto records = std::as_const(array).Records();
    static_assert(std::forward_iterator<decltype(records.begin())>);
    const auto found =
        std::find_if(records.begin(), records.end(), [](const CLProperty& record) { return record.m_sName == "b"; });
    ASSERT_NE(found, records.end());
    EXPECT_EQ(found->m_sValue, "2");
    EXPECT_EQ(std::distance(records.begin(), records.end()), 2);
}
