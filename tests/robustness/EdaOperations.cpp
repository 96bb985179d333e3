// EDA data, components and netlists.
#include "JOBXCLSDLL.h"
#include "robustness/MemoryOperations.h"

namespace
{
CString Step()
{
    return SmallJob() + "/steps/pcb";
}

void FillOutlines(CJOBXdataPkgObjArray& outlines, int first)
{
    for (const char* const keyword : {"CR", "CT", "OE", "CE", "CR", "XX"})
    {
        CJOBXdataPkgObj& record = *outlines.Own(std::make_unique<CJOBXdataPkgObj>());
        record.m_sKeyword = keyword;
        record.m_nLineNumber = first;
        if (record.m_sKeyword == "CR")
            for (const char* const text : {"1", "2", "0.000000000000003"})
                record.m_arrParameters.Add(text);
    }
}

void FillPin(CJOBXdataPkgPin& pin, int first)
{
    FillOutlines(pin.m_arrOutlines, first);
    pin.m_sName = kLong;
}

void FillPins(CJOBXdataPkgPinArray& pins, int first)
{
    for (int i = first; i < first + 3; ++i)
        FillPin(*pins.Own(std::make_unique<CJOBXdataPkgPin>()), i);
}

void FillPackage(CJOBXdataPkg& package, int first)
{
    FillOutlines(package.m_arrOutlines, first);
    FillPins(package.m_arrPins, first);
    package.m_arrProperties.Own(std::make_unique<CJOBXProperty>())->m_nNumber = first;
    package.m_arrProperties.GetAt(0)->m_sValue = kLong;
    package.m_arrAttributes.Own(std::make_unique<CLProperty>(kLong, kOther));
}

// The unit change and the lines of a file.
template <class T, class Fill>
void AddUses(MemoryOperations& all, const char* type, Fill fill, Memory converting = Memory::Sometimes)
{
    const auto fillOne = [fill](T& object) { fill(object, 1); };
    if constexpr (requires(T & object) { object.UnitConvert(2.0); })
        AddUse<T>(
            all, type, "UnitConvert", fillOne, [](T& object) { object.UnitConvert(2.0); }, converting);
    if constexpr (requires(T & object) { object.WriteODBData(Nowhere()); })
        AddUse<T>(
            all, type, "WriteODBData", fillOne, [](T& object) { object.WriteODBData(Nowhere()); }, Memory::Sometimes);
}

template <class T, class Fill>
void AddCopied(MemoryOperations& all, const char* type, Fill fill, Memory making = Memory::Needed)
{
    AddMaking<T>(all, type, making);
    AddCopying<T>(
        all, type, fill, [](const T& a, const T& b) { return a == b; }, making);
    AddUses<T>(all, type, fill);
}

template <class T>
void AddShape(MemoryOperations& all, const char* type)
{
    AddCopied<T>(
        all, type,
        [](T& shape, int n)
        {
            shape.m_arrParameters.Add(kLong);
            shape.m_nLineNumber = n;
        },
        kOfPool);
}

void AddPackages(MemoryOperations& all)
{
    AddShape<CJOBXdataPkgObj>(all, "CJOBXdataPkgObj");
    AddShape<CJOBXdataPkgObjCircle>(all, "CJOBXdataPkgObjCircle");
    AddShape<CJOBXdataPkgObjSquare>(all, "CJOBXdataPkgObjSquare");
    AddShape<CJOBXdataPkgObjRectangle>(all, "CJOBXdataPkgObjRectangle");
    AddShape<CJOBXdataPkgObjContour>(all, "CJOBXdataPkgObjContour");
    AddCopied<CJOBXdataPkgObjArray>(all, "CJOBXdataPkgObjArray", FillOutlines);
    AddCopied<CJOBXdataPkgPin>(all, "CJOBXdataPkgPin", FillPin, Memory::Sometimes);
    AddCopied<CJOBXdataPkgPinArray>(all, "CJOBXdataPkgPinArray", FillPins);
    AddCopied<CJOBXdataPkg>(all, "CJOBXdataPkg", FillPackage, Memory::Sometimes);
    AddUse<CJOBXdataPkgObjArray>(
        all, "CJOBXdataPkgObjArray", "vMakeGeometry", [](auto& outlines) { FillOutlines(outlines, 1); },
        [](auto& outlines) { outlines.vMakeGeometry(); });
    AddMaking<CJOBXdataPkgArray>(all, "CJOBXdataPkgArray");
    AddUses<CJOBXdataPkgArray>(all, "CJOBXdataPkgArray",
                               [](CJOBXdataPkgArray& list, int n)
                               { FillPackage(*list.Own(std::make_unique<CJOBXdataPkg>()), n); });
}

void FillSubnet(CJOBXSnt& subnet)
{
    subnet.m_sKind = kLong;
    subnet.m_sText = kOther;
    for (int i = 0; i < 3; ++i)
        subnet.m_arrNetObjs.Own(std::make_unique<CJOBXdataNetObj>())->m_sKind = kLong;
}

void AddNets(MemoryOperations& all)
{
    AddMaking<CJOBXSnt>(all, "CJOBXSnt", kOfPool);
    AddMaking<CJOBXSntArray>(all, "CJOBXSntArray");
    AddMaking<CJOBXdataNet>(all, "CJOBXdataNet", kOfPool);
    AddMaking<CJOBXdataNetArray>(all, "CJOBXdataNetArray");
    AddMaking<CJOBXdataFgr>(all, "CJOBXdataFgr");
    AddMaking<CJOBXdataFgrArray>(all, "CJOBXdataFgrArray");
    AddMaking<CJOBXdataNetObj>(all, "CJOBXdataNetObj", kOfPool);
    AddMaking<CJOBXdataNetObjArray>(all, "CJOBXdataNetObjArray");
    AddUse<CJOBXSnt>(all, "CJOBXSnt", "pGetSameODBSnt", FillSubnet,
                     [](CJOBXSnt& subnet) { const std::unique_ptr<CJOBXSnt> same(subnet.pGetSameODBSnt()); });
    AddUse<CJOBXdataNetObj>(
        all, "CJOBXdataNetObj", "pGetSameODBdataNetObj", [](auto& object) { object.m_sKind = kLong; },
        [](auto& object) { const std::unique_ptr<CJOBXdataNetObj> same(object.pGetSameODBdataNetObj()); }, kOfPool);
    AddUse<CJOBXdataNetArray>(
        all, "CJOBXdataNetArray", "FindNetID", [](auto& nets) { nets.Own(std::make_unique<CJOBXdataNet>()); },
        [](auto& nets)
        {
            nets.FindNetID(kLong);
            nets.GetNetData(CString(kLong));
        });
    AddUse<CJOBXSntArray>(
        all, "CJOBXSntArray", "pGetODBSntWithProperty", [](auto&) {},
        [](auto& subnets) { subnets.pGetODBSntWithProperty(kLong, kLong, 0, 0); });
}

// Reads the file below the step, writes it again and changes its unit.
template <class T>
void AddFile(MemoryOperations& all, const char* type, const char* file)
{
    const CString path = Step() + "/" + file;
    AddMaking<T>(all, type);
    AddUse<T>(
        all, type, "ParseODBOfMFC", [](T&) {}, [path](T& object) { object.ParseODBOfMFC(path); });
    if constexpr (requires(T & object) { object.WriteODBData(path); })
    {
        const CString directory = ScratchDir().MakeDir(type).c_str();
        AddUse<T>(
            all, type, "WriteODBData", [path](T& object) { object.ParseODBOfMFC(path); },
            [directory](T& object) { object.WriteODBData(directory); });
        AddUse<T>(
            all, type, "UnitConvert", [path](T& object) { object.ParseODBOfMFC(path); },
            [](T& object) { object.UnitConvert(2.0); }, Memory::Sometimes);
    }
}

void AddStepFiles(MemoryOperations& all)
{
    AddFile<CJOBXdata>(all, "CJOBXdata", "eda/data");
    AddFile<CJOBXeda>(all, "CJOBXeda", "eda");
    AddFile<CJOBXcomponents>(all, "CJOBXcomponents", "layers/comp_+_top/components");
    AddFile<CJOBXnetlist>(all, "CJOBXnetlist", "netlists/cadnet/netlist");
    AddUse<CJOBXdata>(
        all, "CJOBXdata", "lookups", [](CJOBXdata& data) { data.ParseODBOfMFC(Step() + "/eda/data"); },
        [](CJOBXdata& data)
        {
            data.GetLayerIndex(kLong);
            data.FindAttributeNameIndex(kLong);
            data.FindAttributeContentIndex(kLong);
        });
}

void AddComponents(MemoryOperations& all)
{
    AddMaking<CJOBXcmp>(all, "CJOBXcmp", kOfPool);
    AddMaking<CJOBXcmpArray>(all, "CJOBXcmpArray");
    AddMaking<CJOBXcmpTop>(all, "CJOBXcmpTop", kOfPool);
    AddMaking<CJOBXcmpTopArray>(all, "CJOBXcmpTopArray");
    AddMaking<CJOBXcomponentsArray>(all, "CJOBXcomponentsArray");
    AddUses<CJOBXcmp>(all, "CJOBXcmp",
                      [](CJOBXcmp& component, int n)
                      {
                          component.m_sName = kLong;
                          component.m_arrTops.Own(std::make_unique<CJOBXcmpTop>())->m_nPin = n;
                          component.m_arrProperties.Own(std::make_unique<CLProperty>(kLong, kOther));
                      });
    all.push_back({"CJOBXcomponents", "AddPropertyData",
                   [](MemoryRun& run)
                   {
                       CJOBXcomponents components;
                       components.m_arrAttributeNames.Add(kLong);
                       components.m_arrAttributeNameNumbers.Add(0);
                       CJOBXcmp component;
                       const bool done = run.Try([&] { components.AddPropertyData("0,0=1,0", &component); });
                       EXPECT_TRUE(done ? component.m_arrAttributes.GetSize() == 3
                                        : component.m_arrAttributes.GetSize() < 3);
                   }});
    all.push_back(
        {"CJOBXcomponentsArray", "WriteODBData",
         [](MemoryRun& run)
         {
             CJOBXcomponentsArray list;
             list.Own(std::make_unique<CJOBXcomponents>())->ParseODBOfMFC(Step() + "/layers/comp_+_top/components");
             list.GetAt(0)->m_sRelativePath = "/comp_+_top/components";
             const CString directory = ScratchDir().MakeDir("many").c_str();
             run.Try([&] { list.WriteODBData(directory); });
         }});
}

void AddNetlist(MemoryOperations& all)
{
    AddMaking<CJOBXnet>(all, "CJOBXnet", kOfPool);
    AddMaking<CJOBXnetArray>(all, "CJOBXnetArray");
    AddMaking<CJOBXnetPt>(all, "CJOBXnetPt", kOfPool);
    AddMaking<CJOBXnetPtArray>(all, "CJOBXnetPtArray");
    all.push_back({"CJOBXnetPt", "AddFlag",
                   [](MemoryRun& run)
                   {
                       CJOBXnetPt point;
                       const bool done = run.Try([&] { point.AddFlag(kLong); });
                       EXPECT_EQ(point.GetFlags().GetSize(), done ? 1 : 0);
                   }});
    all.push_back({"CJOBXnetPt", "AddFlag to shared flags",
                   [](MemoryRun& run)
                   {
                       CJOBXnetPt other;
                       other.AddFlag(kOther);
                       CJOBXnetPt point;
                       point.ShareFlags(other);
                       const bool done = run.Try([&] { point.AddFlag(kLong); });
                       EXPECT_EQ(point.GetFlags().GetSize(), done ? 2 : 1);
                       EXPECT_EQ(other.GetFlags().GetSize(), 1);
                   }});
    all.push_back({"CJOBXnetArray", "WriteODBData",
                   [](MemoryRun& run)
                   {
                       CJOBXnetlist list;
                       list.ParseODBOfMFC(Step() + "/netlists/cadnet/netlist");
                       const CString directory = ScratchDir().MakeDir("netlist").c_str();
                       run.Try([&] { list.m_arrNets.WriteODBData(directory); });
                   }});
}
} // namespace

MemoryOperations EdaOperations()
{
    MemoryOperations all;
    AddPackages(all);
    AddNets(all);
    AddStepFiles(all);
    AddComponents(all);
    AddNetlist(all);
    return all;
}
