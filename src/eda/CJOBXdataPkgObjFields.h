#pragma once

#include "eda/CJOBXdataPkgObjContour.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "layer/CJOBXlayObjOXFields.h"

// The fields of CJOBXdataPkgObjCircle.
template <>
struct jobx::Fields<CJOBXdataPkgObjCircle>
{
    static constexpr RecordName kName{"circle", "A round outline", "outline", "outline"};
    static constexpr std::string_view kClassText = "CR";
    static constexpr auto kList = std::tuple{
        Coordinate("centre", "Its centre", &CJOBXdataPkgObjCircle::m_ptCenter).InMemoryOnly(),
        Length("radius", "Its radius", &CJOBXdataPkgObjCircle::m_dRadius).InMemoryOnly(),
    };
};

// The fields of CJOBXdataPkgObjSquare.
template <>
struct jobx::Fields<CJOBXdataPkgObjSquare>
{
    static constexpr RecordName kName{"square", "A square outline", "outline", "outline"};
    static constexpr std::string_view kClassText = "SQ";
    static constexpr auto kList = std::tuple{
        Coordinate("centre", "Its centre", &CJOBXdataPkgObjSquare::m_ptCenter).InMemoryOnly(),
        Length("halfSide", "Half of its side", &CJOBXdataPkgObjSquare::m_dHalfSide).InMemoryOnly(),
    };
};

// The fields of CJOBXdataPkgObjRectangle.
template <>
struct jobx::Fields<CJOBXdataPkgObjRectangle>
{
    static constexpr RecordName kName{"rectangle", "A rectangular outline", "outline", "outline"};
    static constexpr std::string_view kClassText = "RC";
    static constexpr auto kList = std::tuple{
        Length("width", "Width", &CJOBXdataPkgObjRectangle::m_dWidth).InMemoryOnly(),
        Length("height", "Height", &CJOBXdataPkgObjRectangle::m_dHeight).InMemoryOnly(),
        Coordinate("lowerLeft", "Corner", &CJOBXdataPkgObjRectangle::m_ptLowerLeft).InMemoryOnly(),
    };
};

// The fields of CJOBXdataPkgObjContour.
template <>
struct jobx::Fields<CJOBXdataPkgObjContour>
{
    static constexpr RecordName kName{"contourOutline", "An outline of straight and round pieces", "outline",
                                      "outline"};
    static constexpr std::string_view kClassText = "CT";
    static constexpr auto kList = std::tuple{
        Records("elements", "", &CJOBXdataPkgObjContour::m_arrElements).InMemoryOnly(),
    };
};

// The fields of CJOBXdataPkgObj.
template <>
struct jobx::Fields<CJOBXdataPkgObj>
{
    static constexpr RecordName kName{"outline", "An outline record", "outline", "outline"};
    static constexpr auto kList = std::tuple{
        LineNumber("line", "Line of the file", &CJOBXdataPkgObj::m_nLineNumber).Shown(3),
        Text("keyword", "CR, SQ, RC, CT, OB, OS, OC, OE, CE or as in the file", &CJOBXdataPkgObj::m_sKeyword)
            .Shown("keyword", 1)
            .AsMark()
            .AsClassText(),
        Parameters("params", "As in the file", &CJOBXdataPkgObj::m_arrParameters).Shown("parameters", 2),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
        FieldsOfClass<CJOBXdataPkgObjCircle, CJOBXdataPkgObjSquare, CJOBXdataPkgObjRectangle, CJOBXdataPkgObjContour>()
            .InMemoryOnly(),
    };
};
