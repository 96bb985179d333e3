#include "step/CJOBXstepObj.h"

#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "foundation/ParallelLoop.h"
#include "foundation/ProgressReport.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/EntryLookup.h"
#include "foundation/corekit/FreshDirectory.h"
#include "foundation/corekit/TextTools.h"
#include "foundation/framework/Guarded.h"
#include "foundation/framework/PathText.h"
#include "layer/LayerWrites.h"
#include "netlist/CJOBXnetlist.h"
#include "step/CJOBXstephdr.h"
#include "step/StepWrites.h"

#include <set>

template class CExPtrArray<CJOBXstepObj*, CJOBXstepObj*>;

namespace
{

// Rough number of lines that a net, and a component or package, takes in a file.
constexpr __int64 kLinesOfNet = 8;
constexpr __int64 kLinesOfPart = 10;

// A file's path without the path of the step's layers: the layer's directory and the file.
CString BelowLayers(CString path, const CString& layersDirectory)
{
    path.Replace(layersDirectory, "");
    return path.TrimLeft(kPathSeparators.data());
}

// Removes the elements that `wanted` accepts from `from` and passes them to `take`, in order.
template <class T, class Wanted, class Take>
void MoveMatching(COwningPtrArray<T>& from, Wanted wanted, Take take)
{
    __int64 kept = 0;
    for (__int64 i = 0; i < from.GetSize(); ++i)
    {
        T* const element = from.GetAt(i);
        from.SetAt(i, nullptr);
        if (element != nullptr && wanted(*element))
            take(std::unique_ptr<T>(element));
        else
            from.SetAt(kept++, element);
    }
    from.RemoveAt(kept, from.GetSize() - kept);
}

template <class T>
T* NullWhenEmpty(std::unique_ptr<T> array)
{
    return array->GetSize() > 0 ? array.release() : nullptr;
}
// Each file goes into the directory of its layer, which is made if no layer made it. If another file of that name is
// waiting to be written there, it is written first.
void AddComponents(CWriteTasks& tasks, const CJOBXstepObj& step, const CString& layersDirectory)
{
    std::set<CString> taken;
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        if (layer.GetComponents()->GetSize() > 0)
            taken.insert(MakeUpper(layer.m_sName));
    for (const CJOBXcomponents& components : step.m_arrComponents.Records())
    {
        const CString layer = tasks.MakeEntryDirectory(layersDirectory, components.m_sLayerName, __FILE__, __LINE__);
        if (layer.IsEmpty())
            continue;
        if (!taken.insert(MakeUpper(components.m_sLayerName)).second)
            tasks.Run();
        tasks.Add(kLinesOfPart * components.m_arrCmps.GetSize(),
                  [&components, layer] { components.WriteODBData(layer); });
    }
}
} // namespace

CJOBXstepObj::CJOBXstepObj()
{
    Guarded(
        [this]
        {
            auto profile = std::make_unique<CJOBXlayer>();
            auto header = std::make_unique<CJOBXstephdr>();
            auto eda = std::make_unique<CJOBXeda>();
            auto netlist = std::make_unique<CJOBXnetlist>();
            m_pProfile = profile.release();
            m_pHeader = header.release();
            m_pEda = eda.release();
            m_pNetlist = netlist.release();
        });
}

CJOBXstepObj::~CJOBXstepObj()
{
    delete m_pProfile;
    delete m_pHeader;
    delete m_pEda;
    delete m_pNetlist;
}

int CJOBXstepObj::ParseODBOfMFC(CString stepDirectory)
{
    return Guarded(
        [&]
        {
            const CString profile = FindEntry(stepDirectory, "profile");
            if (!IsEntryThere(profile))
                return 0;
            m_pProfile->m_sName = "profile";
            m_pProfile->ParseODBOfMFC(profile);
            if (const CString header = FindEntry(stepDirectory, "stephdr"); IsEntryThere(header))
                m_pHeader->ParseODBOfMFC(header);
            ShowStatus(m_pStatus, "Complete profile file reading");
            ReadLayers(FindEntry(stepDirectory, "layers"));
            ShowStatus(m_pStatus, "Complete layers file reading");
            ReadEda(stepDirectory);
            ReadNetlist(stepDirectory);
            return 1;
        });
}

void CJOBXstepObj::ReadLayers(const CString& layersDirectory)
{
    CKUtility* const files = CKUtility::GetInstance();
    if (!files->IsDir(layersDirectory))
        return;
    CStringArray directories;
    files->GetAllSubDirListIn(layersDirectory, directories, 0);
    CParallelAppend<CJOBXlayer> layers(m_arrLayers);
    CParallelAppend<CJOBXcomponents> components(m_arrComponents);
    ParallelLoop(static_cast<int>(directories.GetSize()),
                 [&](int i)
                 {
                     if (!files->IsDir(directories[i]))
                         return;
                     if (const CString path = FindEntry(directories[i], "features"); IsEntryThere(path))
                     {
                         auto layer = std::make_unique<CJOBXlayer>();
                         layer->ParseODBOfMFC(path);
                         layer->m_sName = BelowLayers(path, layersDirectory).SpanExcluding(kPathSeparators.data());
                         layers.Append(i, std::move(layer));
                     }
                     if (const CString path = FindEntry(directories[i], "components"); IsEntryThere(path))
                     {
                         auto read = std::make_unique<CJOBXcomponents>();
                         read->ParseODBOfMFC(path);
                         const CString plain = files->CKPathCombine(directories[i], "components", __FILE__, __LINE__);
                         read->m_sRelativePath = BelowLayers(plain, layersDirectory); // whatever the spelling on disk
                         read->m_sLayerName = read->m_sRelativePath.SpanExcluding(kPathSeparators.data());
                         components.Append(i, std::move(read));
                     }
                 });
    layers.PutInOrder();
    components.PutInOrder();
}

void CJOBXstepObj::ReadEda(const CString& stepDirectory)
{
    const CString eda = FindEntry(stepDirectory, "eda");
    if (!CKUtility::GetInstance()->IsDir(eda))
        return;
    m_pEda->ParseODBOfMFC(eda);
    ShowStatus(m_pStatus, "Complete eda file reading");
}

void CJOBXstepObj::ReadNetlist(const CString& stepDirectory)
{
    const CKUtility* const files = CKUtility::GetInstance();
    const CString netlists = FindEntry(stepDirectory, "netlists");
    if (!files->IsDir(netlists))
        return;
    const CString cadnet = FindEntry(netlists, "cadnet");
    if (!files->IsDir(cadnet))
        return;
    const CString netlist = FindEntry(cadnet, "netlist");
    if (!IsEntryThere(netlist))
        return;
    m_pNetlist->ParseODBOfMFC(netlist);
    ShowStatus(m_pStatus, "Complete netlists file reading");
}

void CJOBXstepObj::WriteODBData(CString stepsDirectory, int withEda) const
{
    Guarded(
        [&]
        {
            CWriteTasks tasks;
            AddStepWrites(tasks, *this, stepsDirectory, withEda);
            tasks.Run();
        });
}

void CJOBXstepObj::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    m_pProfile->UnitConvert(by);
    m_arrLayers.UnitConvert(by);
    m_arrComponents.UnitConvert(by);
    m_pEda->m_pData->UnitConvert(by);
    m_pNetlist->UnitConvert(by);
    if (m_pFurtherNetlists != nullptr)
        m_pFurtherNetlists->UnitConvert(by);
}

CJOBXnetlistArray* CJOBXstepObj::pMakeFurtherNetlists()
{
    return Guarded(
        [&]
        {
            if (m_pFurtherNetlists == nullptr)
                m_pFurtherNetlists = std::make_unique<CJOBXnetlistArray>();
            return m_pFurtherNetlists.get();
        });
}

CJOBXcomponentsArray* CJOBXstepObj::ScaneODBComponents(int id)
{
    return Guarded(
        [&]
        {
            auto result = std::make_unique<CJOBXcomponentsArray>();
            for (CJOBXcomponents& file : m_arrComponents.Records())
            {
                auto scanned = std::make_unique<CJOBXcomponents>();
                scanned->m_sLayerName = file.m_sLayerName;
                scanned->m_arrAttributeNames = file.m_arrAttributeNames;
                scanned->m_arrAttributeNameNumbers = file.m_arrAttributeNameNumbers;
                scanned->m_arrAttributeTexts = file.m_arrAttributeTexts;
                scanned->m_arrAttributeTextNumbers = file.m_arrAttributeTextNumbers;
                MoveMatching(
                    file.m_arrCmps, [id](const CJOBXcmp& component) { return component.m_nPkgRef == id; },
                    [&](std::unique_ptr<CJOBXcmp> component) { scanned->m_arrCmps.Own(std::move(component)); });
                if (scanned->m_arrCmps.GetSize() > 0)
                    result->Own(std::move(scanned));
            }
            return NullWhenEmpty(std::move(result));
        });
}

CJOBXdataNetArray* CJOBXstepObj::ScanUsedODBcmpIDDataIndataNet(int componentNumber, CString side)
{
    return Guarded(
        [&]
        {
            auto result = std::make_unique<CJOBXdataNetArray>();
            CJOBXdataNetArray& nets = m_pEda->m_pData->m_arrNets;
            for (CJOBXdataNet& net : nets.Records())
            {
                auto scanned = std::make_unique<CJOBXdataNet>();
                scanned->m_sName = net.m_sName;
                MoveMatching(
                    net.m_arrSnts,
                    [&](const CJOBXSnt& subnet) {
                        return subnet.m_sKind == "TOP" && subnet.m_nComponentNumber == componentNumber &&
                               subnet.m_sSide == side;
                    },
                    [&](std::unique_ptr<CJOBXSnt> subnet) { scanned->m_arrSnts.Own(std::move(subnet)); });
                if (scanned->m_arrSnts.GetSize() > 0)
                    result->Own(std::move(scanned));
            }
            return NullWhenEmpty(std::move(result));
        });
}

CJOBXlayer* CJOBXstepObj::ScanLayerObjDataInLayer(CString layerName) const
{
    return m_arrLayers.GetODBlayerFromName(layerName);
}

CJOBXstepObjArray::CJOBXstepObjArray() = default;

CJOBXstepObjArray::~CJOBXstepObjArray() = default;

void CJOBXstepObjArray::WriteODBData(CString directory, int withEda) const
{
    Guarded(
        [&]
        {
            CWriteTasks tasks;
            AddStepWrites(tasks, *this, directory, withEda);
            tasks.Run();
        });
}

void CJOBXstepObjArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXstepObj& step : Records())
        step.UnitConvert(by);
}

void AddStepWrites(CWriteTasks& tasks, const CJOBXstepObj& step, const CString& stepsDirectory, int withEda)
{
    const CString directory = IsEntryName(step.m_sName)
                                  ? tasks.MakeFreshDirectory(stepsDirectory, step.m_sName, __FILE__, __LINE__)
                                  : CString();
    if (directory.IsEmpty())
        return;
    tasks.Add(step.GetProfile()->GetFeatures()->GetSize(),
              [&step, directory]
              {
                  step.GetProfile()->WriteODBData(directory, 0, 0);
                  step.GetHeader()->WriteODBData(directory);
              });
    AddLayerWrites(tasks, step.m_arrLayers, directory);
    AddComponents(tasks, step, CKUtility::GetInstance()->CKPathCombine(directory, "layers", __FILE__, __LINE__));
    if (withEda == 0)
        return;
    const CJOBXnetlist* const netlist = step.GetNetlist();
    const CJOBXdata* const data = step.GetEda()->m_pData;
    if (const CString eda = tasks.MakeFreshDirectory(directory, "eda", __FILE__, __LINE__); !eda.IsEmpty())
        tasks.Add(kLinesOfNet * data->m_arrNets.GetSize() + kLinesOfPart * data->m_arrPkgs.GetSize(),
                  [data, eda] { data->WriteODBData(eda); });
    tasks.Add(kLinesOfNet * netlist->m_arrNets.GetSize(), [netlist, directory] { netlist->WriteODBData(directory); });
}

void AddStepWrites(CWriteTasks& tasks, const CJOBXstepObjArray& steps, const CString& directory, int withEda)
{
    for (const CJOBXstepObj& step : steps.Records())
        AddStepWrites(tasks, step, directory, withEda);
}
