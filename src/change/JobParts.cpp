// Removes one kind of part from the whole job.
#include "change/CarriedFiles.h"
#include "change/JobSelection.h"
#include "change/MatrixPlaces.h"
#include "change/References.h"
#include "components/CJOBXcomponents.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "eda/EdaFormat.h"
#include "foundation/framework/AsciiText.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBX.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXfonts.h"
#include "netlist/CJOBXnetlist.h"
#include "step/CJOBXstepObj.h"

#include <memory>
#include <utility>

namespace
{
constexpr std::string_view kTypeOfComponents = "COMPONENT"; // a layer's type
constexpr std::size_t kPartsOfLayerFile = 5;                // steps/STEP/layers/LAYER/FILE

template <class T>
NewPlaces AllGone(const COwningPtrArray<T>& list)
{
    return NewPlaces(static_cast<std::size_t>(list.GetSize()), kGone);
}

template <class T>
void MakeFresh(T*& part)
{
    auto fresh = std::make_unique<T>();
    delete std::exchange(part, fresh.release());
}

// Attributes have numbers; properties that are kept beside them do not.
void DropAttributes(CJOBXtailed& record)
{
    if (record.pGetTailAttributes() != nullptr)
        DeleteWhere(*record.pMakeTailAttributes(),
                    [](const CJOBXProperty& attribute, int) { return attribute.m_nNumber >= 0; });
}

template <class Tables>
void DropTables(Tables& file)
{
    file.m_arrAttributeNames.RemoveAll();
    file.m_arrAttributeNameNumbers.RemoveAll();
    file.m_arrAttributeTexts.RemoveAll();
    file.m_arrAttributeTextNumbers.RemoveAll();
}

void DropAttributes(CJOBXlayer& layer)
{
    layer.RemoveAttributeList();
    for (CJOBXlayObj& feature : layer.GetFeatures()->Records())
        if (feature.nGetPropertyCount() > 0)
            feature.GetPropertyArray()->DeleteAll();
    DropTables(layer);
}

void DropAttributes(CJOBXcomponents& file)
{
    file.RemoveAttributeList();
    for (CJOBXcmp& component : file.m_arrCmps.Records())
    {
        component.m_arrAttributes.DeleteAll();
        for (CJOBXcmpTop& top : component.m_arrTops.Records())
            DropAttributes(top);
    }
    DropTables(file);
}

void DropAttributes(CJOBXnetlist& netlist)
{
    for (CJOBXnetPt& point : netlist.m_arrPts.Records())
        DropAttributes(point);
    for (CJOBXnet& net : netlist.m_arrNets.Records())
    {
        DropAttributes(net);
        for (CJOBXnetPt& point : net.m_arrPts.Records())
            DropAttributes(point);
    }
}

void DropAttributes(CJOBXdataPkg& package)
{
    DropAttributes(static_cast<CJOBXtailed&>(package));
    for (CJOBXdataPkgObj& outline : package.m_arrOutlines.Records())
        DropAttributes(outline);
    for (CJOBXdataPkgPin& pin : package.m_arrPins.Records())
    {
        DropAttributes(static_cast<CJOBXtailed&>(pin));
        for (CJOBXdataPkgObj& outline : pin.m_arrOutlines.Records())
            DropAttributes(outline);
    }
}

// What follows the first ";" of the line: attributes, and the unique number behind another ";".
void DropAttributes(CJOBXdataNetObj& object)
{
    if (object.m_sKind.View() == eda_format::kFeatureGroup || object.m_sText.IsEmpty())
        return;
    const int id = object.m_sText.Find(';');
    object.m_sText = id < 0 ? CString() : object.m_sText.Mid(id);
}

void DropAttributes(CJOBXdata& data)
{
    for (CJOBXdataNet& net : data.m_arrNets.Records())
    {
        DropAttributes(static_cast<CJOBXtailed&>(net));
        for (CJOBXSnt& subnet : net.m_arrSnts.Records())
            DropAttributes(static_cast<CJOBXtailed&>(subnet));
    }
    for (CJOBXdataPkg& package : data.m_arrPkgs.Records())
        DropAttributes(package);
    for (CJOBXdataFgr& group : data.GetFeatureGroups()->Records())
        DropAttributes(static_cast<CJOBXtailed&>(group));
    ForEachFeatureList(data,
                       [](CJOBXdataNetObjArray& objects)
                       {
                           for (CJOBXdataNetObj& object : objects.Records())
                               DropAttributes(object);
                       });
    data.m_arrAttributeNames.RemoveAll();
    data.GetAttributeNameNumbers()->RemoveAll();
    data.m_arrAttributeTexts.RemoveAll();
    data.GetAttributeTextNumbers()->RemoveAll();
}

void DropAttributes(CJOBXstepObj& step)
{
    step.RemoveAttributeList();
    DropAttributes(*step.GetProfile());
    for (CJOBXlayer& layer : step.m_arrLayers.Records())
        DropAttributes(layer);
    for (CJOBXcomponents& file : step.m_arrComponents.Records())
        DropAttributes(file);
    DropAttributes(DataOf(step));
    DropAttributes(*step.GetNetlist());
    if (step.pGetFurtherNetlists() != nullptr)
        for (CJOBXnetlist& netlist : step.pMakeFurtherNetlists()->Records())
            DropAttributes(netlist);
}

void DropProperties(CJOBXstepObj& step)
{
    for (CJOBXcomponents& file : step.m_arrComponents.Records())
        for (CJOBXcmp& component : file.m_arrCmps.Records())
            component.m_arrProperties.DeleteAll();
    CJOBXdata& data = DataOf(step);
    data.m_arrProperties.DeleteAll();
    for (CJOBXdataNet& net : data.m_arrNets.Records())
        net.m_arrProperties.DeleteAll();
    for (CJOBXdataFgr& group : data.GetFeatureGroups()->Records())
        group.m_arrProperties.DeleteAll();
    for (CJOBXdataPkg& package : data.m_arrPkgs.Records())
    {
        package.m_arrProperties.DeleteAll();
        for (CJOBXdataPkgPin& pin : package.m_arrPins.Records())
            if (pin.pGetTailAttributes() != nullptr)
                DeleteWhere(*pin.pMakeTailAttributes(),
                            [](const CJOBXProperty& property, int) { return property.m_nNumber < 0; });
    }
}

void DropNetlists(CJOBXstepObj& step)
{
    MakeFresh(step.m_pNetlist);
    if (step.pGetFurtherNetlists() != nullptr)
        step.pMakeFurtherNetlists()->DeleteAll();
}

void DropNets(CJOBXstepObj& step)
{
    MoveNetReferences(step, AllGone(DataOf(step).m_arrNets));
    DataOf(step).m_arrNets.DeleteAll();
    step.GetEda()->GetShorts().RemoveAll();
    DropNetlists(step);
}

void DropEda(CJOBXstepObj& step)
{
    MoveNetReferences(step, AllGone(DataOf(step).m_arrNets));
    for (CJOBXcomponents& file : step.m_arrComponents.Records())
        for (CJOBXcmp& component : file.m_arrCmps.Records())
            component.m_nPkgRef = -1;
    MakeFresh(step.m_pEda);
}

void DropComponents(CJOBXstepObj& step)
{
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        MoveComponentReferences(step, file, AllGone(file.m_arrCmps));
    step.m_arrComponents.DeleteAll();
    DataOf(step).m_arrPkgs.DeleteAll();
}

bool HasFeatures(const CJOBX& job, const CString& layer)
{
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        if (step.m_arrLayers.GetODBlayerFromName(layer) != nullptr)
            return true;
    return false;
}

void DropComponentRows(CJOBX& job)
{
    DropRows(job.m_pMatrix->m_arrLayers, &CJOBXmatrixLayer::m_nRow,
             [&](const CJOBXmatrixLayer& row)
             { return AsciiEqualNoCase(row.m_sType.View(), kTypeOfComponents) && !HasFeatures(job, row.m_sName); });
}

void DropFont(CJOBXfonts& font)
{
    font.m_arrCharacters.DeleteAll();
    font.m_dXSize = font.m_dYSize = font.m_dOffset = 0.0;
    font.SetUnit(JOBXunit::Inch);
}

bool IsNotes(const PathParts& parts)
{
    if (parts.size() != kPartsOfLayerFile || !AsciiEqualNoCase(parts[0], "steps") ||
        !AsciiEqualNoCase(parts[2], "layers"))
        return false;
    const std::string_view file = parts.back();
    return AsciiEqualNoCase(file, "notes") || AsciiEqualNoCase(file, "notes.Z") || AsciiEqualNoCase(file, "notes.gz");
}

void DropOfStep(CJOBXstepObj& step, JOBXjobPart part)
{
    switch (part)
    {
    case JOBXjobPart::Attributes:
        return DropAttributes(step);
    case JOBXjobPart::Components:
        return DropComponents(step);
    case JOBXjobPart::Eda:
        return DropEda(step);
    case JOBXjobPart::Netlists:
        return DropNetlists(step);
    case JOBXjobPart::Nets:
        return DropNets(step);
    case JOBXjobPart::Properties:
        return DropProperties(step);
    case JOBXjobPart::Fonts:
    case JOBXjobPart::Notes:
    case JOBXjobPart::Others:
        return;
    }
}

void DropOfJob(CJOBX& job, JOBXjobPart part)
{
    if (part == JOBXjobPart::Components)
        DropComponentRows(job);
    else if (part == JOBXjobPart::Fonts)
        DropFont(*job.m_pFonts);
    else if (part == JOBXjobPart::Notes)
        DropCarriedFiles(job, IsNotes);
    else if (part == JOBXjobPart::Others)
        job.m_pMisc->GetCarriedFiles()->DeleteAll();
    else if (part == JOBXjobPart::Attributes)
    {
        job.m_pMisc->RemoveAttributeList();
        for (CJOBXSpecialSymbol& symbol : job.m_pSpecialSymbols->Records())
            DropAttributes(*symbol.GetLayer());
    }
}
} // namespace

void DropPart(CJOBX& job, JOBXjobPart part)
{
    Guarded(
        [&]
        {
            for (CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
                DropOfStep(step, part);
            DropOfJob(job, part);
        });
}
