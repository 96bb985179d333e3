// The features model: defaults, lookups, scaling, copies.
#include "JOBXCLSDLL.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace
{
template <class T>
T* Add(CJOBXlayer& layer, const char* type)
{
    auto feature = std::make_unique<T>();
    feature->SetType(type);
    auto* const raw = feature.get();
    layer.GetFeatures()->Own(std::move(feature));
    return raw;
}

std::unique_ptr<CJOBXlayObjOX> Element(const char* kind, double x, double y)
{
    auto element = std::make_unique<CJOBXlayObjOX>();
    element->SetKind(kind);
    element->SetPoint({x, y});
    element->SetCenterPoint({x + 1, y + 1});
    return element;
}

void AddProperty(CJOBXlayObj& feature, const char* name, const char* value)
{
    auto property = std::make_unique<CJOBXProperty>();
    property->m_sName = name;
    property->m_sValue = value;
    feature.GetPropertyArray()->Own(std::move(property));
}
} // namespace

TEST(LayObj, HasItsDefaults)
{
    CJOBXlayObj feature;
    EXPECT_EQ(feature.GetDcode(), 0);
    EXPECT_EQ(feature.GetPolarity(), "P");
    EXPECT_EQ(feature.GetSymbolNumber(), -1);
    EXPECT_EQ(feature.GetFeatureIndex(), 0);
    EXPECT_EQ(feature.GetSurfaceIndex(), -1);
    EXPECT_EQ(feature.GetTexts().GetSize(), 0);
    EXPECT_EQ(feature.GetType(), "");
    EXPECT_EQ(feature.GetUserValue(), 0);
    EXPECT_EQ(feature.nGetPropertyCount(), 0);
    EXPECT_EQ(feature.pGetProperty(0), nullptr);
    EXPECT_EQ(feature.GetPropertyArray()->GetSize(), 0);
    double zero = 0.0;
    EXPECT_EQ(feature.CheckObjAtCenterPoint(zero, zero), 0);
    const CJOBXlayObjText text;
    EXPECT_EQ(text.GetVersion(), 1);
    EXPECT_EQ(text.GetFontName(), "standard");
}

TEST(LayObj, KeepsWhatAHostPutsThere)
{
    CJOBXlayObjArc arc;
    arc.SetPadName("pad");
    arc.SetSurfaceIndex(4);
    arc.SetUserValue(1LL << 40);
    arc.GetTexts().Add("text");
    EXPECT_EQ(arc.GetPadName(), "pad");
    EXPECT_EQ(arc.GetSurfaceIndex(), 4);
    EXPECT_EQ(arc.GetUserValue(), 1LL << 40);
    EXPECT_EQ(arc.GetTexts()[0], "text");
}

TEST(LayObj, OnlyAPadIsFoundAtItsExactCentre)
{
    CJOBXlayer layer;
    auto* const first = Add<CJOBXlayObjPad>(layer, "P");
    first->SetCenterPoint({0.1, 0.2});
    auto* const arc = Add<CJOBXlayObjArc>(layer, "A");
    arc->SetCenterPoint({5, 5});
    auto* const second = Add<CJOBXlayObjPad>(layer, "P");
    second->SetCenterPoint({5, 5});
    EXPECT_EQ(layer.GetFeatures()->GetObjAtIndexCenterPoint(0.1, 0.2, 0), 0);
    EXPECT_EQ(layer.GetFeatures()->GetObjAtIndexCenterPoint(5, 5, 0), 2);
    EXPECT_EQ(layer.GetFeatures()->GetObjAtIndexCenterPoint(5, 5.1, 0), -1);
}

TEST(LayObj, CentreOneBitOffIsNotFound)
{
    CJOBXlayer layer;
    Add<CJOBXlayObjPad>(layer, "P")->SetCenterPoint({0.1, 0.2});
    EXPECT_EQ(layer.GetFeatures()->GetObjAtIndexCenterPoint(std::nextafter(0.1, 1.0), 0.2, 0), -1);
}

TEST(LayObj, SearchAtCentreAlwaysStartsAtTheFirst)
{
    CJOBXlayer layer;
    Add<CJOBXlayObjPad>(layer, "P");
    Add<CJOBXlayObjPad>(layer, "P");
    EXPECT_EQ(layer.GetFeatures()->GetObjAtIndexCenterPoint(0, 0, 1), 0);
}

TEST(LayObj, UnitChangeScalesWhatItsKindSays)
{
    CJOBXlayer layer;
    auto* const line = Add<CJOBXlayObjLine>(layer, "L");
    line->SetStartPoint({1, 2});
    line->SetEndPoint({3, 4});
    auto* const pad = Add<CJOBXlayObjPad>(layer, "P");
    pad->SetCenterPoint({1, 2});
    pad->SetResizeFactor(5);
    pad->SetRotationAngle(30);
    auto* const arc = Add<CJOBXlayObjArc>(layer, "A");
    arc->SetStartPoint({1, 2});
    arc->SetEndPoint({3, 4});
    arc->SetCenterPoint({5, 6});
    auto* const text = Add<CJOBXlayObjText>(layer, "T");
    text->SetSize({1, 2});
    text->SetPosition({3, 4});
    text->SetWidthFactor(5);
    text->SetRotationAngle(30);
    auto* const barcode = Add<CJOBXlayObjBarcode>(layer, "B");
    barcode->m_dHeight = 1;
    barcode->m_dWidth = 2;
    barcode->m_ptPosition.SetData(3, 4);
    auto* const surface = Add<CJOBXlayObjSurface>(layer, "S");
    auto contour = std::make_unique<CJOBXlayObjSurfaceOB>();
    contour->GetODBlayObjOXArray()->Own(Element("OC", 1, 2));
    surface->GetContours()->Own(std::move(contour));

    layer.UnitConvert(10);

    EXPECT_EQ(line->GetStartPoint(), CPointD(10, 20));
    EXPECT_EQ(line->GetEndPoint(), CPointD(30, 40));
    EXPECT_EQ(pad->GetCenterPoint(), CPointD(10, 20));
    EXPECT_EQ(pad->GetResizeFactor(), 5);
    EXPECT_EQ(pad->GetRotationAngle(), 30);
    EXPECT_EQ(arc->GetStartPoint(), CPointD(10, 20));
    EXPECT_EQ(arc->GetEndPoint(), CPointD(30, 40));
    EXPECT_EQ(arc->GetCenterPoint(), CPointD(50, 60));
    EXPECT_EQ(text->GetSize(), CPointD(10, 20));
    EXPECT_EQ(text->GetPosition(), CPointD(30, 40));
    EXPECT_EQ(text->GetWidthFactor(), 50);
    EXPECT_EQ(text->GetRotationAngle(), 30);
    EXPECT_EQ(barcode->m_dHeight, 10);
    EXPECT_EQ(barcode->m_dWidth, 20);
    EXPECT_EQ(barcode->m_ptPosition, CPointD(30, 40));
    const CJOBXlayObjOX& element = *surface->GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetAt(0);
    EXPECT_EQ(element.GetPoint(), CPointD(10, 20));
    EXPECT_EQ(element.GetCenterPoint(), CPointD(20, 30));
    EXPECT_EQ(layer.m_sUnits, "INCH");
}

TEST(LayObj, UnitConvert_ByALengthOfItsOwnUsesTheValueGiven)
{
    CJOBXlayerArray layers;
    CJOBXlayer& layer = *layers.Own(std::make_unique<CJOBXlayer>());
    auto* const first = Add<CJOBXlayObjBarcode>(layer, "B");
    auto* const second = Add<CJOBXlayObjBarcode>(layer, "B");
    auto* const last = Add<CJOBXlayObjBarcode>(*layers.Own(std::make_unique<CJOBXlayer>()), "B");
    first->m_dHeight = 2;
    first->m_dWidth = 1;
    second->m_dWidth = 1;
    last->m_dWidth = 1;
    first->UnitConvert(first->m_dHeight);
    EXPECT_EQ(first->m_dWidth, 2);
    layer.GetFeatures()->UnitConvert(first->m_dHeight);
    EXPECT_EQ(second->m_dWidth, 4);
    layer.UnitConvert(first->m_dWidth);
    EXPECT_EQ(second->m_dWidth, 32);
    layers.UnitConvert(second->m_dWidth);
    EXPECT_EQ(last->m_dWidth, 32);
}

TEST(LayObj, TypeTextDecidesAndOneThatDoesNotFitChangesNothing)
{
    CJOBXlayObjPad pad;
    pad.SetCenterPoint({1, 2});
    for (const char* type : {"", "X", "p", "PP", "L", "T"})
    {
        pad.SetType(type);
        pad.UnitConvert(10);
        EXPECT_EQ(pad.GetCenterPoint(), CPointD(1, 2)) << type;
    }
    pad.SetType("P");
    pad.vRescale(10);
    EXPECT_EQ(pad.GetCenterPoint(), CPointD(10, 20));
}

TEST(Layer, RescaleUsesItsFactorForFeatures)
{
    CJOBXlayer layer;
    auto* const pad = Add<CJOBXlayObjPad>(layer, "P");
    pad->SetCenterPoint({1, 2});
    layer.vRescale();
    EXPECT_EQ(pad->GetCenterPoint(), CPointD(1, 2));
    layer.m_dRescaleFactor = 0.5;
    layer.vRescale();
    EXPECT_EQ(pad->GetCenterPoint(), CPointD(0.5, 1));
}

TEST(Layer, UnitChangeScalesComponentsAndTools)
{
    CJOBXlayer layer;
    auto components = std::make_unique<CJOBXcomponents>();
    auto component = std::make_unique<CJOBXcmp>();
    component->m_ptLocation.SetData(1, 2);
    components->m_arrCmps.Own(std::move(component));
    layer.GetComponents()->Own(std::move(components));
    layer.GetTool()->m_dThickness = 3;
    layer.m_dCopperWeightOrDielectric = 4;
    layer.UnitConvert(2);
    EXPECT_EQ(layer.GetComponents()->GetAt(0)->m_arrCmps.GetAt(0)->m_ptLocation, CPointD(2, 4));
    EXPECT_EQ(layer.GetTool()->m_dThickness, 6);
    EXPECT_EQ(layer.m_dCopperWeightOrDielectric, 4);
}

TEST(Layer, SymbolNameIsTheFirstOfItsNumber)
{
    CJOBXlayer layer;
    for (const char* name : {"r1", "r2", "r1"})
    {
        layer.m_arrSymbolNames.Add(name);
        layer.m_arrSymbolNumbers.Add(7);
    }
    EXPECT_EQ(layer.GetSymbolName(7), "r1");
    EXPECT_EQ(layer.GetSymbolName(8), "");
    EXPECT_EQ(layer.nGetSymbolIndex("r1"), 0);
    EXPECT_EQ(layer.nGetSymbolIndex("r2"), 1);
    EXPECT_EQ(layer.nGetSymbolIndex("R1"), -1);
}

TEST(Layer, SurfaceIndexIsSearchedFromThatPositionOn)
{
    CJOBXlayer layer;
    for (const int index : {2, -1, 2})
        Add<CJOBXlayObjSurface>(layer, "S")->SetSurfaceIndex(index);
    EXPECT_EQ(layer.nGetLayObjIndexFromSurfaceIndex(5), -1);
    EXPECT_EQ(layer.nGetLayObjIndexFromSurfaceIndex(3), -1);
    EXPECT_EQ(layer.nGetLayObjIndexFromSurfaceIndex(2), 2); // the match before position 2 is passed over
    EXPECT_EQ(layer.nGetLayObjIndexFromSurfaceIndex(0), -1);
    EXPECT_EQ(layer.nGetLayObjIndexFromSurfaceIndex(-1), -1);
}

TEST(Layer, ViaPadStackNameIsTheFirstGeometryWithAValue)
{
    CJOBXlayer layer;
    auto* const pad = Add<CJOBXlayObjPad>(layer, "P");
    EXPECT_EQ(layer.GetViaPadStackName(0), "");
    AddProperty(*pad, ".geo", "no");
    AddProperty(*pad, ".geometry", "");
    AddProperty(*pad, "my.Geometry_x", "Via10");
    AddProperty(*pad, ".geometry", "later");
    EXPECT_EQ(layer.GetViaPadStackName(0), "VIA10");
    EXPECT_EQ(layer.GetViaPadStackName(1), "");
    EXPECT_EQ(layer.GetViaPadStackName(-1), "");
    EXPECT_EQ(pad->pGetProperty(2)->m_sValue, "Via10");
}

TEST(Layer, IsFoundByNameInAnyCase)
{
    CJOBXlayerArray layers;
    layers.Own(std::make_unique<CJOBXlayer>())->m_sName = "Top";
    layers.Own(std::make_unique<CJOBXlayer>())->m_sName = "TOP";
    EXPECT_EQ(layers.GetODBlayerFromName("tOP"), layers.GetAt(0));
    EXPECT_EQ(layers.GetODBlayerFromName("to"), nullptr);
}

TEST(LayObjOX, EqualityTakesEveryMemberAndTheLineNumber)
{
    const auto element = Element("OC", 1, 2);
    const std::unique_ptr<CJOBXlayObjOX> copy(element->clone());
    EXPECT_TRUE(*copy == *element);
    copy->SetLineNumber(9);
    EXPECT_FALSE(*copy == *element);
    *copy = *element;
    EXPECT_TRUE(*copy == *element);
    copy->SetClockwise("Y");
    EXPECT_FALSE(*copy == *element);
    *copy = *element;
    copy->SetPolygonType("I");
    EXPECT_FALSE(*copy == *element);
    *copy = *element;
    copy->SetKind("OS");
    EXPECT_FALSE(*copy == *element);
    *copy = *element;
    copy->SetPoint({1, 2.5});
    EXPECT_FALSE(*copy == *element);
    *copy = *element;
    copy->SetCenterPoint({1, 2.5});
    EXPECT_FALSE(*copy == *element);
}

TEST(LayObjOXArray, EqualityWalksTheArgumentOnly)
{
    CJOBXlayObjOXArray two;
    two.Own(Element("OB", 1, 2));
    two.Own(Element("OS", 3, 4));
    CJOBXlayObjOXArray one;
    one.Own(Element("OB", 1, 2));
    const CJOBXlayObjOXArray none;
    EXPECT_TRUE(two == one);
    EXPECT_FALSE(one == two);
    EXPECT_TRUE(two == none);
    EXPECT_TRUE(none == none);
    EXPECT_FALSE(none == one);
}

TEST(LayObjOXArray, CopiesAreDeepAndLeaveNullsOut)
{
    CJOBXlayObjOXArray source;
    source.Own(Element("OB", 1, 2));
    source.Add(nullptr);
    source.Own(Element("OE", 3, 4));
    CJOBXlayObjOXArray copy(source);
    ASSERT_EQ(copy.GetSize(), 2);
    EXPECT_NE(copy.GetAt(0), source.GetAt(0));
    copy.GetAt(0)->SetPoint({9, 9});
    EXPECT_EQ(source.GetAt(0)->GetPoint(), CPointD(1, 2));
    const CJOBXlayObjOXArray& self = source;
    source = self;
    EXPECT_EQ(source.GetSize(), 3);
    const std::unique_ptr<CJOBXlayObjOXArray> clone(copy.clone());
    EXPECT_EQ(clone->GetAt(1)->GetKind(), "OE");
}

TEST(Contour, CopySharesItsElementsWithItsSource)
{
    auto source = std::make_unique<CJOBXlayObjSurfaceOB>();
    source->GetODBlayObjOXArray()->Own(Element("OB", 1, 2));
    CJOBXlayObjSurfaceOB copy(*source);
    CJOBXlayObjSurfaceOB assigned;
    assigned = copy;
    EXPECT_EQ(copy.GetODBlayObjOXArray(), source->GetODBlayObjOXArray());
    EXPECT_EQ(assigned.GetODBlayObjOXArray(), source->GetODBlayObjOXArray());
    ASSERT_EQ(assigned.GetODBlayObjOXArray()->GetSize(), 1);
    copy.GetODBlayObjOXArray()->GetAt(0)->SetPoint({7, 8});
    EXPECT_EQ(source->GetODBlayObjOXArray()->GetAt(0)->GetPoint(), CPointD(7, 8));
    source.reset();
    EXPECT_EQ(assigned.GetODBlayObjOXArray()->GetAt(0)->GetPoint(), CPointD(7, 8));
}

TEST(SpecialSymbol, LookUpGivesTheFirstOfANameAndMindsTheCase)
{
    CJOBXSpecialSymbolArray symbols;
    for (const char* name : {"a", "b", "a"})
        symbols.Own(std::make_unique<CJOBXSpecialSymbol>())->m_sName = name;
    EXPECT_EQ(symbols.nGetSpecialSymbolIndex("a"), 0);
    EXPECT_EQ(symbols.nGetSpecialSymbolIndex("b"), 1);
    EXPECT_EQ(symbols.nGetSpecialSymbolIndex("A"), -1);
}

TEST(SpecialSymbol, UnitChangeScalesEverySymbolsFeatures)
{
    CJOBXSpecialSymbolArray symbols;
    CJOBXSpecialSymbol* const symbol = symbols.Own(std::make_unique<CJOBXSpecialSymbol>());
    auto* const pad = Add<CJOBXlayObjPad>(*symbol->GetLayer(), "P");
    pad->SetCenterPoint({1, 2});
    symbols.UnitConvert(25.4);
    EXPECT_EQ(pad->GetCenterPoint(), CPointD(25.4, 50.8));
    EXPECT_EQ(symbol->m_arrTexts.GetSize(), 0);
}

TEST(Contour, UnitChangeScalesItsElementsAndThoseOfItsCopies)
{
    CJOBXlayObjSurfaceOB contour;
    contour.GetODBlayObjOXArray()->Own(Element("OC", 1, 2));
    const CJOBXlayObjSurfaceOB copy(contour);
    contour.UnitConvert(10);
    EXPECT_EQ(copy.GetODBlayObjOXArray()->GetAt(0)->GetPoint(), CPointD(10, 20));
    EXPECT_EQ(copy.GetODBlayObjOXArray()->GetAt(0)->GetCenterPoint(), CPointD(20, 30));
    CJOBXlayObjSurfaceOBArray contours;
    contours.Add(nullptr);
    contours.Own(std::make_unique<CJOBXlayObjSurfaceOB>(contour));
    contours.UnitConvert(0.5);
    EXPECT_EQ(copy.GetODBlayObjOXArray()->GetAt(0)->GetPoint(), CPointD(5, 10));
}

TEST(LayObjOXArray, UnitChangePassesOverNull)
{
    CJOBXlayObjOXArray elements;
    elements.Add(nullptr);
    elements.Own(Element("OS", 1, 2));
    elements.UnitConvert(2);
    EXPECT_EQ(elements.GetAt(1)->GetPoint(), CPointD(2, 4));
}

TEST(LayObjOX, OtherKindsAndDirectionsAreCopiedToo)
{
    CJOBXlayObjOX element;
    element.SetKind("oc");
    element.SetClockwise("maybe");
    element.SetPolygonType("Island");
    const CJOBXlayObjOX copy(element);
    EXPECT_EQ(copy.GetKind(), "oc");
    EXPECT_EQ(copy.GetClockwise(), "maybe");
    EXPECT_EQ(copy.GetPolygonType(), "Island");
    EXPECT_TRUE(copy == element);
    CJOBXlayObjOX& itself = element;
    element = itself;
    EXPECT_TRUE(copy == element);
    element.SetPoint({1, 0});
    EXPECT_FALSE(copy == element);
    element.SetPoint({});
    element.SetCenterPoint({0, 1});
    EXPECT_FALSE(copy == element);
}

TEST(LayObj, ValuesThatAreThereAlreadyMayBeSetAgain)
{
    CJOBXlayObjPad pad;
    pad.SetPadName("");
    EXPECT_EQ(pad.GetPadName(), "");
    pad.SetPadName("pad");
    pad.SetPadName("");
    EXPECT_EQ(pad.GetPadName(), "");
    pad.SetUserValue(0);
    EXPECT_EQ(pad.GetUserValue(), 0);
    pad.SetUserValue(5);
    pad.SetUserValue(5);
    EXPECT_EQ(pad.GetUserValue(), 5);
    pad.SetUserValue(0);
    EXPECT_EQ(pad.GetUserValue(), 0);
}

TEST(LayObj, PolarityAndTypeMayBeAnyText)
{
    for (const char* const text : {"", "\1", "\2", "P", "positive", "\xFF"})
    {
        CJOBXlayObjLine line;
        line.SetPolarity(text);
        line.SetType(text);
        EXPECT_EQ(line.GetPolarity(), text);
        EXPECT_EQ(line.GetType(), text);
    }
    CJOBXlayObjLine line;
    line.SetPolarity(CString('\0', 1));
    EXPECT_EQ(line.GetPolarity(), CString('\0', 1));
}

TEST(Layer, NullEntriesAreHarmless)
{
    CJOBXlayerArray layers;
    layers.Add(nullptr);
    CJOBXlayer& layer = *layers.Own(std::make_unique<CJOBXlayer>());
    layer.m_sName = "top";
    layer.GetFeatures()->Add(nullptr);
    auto* const pad = Add<CJOBXlayObjPad>(layer, "P");
    pad->SetCenterPoint({1, 2});
    pad->SetSurfaceIndex(0);
    pad->GetPropertyArray()->Add(nullptr);
    AddProperty(*pad, ".geometry", "via");
    layer.GetComponents()->Add(nullptr);
    EXPECT_EQ(layers.GetODBlayerFromName("TOP"), &layer);
    EXPECT_EQ(layer.nGetLayObjIndexFromSurfaceIndex(0), 1);
    EXPECT_EQ(layer.GetFeatures()->GetObjAtIndexCenterPoint(1, 2, 0), 1);
    EXPECT_EQ(layer.GetViaPadStackName(0), "");
    EXPECT_EQ(layer.GetViaPadStackName(1), "VIA");
    layers.UnitConvert(10);
    EXPECT_EQ(pad->GetCenterPoint(), CPointD(10, 20));
}

TEST(SpecialSymbol, NullEntriesAreHarmless)
{
    CJOBXSpecialSymbolArray symbols;
    symbols.Add(nullptr);
    CJOBXSpecialSymbol& symbol = *symbols.Own(std::make_unique<CJOBXSpecialSymbol>());
    symbol.m_sName = "a";
    auto* const pad = Add<CJOBXlayObjPad>(*symbol.GetLayer(), "P");
    pad->SetCenterPoint({1, 2});
    EXPECT_EQ(symbols.nGetSpecialSymbolIndex("a"), 1);
    EXPECT_EQ(symbols.nGetSpecialSymbolIndex(""), -1);
    symbols.UnitConvert(10);
    EXPECT_EQ(pad->GetCenterPoint(), CPointD(10, 20));
}
