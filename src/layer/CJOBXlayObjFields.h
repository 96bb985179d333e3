#pragma once

#include "foundation/CJOBXPropertyFields.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "layer/CJOBXlayObj.h"
#include "layer/CJOBXlayObjOXFields.h"

// The fields of CJOBXlayObjLine.
template <>
struct jobx::Fields<CJOBXlayObjLine>
{
    static constexpr RecordName kName{"line", "A straight line", "feature L", "feature"};
    static constexpr std::string_view kClassText = "L";
    static constexpr auto kList = std::tuple{
        Coordinate("start", "From here", &CJOBXlayObjLine::GetStartPoint, &CJOBXlayObjLine::SetStartPoint)
            .Shown("start x", "start y"),
        Coordinate("end", "to here", &CJOBXlayObjLine::GetEndPoint, &CJOBXlayObjLine::SetEndPoint)
            .Shown("end x", "end y"),
        Text("padName", "Set by hosts", &CJOBXlayObjLine::GetPadName, &CJOBXlayObjLine::SetPadName),
    };
};

// The fields of CJOBXlayObjPad.
template <>
struct jobx::Fields<CJOBXlayObjPad>
{
    static constexpr RecordName kName{"pad", "A placed symbol", "feature P", "feature"};
    static constexpr std::string_view kClassText = "P";
    static constexpr auto kList = std::tuple{
        Text("padName", "Set by hosts", &CJOBXlayObjPad::GetPadName, &CJOBXlayObjPad::SetPadName),
        Integer("orientation", "0 to 7 quarter turns, from 4 on mirrored; 8 turned by the angle, 9 mirrored too",
                &CJOBXlayObjPad::GetOrientation, &CJOBXlayObjPad::SetOrientation)
            .Shown("orientation", 2),
        Real("resizeFactor", "As in the file", &CJOBXlayObjPad::GetResizeFactor, &CJOBXlayObjPad::SetResizeFactor)
            .Shown("resize factor", 5),
        Integer("resizeFlag", "1 when the file gave the resized form", &CJOBXlayObjPad::GetResizeFlag,
                &CJOBXlayObjPad::SetResizeFlag)
            .Shown("resize flag", 4),
        Angle("angle", "Degrees", &CJOBXlayObjPad::GetRotationAngle, &CJOBXlayObjPad::SetRotationAngle)
            .Shown("angle", 3),
        Coordinate("centre", "Where it is placed", &CJOBXlayObjPad::GetCenterPoint, &CJOBXlayObjPad::SetCenterPoint)
            .Shown("x", "y", 1),
    };
};

// The fields of CJOBXlayObjArc.
template <>
struct jobx::Fields<CJOBXlayObjArc>
{
    static constexpr RecordName kName{"arc", "An arc", "feature A", "feature"};
    static constexpr std::string_view kClassText = "A";
    static constexpr auto kList = std::tuple{
        Text("clockwise", "Y or N", &CJOBXlayObjArc::GetClockwise, &CJOBXlayObjArc::SetClockwise).Shown("clockwise", 4),
        Coordinate("centre", "Its centre", &CJOBXlayObjArc::GetCenterPoint, &CJOBXlayObjArc::SetCenterPoint)
            .Shown("centre x", "centre y", 3),
        Coordinate("end", "Where it ends", &CJOBXlayObjArc::GetEndPoint, &CJOBXlayObjArc::SetEndPoint)
            .Shown("end x", "end y", 2),
        Coordinate("start", "Where it begins", &CJOBXlayObjArc::GetStartPoint, &CJOBXlayObjArc::SetStartPoint)
            .Shown("start x", "start y", 1),
        Text("padName", "Set by hosts", &CJOBXlayObjArc::GetPadName, &CJOBXlayObjArc::SetPadName),
    };
};

// The fields of CJOBXlayObjText.
template <>
struct jobx::Fields<CJOBXlayObjText>
{
    static constexpr RecordName kName{"text", "A text", "feature T", "feature"};
    static constexpr std::string_view kClassText = "T";
    static constexpr auto kList = std::tuple{
        Integer("version", "", &CJOBXlayObjText::GetVersion, &CJOBXlayObjText::SetVersion).Shown("version", 8),
        Text("text", "What it says", &CJOBXlayObjText::GetText, &CJOBXlayObjText::SetText).Shown("text", 7),
        Length("widthFactor", "Line width in units of 12 mils", &CJOBXlayObjText::GetWidthFactor,
               &CJOBXlayObjText::SetWidthFactor)
            .Shown("width factor", 6),
        Coordinate("size", "Of a character cell", &CJOBXlayObjText::GetSize, &CJOBXlayObjText::SetSize)
            .Shown("x size", "y size", 5),
        Integer("orientation", "As of a pad", &CJOBXlayObjText::GetOrientation, &CJOBXlayObjText::SetOrientation)
            .Shown("orientation", 3),
        Text("font", "Font name", &CJOBXlayObjText::GetFontName, &CJOBXlayObjText::SetFontName).Shown("font", 2),
        Coordinate("position", "Its origin", &CJOBXlayObjText::GetPosition, &CJOBXlayObjText::SetPosition)
            .Shown("x", "y", 1),
        Angle("angle", "Degrees", &CJOBXlayObjText::GetRotationAngle, &CJOBXlayObjText::SetRotationAngle)
            .Shown("angle", 4),
    };
};

// The fields of CJOBXlayObjBarcode.
template <>
struct jobx::Fields<CJOBXlayObjBarcode>
{
    static constexpr RecordName kName{"barcode", "A barcode", "feature B", "feature"};
    static constexpr std::string_view kClassText = "B";
    static constexpr auto kList = std::tuple{
        Text("text", "What it says", &CJOBXlayObjBarcode::m_sText).Shown("text", 13),
        Text("astrPosition", "As in the file", &CJOBXlayObjBarcode::m_sAstrPosition).Shown("shown text's place", 12),
        Text("astr", "As in the file", &CJOBXlayObjBarcode::m_sAstr).Shown("shown text", 11),
        Text("bg", "As in the file", &CJOBXlayObjBarcode::m_sBg).Shown("background", 10),
        Text("cs", "As in the file", &CJOBXlayObjBarcode::m_sCs).Shown("checksum", 9),
        Text("eFlag", "As in the file", &CJOBXlayObjBarcode::m_sEFlag).Shown("E flag", 5),
        Text("fasc", "As in the file", &CJOBXlayObjBarcode::m_sFasc).Shown("full ASCII", 8),
        Length("height", "Height", &CJOBXlayObjBarcode::m_dHeight).Shown("height", 7),
        Length("width", "Width", &CJOBXlayObjBarcode::m_dWidth).Shown("width", 6),
        Text("font", "Font name", &CJOBXlayObjBarcode::m_sFontName).Shown("font", 3),
        Text("barcodeName", "Kind of barcode", &CJOBXlayObjBarcode::m_sBarcodeName).Shown("barcode name", 2),
        Integer("orientation", "As of a pad", &CJOBXlayObjBarcode::m_nOrientation).Shown("orientation", 4),
        Coordinate("position", "Its origin", &CJOBXlayObjBarcode::m_ptPosition).Shown("x", "y", 1),
        Angle("angle", "Degrees", &CJOBXlayObjBarcode::GetRotationAngle, &CJOBXlayObjBarcode::SetRotationAngle)
            .Shown("angle", 14)
            .OfCompleteReading(),
    };
};

// The fields of CJOBXlayObjSurfaceOB.
template <>
struct jobx::Fields<CJOBXlayObjSurfaceOB>
{
    static constexpr RecordName kName{"contour", "A contour of a surface", "contour", "contour"};
    static constexpr bool kIsItsList = true; // documents show it as that list alone
    static constexpr auto kList = std::tuple{
        Records(
            "elements", "", [](auto& contour) -> auto& { return *contour.GetODBlayObjOXArray(); })
            .Shown(),
    };
};

// The fields of CJOBXlayObjSurface.
template <>
struct jobx::Fields<CJOBXlayObjSurface>
{
    static constexpr RecordName kName{"surface", "A filled area", "feature S", "feature"};
    static constexpr std::string_view kClassText = "S";
    static constexpr auto kList = std::tuple{
        Records(
            "contours", "Islands and holes, each a list of elements",
            [](auto& surface) -> auto& { return *surface.GetContours(); })
            .Shown(),
    };
};

namespace jobx
{
// The attributes of a feature as a list: the shared one to read, its own to change.
struct FeatureProperties
{
    struct Shared
    {
        const CJOBXlayObj& feature;

        __int64 GetSize() const { return feature.nGetPropertyCount(); }
        const CJOBXProperty* GetAt(__int64 index) const { return feature.pGetProperty(static_cast<int>(index)); }
    };

    Shared operator()(const CJOBXlayObj& feature) const { return {feature}; }
    CJOBXPropertyArray& operator()(CJOBXlayObj& feature) const { return *feature.GetPropertyArray(); }
};
} // namespace jobx

// The fields of CJOBXlayObj.
template <>
struct jobx::Fields<CJOBXlayObj>
{
    static constexpr RecordName kName{"feature", "One feature; the type says which", "feature", "feature"};
    static constexpr auto kList = std::tuple{
        Text("type", "The record letter", &CJOBXlayObj::GetType, &CJOBXlayObj::SetType).Shown("type", 1).AsClassText(),
        Integer("index", "Position among the feature lines of the file, from 0", &CJOBXlayObj::GetFeatureIndex,
                &CJOBXlayObj::SetFeatureIndex),
        Integer("dcode", "", &CJOBXlayObj::GetDcode, &CJOBXlayObj::SetDcode).Shown("dcode", 4),
        Text("polarity", "P positive, N negative", &CJOBXlayObj::GetPolarity, &CJOBXlayObj::SetPolarity)
            .Shown("polarity", 3),
        Index(FieldTable::Symbols, "symbol", "Number in the layer's symbol table, -1 for none",
              &CJOBXlayObj::GetSymbolNumber, &CJOBXlayObj::SetSymbolNumber)
            .Shown("symbol", 2),
        Integer("surfaceIndex", "-1 unless a host sets it", &CJOBXlayObj::GetSurfaceIndex,
                &CJOBXlayObj::SetSurfaceIndex),
        Records("properties", "", FeatureProperties{}).Shown(6),
        Integer("userValue", "Set by hosts", &CJOBXlayObj::GetUserValue, &CJOBXlayObj::SetUserValue).InMemoryOnly(),
        Texts(
            "texts", "Set by hosts", [](auto& feature) -> auto& { return feature.GetTexts(); })
            .InMemoryOnly(),
        IDOf<CJOBXidentified>(),
        FieldsOfClass<CJOBXlayObjLine, CJOBXlayObjPad, CJOBXlayObjSurface, CJOBXlayObjArc, CJOBXlayObjText,
                      CJOBXlayObjBarcode>()
            .Shown(5),
    };
};
