// Features read from a file lie side by side in memory: whatever a host does with single ones, they live as long as it
// keeps them and nothing is left behind. (What is left behind is seen by the sanitizers.)
#include "JOBXCLSDLL.h"

#include "foundation/framework/Guarded.h"
#include "support/CountFailedAllocations.h"
#include "support/FailingAllocation.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{
constexpr int kGroups = 2000;
constexpr int kKinds = 6; // features in a group

// Groups of one feature of every kind, with attributes; the groups' positions count up.
std::string ManyFeatures()
{
    std::string text = "$0 r1\n@0 .a\n@1 .b\n&0 zero\n&1 one and more\n";
    for (int i = 0; i < kGroups; ++i)
    {
        const std::string n = std::to_string(i);
        text += "L " + n + ".5 0 1 1 0 P 7;0=" + std::to_string(i % 3) + ",1\n";
        text += "P " + n + ".5 0 0 N 0 0;0=0\n";
        text += "A " + n + ".5 0 1 1 2 2 0 P 0 Y;0=1\n";
        text += "T " + n + ".5 0 standard P 0 1 1 1 'a text of some length' 1;0=1\n";
        text += "B " + n + ".5 0 some_barcode standard P 0 E 1 1 Y N Y Y T '12345678' ;0=1\n";
        text += "S P 0;0=1\nOB " + n + ".5 0 I\nOS 1 1\nOC 2 2 3 3 Y\nOE\nSE\n";
    }
    return text;
}

std::unique_ptr<CJOBXlayer> ReadMany()
{
    static const std::string text = ManyFeatures();
    const TempDir dir;
    dir.Write("features", text);
    auto layer = std::make_unique<CJOBXlayer>();
    layer->ParseODBOfMFC((dir.Path() + "/features").c_str());
    EXPECT_EQ(layer->GetFeatures()->GetSize(), __int64{kGroups} * kKinds);
    return layer;
}

// Changes a feature in every way that gives it something of its own.
void Burden(CJOBXlayObj& feature)
{
    feature.GetTexts().Add("a host's text that is not short");
    feature.SetUserValue(7);
    feature.SetSurfaceIndex(3);
    feature.SetPolarity("a polarity that is not short");
    feature.SetType("a type that is not short");
    feature.GetPropertyArray()->Own(std::make_unique<CJOBXProperty>());
    if (auto* const line = dynamic_cast<CJOBXlayObjLine*>(&feature))
        line->SetPadName("a pad name that is not short");
    if (auto* const pad = dynamic_cast<CJOBXlayObjPad*>(&feature))
        pad->SetPadName("a pad name that is not short");
    if (auto* const arc = dynamic_cast<CJOBXlayObjArc*>(&feature))
    {
        arc->SetPadName("a pad name that is not short");
        arc->SetClockwise("a direction that is not short");
    }
    if (auto* const surface = dynamic_cast<CJOBXlayObjSurface*>(&feature))
    {
        CJOBXlayObjOX& element = *surface->GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetAt(1);
        element.SetKind("a kind that is not short");
        element.SetPolygonType("a polygon type that is not short");
        element.SetClockwise("a direction that is not short");
    }
}
} // namespace

TEST(FeatureMemory, FeaturesAreSmallBecauseABoardHasAMillionOfThem)
{
    EXPECT_LE(sizeof(CJOBXlayObj), 40U);
    EXPECT_LE(sizeof(CJOBXlayObjLine), 72U);
    EXPECT_LE(sizeof(CJOBXlayObjPad), 80U);
    EXPECT_LE(sizeof(CJOBXlayObjArc), 88U);
    EXPECT_LE(sizeof(CJOBXlayObjText), 112U);
    EXPECT_LE(sizeof(CJOBXlayObjSurface), 64U);
    EXPECT_LE(sizeof(CJOBXlayObjBarcode), 168U);
    EXPECT_LE(sizeof(CJOBXlayObjOX), 56U);
}

TEST(FeatureMemory, FeatureTakenOutOutlivesItsLayer)
{
    auto layer = ReadMany();
    std::vector<std::unique_ptr<CJOBXlayObj>> kept;
    for (const int position : {0, 1, 2, 3, 4, 5, kGroups * kKinds - 1, 3 * kKinds})
    {
        kept.emplace_back(layer->GetFeatures()->GetAt(position));
        layer->GetFeatures()->SetAt(position, nullptr);
    }
    layer.reset();
    EXPECT_EQ(dynamic_cast<CJOBXlayObjLine&>(*kept[0]).GetStartPoint(), CPointD(0.5, 0));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjLine&>(*kept[7]).GetStartPoint(), CPointD(3.5, 0));
    ASSERT_EQ(kept[0]->nGetPropertyCount(), 2);
    EXPECT_EQ(kept[0]->pGetProperty(0)->m_sName, ".a");
    EXPECT_EQ(kept[0]->pGetProperty(0)->m_sValue, "zero");
    EXPECT_EQ(dynamic_cast<CJOBXlayObjText&>(*kept[3]).GetText(), "a text of some length");
    auto& surface = dynamic_cast<CJOBXlayObjSurface&>(*kept[6]);
    EXPECT_EQ(surface.GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetAt(0)->GetPoint(), CPointD(kGroups - 0.5, 0));
    EXPECT_EQ(surface.pGetProperty(0)->m_sValue, "one and more");
    kept[0]->GetPropertyArray()->GetAt(0)->m_sValue = "changed";
    EXPECT_EQ(kept[0]->pGetProperty(0)->m_sValue, "changed");
    EXPECT_EQ(kept[7]->pGetProperty(0)->m_sValue, "zero");
}

TEST(FeatureMemory, FeaturesAreDeletedOneByOneInAnyOrderOnAnyThread)
{
    auto layer = ReadMany();
    CJOBXlayObjArray& features = *layer->GetFeatures();
    CJOBXlayObjArray others;
    for (__int64 i = 0; i < features.GetSize(); i += 2)
    {
        others.Add(features.GetAt(i));
        features.SetAt(i, nullptr);
    }
    std::thread other(
        [&others]
        {
            while (others.DeleteLastElement())
                continue;
        });
    for (__int64 i = 1; i < features.GetSize(); i += 4)
    {
        CJOBXlayObj* const feature = features.GetAt(i);
        features.SetAt(i, nullptr);
        delete feature;
    }
    layer.reset();
    other.join();
    EXPECT_EQ(others.GetSize(), 0);
}

TEST(FeatureMemory, WhatFeaturesGotAfterReadingGoesWithThem)
{
    auto layer = ReadMany();
    CJOBXlayObjArray& features = *layer->GetFeatures();
    for (__int64 i = 0; i < features.GetSize(); i += i % 5 + 1)
        Burden(*features.GetAt(i));
    const CJOBXlayObj& first = *features.GetAt(0);
    EXPECT_EQ(first.GetTexts().GetSize(), 1);
    EXPECT_EQ(first.GetUserValue(), 7);
    EXPECT_EQ(first.GetSurfaceIndex(), 3);
    EXPECT_EQ(first.GetPolarity(), "a polarity that is not short");
    EXPECT_EQ(first.GetType(), "a type that is not short");
    EXPECT_EQ(first.nGetPropertyCount(), 3);
    EXPECT_EQ(dynamic_cast<const CJOBXlayObjLine&>(first).GetPadName(), "a pad name that is not short");
    features.DeleteAt(0, kKinds + 1);
    features.DeleteAll();
    EXPECT_EQ(features.GetSize(), 0);
}

namespace
{
int destroyed = 0;

struct OtherBase
{
    virtual ~OtherBase() = default;
    double more = 1.0;
};

// The compiler takes the record's place inside the object, and its way of deleting itself, for mistakes in deleting it.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wfree-nonheap-object"
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif
class COwn : public OtherBase, public CJOBXlayObjLine
{
public:
    ~COwn() override { ++destroyed; }
    std::string m_text = std::string(100, 'x');
};
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
} // namespace

TEST(FeatureMemory, HostsOwnRecordsStandBesideThoseOfAFile)
{
    destroyed = 0;
    auto layer = ReadMany();
    CJOBXlayObjArray& features = *layer->GetFeatures();
    features.InsertAt(1, new COwn);
    features.InsertAt(kKinds, new COwn, 1);
    features.InsertAt(0, new CJOBXlayObjPad);
    features.Add(new COwn);
    CJOBXlayObj* const alone = new COwn;
    delete alone;
    EXPECT_EQ(destroyed, 1);
    layer.reset();
    EXPECT_EQ(destroyed, 4);
}

TEST(FeatureMemory, ContourElementsMoveBetweenContours)
{
    auto layer = ReadMany();
    const auto elements = [&layer](int group)
    {
        return dynamic_cast<CJOBXlayObjSurface&>(*layer->GetFeatures()->GetAt(group * kKinds + 5))
            .GetContours()
            ->GetAt(0)
            ->GetODBlayObjOXArray();
    };
    ASSERT_EQ(elements(0)->GetSize(), 4);
    EXPECT_TRUE(elements(0)->MoveElementTo(*elements(kGroups - 1), 1, 2));
    const CJOBXlayObjSurfaceOB copy(
        *dynamic_cast<CJOBXlayObjSurface&>(*layer->GetFeatures()->GetAt(5)).GetContours()->GetAt(0));
    const std::unique_ptr<CJOBXlayObjOX> clone(elements(kGroups - 1)->GetAt(5)->clone());
    elements(0)->Own(std::make_unique<CJOBXlayObjOX>());
    layer.reset();
    EXPECT_EQ(copy.GetODBlayObjOXArray()->GetSize(), 3);
    EXPECT_EQ(copy.GetODBlayObjOXArray()->GetAt(0)->GetKind(), "OB");
    EXPECT_EQ(clone->GetKind(), "OC");
    EXPECT_EQ(clone->GetClockwise(), "Y");
}

namespace
{
// A host's own record that cannot be made.
template <class Record>
struct Unmade : Record
{
    Unmade() { throw std::runtime_error("no"); }
};

template <class Record>
void ExpectMemoryOfHostsRecordsIsGivenBack()
{
    const long live = FailingAllocation::LiveBlocks();
    delete new Record;
    auto* const made = new (std::nothrow) Record;
    EXPECT_NE(made, nullptr);
    delete made;
    alignas(Record) std::byte place[sizeof(Record)];
    auto* const placed = new (static_cast<void*>(place)) Record;
    EXPECT_EQ(static_cast<void*>(placed), static_cast<void*>(place));
    placed->~Record();
    const auto raises = [](auto make)
    {
        try
        {
            make();
        }
        catch (const std::runtime_error&)
        {
            return true;
        }
        return false;
    };
    EXPECT_TRUE(raises([] { delete new Unmade<Record>; }));
    EXPECT_TRUE(raises([] { delete new (std::nothrow) Unmade<Record>; }));
    alignas(Unmade<Record>) std::byte other[sizeof(Unmade<Record>)];
    EXPECT_TRUE(raises([&] { new (static_cast<void*>(other)) Unmade<Record>; }));
    EXPECT_EQ(FailingAllocation::LiveBlocks(), live);
}
} // namespace

TEST(FeatureMemory, HostsMakeRecordsByEveryFormOfNew)
{
    ExpectMemoryOfHostsRecordsIsGivenBack<CJOBXlayObjLine>();
    ExpectMemoryOfHostsRecordsIsGivenBack<CJOBXlayObjOX>();
}

TEST(FeatureMemory, ExhaustedMemoryLeavesAsTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    std::string text = "@0 .a\n&0 a value that is not short\n";
    for (int i = 0; i < 40; ++i)
        text += "L 0 0 1 1 0 P 0;0=0\nS P 0;0=1\nOB 0 0 I\nOS 1 0\nOE\nSE\nT 0 0 standard P 0 1 1 1 'text' 1\n";
    dir.Write("features", text);
    const CString path = (dir.Path() + "/features").c_str();
    EXPECT_GT(CountFailedAllocations(
                  [&]
                  {
                      const auto layer = Guarded([] { return std::make_unique<CJOBXlayer>(); });
                      EXPECT_EQ(layer->ParseODBOfMFC(path), 1);
                      EXPECT_EQ(layer->GetFeatures()->GetSize(), 120);
                  }),
              20);
}
