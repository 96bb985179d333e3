// What the records of a job consist of: for each class of record its place, its key where it has one, and its fields.
// Left out is what depends on where a job lies or on what a host sets, and the positions that records have in lists.
#pragma once

#include "DiffCollector.h"
#include "JOBXCLSDLL.h"

#include <string>

// A line of a numbered table.
struct TableRow
{
    std::string_view kind;
    int number = 0;
    std::string label; // the number as a text
    CString text;
    CString second;
};

// The attributes of a feature as a list.
struct FeatureAttributes
{
    const CJOBXlayObj& feature;

    __int64 GetSize() const { return feature.nGetPropertyCount(); }
    const CJOBXProperty* GetAt(__int64 index) const { return feature.pGetProperty(static_cast<int>(index)); }
};

std::string FoldedName(std::string_view name); // in ASCII lower case

RecordPlace PlaceOf(const CJOBXlayObj& feature);
inline RecordPlace PlaceOf(const CJOBXlayObjSurfaceOB& /*contour*/)
{
    return {"contour", "contour", {}, {}};
}
inline RecordPlace PlaceOf(const CJOBXlayObjOX& /*element*/)
{
    return {"contour element", "element", {}, {}};
}
inline RecordPlace PlaceOf(const TableRow& row)
{
    return {row.kind, row.kind, row.label, {}};
}
inline RecordPlace PlaceOf(const CString& /*name*/)
{
    return {"layer name", "layer name", {}, {}};
}
inline RecordPlace PlaceOf(const CJOBXProperty& property)
{
    return {"attribute", "attribute", property.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CLProperty& property)
{
    return {"property", "property", property.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXdataNet& net)
{
    return {"net", "net", net.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXSnt& subnet)
{
    return {"subnet", "subnet", {}, subnet.m_sKind.View()};
}
inline RecordPlace PlaceOf(const CJOBXdataNetObj& /*object*/)
{
    return {"net object", "object", {}, {}};
}
inline RecordPlace PlaceOf(const CJOBXdataPkg& package)
{
    return {"package", "package", package.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXdataPkgPin& pin)
{
    return {"pin", "pin", pin.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXdataPkgObj& outline)
{
    return {"outline", "outline", {}, outline.m_sKeyword.View()};
}
inline RecordPlace PlaceOf(const CJOBXcmp& component)
{
    return {"component", "component", component.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXcmpTop& /*toeprint*/)
{
    return {"toeprint", "toeprint", {}, {}};
}
inline RecordPlace PlaceOf(const CJOBXnet& net)
{
    return {"netlist net", "net", net.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXnetPt& /*point*/)
{
    return {"netlist point", "point", {}, {}};
}
inline RecordPlace PlaceOf(const CJOBXstepRepeat& repeat)
{
    return {"step-repeat", "step-repeat", {}, repeat.m_sName.View()};
}
inline RecordPlace PlaceOf(const CJOBXmatrixStep& step)
{
    return {"matrix step", "step", step.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXmatrixLayer& layer)
{
    return {"matrix layer", "layer", layer.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXfontsStandard& character)
{
    return {"character", "character", character.m_sName.View(), {}};
}
inline RecordPlace PlaceOf(const CJOBXfontsStandardObj& /*stroke*/)
{
    return {"stroke", "stroke", {}, {}};
}

// Names under which records of two lists belong together.
template <class Record>
std::string KeyOf(const Record& record)
{
    return std::string(record.m_sName.View());
}
inline std::string KeyOf(const TableRow& row)
{
    return row.label;
}
inline std::string KeyOf(const CJOBXmatrixStep& step)
{
    return FoldedName(step.m_sName.View());
}
inline std::string KeyOf(const CJOBXmatrixLayer& layer)
{
    return FoldedName(layer.m_sName.View());
}

// The fields, shown to something that compares them. Its operations: Text, Number, Real, Length and Point for values,
// Texts and Parameters for lists of texts, LineNumber, Ordered for a list whose records are known by their position,
// Keyed for one whose records are known by their key.

template <class Sink>
void CompareFields(Sink& sink, const CString& a, const CString& b)
{
    sink.Text("name", a, b);
}

template <class Sink>
void CompareFields(Sink& sink, const TableRow& a, const TableRow& b)
{
    sink.Number("number", a.number, b.number);
    sink.Text("text", a.text, b.text);
    sink.Text("second field", a.second, b.second);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXProperty& a, const CJOBXProperty& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Number("name number", a.m_nNumber, b.m_nNumber);
    sink.Text("value", a.m_sValue, b.m_sValue);
    sink.Number("text number", a.m_nTextNumber, b.m_nTextNumber);
    sink.Texts("further values", a.m_arrFurtherValues, b.m_arrFurtherValues);
}

template <class Sink>
void CompareFields(Sink& sink, const CLProperty& a, const CLProperty& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Text("value", a.m_sValue, b.m_sValue);
}

template <class Sink>
void CompareShape(Sink& sink, const CJOBXlayObjLine& a, const CJOBXlayObjLine& b)
{
    sink.Point("start x", "start y", a.GetStartPoint(), b.GetStartPoint());
    sink.Point("end x", "end y", a.GetEndPoint(), b.GetEndPoint());
}

template <class Sink>
void CompareShape(Sink& sink, const CJOBXlayObjPad& a, const CJOBXlayObjPad& b)
{
    sink.Point("x", "y", a.GetCenterPoint(), b.GetCenterPoint());
    sink.Number("orientation", a.GetOrientation(), b.GetOrientation());
    sink.Real("angle", a.GetRotationAngle(), b.GetRotationAngle());
    sink.Number("resize flag", a.GetResizeFlag(), b.GetResizeFlag());
    sink.Real("resize factor", a.GetResizeFactor(), b.GetResizeFactor());
}

template <class Sink>
void CompareShape(Sink& sink, const CJOBXlayObjArc& a, const CJOBXlayObjArc& b)
{
    sink.Point("start x", "start y", a.GetStartPoint(), b.GetStartPoint());
    sink.Point("end x", "end y", a.GetEndPoint(), b.GetEndPoint());
    sink.Point("centre x", "centre y", a.GetCenterPoint(), b.GetCenterPoint());
    sink.Text("clockwise", a.GetClockwise(), b.GetClockwise());
}

template <class Sink>
void CompareShape(Sink& sink, const CJOBXlayObjText& a, const CJOBXlayObjText& b)
{
    sink.Point("x", "y", a.GetPosition(), b.GetPosition());
    sink.Text("font", a.GetFontName(), b.GetFontName());
    sink.Number("orientation", a.GetOrientation(), b.GetOrientation());
    sink.Real("angle", a.GetRotationAngle(), b.GetRotationAngle());
    sink.Point("x size", "y size", a.GetSize(), b.GetSize());
    sink.Length("width factor", a.GetWidthFactor(), b.GetWidthFactor());
    sink.Text("text", a.GetText(), b.GetText());
    sink.Number("version", a.GetVersion(), b.GetVersion());
}

template <class Sink>
void CompareShape(Sink& sink, const CJOBXlayObjBarcode& a, const CJOBXlayObjBarcode& b)
{
    sink.Point("x", "y", a.m_ptPosition, b.m_ptPosition);
    sink.Text("barcode name", a.m_sBarcodeName, b.m_sBarcodeName);
    sink.Text("font", a.m_sFontName, b.m_sFontName);
    sink.Number("orientation", a.m_nOrientation, b.m_nOrientation);
    sink.Text("E flag", a.m_sEFlag, b.m_sEFlag);
    sink.Length("width", a.m_dWidth, b.m_dWidth);
    sink.Length("height", a.m_dHeight, b.m_dHeight);
    sink.Text("full ASCII", a.m_sFasc, b.m_sFasc);
    sink.Text("checksum", a.m_sCs, b.m_sCs);
    sink.Text("background", a.m_sBg, b.m_sBg);
    sink.Text("shown text", a.m_sAstr, b.m_sAstr);
    sink.Text("shown text's place", a.m_sAstrPosition, b.m_sAstrPosition);
    sink.Text("text", a.m_sText, b.m_sText);
}

template <class Sink>
void CompareShape(Sink& sink, const CJOBXlayObjSurface& a, const CJOBXlayObjSurface& b)
{
    sink.Ordered(*a.GetContours(), *b.GetContours());
}

template <class Shape, class Sink>
bool CompareShapeOf(Sink& sink, const CJOBXlayObj& a, const CJOBXlayObj& b)
{
    const auto* const shapeA = dynamic_cast<const Shape*>(&a);
    const auto* const shapeB = dynamic_cast<const Shape*>(&b);
    if (shapeA != nullptr && shapeB != nullptr)
        CompareShape(sink, *shapeA, *shapeB);
    return shapeA != nullptr;
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXlayObj& a, const CJOBXlayObj& b)
{
    sink.Text("type", a.GetType(), b.GetType());
    sink.Number("symbol", a.GetSymbolNumber(), b.GetSymbolNumber());
    sink.Text("polarity", a.GetPolarity(), b.GetPolarity());
    sink.Number("dcode", a.GetDcode(), b.GetDcode());
    static_cast<void>(CompareShapeOf<CJOBXlayObjLine>(sink, a, b) || CompareShapeOf<CJOBXlayObjPad>(sink, a, b) ||
                      CompareShapeOf<CJOBXlayObjSurface>(sink, a, b) || CompareShapeOf<CJOBXlayObjArc>(sink, a, b) ||
                      CompareShapeOf<CJOBXlayObjText>(sink, a, b) || CompareShapeOf<CJOBXlayObjBarcode>(sink, a, b));
    sink.Keyed(FeatureAttributes{a}, FeatureAttributes{b});
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXlayObjSurfaceOB& a, const CJOBXlayObjSurfaceOB& b)
{
    sink.Ordered(*a.GetODBlayObjOXArray(), *b.GetODBlayObjOXArray());
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXlayObjOX& a, const CJOBXlayObjOX& b)
{
    sink.Text("kind", a.GetKind(), b.GetKind());
    sink.Point("x", "y", a.GetPoint(), b.GetPoint());
    sink.Point("centre x", "centre y", a.GetCenterPoint(), b.GetCenterPoint());
    sink.Text("polygon type", a.GetPolygonType(), b.GetPolygonType());
    sink.Text("clockwise", a.GetClockwise(), b.GetClockwise());
    sink.LineNumber("contour element", a.GetLineNumber(), b.GetLineNumber());
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXdataNet& a, const CJOBXdataNet& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Number("number", a.m_nNumber, b.m_nNumber);
    sink.Ordered(a.m_arrSnts, b.m_arrSnts);
    sink.Keyed(a.m_arrProperties, b.m_arrProperties);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXSnt& a, const CJOBXSnt& b)
{
    sink.Text("kind", a.m_sKind, b.m_sKind);
    sink.Text("side", a.m_sSide, b.m_sSide);
    sink.Number("component", a.m_nComponentNumber, b.m_nComponentNumber);
    sink.Number("toeprint", a.m_nToeprintNumber, b.m_nToeprintNumber);
    sink.Text("fill type", a.m_sFillType, b.m_sFillType);
    sink.Text("cutout type", a.m_sCutoutType, b.m_sCutoutType);
    sink.Length("fill size", a.m_dFillSize, b.m_dFillSize);
    sink.LineNumber("subnet", a.m_nLineNumber, b.m_nLineNumber);
    sink.Ordered(a.m_arrNetObjs, b.m_arrNetObjs);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXdataNetObj& a, const CJOBXdataNetObj& b)
{
    sink.Text("kind", a.m_sKind, b.m_sKind);
    sink.Number("layer", a.m_nLayerIndex, b.m_nLayerIndex);
    sink.Number("feature", a.m_nFeatureIndex, b.m_nFeatureIndex);
    sink.Text("text", a.m_sText, b.m_sText);
    sink.LineNumber("net object", a.m_nLineNumber, b.m_nLineNumber);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXdataPkg& a, const CJOBXdataPkg& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Number("number", a.m_nNumber, b.m_nNumber);
    sink.Length("pitch", a.m_dPitch, b.m_dPitch);
    sink.Point("lower left x", "lower left y", a.m_ptLowerLeft, b.m_ptLowerLeft);
    sink.Point("upper right x", "upper right y", a.m_ptUpperRight, b.m_ptUpperRight);
    sink.Ordered(a.m_arrOutlines, b.m_arrOutlines);
    sink.Keyed(a.m_arrPins, b.m_arrPins);
    sink.Keyed(a.m_arrProperties, b.m_arrProperties);
    sink.Keyed(a.m_arrAttributes, b.m_arrAttributes);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXdataPkgPin& a, const CJOBXdataPkgPin& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Text("type", a.m_sType, b.m_sType);
    sink.Point("x", "y", a.m_ptCenter, b.m_ptCenter);
    sink.Length("hole size", a.m_dHoleSize, b.m_dHoleSize);
    sink.Text("electrical type", a.m_sElectricalType, b.m_sElectricalType);
    sink.Text("mount type", a.m_sMountType, b.m_sMountType);
    sink.Ordered(a.m_arrOutlines, b.m_arrOutlines);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXdataPkgObj& a, const CJOBXdataPkgObj& b)
{
    sink.Text("keyword", a.m_sKeyword, b.m_sKeyword);
    sink.Parameters("parameters", a.m_arrParameters, b.m_arrParameters);
    sink.LineNumber("outline", a.m_nLineNumber, b.m_nLineNumber);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXcmp& a, const CJOBXcmp& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Number("number", a.m_nNumber, b.m_nNumber);
    sink.Number("package", a.m_nPkgRef, b.m_nPkgRef);
    sink.Point("x", "y", a.m_ptLocation, b.m_ptLocation);
    sink.Real("rotation", a.m_dRotation, b.m_dRotation);
    sink.Number("mirror", a.m_nMirror, b.m_nMirror);
    sink.Text("part name", a.m_sPartName, b.m_sPartName);
    sink.Keyed(a.m_arrAttributes, b.m_arrAttributes);
    sink.Keyed(a.m_arrProperties, b.m_arrProperties);
    sink.Ordered(a.m_arrTops, b.m_arrTops);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXcmpTop& a, const CJOBXcmpTop& b)
{
    sink.Number("pin", a.m_nPin, b.m_nPin);
    sink.Point("x", "y", a.m_ptLocation, b.m_ptLocation);
    sink.Real("rotation", a.m_dRotation, b.m_dRotation);
    sink.Number("mirror", a.m_nMirror, b.m_nMirror);
    sink.Number("net", a.m_nNet, b.m_nNet);
    sink.Number("subnet", a.m_nSubnet, b.m_nSubnet);
    sink.Text("name", a.m_sName, b.m_sName);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXnet& a, const CJOBXnet& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Number("number", a.m_nNumber, b.m_nNumber);
    sink.Ordered(a.m_arrPts, b.m_arrPts);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXnetPt& a, const CJOBXnetPt& b)
{
    sink.Length("radius", a.m_dRadius, b.m_dRadius);
    sink.Point("x", "y", a.m_ptPosition, b.m_ptPosition);
    sink.Text("side", a.m_sSide, b.m_sSide);
    sink.Length("width", a.m_dWidth, b.m_dWidth);
    sink.Length("height", a.m_dHeight, b.m_dHeight);
    sink.Text("end point", a.m_sEndPoint, b.m_sEndPoint);
    sink.Text("exposure", a.m_sExposure, b.m_sExposure);
    sink.Text("staggered mark", a.m_sStaggeredMark, b.m_sStaggeredMark);
    sink.Point("staggered x", "staggered y", a.m_ptStaggeredPosition, b.m_ptStaggeredPosition);
    sink.Length("staggered radius", a.m_dStaggeredRadius, b.m_dStaggeredRadius);
    sink.Texts("flags", a.GetFlags(), b.GetFlags());
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXstepRepeat& a, const CJOBXstepRepeat& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Point("x", "y", a.m_ptPosition, b.m_ptPosition);
    sink.Point("dx", "dy", a.m_ptPitch, b.m_ptPitch);
    sink.Number("nx", a.m_ptCount.x, b.m_ptCount.x);
    sink.Number("ny", a.m_ptCount.y, b.m_ptCount.y);
    sink.Real("angle", a.m_dAngle, b.m_dAngle);
    sink.Text("mirror", a.m_sMirror, b.m_sMirror);
    sink.Text("flip", a.m_sFlip, b.m_sFlip);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXmatrixStep& a, const CJOBXmatrixStep& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Number("column", a.m_nColumn, b.m_nColumn);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXmatrixLayer& a, const CJOBXmatrixLayer& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Number("row", a.m_nRow, b.m_nRow);
    sink.Text("context", a.m_sContext, b.m_sContext);
    sink.Text("type", a.m_sType, b.m_sType);
    sink.Text("polarity", a.m_sPolarity, b.m_sPolarity);
    sink.Text("start name", a.m_sStartName, b.m_sStartName);
    sink.Text("end name", a.m_sEndName, b.m_sEndName);
    sink.Text("old name", a.m_sOldName, b.m_sOldName);
    sink.Text("add type", a.m_sAddType, b.m_sAddType);
    sink.Text("color", a.m_sColor, b.m_sColor);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXfontsStandard& a, const CJOBXfontsStandard& b)
{
    sink.Text("name", a.m_sName, b.m_sName);
    sink.Ordered(a.m_arrStrokes, b.m_arrStrokes);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXfontsStandardObj& a, const CJOBXfontsStandardObj& b)
{
    sink.Point("start x", "start y", a.m_ptStart, b.m_ptStart);
    sink.Point("end x", "end y", a.m_ptEnd, b.m_ptEnd);
    sink.Text("polarity", a.m_sPolarity, b.m_sPolarity);
    sink.Text("shape", a.m_sShape, b.m_sShape);
    sink.Length("width", a.m_dWidth, b.m_dWidth);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXmisc& a, const CJOBXmisc& b)
{
    sink.Number("version major", a.m_nODBVersionMajor, b.m_nODBVersionMajor);
    sink.Number("version minor", a.m_nODBVersionMinor, b.m_nODBVersionMinor);
    sink.Text("job name", a.m_sJobName, b.m_sJobName);
    sink.Text("source", a.m_sODBSource, b.m_sODBSource);
    sink.Text("creation date", a.m_sCreationDate, b.m_sCreationDate);
    sink.Text("save date", a.m_sSaveDate, b.m_sSaveDate);
    sink.Text("save application", a.m_sSaveApp, b.m_sSaveApp);
    sink.Text("save user", a.m_sSaveUser, b.m_sSaveUser);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXstephdr& a, const CJOBXstephdr& b)
{
    sink.Point("datum x", "datum y", a.m_ptDatum, b.m_ptDatum);
    sink.Point("origin x", "origin y", a.m_ptOrigin, b.m_ptOrigin);
    sink.Text("top active", a.m_sTopActive, b.m_sTopActive);
    sink.Text("bottom active", a.m_sBottomActive, b.m_sBottomActive);
    sink.Text("right active", a.m_sRightActive, b.m_sRightActive);
    sink.Text("left active", a.m_sLeftActive, b.m_sLeftActive);
    sink.Text("online DRC name", a.m_sOnlineDrcName, b.m_sOnlineDrcName);
    sink.Text("online DRC mode", a.m_sOnlineDrcMode, b.m_sOnlineDrcMode);
    sink.Text("online DRC state", a.m_sOnlineDrcStat, b.m_sOnlineDrcStat);
    sink.Text("online DRC time", a.m_sOnlineDrcTime, b.m_sOnlineDrcTime);
    sink.Text("online DRC beep volume", a.m_sOnlineDrcBeepVol, b.m_sOnlineDrcBeepVol);
    sink.Text("online DRC beep tone", a.m_sOnlineDrcBeepTone, b.m_sOnlineDrcBeepTone);
    sink.Text("online net mode", a.m_sOnlineNetMode, b.m_sOnlineNetMode);
    sink.Text("online net state", a.m_sOnlineNetStat, b.m_sOnlineNetStat);
    sink.Text("online net time", a.m_sOnlineNetTime, b.m_sOnlineNetTime);
    sink.Text("online net beep volume", a.m_sOnlineNetBeepVol, b.m_sOnlineNetBeepVol);
    sink.Text("online net beep tone", a.m_sOnlineNetBeepTone, b.m_sOnlineNetBeepTone);
    sink.Text("affecting BOM", a.m_sAffectingBom, b.m_sAffectingBom);
    sink.Text("affecting BOM changed", a.m_sAffectingBomChanged, b.m_sAffectingBomChanged);
    sink.Ordered(a.m_arrStepRepeats, b.m_arrStepRepeats);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXfonts& a, const CJOBXfonts& b)
{
    sink.Length("x size", a.m_dXSize, b.m_dXSize);
    sink.Length("y size", a.m_dYSize, b.m_dYSize);
    sink.Length("offset", a.m_dOffset, b.m_dOffset);
    sink.Keyed(a.m_arrCharacters, b.m_arrCharacters);
}

template <class Sink>
void CompareFields(Sink& sink, const CJOBXmatrix& a, const CJOBXmatrix& b)
{
    sink.Keyed(a.m_arrSteps, b.m_arrSteps);
    sink.Keyed(a.m_arrLayers, b.m_arrLayers);
}
