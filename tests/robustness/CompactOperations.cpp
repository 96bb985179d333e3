// The compact model: copies, lookups and changes.
#include "JOBXCLSDLL.h"
#include "compact/CompactMembers.h"
#include "robustness/MemoryOperations.h"

namespace
{
const auto kFill = [](auto& object, int first) { Fill(object, first); };
const auto kFillOne = [](auto& object) { Fill(object); };
const auto kSame = [](auto& a, auto& b) { return MembersOf(a) == MembersOf(b); };

// A record and its array.
template <class T, class List = void>
void AddRecord(MemoryOperations& all, const char* type, const char* list = nullptr)
{
    AddMaking<T>(all, type);
    AddCopying<T>(all, type, kFill, kSame);
    if constexpr (requires(T & object) { object.vRescale(2.0); })
        AddUse<T>(
            all, type, "vRescale", kFillOne, [](T& object) { object.vRescale(2.0); }, Memory::Sometimes);
    if constexpr (!std::is_void_v<List>)
        AddRecord<List>(all, list);
}

// One kind of an outline or a feature, which the walk over all kinds knows by its base.
template <class T, class Base>
void AddKind(MemoryOperations& all, const char* type)
{
    AddMaking<T>(all, type);
    AddCopying<T>(
        all, type, [](T& object, int first) { Fill<Base>(object, first); },
        [](T& a, T& b) { return MembersOf<Base>(a) == MembersOf<Base>(b); });
}

void AddCompactLists(MemoryOperations& all)
{
    AddRecord<CODBSnt, CODBSntArray>(all, "CODBSnt", "CODBSntArray");
    AddRecord<CODBSpecialSymbol, CODBSpecialSymbolArray>(all, "CODBSpecialSymbol", "CODBSpecialSymbolArray");
    AddRecord<CODBcmp, CODBcmpArray>(all, "CODBcmp", "CODBcmpArray");
    AddRecord<CODBcmpToe, CODBcmpToeArray>(all, "CODBcmpToe", "CODBcmpToeArray");
    AddRecord<CODBdataNet, CODBdataNetArray>(all, "CODBdataNet", "CODBdataNetArray");
    AddRecord<CODBdataNetObj, CODBdataNetObjArray>(all, "CODBdataNetObj", "CODBdataNetObjArray");
    AddRecord<CODBdataPkg, CODBdataPkgArray>(all, "CODBdataPkg", "CODBdataPkgArray");
    AddRecord<CODBdataPkgObj, CODBdataPkgObjArray>(all, "CODBdataPkgObj", "CODBdataPkgObjArray");
    AddRecord<CODBdataPkgPin, CODBdataPkgPinArray>(all, "CODBdataPkgPin", "CODBdataPkgPinArray");
    AddRecord<CODBlayObj, CODBlayObjArray>(all, "CODBlayObj", "CODBlayObjArray");
    AddRecord<CODBlayObjOX, CODBlayObjOXArray>(all, "CODBlayObjOX", "CODBlayObjOXArray");
    AddRecord<CODBlayObjSurfaceOB, CODBlayObjSurfaceOBArray>(all, "CODBlayObjSurfaceOB", "CODBlayObjSurfaceOBArray");
    AddRecord<CODBlayer, CODBlayerArray>(all, "CODBlayer", "CODBlayerArray");
    AddRecord<CODBmatrixLayer, CODBmatrixLayerArray>(all, "CODBmatrixLayer", "CODBmatrixLayerArray");
    AddRecord<CODBnet, CODBnetArray>(all, "CODBnet", "CODBnetArray");
    AddRecord<CODBnetPt, CODBnetPtArray>(all, "CODBnetPt", "CODBnetPtArray");
    AddRecord<CODBstepRepeat, CODBstepRepeatArray>(all, "CODBstepRepeat", "CODBstepRepeatArray");
    AddRecord<CODBstephdr, CODBstephdrArray>(all, "CODBstephdr", "CODBstephdrArray");
    AddRecord<CODBsysAttrData, CODBsysAttrDataArray>(all, "CODBsysAttrData", "CODBsysAttrDataArray");
}

void AddCompactKinds(MemoryOperations& all)
{
    AddKind<CODBdataPkgObjCircle, CODBdataPkgObj>(all, "CODBdataPkgObjCircle");
    AddKind<CODBdataPkgObjSquare, CODBdataPkgObj>(all, "CODBdataPkgObjSquare");
    AddKind<CODBdataPkgObjRectangle, CODBdataPkgObj>(all, "CODBdataPkgObjRectangle");
    AddKind<CODBdataPkgObjContour, CODBdataPkgObj>(all, "CODBdataPkgObjContour");
    AddKind<CODBlayObjLine, CODBlayObj>(all, "CODBlayObjLine");
    AddKind<CODBlayObjPad, CODBlayObj>(all, "CODBlayObjPad");
    AddKind<CODBlayObjArc, CODBlayObj>(all, "CODBlayObjArc");
    AddKind<CODBlayObjText, CODBlayObj>(all, "CODBlayObjText");
    AddKind<CODBlayObjBarcode, CODBlayObj>(all, "CODBlayObjBarcode");
    AddKind<CODBlayObjSurface, CODBlayObj>(all, "CODBlayObjSurface");
}

// Outlines as a file has them: a circle, a contour and one that is no shape.
void FillPlain(CODBdataPkgObjArray& outlines)
{
    for (const char* const keyword : {"CR", "CT", "OE", "CE", "CR", "XX"})
    {
        outlines.Add(new CODBdataPkgObj);
        outlines.GetLastElement()->m_sKeyword = keyword;
        if (outlines.GetLastElement()->m_sKeyword == "CR")
            for (const char* const text : {"1", "2", "3"})
                outlines.GetLastElement()->m_arrParameters.Add(text);
    }
}

void AddChanges(MemoryOperations& all)
{
    AddUse<CODBdataPkgObjArray>(all, "CODBdataPkgObjArray", "vMakeGeometry", FillPlain,
                                [](CODBdataPkgObjArray& outlines) { outlines.vMakeGeometry(); });
    AddUse<CODBdataPkgObjArray>(all, "CODBdataPkgObjArray", "vRescale of plain records", FillPlain,
                                [](CODBdataPkgObjArray& outlines) { outlines.vRescale(2.0); });
    AddUse<CODB>(
        all, "CODB", "vChangeUnit", kFillOne, [](CODB& odb) { odb.vChangeUnit(2); }, Memory::Sometimes);
    AddUse<CODB>(all, "CODB", "the source and the units", kFillOne,
                 [](CODB& odb)
                 {
                     odb.IsSourceFromNoInformation();
                     odb.IsSourceFromExpeditionPCB();
                     odb.IsSourceFromCR8000DESIGNFORCE();
                     CODB::nChgSUnit2Int(kLong);
                     CODB::GetRescaleFactor(kLong);
                     odb.pGetODBlayerFromName(kLong);
                 });
    AddUse<CODBnetArray>(all, "CODBnetArray", "pGetODBnetWithName", kFillOne,
                         [](CODBnetArray& nets) { nets.pGetODBnetWithName(kLong); });
    all.push_back({"CODBstepRepeatArray", "Add_Parent",
                   [](MemoryRun& run)
                   {
                       CODBstepRepeatArray table;
                       Fill(table);
                       table.GetAt(0)->m_ptCount.SetData(1, 2);
                       table.GetAt(1)->m_ptCount.SetData(2, 1);
                       CODBstepRepeat parent;
                       parent.m_ptCount.SetData(2, 2);
                       std::unique_ptr<CODBstepRepeatArray> made;
                       const bool done = run.Try([&] { made.reset(table.Add_Parent(&parent)); });
                       EXPECT_EQ(made != nullptr, done);
                   }});
}
} // namespace

MemoryOperations CompactOperations()
{
    MemoryOperations all;
    AddCompactLists(all);
    AddCompactKinds(all);
    AddRecord<CODBcomponents>(all, "CODBcomponents");
    AddRecord<CODBdata>(all, "CODBdata");
    AddRecord<CODBmatrix>(all, "CODBmatrix");
    AddRecord<CODBnetlist>(all, "CODBnetlist");
    AddRecord<CODB>(all, "CODB");
    AddChanges(all);
    return all;
}
