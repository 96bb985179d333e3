#include "compact/CODBdataPkg.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <typeinfo>

namespace
{
int g_lineNumber = 0;

CODBdataPkgObj* AddPlain(CODBdataPkgObjArray& outlines, const char* keyword, std::initializer_list<const char*> texts)
{
    auto* const record = new CODBdataPkgObj;
    outlines.Add(record);
    record->m_nLineNumber = ++g_lineNumber;
    record->m_sKeyword = keyword;
    for (const char* const text : texts)
        record->m_arrParameters.Add(text);
    return record;
}

template <class Shape>
const Shape& As(const CODBdataPkgObjArray& outlines, INT_PTR index)
{
    return dynamic_cast<const Shape&>(*outlines.GetAt(index));
}

bool IsPlain(const CODBdataPkgObj* record)
{
    return record != nullptr && typeid(*record) == typeid(CODBdataPkgObj);
}

void AddContour(CODBdataPkgObjArray& outlines)
{
    AddPlain(outlines, "CT", {});
    AddPlain(outlines, "OB", {"1", "2", "I"});
    AddPlain(outlines, "OS", {"3", "4"});
    AddPlain(outlines, "OC", {"5", "6", "7", "8", "Y"});
    AddPlain(outlines, "OE", {});
    AddPlain(outlines, "CE", {});
}
} // namespace

TEST(PackageOutlines, RescalingTurnsPlainShapesIntoGeometry)
{
    CODBdataPkgObjArray outlines;
    const int line = AddPlain(outlines, "CR", {"1", "2", "3"})->m_nLineNumber;
    AddPlain(outlines, "SQ", {"1", "2", "3"});
    AddPlain(outlines, "RC", {"1", "2", "3", "4"});

    outlines.vRescale(10.0);

    ASSERT_EQ(outlines.GetSize(), 3);
    const auto& circle = As<CODBdataPkgObjCircle>(outlines, 0);
    EXPECT_EQ(circle.m_ptCenter, CPointD(10, 20));
    EXPECT_EQ(circle.m_dRadius, 30.0);
    EXPECT_EQ(circle.m_sKeyword, "CR");
    EXPECT_EQ(circle.m_nLineNumber, line);
    ASSERT_EQ(circle.m_arrParameters.GetSize(), 3);
    EXPECT_EQ(circle.m_arrParameters[2], "3");
    const auto& square = As<CODBdataPkgObjSquare>(outlines, 1);
    EXPECT_EQ(square.m_ptCenter, CPointD(10, 20));
    EXPECT_EQ(square.m_dHalfSide, 30.0);
    const auto& rectangle = As<CODBdataPkgObjRectangle>(outlines, 2);
    EXPECT_EQ(rectangle.m_ptLowerLeft, CPointD(10, 20));
    EXPECT_EQ(rectangle.m_dWidth, 30.0);
    EXPECT_EQ(rectangle.m_dHeight, 40.0);
}

TEST(PackageOutlines, RescalingTurnsARunOfContourLinesIntoOneContour)
{
    CODBdataPkgObjArray outlines;
    AddPlain(outlines, "CR", {"1", "2", "3"});
    AddContour(outlines);
    CODBdataPkgObj* const behind = AddPlain(outlines, "XX", {"9"});

    outlines.vRescale(10.0);

    ASSERT_EQ(outlines.GetSize(), 3);
    EXPECT_EQ(As<CODBdataPkgObjCircle>(outlines, 0).m_dRadius, 30.0);
    const auto& contour = As<CODBdataPkgObjContour>(outlines, 1);
    ASSERT_EQ(contour.m_arrElements.GetSize(), 4);
    EXPECT_EQ(contour.m_arrElements.GetAt(0)->m_sKind, "OB");
    EXPECT_EQ(contour.m_arrElements.GetAt(0)->m_sPolygonType, "I");
    EXPECT_EQ(contour.m_arrElements.GetAt(0)->m_ptPoint, CPointD(10, 20));
    EXPECT_EQ(contour.m_arrElements.GetAt(0)->m_nLineNumber, contour.m_nLineNumber + 1);
    EXPECT_EQ(contour.m_arrElements.GetAt(1)->m_ptPoint, CPointD(30, 40));
    EXPECT_EQ(contour.m_arrElements.GetAt(2)->m_ptPoint, CPointD(50, 60));
    EXPECT_EQ(contour.m_arrElements.GetAt(2)->m_ptCenter, CPointD(70, 80));
    EXPECT_EQ(contour.m_arrElements.GetAt(2)->m_sClockwise, "Y");
    EXPECT_EQ(contour.m_arrElements.GetAt(3)->m_sKind, "OE");
    EXPECT_EQ(outlines.GetAt(2), behind);
}

TEST(PackageOutlines, WhatDoesNotParseStaysPlain)
{
    CODBdataPkgObjArray outlines;
    AddPlain(outlines, "CR", {"1", "2"});
    AddPlain(outlines, "SQ", {"1", "2", "x"});
    AddPlain(outlines, "RC", {"1", "2", "3", "4", "5"});
    AddPlain(outlines, "cr", {"1", "2", "3"});
    AddPlain(outlines, "CT", {});
    AddPlain(outlines, "OS", {"3", "4"}); // without an end

    outlines.vRescale(10.0);

    ASSERT_EQ(outlines.GetSize(), 6);
    for (INT_PTR i = 0; i < outlines.GetSize(); ++i)
        EXPECT_TRUE(IsPlain(outlines.GetAt(i))) << i;
    EXPECT_EQ(outlines.GetAt(0)->m_arrParameters[1], "2");
}

TEST(PackageOutlines, GeometryBetweenContourLinesKeepsThemApart)
{
    CODBdataPkgObjArray outlines;
    AddPlain(outlines, "CT", {});
    auto* const circle = new CODBdataPkgObjCircle;
    outlines.Add(circle);
    circle->m_dRadius = 2.0;
    AddPlain(outlines, "CE", {});
    outlines.Add(nullptr);

    outlines.vRescale(10.0);

    ASSERT_EQ(outlines.GetSize(), 3);
    EXPECT_TRUE(IsPlain(outlines.GetAt(0)));
    EXPECT_EQ(outlines.GetAt(1), circle);
    EXPECT_EQ(circle->m_dRadius, 20.0);
    EXPECT_TRUE(IsPlain(outlines.GetAt(2)));
}

TEST(PackageOutlines, GeometryIsMadeOnceAndScaledEachTime)
{
    CODBdataPkgObjArray outlines;
    AddContour(outlines);
    AddContour(outlines);
    outlines.vRescale(10.0);
    outlines.vRescale(10.0);
    ASSERT_EQ(outlines.GetSize(), 2);
    EXPECT_EQ(As<CODBdataPkgObjContour>(outlines, 1).m_arrElements.GetAt(1)->m_ptPoint, CPointD(300, 400));
}

TEST(PackageOutlines, PackagesAndPinsRescaleTheirPlainOutlines)
{
    CODBdataPkg package;
    AddPlain(package.m_arrOutlines, "RC", {"1", "2", "3", "4"});
    package.m_arrPins.Add(new CODBdataPkgPin);
    AddPlain(package.m_arrPins.GetAt(0)->m_arrOutlines, "CR", {"1", "2", "3"});
    package.vRescale(2.0);
    EXPECT_EQ(As<CODBdataPkgObjRectangle>(package.m_arrOutlines, 0).m_dHeight, 8.0);
    EXPECT_EQ(As<CODBdataPkgObjCircle>(package.m_arrPins.GetAt(0)->m_arrOutlines, 0).m_dRadius, 6.0);
}
