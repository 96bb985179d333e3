#include "LayerJson.h"

#include "Sorted.h"

namespace
{
void WriteProperty(JsonOutput& json, const CJOBXProperty& property)
{
    json.Object(
        [&]
        {
            json.Member("name", property.m_sName);
            json.Member("number", property.m_nNumber);
            json.Member("value", property.m_sValue);
            json.Member("textNumber", property.m_nTextNumber);
            json.Member("furtherValues", property.m_arrFurtherValues);
        });
}

void WriteMembers(JsonOutput& json, const CJOBXlayObjLine& line)
{
    json.Member("start", line.GetStartPoint());
    json.Member("end", line.GetEndPoint());
    json.Member("padName", line.GetPadName());
}

void WriteMembers(JsonOutput& json, const CJOBXlayObjPad& pad)
{
    json.Member("padName", pad.GetPadName());
    json.Member("orientation", pad.GetOrientation());
    json.Member("resizeFactor", pad.GetResizeFactor());
    json.Member("resizeFlag", pad.GetResizeFlag());
    json.Member("angle", pad.GetRotationAngle());
    json.Member("centre", pad.GetCenterPoint());
}

void WriteMembers(JsonOutput& json, const CJOBXlayObjArc& arc)
{
    json.Member("clockwise", arc.GetClockwise());
    json.Member("centre", arc.GetCenterPoint());
    json.Member("end", arc.GetEndPoint());
    json.Member("start", arc.GetStartPoint());
    json.Member("padName", arc.GetPadName());
}

void WriteMembers(JsonOutput& json, const CJOBXlayObjText& text)
{
    json.Member("version", text.GetVersion());
    json.Member("text", text.GetText());
    json.Member("widthFactor", text.GetWidthFactor());
    json.Member("size", text.GetSize());
    json.Member("orientation", text.GetOrientation());
    json.Member("font", text.GetFontName());
    json.Member("position", text.GetPosition());
    json.Member("angle", text.GetRotationAngle());
}

void WriteMembers(JsonOutput& json, const CJOBXlayObjBarcode& barcode)
{
    json.Member("text", barcode.m_sText);
    json.Member("astrPosition", barcode.m_sAstrPosition);
    json.Member("astr", barcode.m_sAstr);
    json.Member("bg", barcode.m_sBg);
    json.Member("cs", barcode.m_sCs);
    json.Member("eFlag", barcode.m_sEFlag);
    json.Member("fasc", barcode.m_sFasc);
    json.Member("height", barcode.m_dHeight);
    json.Member("width", barcode.m_dWidth);
    json.Member("font", barcode.m_sFontName);
    json.Member("barcodeName", barcode.m_sBarcodeName);
    json.Member("orientation", barcode.m_nOrientation);
    json.Member("position", barcode.m_ptPosition);
}

void WriteElement(JsonOutput& json, const CJOBXlayObjOX& element)
{
    json.Object(
        [&]
        {
            json.Member("kind", element.GetKind());
            json.Member("line", element.GetLineNumber());
            json.Member("point", element.GetPoint());
            json.Member("centre", element.GetCenterPoint());
            json.Member("polygonType", element.GetPolygonType());
            json.Member("clockwise", element.GetClockwise());
        });
}

void WriteMembers(JsonOutput& json, const CJOBXlayObjSurface& surface)
{
    json.Records("contours", *surface.GetContours(),
                 [&](const CJOBXlayObjSurfaceOB& contour)
                 {
                     json.Array(
                         [&]
                         {
                             const CJOBXlayObjOXArray& elements = *contour.GetODBlayObjOXArray();
                             for (__int64 i = 0; i < elements.GetSize(); ++i)
                                 if (const CJOBXlayObjOX* const element = elements.GetAt(i))
                                     WriteElement(json, *element);
                         });
                 });
}

template <class Kind>
bool WriteMembersOf(JsonOutput& json, const CJOBXlayObj& feature)
{
    const auto* const kind = dynamic_cast<const Kind*>(&feature);
    if (kind == nullptr)
        return false;
    WriteMembers(json, *kind);
    return true;
}

void WriteFeature(JsonOutput& json, const CJOBXlayObj& feature)
{
    json.Object(
        [&]
        {
            json.Member("type", feature.GetType());
            json.Member("index", feature.GetFeatureIndex());
            json.Member("dcode", feature.GetDcode());
            json.Member("polarity", feature.GetPolarity());
            json.Member("symbol", feature.GetSymbolNumber());
            json.Member("surfaceIndex", feature.GetSurfaceIndex());
            json.ArrayMember("properties",
                             [&]
                             {
                                 for (int i = 0; i < feature.nGetPropertyCount(); ++i)
                                     if (const CJOBXProperty* const property = feature.pGetProperty(i))
                                         WriteProperty(json, *property);
                             });
            // The usual kinds first.
            static_cast<void>(
                WriteMembersOf<CJOBXlayObjLine>(json, feature) || WriteMembersOf<CJOBXlayObjPad>(json, feature) ||
                WriteMembersOf<CJOBXlayObjSurface>(json, feature) || WriteMembersOf<CJOBXlayObjArc>(json, feature) ||
                WriteMembersOf<CJOBXlayObjText>(json, feature) || WriteMembersOf<CJOBXlayObjBarcode>(json, feature));
        });
}

void WriteTool(JsonOutput& json, const CJOBXtoolData& tool)
{
    json.Object(
        [&]
        {
            json.Member("num", tool.m_nNum);
            json.Member("type", tool.m_sType);
            json.Member("type2", tool.m_sType2);
            json.Member("minTol", tool.m_dMinTol);
            json.Member("maxTol", tool.m_dMaxTol);
            json.Member("bit", tool.m_sBit);
            json.Member("finishSize", tool.m_dFinishSize);
            json.Member("drillSize", tool.m_dDrillSize);
        });
}

void WriteTools(JsonOutput& json, const CJOBXtool& tools)
{
    json.Object(
        [&]
        {
            json.Member("units", tools.m_sUnits);
            json.Member("thickness", tools.m_dThickness);
            json.Member("userParams", tools.m_sUserParams);
            json.Records("tools", *tools.GetToolDataArray(), [&](const CJOBXtoolData& tool) { WriteTool(json, tool); });
        });
}

void WriteToeprint(JsonOutput& json, const CJOBXcmpTop& toeprint)
{
    json.Object(
        [&]
        {
            json.Member("name", toeprint.m_sName);
            json.Member("net", toeprint.m_nNet);
            json.Member("subnet", toeprint.m_nSubnet);
            json.Member("mirror", toeprint.m_nMirror);
            json.Member("rotation", toeprint.m_dRotation);
            json.Member("location", toeprint.m_ptLocation);
            json.Member("pin", toeprint.m_nPin);
        });
}

void WriteComponent(JsonOutput& json, const CJOBXcmp& component)
{
    json.Object(
        [&]
        {
            json.Member("number", component.m_nNumber);
            json.Records("toeprints", component.m_arrTops,
                         [&](const CJOBXcmpTop& toeprint) { WriteToeprint(json, toeprint); });
            json.Member("partName", component.m_sPartName);
            json.Member("name", component.m_sName);
            json.Member("mirror", component.m_nMirror);
            json.Member("rotation", component.m_dRotation);
            json.Member("location", component.m_ptLocation);
            json.Member("package", component.m_nPkgRef);
            WriteProperties(json, "properties", component.m_arrProperties);
            WriteProperties(json, "attributes", component.m_arrAttributes);
        });
}
} // namespace

void WriteProperties(JsonOutput& json, std::string_view key, const CJOBXPropertyArray& properties)
{
    json.Records(key, properties, [&](const CJOBXProperty& property) { WriteProperty(json, property); });
}

void WriteProperties(JsonOutput& json, std::string_view key, const CLPropertyArray& properties)
{
    json.Records(key, properties,
                 [&](const CLProperty& property)
                 {
                     json.Object(
                         [&]
                         {
                             json.Member("name", property.m_sName);
                             json.Member("value", property.m_sValue);
                         });
                 });
}

void WriteLayer(JsonOutput& json, const CJOBXlayer& layer)
{
    json.Object(
        [&]
        {
            json.Member("name", layer.m_sName);
            json.Member("rescaleFactor", layer.m_dRescaleFactor);
            json.Member("units", layer.m_sUnits);
            json.Records("features", *layer.GetFeatures(),
                         [&](const CJOBXlayObj& feature) { WriteFeature(json, feature); });
            json.Member("attributeTexts", layer.m_arrAttributeTexts);
            json.Member("attributeTextNumbers", layer.m_arrAttributeTextNumbers);
            json.Member("attributeNames", layer.m_arrAttributeNames);
            json.Member("attributeNameNumbers", layer.m_arrAttributeNameNumbers);
            json.Member("symbolNames", layer.m_arrSymbolNames);
            json.Member("symbolNumbers", layer.m_arrSymbolNumbers);
            json.Member("symbolSecondFields", layer.m_arrSymbolSecondFields);
            WriteComponents(json, "components", *layer.GetComponents());
            json.Key("tools");
            WriteTools(json, *layer.GetTool());
            json.Member("featureLineNo", static_cast<std::int64_t>(layer.GEtODBFeatureLineNo()));
        });
}

void WriteComponents(JsonOutput& json, std::string_view key, const CJOBXcomponentsArray& components)
{
    json.ArrayMember(key,
                     [&]
                     {
                         for (const CJOBXcomponents* const file : SortedRecords<CJOBXcomponents>(
                                  components, [](const CJOBXcomponents& each) { return each.m_sLayerName.View(); }))
                             json.Object(
                                 [&]
                                 {
                                     json.Member("layerName", file->m_sLayerName);
                                     json.Member("relativePath", file->m_sRelativePath);
                                     json.Member("units", file->m_sUnits);
                                     json.Records("components", file->m_arrCmps,
                                                  [&](const CJOBXcmp& component) { WriteComponent(json, component); });
                                     json.Member("attributeNames", file->m_arrAttributeNames);
                                     json.Member("attributeNameNumbers", file->m_arrAttributeNameNumbers);
                                     json.Member("attributeTexts", file->m_arrAttributeTexts);
                                     json.Member("attributeTextNumbers", file->m_arrAttributeTextNumbers);
                                 });
                     });
}
