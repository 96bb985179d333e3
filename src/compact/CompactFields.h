// Maps members of the compact model to fields of the main model's records by key. The main record's list says what kind
// of value each member has (a length, an angle ...).
#pragma once

#include "compact/CODB.h"
#include "job/CJOBXFields.h"

namespace jobx
{
// Describes a class of the compact model: Main is the corresponding class, kList the members.
template <class Compact>
struct CompactFields;

// A member that corresponds to the field with that key.
template <class Class, class Value>
struct SameField
{
    static constexpr bool kIsOwn = false;
    std::string_view key;
    Value Class::*member;
};
template <class Class, class Value>
constexpr auto Same(std::string_view key, Value Class::*member)
{
    return SameField<Class, Value>{key, member};
}

// A member that only the compact model has, or that is not copied as it is.
template <FieldKind kKindOfField, class Class, class Value>
struct OwnField
{
    static constexpr bool kIsOwn = true;
    static constexpr FieldKind kKind = kKindOfField;
    Value Class::*member;
};
template <FieldKind kKind, class Class, class Value>
constexpr auto Own(Value Class::*member)
{
    return OwnField<kKind, Class, Value>{member};
}

template <class Main>
constexpr std::size_t IndexOfKey(std::string_view key)
{
    std::size_t index = 0;
    std::size_t found = kFieldCount<Main>;
    const auto visit = [&](const auto& field)
    {
        if (field.key == key && field.documents != FieldDocuments::OfCompleteReading)
            found = index;
        ++index;
    };
    std::apply([&](const auto&... fields) { (visit(fields), ...); }, Fields<Main>::kList);
    return found;
}

// The member at a position of a list; Main is the corresponding field.
template <class Compact, std::size_t kIndex>
struct CompactFieldAt
{
    static constexpr const auto& kField = std::get<kIndex>(CompactFields<Compact>::kList);
    static constexpr bool kIsOwn = std::remove_cvref_t<decltype(kField)>::kIsOwn;

    static constexpr FieldKind Kind()
    {
        if constexpr (kIsOwn)
            return std::remove_cvref_t<decltype(kField)>::kKind;
        else
            return Main().kKind;
    }
    static constexpr auto Main()
    {
        using MainRecord = typename CompactFields<Compact>::Main;
        constexpr std::size_t kMainIndex = IndexOfKey<MainRecord>(kField.key);
        static_assert(kMainIndex < kFieldCount<MainRecord>, "no field has that key");
        return FieldAt<MainRecord, kMainIndex>{};
    }
    // Whether vRescale multiplies it.
    static constexpr bool IsScaled()
    {
        if constexpr (kIsOwn)
            return false;
        else
            return !decltype(Main())::kField.isLeftByUnitChange &&
                   (Kind() == FieldKind::Length || Kind() == FieldKind::Coordinate);
    }
    static constexpr auto& Ref(Compact& record) { return record.*kField.member; }
};

// Calls `visit` with the CompactFieldAt of each member.
template <class Compact, class Visit>
void ForEachCompactField(Visit visit)
{
    using List = std::remove_cvref_t<decltype(CompactFields<Compact>::kList)>;
    [&]<std::size_t... kIndexes>(std::index_sequence<kIndexes...>)
    {
        (visit(CompactFieldAt<Compact, kIndexes>{}), ...);
    }
    (std::make_index_sequence<std::tuple_size_v<List>>{});
}
} // namespace jobx

template <>
struct jobx::CompactFields<CODBlayObjOX>
{
    using Main = CJOBXlayObjOX;
    static constexpr auto kList = std::tuple{
        Same("line", &CODBlayObjOX::m_nLineNumber),
        Same("clockwise", &CODBlayObjOX::m_sClockwise),
        Same("polygonType", &CODBlayObjOX::m_sPolygonType),
        Same("centre", &CODBlayObjOX::m_ptCenter),
        Same("point", &CODBlayObjOX::m_ptPoint),
        Same("kind", &CODBlayObjOX::m_sKind),
    };
};

template <>
struct jobx::CompactFields<CODBlayObjLine>
{
    using Main = CJOBXlayObjLine;
    static constexpr auto kList = std::tuple{
        Same("end", &CODBlayObjLine::m_ptEnd),
        Same("start", &CODBlayObjLine::m_ptStart),
        Same("padName", &CODBlayObjLine::m_sPadName),
    };
};

template <>
struct jobx::CompactFields<CODBlayObjPad>
{
    using Main = CJOBXlayObjPad;
    static constexpr auto kList = std::tuple{
        Same("padName", &CODBlayObjPad::m_sPadName),
        Same("orientation", &CODBlayObjPad::m_nOrientation),
        Same("resizeFactor", &CODBlayObjPad::m_dResizeFactor),
        Same("resizeFlag", &CODBlayObjPad::m_nResizeFlag),
        Same("angle", &CODBlayObjPad::m_dAngle),
        Same("centre", &CODBlayObjPad::m_ptCenter),
    };
};

template <>
struct jobx::CompactFields<CODBlayObjArc>
{
    using Main = CJOBXlayObjArc;
    static constexpr auto kList = std::tuple{
        Same("clockwise", &CODBlayObjArc::m_sClockwise),
        Same("centre", &CODBlayObjArc::m_ptCenter),
        Same("end", &CODBlayObjArc::m_ptEnd),
        Same("start", &CODBlayObjArc::m_ptStart),
        Same("padName", &CODBlayObjArc::m_sPadName),
    };
};

template <>
struct jobx::CompactFields<CODBlayObjText>
{
    using Main = CJOBXlayObjText;
    static constexpr auto kList = std::tuple{
        Same("version", &CODBlayObjText::m_nVersion),         Same("text", &CODBlayObjText::m_sText),
        Same("widthFactor", &CODBlayObjText::m_dWidthFactor), Same("size", &CODBlayObjText::m_ptSize),
        Same("orientation", &CODBlayObjText::m_nOrientation), Same("font", &CODBlayObjText::m_sFontName),
        Same("position", &CODBlayObjText::m_ptPosition),      Same("angle", &CODBlayObjText::m_dAngle),
    };
};

template <>
struct jobx::CompactFields<CODBlayObjBarcode>
{
    using Main = CJOBXlayObjBarcode;
    static constexpr auto kList = std::tuple{
        Same("text", &CODBlayObjBarcode::m_sText),
        Same("astrPosition", &CODBlayObjBarcode::m_sAstrPosition),
        Same("astr", &CODBlayObjBarcode::m_sAstr),
        Same("bg", &CODBlayObjBarcode::m_sBg),
        Same("cs", &CODBlayObjBarcode::m_sCs),
        Same("eFlag", &CODBlayObjBarcode::m_sEFlag),
        Same("fasc", &CODBlayObjBarcode::m_sFasc),
        Same("height", &CODBlayObjBarcode::m_dHeight),
        Same("width", &CODBlayObjBarcode::m_dWidth),
        Same("font", &CODBlayObjBarcode::m_sFontName),
        Same("barcodeName", &CODBlayObjBarcode::m_sBarcodeName),
        Same("orientation", &CODBlayObjBarcode::m_nOrientation),
        Same("position", &CODBlayObjBarcode::m_ptPosition),
    };
};

template <>
struct jobx::CompactFields<CODBlayObjSurfaceOB>
{
    using Main = CJOBXlayObjSurfaceOB;
    static constexpr auto kList = std::tuple{
        Same("elements", &CODBlayObjSurfaceOB::m_arrElements),
    };
};

template <>
struct jobx::CompactFields<CODBlayObjSurface>
{
    using Main = CJOBXlayObjSurface;
    static constexpr auto kList = std::tuple{
        Same("contours", &CODBlayObjSurface::m_arrContours),
    };
};

template <>
struct jobx::CompactFields<CODBlayObj>
{
    using Main = CJOBXlayObj;
    using Classes =
        ClassAccess<CODBlayObjLine, CODBlayObjPad, CODBlayObjSurface, CODBlayObjArc, CODBlayObjText, CODBlayObjBarcode>;
    static constexpr auto kList = std::tuple{
        Same("properties", &CODBlayObj::m_arrProperties),
        Same("dcode", &CODBlayObj::m_nDcode),
        Same("polarity", &CODBlayObj::m_sPolarity),
        Same("symbol", &CODBlayObj::m_nSymbol),
        Same("index", &CODBlayObj::m_nIndex),
        Same("surfaceIndex", &CODBlayObj::m_nSurfaceIndex),
        Same("texts", &CODBlayObj::m_arrTexts),
        Same("type", &CODBlayObj::m_sType),
        Same("userValue", &CODBlayObj::m_nUserValue),
    };
};

template <>
struct jobx::CompactFields<CODBlayer>
{
    using Main = CJOBXlayer;
    static constexpr auto kList = std::tuple{
        Same("name", &CODBlayer::m_sName),
        Own<FieldKind::Real>(&CODBlayer::m_dRescaleFactor),
        Own<FieldKind::Text>(&CODBlayer::m_sUnits),
        Same("features", &CODBlayer::m_arrFeatures),
        Same("attributeTexts", &CODBlayer::m_arrAttributeTexts),
        Same("attributeTextNumbers", &CODBlayer::m_arrAttributeTextNumbers),
        Same("attributeNames", &CODBlayer::m_arrAttributeNames),
        Same("attributeNameNumbers", &CODBlayer::m_arrAttributeNameNumbers),
        Same("symbolNames", &CODBlayer::m_arrSymbolNames),
        Same("symbolNumbers", &CODBlayer::m_arrSymbolNumbers),
        Same("symbolSecondFields", &CODBlayer::m_arrSymbolSecondFields),
        Same("copperWeightOrDielectric", &CODBlayer::m_dCopperWeightOrDielectric),
        Same("firstLineNo", &CODBlayer::m_nFirstLineNo),
        Same("lastLineNo", &CODBlayer::m_nLastLineNo),
        Same("featureLineNo", &CODBlayer::m_nFeatureLineNo),
    };
};

template <>
struct jobx::CompactFields<CODBSpecialSymbol>
{
    using Main = CJOBXSpecialSymbol;
    static constexpr auto kList = std::tuple{
        Same("texts", &CODBSpecialSymbol::m_arrTexts),      Same("name", &CODBSpecialSymbol::m_sName),
        Same("layer", &CODBSpecialSymbol::m_layer),         Same("path", &CODBSpecialSymbol::m_sPath),
        Own<FieldKind::Text>(&CODBSpecialSymbol::m_sUnits), Own<FieldKind::Real>(&CODBSpecialSymbol::m_dRescaleFactor),
    };
};

template <>
struct jobx::CompactFields<CODBmatrixLayer>
{
    using Main = CJOBXmatrixLayer;
    static constexpr auto kList = std::tuple{
        Same("endName", &CODBmatrixLayer::m_sEndName),   Same("startName", &CODBmatrixLayer::m_sStartName),
        Same("polarity", &CODBmatrixLayer::m_sPolarity), Same("name", &CODBmatrixLayer::m_sName),
        Same("type", &CODBmatrixLayer::m_sType),         Same("context", &CODBmatrixLayer::m_sContext),
        Same("addType", &CODBmatrixLayer::m_sAddType),   Same("oldName", &CODBmatrixLayer::m_sOldName),
        Same("color", &CODBmatrixLayer::m_sColor),       Same("row", &CODBmatrixLayer::m_nRow),
    };
};

template <>
struct jobx::CompactFields<CODBmatrix>
{
    using Main = CJOBXmatrix;
    static constexpr auto kList = std::tuple{
        Same("layers", &CODBmatrix::m_arrLayers),
    };
};

template <>
struct jobx::CompactFields<CODBsysAttrData>
{
    using Main = CJOBXsysAttrData;
    static constexpr auto kList = std::tuple{
        Same("options", &CODBsysAttrData::m_arrOptions),
        Same("name", &CODBsysAttrData::m_sName),
    };
};

template <>
struct jobx::CompactFields<CODBcmpToe>
{
    using Main = CJOBXcmpTop;
    static constexpr auto kList = std::tuple{
        Same("name", &CODBcmpToe::m_sName),         Same("net", &CODBcmpToe::m_nNet),
        Same("subnet", &CODBcmpToe::m_nSubnet),     Same("mirror", &CODBcmpToe::m_nMirror),
        Same("rotation", &CODBcmpToe::m_dRotation), Same("location", &CODBcmpToe::m_ptLocation),
        Same("pin", &CODBcmpToe::m_nPin),
    };
};

template <>
struct jobx::CompactFields<CODBcmp>
{
    using Main = CJOBXcmp;
    static constexpr auto kList = std::tuple{
        Same("number", &CODBcmp::m_nNumber),
        Same("side", &CODBcmp::m_nSide),
        Same("toeprints", &CODBcmp::m_arrToes),
        Same("partName", &CODBcmp::m_sPartName),
        Same("name", &CODBcmp::m_sName),
        Same("mirror", &CODBcmp::m_nMirror),
        Same("rotation", &CODBcmp::m_dRotation),
        Same("location", &CODBcmp::m_ptLocation),
        Same("package", &CODBcmp::m_nPkgRef),
        Same("properties", &CODBcmp::m_arrProperties),
        Same("attributes", &CODBcmp::m_arrAttributes),
    };
};

template <>
struct jobx::CompactFields<CODBcomponents>
{
    using Main = CJOBXcomponents;
    static constexpr auto kList = std::tuple{
        Same("components", &CODBcomponents::m_arrCmps),
        Same("attributeNames", &CODBcomponents::m_arrAttributeNames),
        Same("attributeNameNumbers", &CODBcomponents::m_arrAttributeNameNumbers),
        Same("attributeTexts", &CODBcomponents::m_arrAttributeTexts),
        Same("attributeTextNumbers", &CODBcomponents::m_arrAttributeTextNumbers),
        Same("units", &CODBcomponents::m_sUnits),
        Own<FieldKind::Real>(&CODBcomponents::m_dRescaleFactor),
        Same("layerName", &CODBcomponents::m_sLayerName),
        Same("relativePath", &CODBcomponents::m_sRelativePath),
    };
};

template <>
struct jobx::CompactFields<CODBdataNetObj>
{
    using Main = CJOBXdataNetObj;
    static constexpr auto kList = std::tuple{
        Same("feature", &CODBdataNetObj::m_nFeatureIndex),
        Same("layer", &CODBdataNetObj::m_nLayerIndex),
        Same("kind", &CODBdataNetObj::m_sKind),
        Same("second", &CODBdataNetObj::m_sText),
        Same("line", &CODBdataNetObj::m_nLineNumber),
    };
};

template <>
struct jobx::CompactFields<CODBSnt>
{
    using Main = CJOBXSnt;
    static constexpr auto kList = std::tuple{
        Same("flag", &CODBSnt::m_nFlag),
        Same("line", &CODBSnt::m_nLineNumber),
        Same("objects", &CODBSnt::m_arrNetObjs),
        Same("fillSize", &CODBSnt::m_dFillSize),
        Same("cutoutType", &CODBSnt::m_sCutoutType),
        Same("fillType", &CODBSnt::m_sFillType),
        Same("toeprint", &CODBSnt::m_nToeprintNumber),
        Same("component", &CODBSnt::m_nComponentNumber),
        Same("side", &CODBSnt::m_sSide),
        Same("kind", &CODBSnt::m_sKind),
        Same("point", &CODBSnt::m_ptPosition),
        Same("text", &CODBSnt::m_sText),
    };
};

template <>
struct jobx::CompactFields<CODBdataNet>
{
    using Main = CJOBXdataNet;
    static constexpr auto kList = std::tuple{
        Same("number", &CODBdataNet::m_nNumber),
        Same("subnets", &CODBdataNet::m_arrSnts),
        Same("flag", &CODBdataNet::m_nFlag),
        Same("name", &CODBdataNet::m_sName),
        Same("properties", &CODBdataNet::m_arrProperties),
    };
};

template <>
struct jobx::CompactFields<CODBdataPkgObjCircle>
{
    using Main = CJOBXdataPkgObjCircle;
    static constexpr auto kList = std::tuple{
        Same("centre", &CODBdataPkgObjCircle::m_ptCenter),
        Same("radius", &CODBdataPkgObjCircle::m_dRadius),
    };
};

template <>
struct jobx::CompactFields<CODBdataPkgObjSquare>
{
    using Main = CJOBXdataPkgObjSquare;
    static constexpr auto kList = std::tuple{
        Same("centre", &CODBdataPkgObjSquare::m_ptCenter),
        Same("halfSide", &CODBdataPkgObjSquare::m_dHalfSide),
    };
};

template <>
struct jobx::CompactFields<CODBdataPkgObjRectangle>
{
    using Main = CJOBXdataPkgObjRectangle;
    static constexpr auto kList = std::tuple{
        Same("width", &CODBdataPkgObjRectangle::m_dWidth),
        Same("height", &CODBdataPkgObjRectangle::m_dHeight),
        Same("lowerLeft", &CODBdataPkgObjRectangle::m_ptLowerLeft),
    };
};

template <>
struct jobx::CompactFields<CODBdataPkgObjContour>
{
    using Main = CJOBXdataPkgObjContour;
    static constexpr auto kList = std::tuple{
        Same("elements", &CODBdataPkgObjContour::m_arrElements),
    };
};

template <>
struct jobx::CompactFields<CODBdataPkgObj>
{
    using Main = CJOBXdataPkgObj;
    using Classes =
        ClassAccess<CODBdataPkgObjCircle, CODBdataPkgObjSquare, CODBdataPkgObjRectangle, CODBdataPkgObjContour>;
    static constexpr auto kList = std::tuple{
        Same("line", &CODBdataPkgObj::m_nLineNumber),
        Same("params", &CODBdataPkgObj::m_arrParameters),
        Same("keyword", &CODBdataPkgObj::m_sKeyword),
    };
};

template <>
struct jobx::CompactFields<CODBdataPkgPin>
{
    using Main = CJOBXdataPkgPin;
    static constexpr auto kList = std::tuple{
        Same("flag", &CODBdataPkgPin::m_nFlag),
        Same("outlines", &CODBdataPkgPin::m_arrOutlines),
        Same("finishedHoleSize", &CODBdataPkgPin::m_dHoleSize),
        Same("centre", &CODBdataPkgPin::m_ptCenter),
        Same("type", &CODBdataPkgPin::m_sType),
        Same("electricalType", &CODBdataPkgPin::m_sElectricalType),
        Same("mountType", &CODBdataPkgPin::m_sMountType),
        Same("name", &CODBdataPkgPin::m_sName),
    };
};

template <>
struct jobx::CompactFields<CODBdataPkg>
{
    using Main = CJOBXdataPkg;
    static constexpr auto kList = std::tuple{
        Same("number", &CODBdataPkg::m_nNumber),
        Same("flag", &CODBdataPkg::m_nFlag),
        Same("outlines", &CODBdataPkg::m_arrOutlines),
        Same("pins", &CODBdataPkg::m_arrPins),
        Same("pitch", &CODBdataPkg::m_dPitch),
        Same("upperRight", &CODBdataPkg::m_ptUpperRight),
        Same("lowerLeft", &CODBdataPkg::m_ptLowerLeft),
        Same("name", &CODBdataPkg::m_sName),
        Same("properties", &CODBdataPkg::m_arrProperties),
        Same("attributes", &CODBdataPkg::m_arrAttributes),
    };
};

template <>
struct jobx::CompactFields<CODBdata>
{
    using Main = CJOBXdata;
    static constexpr auto kList = std::tuple{
        Same("header", &CODBdata::m_sHeader),
        Same("layerNames", &CODBdata::m_arrLayerNames),
        Same("nets", &CODBdata::m_arrNets),
        Same("packages", &CODBdata::m_arrPkgs),
        Same("properties", &CODBdata::m_arrProperties),
        Same("units", &CODBdata::m_sUnits),
        Own<FieldKind::Real>(&CODBdata::m_dRescaleFactor),
        Same("attributeNames", &CODBdata::m_arrAttributeNames),
        Same("attributeTexts", &CODBdata::m_arrAttributeTexts),
    };
};

template <>
struct jobx::CompactFields<CODBnetPt>
{
    using Main = CJOBXnetPt;
    static constexpr auto kList = std::tuple{
        Same("side", &CODBnetPt::m_sSide),
        Same("staggeredMark", &CODBnetPt::m_sStaggeredMark),
        Same("staggeredRadius", &CODBnetPt::m_dStaggeredRadius),
        Same("exposure", &CODBnetPt::m_sExposure),
        Same("endPoint", &CODBnetPt::m_sEndPoint),
        Same("height", &CODBnetPt::m_dHeight),
        Same("width", &CODBnetPt::m_dWidth),
        Same("position", &CODBnetPt::m_ptPosition),
        Same("staggeredPosition", &CODBnetPt::m_ptStaggeredPosition),
        Same("radius", &CODBnetPt::m_dRadius),
        Same("flags", &CODBnetPt::m_arrFlags),
    };
};

template <>
struct jobx::CompactFields<CODBnet>
{
    using Main = CJOBXnet;
    static constexpr auto kList = std::tuple{
        Same("points", &CODBnet::m_arrPts),
        Same("name", &CODBnet::m_sName),
        Same("number", &CODBnet::m_nNumber),
    };
};

template <>
struct jobx::CompactFields<CODBnetlist>
{
    using Main = CJOBXnetlist;
    static constexpr auto kList = std::tuple{
        Same("points", &CODBnetlist::m_arrPts),
        Same("nets", &CODBnetlist::m_arrNets),
    };
};

template <>
struct jobx::CompactFields<CODBstepRepeat>
{
    using Main = CJOBXstepRepeat;
    static constexpr auto kList = std::tuple{
        Same("name", &CODBstepRepeat::m_sName),    Same("position", &CODBstepRepeat::m_ptPosition),
        Same("pitch", &CODBstepRepeat::m_ptPitch), Same("count", &CODBstepRepeat::m_ptCount),
        Same("angle", &CODBstepRepeat::m_dAngle),  Same("mirror", &CODBstepRepeat::m_sMirror),
        Same("flip", &CODBstepRepeat::m_sFlip),
    };
};

template <>
struct jobx::CompactFields<CODBstephdr>
{
    using Main = CJOBXstephdr;
    static constexpr auto kList = std::tuple{
        Same("datum", &CODBstephdr::m_ptDatum),
        Same("origin", &CODBstephdr::m_ptOrigin),
        Same("topActive", &CODBstephdr::m_sTopActive),
        Same("bottomActive", &CODBstephdr::m_sBottomActive),
        Same("rightActive", &CODBstephdr::m_sRightActive),
        Same("leftActive", &CODBstephdr::m_sLeftActive),
        Same("onlineDrcName", &CODBstephdr::m_sOnlineDrcName),
        Same("onlineDrcMode", &CODBstephdr::m_sOnlineDrcMode),
        Same("onlineDrcStat", &CODBstephdr::m_sOnlineDrcStat),
        Same("onlineDrcTime", &CODBstephdr::m_sOnlineDrcTime),
        Same("onlineDrcBeepVol", &CODBstephdr::m_sOnlineDrcBeepVol),
        Same("onlineDrcBeepTone", &CODBstephdr::m_sOnlineDrcBeepTone),
        Same("onlineNetMode", &CODBstephdr::m_sOnlineNetMode),
        Same("onlineNetStat", &CODBstephdr::m_sOnlineNetStat),
        Same("onlineNetTime", &CODBstephdr::m_sOnlineNetTime),
        Same("onlineNetBeepVol", &CODBstephdr::m_sOnlineNetBeepVol),
        Same("onlineNetBeepTone", &CODBstephdr::m_sOnlineNetBeepTone),
        Same("affectingBom", &CODBstephdr::m_sAffectingBom),
        Same("affectingBomChanged", &CODBstephdr::m_sAffectingBomChanged),
        Same("stepRepeats", &CODBstephdr::m_arrStepRepeats),
    };
};
