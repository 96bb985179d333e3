// Features, layers, symbols, fonts and tools.
#include "JOBXCLSDLL.h"
#include "robustness/MemoryOperations.h"

namespace
{
CString Features()
{
    return SmallJob() + "/steps/pcb/layers/a_layer_with_a_rather_long_name/features";
}

// A change of a feature; a failure leaves what was asked about it.
template <class T, class Change, class Ask>
MemoryOperation Changing(const char* type, const char* name, Change change, Ask ask)
{
    return {type, name,
            [change, ask](MemoryRun& run)
            {
                T feature;
                feature.SetType("L");
                const auto before = ask(feature);
                const bool done = run.Try([&] { change(feature); });
                EXPECT_EQ(ask(feature) == before, !done);
            }};
}

void AddFeature(MemoryOperations& all)
{
    using Feature = CJOBXlayObj;
    all.push_back(Changing<Feature>(
        "CJOBXlayObj", "SetType", [](Feature& f) { f.SetType(kLong); }, [](Feature& f) { return f.GetType(); }));
    all.push_back(Changing<Feature>(
        "CJOBXlayObj", "SetPolarity", [](Feature& f) { f.SetPolarity(kLong); },
        [](Feature& f) { return f.GetPolarity(); }));
    all.push_back(Changing<Feature>(
        "CJOBXlayObj", "SetSurfaceIndex", [](Feature& f) { f.SetSurfaceIndex(3); },
        [](Feature& f) { return f.GetSurfaceIndex(); }));
    all.push_back(Changing<Feature>(
        "CJOBXlayObj", "SetUserValue", [](Feature& f) { f.SetUserValue(3); },
        [](Feature& f) { return f.GetUserValue(); }));
    all.push_back(Changing<CJOBXlayObjLine>(
        "CJOBXlayObjLine", "SetPadName", [](CJOBXlayObjLine& f) { f.SetPadName(kLong); },
        [](CJOBXlayObjLine& f) { return f.GetPadName(); }));
    all.push_back(Changing<CJOBXlayObjPad>(
        "CJOBXlayObjPad", "SetPadName", [](CJOBXlayObjPad& f) { f.SetPadName(kLong); },
        [](CJOBXlayObjPad& f) { return f.GetPadName(); }));
    all.push_back(Changing<CJOBXlayObjArc>(
        "CJOBXlayObjArc", "SetClockwise", [](CJOBXlayObjArc& f) { f.SetClockwise(kLong); },
        [](CJOBXlayObjArc& f) { return f.GetClockwise(); }));
    AddUse<Feature>(
        all, "CJOBXlayObj", "GetTexts", [](Feature&) {}, [](Feature& f) { f.GetTexts().Add(kLong); });
    AddUse<Feature>(
        all, "CJOBXlayObj", "GetPropertyArray", [](Feature&) {}, [](Feature& f) { f.GetPropertyArray(); });
}

void AddFeatureKinds(MemoryOperations& all)
{
    AddMaking<CJOBXlayObj>(all, "CJOBXlayObj");
    AddMaking<CJOBXlayObjLine>(all, "CJOBXlayObjLine");
    AddMaking<CJOBXlayObjPad>(all, "CJOBXlayObjPad");
    AddMaking<CJOBXlayObjArc>(all, "CJOBXlayObjArc");
    AddMaking<CJOBXlayObjText>(all, "CJOBXlayObjText");
    AddMaking<CJOBXlayObjBarcode>(all, "CJOBXlayObjBarcode");
    AddMaking<CJOBXlayObjSurface>(all, "CJOBXlayObjSurface");
    AddMaking<CJOBXlayObjSurfaceOBArray>(all, "CJOBXlayObjSurfaceOBArray");
    AddMaking<CJOBXlayObjArray>(all, "CJOBXlayObjArray");
    AddMaking<CJOBXlayObjSurfaceOB>(all, "CJOBXlayObjSurfaceOB");
    AddCopying<CJOBXlayObjSurfaceOB>(
        all, "CJOBXlayObjSurfaceOB",
        [](CJOBXlayObjSurfaceOB& contour, int n)
        { contour.GetODBlayObjOXArray()->Own(std::make_unique<CJOBXlayObjOX>())->SetLineNumber(n); },
        [](const CJOBXlayObjSurfaceOB& a, const CJOBXlayObjSurfaceOB& b)
        { return *a.GetODBlayObjOXArray() == *b.GetODBlayObjOXArray(); });
}

void FillElement(CJOBXlayObjOX& element, int n)
{
    element.SetLineNumber(n);
    element.SetKind(kLong);
    element.SetClockwise(kOther);
}

void FillContour(CJOBXlayObjOXArray& contour, int n)
{
    for (int i = n; i < n + 3; ++i)
        FillElement(*contour.Own(std::make_unique<CJOBXlayObjOX>()), i);
}

void FillTool(CJOBXtoolData& tool, int n)
{
    tool.m_nNum = n;
    tool.m_sBit = kLong;
}

void FillTools(CJOBXtoolDataArray& tools, int n)
{
    for (int i = n; i < n + 3; ++i)
        FillTool(*tools.Own(std::make_unique<CJOBXtoolData>()), i);
}

void AddCopies(MemoryOperations& all)
{
    const auto same = [](const auto& a, const auto& b) { return a == b; };
    AddCopying<CJOBXlayObjOX>(all, "CJOBXlayObjOX", FillElement, same);
    AddCopying<CJOBXlayObjOXArray>(all, "CJOBXlayObjOXArray", FillContour, same);
    AddCopying<CJOBXtoolData>(all, "CJOBXtoolData", FillTool, same);
    AddCopying<CJOBXtoolDataArray>(all, "CJOBXtoolDataArray", FillTools, same);
    AddCopying<CJOBXtool>(
        all, "CJOBXtool", [](CJOBXtool& tool, int n) { FillTools(tool.m_arrToolData, n); }, same);
    AddMaking<CJOBXtool>(all, "CJOBXtool");
    AddUse<CJOBXlayObjOX>(
        all, "CJOBXlayObjOX", "SetPolygonType", [](auto&) {}, [](auto& element) { element.SetPolygonType(kLong); });
    AddUse<CJOBXtool>(
        all, "CJOBXtool", "SetToolDataArray", [](auto&) {},
        [](auto& tool)
        {
            CJOBXtoolDataArray tools;
            FillTools(tools, 1);
            tool.SetToolDataArray(&tools);
        });
    AddUse<CJOBXtool>(
        all, "CJOBXtool", "WriteODBData", [](auto& tool) { FillTools(tool.m_arrToolData, 1); },
        [directory = CString(ScratchDir().MakeDir("tools").c_str())](auto& tool) { tool.WriteODBData(directory); });
    AddUse<CJOBXtoolData>(
        all, "CJOBXtoolData", "WriteODBData", [](auto& tool) { FillTool(tool, 1); },
        [](auto& tool)
        {
            tool.WriteODBData(Nowhere());
            CJOBXtoolData::GetSType(CJOBXtoolData::GetType(kLong));
        },
        Memory::Sometimes);
}

// Asks a layer that was read; what it answers is texts of its own.
void AddLayer(MemoryOperations& all)
{
    const auto read = [](CJOBXlayer& layer) { layer.ParseODBOfMFC(Features()); };
    AddMaking<CJOBXlayer>(all, "CJOBXlayer");
    AddMaking<CJOBXlayerArray>(all, "CJOBXlayerArray");
    AddMaking<CJOBXSpecialSymbol>(all, "CJOBXSpecialSymbol");
    AddMaking<CJOBXSpecialSymbolArray>(all, "CJOBXSpecialSymbolArray");
    AddUse<CJOBXlayer>(
        all, "CJOBXlayer", "ParseODBOfMFC", [](auto&) {}, read);
    AddUse<CJOBXlayer>(all, "CJOBXlayer", "WriteODBData", read,
                       [directory = CString(ScratchDir().MakeDir("layer").c_str())](auto& layer)
                       { layer.WriteODBData(directory, 1, 1); });
    AddUse<CJOBXlayer>(
        all, "CJOBXlayer", "WriteODBFeatureAttributeData", read,
        [](auto& layer)
        {
            for (INT_PTR i = 0; i < layer.GetFeatures()->GetSize(); ++i)
                layer.GetFeatures()->GetAt(i)->WriteODBFeatureAttributeData(Nowhere());
        },
        Memory::NotNeeded);
    AddUse<CJOBXlayer>(
        all, "CJOBXlayer", "WriteODBData of features", read,
        [](auto& layer)
        {
            for (INT_PTR i = 0; i < layer.GetFeatures()->GetSize(); ++i)
                layer.GetFeatures()->GetAt(i)->WriteODBData(Nowhere());
        },
        Memory::NotNeeded);
    AddUse<CJOBXlayer>(all, "CJOBXlayer", "GetPropertyArray of features", read,
                       [](auto& layer)
                       {
                           for (INT_PTR i = 0; i < layer.GetFeatures()->GetSize(); ++i)
                               layer.GetFeatures()->GetAt(i)->GetPropertyArray();
                       });
    AddUse<CJOBXlayer>(all, "CJOBXlayer", "GetViaPadStackName", read, [](auto& layer) { layer.GetViaPadStackName(0); });
    AddUse<CJOBXlayer>(all, "CJOBXlayer", "AddPropertyData", read,
                       [](auto& layer) { layer.AddPropertyData("0=0,1", layer.GetFeatures()->GetAt(0)); });
    AddUse<CJOBXlayer>(
        all, "CJOBXlayer", "UnitConvert and lookups", read,
        [](auto& layer)
        {
            layer.UnitConvert(2.0);
            layer.vRescale();
            layer.nGetSymbolIndex("r10");
            layer.GetSymbolName(1);
            layer.GetAttributeName(0);
            layer.GetAttributeText(0);
        },
        Memory::Sometimes);
    AddUse<CJOBXlayerArray>(
        all, "CJOBXlayerArray", "WriteODBData",
        [](auto& layers)
        {
            CJOBXlayer& layer = *layers.Own(std::make_unique<CJOBXlayer>());
            layer.ParseODBOfMFC(Features());
            layer.m_sName = "a_layer_with_a_rather_long_name";
        },
        [directory = CString(ScratchDir().MakeDir("layers").c_str())](auto& layers)
        {
            layers.GetODBlayerFromName(kLong);
            layers.WriteODBData(directory);
        });
}

void AddFonts(MemoryOperations& all)
{
    const auto read = [](CJOBXfonts& fonts) { fonts.ParseStandardFont(SmallJob() + "/fonts"); };
    AddMaking<CJOBXfonts>(all, "CJOBXfonts");
    AddMaking<CJOBXfontsStandard>(all, "CJOBXfontsStandard");
    AddMaking<CJOBXfontsStandardArray>(all, "CJOBXfontsStandardArray");
    AddMaking<CJOBXfontsStandardObj>(all, "CJOBXfontsStandardObj");
    AddMaking<CJOBXfontsStandardObjArray>(all, "CJOBXfontsStandardObjArray");
    AddUse<CJOBXfonts>(
        all, "CJOBXfonts", "ParseStandardFont", [](auto&) {}, read);
    AddUse<CJOBXfonts>(all, "CJOBXfonts", "WriteStandardFont", read,
                       [directory = CString(ScratchDir().MakeDir("font").c_str())](auto& fonts)
                       { fonts.WriteStandardFont(directory); });
    AddUse<CJOBXfonts>(
        all, "CJOBXfonts", "UnitConvert", read, [](auto& fonts) { fonts.UnitConvert(2.0); }, Memory::NotNeeded);
}
} // namespace

MemoryOperations LayerOperations()
{
    MemoryOperations all;
    AddFeature(all);
    AddFeatureKinds(all);
    AddCopies(all);
    AddLayer(all);
    AddFonts(all);
    return all;
}
