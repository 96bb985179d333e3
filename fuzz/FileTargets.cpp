// The readers of single text files, in both ways of reading: read, look at it, scale, write, read what was written.
#include "CompleteReading.h"
#include "FuzzTargets.h"
#include "JOBXCLSDLL.h"
#include "Scratch.h"

#include <algorithm>
#include <memory>

namespace
{
constexpr double kFactor = 25.4;
constexpr __int64 kMostLookups = 50; // each may walk a whole table

void LookAt(CJOBXlayer& layer)
{
    CJOBXlayObjArray& features = *layer.GetFeatures();
    for (__int64 i = 0; i < std::min(features.GetSize(), kMostLookups); ++i)
    {
        CJOBXlayObj& feature = *features.GetAt(i);
        layer.GetViaPadStackName(static_cast<int>(i));
        layer.GetSymbolName(feature.GetSymbolNumber());
        if (i % 2 == 0)
            feature.GetPropertyArray(); // a list of its own from now on
    }
    layer.nGetLayObjIndexFromSurfaceIndex(-1);
    if (features.GetSize() > 0)
        layer.AddPropertyData(layer.GetAttributeText(0), features.GetAt(0));
}

void LookAt(CJOBXdata& data)
{
    for (__int64 i = 0; i < data.m_arrPkgs.GetSize(); ++i)
    {
        CJOBXdataPkgObjArray& outlines = data.m_arrPkgs.GetAt(i)->m_arrOutlines;
        const std::unique_ptr<CJOBXdataPkgObjArray> copy(outlines.clone());
        Require(*copy == outlines, "a copy of outlines equals them");
        copy->vMakeGeometry();
        const std::unique_ptr<CJOBXdataPkgObjArray> geometry(copy->clone());
        Require(*geometry == *copy, "a copy of geometry equals it");
    }
    data.FindAttributeNameIndex(data.m_sHeader);
    data.GetLayerIndex(data.m_sHeader);
}
} // namespace

void FuzzFeatures(std::string_view input)
{
    ReadFileCompletely("steps/pcb/layers/top/features", input);
    CJOBXlayer layer;
    layer.ParseODBOfMFC(ScratchFile("features.txt", input));
    LookAt(layer);
    layer.UnitConvert(kFactor);
    layer.vRescale();
    const CString folder = ScratchDir("layer");
    layer.m_sName = "layer";
    layer.m_dCopperWeightOrDielectric = 1.0;
    layer.WriteODBData(folder, 0, 1);
    CJOBXlayer again;
    again.ParseODBOfMFC(ScratchPath("layer/features"));
    again.WriteODBData(folder, 0, 0);
}

void FuzzEdaData(std::string_view input)
{
    ReadFileCompletely("steps/pcb/eda/data", input);
    CJOBXdata data;
    Require(data.ParseODBOfMFC(ScratchFile("data.txt", input)) == 1, "EDA data that is there is read");
    LookAt(data);
    data.UnitConvert(kFactor);
    data.WriteODBData(ScratchDir("eda"));
    CJOBXdata again;
    Require(again.ParseODBOfMFC(ScratchPath("eda/data")) == 1, "written EDA data is read");
}

void FuzzComponents(std::string_view input)
{
    ReadFileCompletely("steps/pcb/layers/top/components", input);
    CJOBXcomponents components;
    components.ParseODBOfMFC(ScratchFile("components.txt", input));
    for (__int64 i = 0; i < std::min(components.m_arrCmps.GetSize(), kMostLookups); ++i)
    {
        CJOBXcmp& component = *components.m_arrCmps.GetAt(i);
        component.sGetPartName();
        component.pGetODBcmpToeFromID(component.m_nNumber);
        components.AddPropertyData(component.m_sPartName, &component);
    }
    components.nGetFirstBtmIndex();
    components.UnitConvert(kFactor);
    components.WriteODBData(ScratchDir("comp"));
    CJOBXcomponents again;
    again.ParseODBOfMFC(ScratchPath("comp/components"));
}

void FuzzNetlist(std::string_view input)
{
    ReadFileCompletely("steps/pcb/netlists/cadnet/netlist", input);
    CJOBXnetlist netlist;
    Require(netlist.ParseODBOfMFC(ScratchFile("netlist.txt", input)) == 1, "a netlist that is there is read");
    netlist.UnitConvert(kFactor);
    netlist.WriteODBData(ScratchDir("step"));
    CJOBXnetlist again;
    Require(again.ParseODBOfMFC(ScratchPath("step/netlists/cadnet/netlist")) == 1, "a written netlist is read");
    Require(again.m_arrNets.GetSize() <= netlist.m_arrNets.GetSize(), "a written netlist has no nets more");
}

void FuzzMatrix(std::string_view input)
{
    ReadFileCompletely("matrix/matrix", input);
    const CString folder = ScratchDir("in");
    ScratchFile("in/matrix", input);
    CJOBXmatrix matrix;
    Require(matrix.ParseODBOfMFC(folder) == 1, "a matrix that is there is read");
    matrix.GetTopLayerName();
    matrix.GetBottomLayerName();
    for (int i = 0; i < static_cast<int>(std::min(matrix.m_arrLayers.GetSize(), kMostLookups)); ++i)
    {
        CString name = matrix.m_arrLayers.GetAt(i)->m_sName;
        matrix.sGetMatrixLayerType(i);
        Require(matrix.GetMatrixLayerFromName(name) != nullptr, "a layer is found by its name");
        matrix.m_arrLayers.IsDrillLayer(name);
        matrix.pGetMatrixLayerFromName(name);
    }
    matrix.WriteODBData(ScratchDir("out"));
    CJOBXmatrix again;
    Require(again.ParseODBOfMFC(ScratchPath("out/matrix")) == 1, "a written matrix is read");
    Require(again.m_arrSteps.GetSize() == matrix.m_arrSteps.GetSize() &&
                again.m_arrLayers.GetSize() == matrix.m_arrLayers.GetSize(),
            "a written matrix has as many steps and layers");
}

void FuzzStephdr(std::string_view input)
{
    ReadFileCompletely("steps/pcb/stephdr", input);
    CJOBXstephdr header;
    Require(header.ParseODBOfMFC(ScratchFile("stephdr.txt", input)) == 1, "a header that is there is read");
    header.UnitConvert(kFactor);
    header.WriteODBData(ScratchDir("step"));
    CJOBXstephdr again;
    Require(again.ParseODBOfMFC(ScratchPath("step/stephdr")) == 1, "a written header is read");
    Require(again.m_arrStepRepeats.GetSize() == 0, "no written step-and-repeat entry is read back");
}

void FuzzFont(std::string_view input)
{
    ReadFileCompletely("fonts/standard", input);
    const CString folder = ScratchDir("in");
    ScratchFile("in/standard", input);
    CJOBXfonts font;
    Require(font.ParseStandardFont(folder) == 1, "a font that is there is read");
    font.UnitConvert(kFactor);
    font.WriteStandardFont(ScratchDir("out"));
    CJOBXfonts again;
    Require(again.ParseStandardFont(ScratchPath("out/fonts")) == 1, "a written folder of fonts is read");
}

void FuzzInfo(std::string_view input)
{
    ReadFileCompletely("misc/info", input);
    const CString folder = ScratchDir("in");
    ScratchFile("in/info", input);
    CJOBXmisc info;
    Require(info.ParseODBOfMFC(folder) == 1, "job information that is there is read");
}

void FuzzSysattr(std::string_view input)
{
    ReadFileCompletely("misc/sysattr", input);
    CJOBXsysAttrDataArray definitions;
    try
    {
        Require(definitions.ParseODBOfMFC(ScratchFile("sysattr.txt", input)) == 1,
                "definitions that are there are read");
    }
    catch (CInvalidArgException* exception) // a definition without a value
    {
        exception->Delete();
    }
    for (__int64 i = 0; i < std::min(definitions.GetSize(), kMostLookups); ++i)
    {
        const CJOBXsysAttrData& definition = *definitions.GetAt(i);
        definition.sGetOptionsFromIndexID(static_cast<int>(i));
        definitions.sGetOptionsFromOptionNameAndIndexID(definition.m_sName, 1);
        Require(definitions.pGetODBsysAttrDataFromName(definition.m_sName) != nullptr,
                "a definition is found by its name");
    }
}

void FuzzAttrlist(std::string_view input)
{
    ReadFileCompletely("steps/pcb/attrlist", input);
}

void FuzzTools(std::string_view input)
{
    ReadFileCompletely("steps/pcb/layers/top/tools", input);
}
