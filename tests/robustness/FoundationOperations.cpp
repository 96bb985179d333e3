// Values and their arrays, properties, the log and the file utility.
#include "JOBXCLSDLL.h"
#include "robustness/MemoryOperations.h"

namespace
{
const auto kEqual = [](const auto& a, const auto& b) { return static_cast<bool>(a == b); };

template <class T, class Fill>
void AddValue(MemoryOperations& all, const char* type, Fill fill)
{
    AddMaking<T>(all, type);
    AddCopying<T>(all, type, fill, kEqual);
}

// An array of three values that `value(i)` makes.
template <class T, class Value>
void AddValues(MemoryOperations& all, const char* type, Value value)
{
    const auto fill = [value](T& list, int first)
    {
        for (int i = first; i < first + 3; ++i)
            list.Add(value(i));
    };
    AddValue<T>(all, type, fill);
    for (const char* const base : {"CValueArray", "CArray"})
        all.push_back({base, std::string("growing of ") + type,
                       [fill, value](MemoryRun& run)
                       {
                           T list;
                           fill(list, 1);
                           const T before(list);
                           const auto added = value(9);
                           const bool done = run.Try([&] { list.InsertAt(1, added, 5); });
                           EXPECT_TRUE(!done || list.GetSize() == 8);
                           if (list.GetSize() == 8) // elements that need memory may be missing in the gap
                               list.RemoveAt(1, 5);
                           EXPECT_TRUE(list == before);
                       }});
}

void AddGeometry(MemoryOperations& all)
{
    AddValue<CPointD>(all, "CPointD", [](CPointD& point, int n) { point.SetData(n, n); });
    AddValue<CPointN>(all, "CPointN", [](CPointN& point, int n) { point.SetData(n, n); });
    AddValue<CPoint3D>(all, "CPoint3D", [](CPoint3D& point, int n) { point.SetData(n, n, n); });
    AddValue<CPointF>(all, "CPointF", [](CPointF& point, int n) { point.x = static_cast<float>(n); });
    AddValue<CRectD>(all, "CRectD", [](CRectD& rect, int n) { rect.m_dTop = n; });
    AddValue<CRectF>(all, "CRectF", [](CRectF& rect, int n) { rect.m_fTop = static_cast<float>(n); });
    AddValue<CStringEx>(all, "CStringEx", [](CStringEx& text, int n) { text = CStringEx(CString('x', n + 20)); });
    const auto point = [](int i) { return CPointD(i, i); };
    const auto pixel = [](int i) { return CPointN(i, i); };
    AddValues<CArrayN>(all, "CArrayN", [](int i) { return i; });
    AddValues<CArrayPointD>(all, "CArrayPointD", point);
    AddValues<CArrayPointN>(all, "CArrayPointN", pixel);
    AddValues<CArrayPoint3D>(all, "CArrayPoint3D", [](int i) { return CPoint3D(i, i, i); });
    AddValues<CArrayRectD>(all, "CArrayRectD", [](int i) { return CRectD(i, i, i, i); });
    AddValues<CArrayRectF>(all, "CArrayRectF", [](int i) { return CRectF(CRectD(i, i, i, i)); });
    AddValues<CStringExArray>(all, "CStringExArray", [](int i) { return CStringEx(CString('x', i + 20)); });
    AddValues<CArrayArrayPointD>(all, "CArrayArrayPointD",
                                 [point](int i)
                                 {
                                     CArrayPointD list;
                                     list.Add(point(i));
                                     return list;
                                 });
    AddValues<CArrayPointN_Array>(all, "CArrayPointN_Array",
                                  [pixel](int i)
                                  {
                                      CArrayPointN list;
                                      list.Add(pixel(i));
                                      return list;
                                  });
}

void FillProperty(CJOBXProperty& property, int n)
{
    property.m_sName.Format("%s%d", kLong, n);
    property.m_nNumber = n;
    property.m_sValue = kOther;
    property.m_nTextNumber = 7; // equal in all: assignment leaves the numbers
    property.m_arrFurtherValues.Add(kLong);
}

void FillList(CJOBXPropertyArray& list, int n)
{
    for (int i = n; i < n + 3; ++i)
        FillProperty(*list.Own(std::make_unique<CJOBXProperty>()), i);
}

void FillPairs(CLPropertyArray& list, int n)
{
    for (int i = n; i < n + 3; ++i)
        list.Own(std::make_unique<CLProperty>(kLong, CString('x', i + 20)));
}

void AddProperties(MemoryOperations& all)
{
    AddMaking<CJOBXProperty>(all, "CJOBXProperty", kOfPool);
    AddCopying<CJOBXProperty>(all, "CJOBXProperty", FillProperty,
                              [](const CJOBXProperty& a, const CJOBXProperty& b)
                              { return a.m_sName == b.m_sName && a.m_sValue == b.m_sValue; });
    AddValue<CJOBXPropertyArray>(all, "CJOBXPropertyArray", FillList);
    AddMaking<CLProperty>(all, "CLProperty", kOfPool);
    AddCopying<CLProperty>(
        all, "CLProperty", [](CLProperty& property, int n) { property.m_sName = CString('x', n + 20); }, kEqual,
        kOfPool);
    AddValue<CLPropertyArray>(all, "CLPropertyArray", FillPairs);
    AddMaking<CECadClsLvl>(all, "CECadClsLvl");
    AddCopying<CECadClsLvl>(
        all, "CECadClsLvl",
        [](CECadClsLvl& level, int n)
        {
            level.m_sLabel = kLong;
            level.m_arrItems.SetSize(n % 10 + 3);
        },
        [](const CECadClsLvl& a, const CECadClsLvl& b)
        { return a.m_sLabel == b.m_sLabel && a.m_arrItems == b.m_arrItems; });
}

void AddPropertyUses(MemoryOperations& all)
{
    all.push_back({"CJOBXProperty", "pGetECadClsLvl",
                   [](MemoryRun& run)
                   {
                       CJOBXProperty property;
                       FillProperty(property, 1);
                       std::unique_ptr<CECadClsLvl> made;
                       const bool done = run.Try([&] { made.reset(property.pGetECadClsLvl()); });
                       EXPECT_EQ(made != nullptr, done);
                       EXPECT_EQ(property.m_sValue, kOther);
                   }});
    AddUse<CJOBXPropertyArray>(
        all, "CJOBXPropertyArray", "GetReport_ForPickingProperty", [](auto& list) { FillList(list, 1); },
        [](auto& list) { list.GetReport_ForPickingProperty(); });
    AddUse<CJOBXPropertyArray>(
        all, "CJOBXPropertyArray", "Write2AsciiFile", [](auto& list) { FillList(list, 1); },
        [](auto& list) { list.Write2AsciiFile(Nowhere(), 4); });
    all.push_back({"CJOBXPropertyArray", "storing",
                   [](MemoryRun& run)
                   {
                       CJOBXPropertyArray list;
                       FillList(list, 1);
                       list.InsertAt(1, static_cast<CJOBXProperty*>(nullptr));
                       CMemFile file;
                       CArchive archive(&file, CArchive::store);
                       run.Try([&] { list.Serialize(archive); });
                       archive.Abort();
                       EXPECT_EQ(list.GetSize(), 4);
                   }});
    all.push_back({"CJOBXPropertyArray", "loading",
                   [](MemoryRun& run)
                   {
                       CJOBXPropertyArray source;
                       FillList(source, 1);
                       CMemFile file;
                       CArchive stored(&file, CArchive::store);
                       source.Serialize(stored);
                       stored.Close();
                       file.SeekToBegin();
                       CArchive archive(&file, CArchive::load);
                       CJOBXPropertyArray list;
                       FillList(list, 10);
                       const bool done = run.Try([&] { list.Serialize(archive); });
                       EXPECT_TRUE(done ? list.GetSize() == 3 : list.GetSize() < 3);
                       for (INT_PTR i = 0; i < list.GetSize(); ++i)
                           EXPECT_EQ(list.GetAt(i)->m_sName, source.GetAt(i)->m_sName);
                   }});
}

void AddLog(MemoryOperations& all)
{
    const std::string path = ScratchDir().Path("a log with a long name.txt");
    all.push_back(
        {"CLogFile", "constructor", [path](MemoryRun& run) { run.Try([&] { const CLogFile log(path.c_str(), 1); }); }});
    all.push_back({"CLogFile", "Write",
                   [path](MemoryRun& run)
                   {
                       CLogFile log(path.c_str(), 0);
                       log.m_nTimeStamp = 1;
                       run.Try([&] { log.Write("%s and %s\n", kLong, kOther); });
                   }});
    all.push_back({"CLogFile", "OpenLogFile",
                   [path](MemoryRun& run)
                   {
                       CLogFile log(path.c_str(), 0);
                       run.Try(
                           [&]
                           {
                               log.CloseLogFile();
                               log.OpenLogFile();
                           });
                   }});
}

template <class Use>
MemoryOperation OfUtility(const char* name, Use use, Memory memory = Memory::Needed)
{
    return {"CKUtility", name,
            [use](MemoryRun& run)
            {
                const CString path = ScratchDir().MakeDir("a directory with a long name/below").c_str();
                run.Try([&] { use(*CKUtility::GetInstance(), path); });
            },
            memory};
}

void AddUtility(MemoryOperations& all)
{
    using Files = const CKUtility;
    all.push_back(
        OfUtility("CKPathCombine", [](Files& files, const CString& path) { files.CKPathCombine(path, kLong); }));
    all.push_back(OfUtility("GetSegmntFromFilePath",
                            [](Files& files, const CString& path) { files.GetSegmntFromFilePath(path, 1); }));
    all.push_back(OfUtility(
        "DoesFileExist", [](Files& files, const CString& path) { files.DoesFileExist(path); }, Memory::Sometimes));
    all.push_back(OfUtility(
        "IsDir", [](Files& files, const CString& path) { files.IsDir(path); }, Memory::Sometimes));
    all.push_back(
        OfUtility("FindPath", [](Files& files, const CString& path) { files.FindPath(path, "Not There/At All"); }));
    all.push_back(OfUtility("GetAllFileListIn",
                            [](Files& files, const CString& path)
                            {
                                CStringArray list;
                                files.GetAllFileListIn(path, list, "*", 1);
                            }));
    all.push_back(OfUtility("GetAllSubDirListIn",
                            [](Files& files, const CString& path)
                            {
                                CStringArray list;
                                files.GetAllSubDirListIn(files.GetSegmntFromFilePath(path, 1), list, 0);
                            }));
    all.push_back(OfUtility("MakeDirectory and DeleteDirectory",
                            [](Files& files, const CString& path)
                            {
                                const CString made = path + "/made";
                                files.MakeDirectory(made);
                                files.DeleteDirectory(made);
                            }));
    all.push_back(
        OfUtility("GDecompress", [](Files& files, const CString& path) { files.GDecompress(path + "/no.Z"); }));
    all.push_back({"CKUtility", "Report",
                   [](MemoryRun& run)
                   {
                       class Ignoring : public CKDiagnosticSink
                       {
                           void OnDiagnostic(const CKDiagnostic& /*diagnostic*/) override {}
                       };
                       Ignoring sink;
                       CKDiagnosticSink* const before = CKUtility::GetInstance()->SetDiagnosticSink(&sink);
                       run.Try([] { CKUtility::GetInstance()->Report(kLong, 1, kLong, kOther, 2); });
                       CKUtility::GetInstance()->SetDiagnosticSink(before);
                   }});
    all.push_back({"CKDiagnostic", "Text",
                   [](MemoryRun& run)
                   {
                       const CKDiagnostic diagnostic{kLong, 1, kLong, kOther, 2};
                       run.Try([&] { diagnostic.Text(); });
                   }});
}

// Any classes that derive from them.
struct Tailed : CRaisingNew, CJOBXtailed
{
};

struct Keyed : CRaisingNew, CJOBXkeyed
{
};
struct Foldered : CRaisingNew, CJOBXfoldered
{
};
struct Attributed : CRaisingNew, CJOBXattributed
{
};

void AddKeys(MemoryOperations& all)
{
    const auto fill = [](Keyed& record, int n)
    {
        auto key = std::make_unique<CJOBXProperty>();
        key->m_sName = kLong;
        key->m_nNumber = n;
        record.pMakeFurtherKeys()->Own(std::move(key));
    };
    const auto same = [](const Keyed& a, const Keyed& b) { return *a.pGetFurtherKeys() == *b.pGetFurtherKeys(); };
    AddUse<Foldered>(
        all, "CJOBXfoldered", "SetSourceFolder", [](auto&) {}, [](auto& part) { part.SetSourceFolder(kLong); });
    AddMaking<Keyed>(all, "CJOBXkeyed");
    AddCopying<Keyed>(all, "CJOBXkeyed", fill, same);
    AddUse<Keyed>(
        all, "CJOBXkeyed", "pMakeFurtherKeys", [](auto&) {}, [](auto& record) { record.pMakeFurtherKeys(); });
    AddUse<Keyed>(
        all, "CJOBXkeyed", "sGetFurtherValue", [](auto&) {},
        [](auto& record) { record.sGetFurtherValue(CString(kLong)); });
    AddMaking<CJOBXattributeList>(all, "CJOBXattributeList");
    AddMaking<Attributed>(all, "CJOBXattributed");
    AddUse<Attributed>(
        all, "CJOBXattributed", "pMakeAttributeList", [](auto&) {}, [](auto& record) { record.pMakeAttributeList(); });
}

void AddTails(MemoryOperations& all)
{
    const auto fill = [](Tailed& record, int n)
    {
        record.SetID(n);
        record.pMakeTailAttributes()->Own(std::make_unique<CJOBXProperty>())->m_sName = kLong;
    };
    const auto same = [](const Tailed& a, const Tailed& b)
    { return a.GetID() == b.GetID() && *a.pGetTailAttributes() == *b.pGetTailAttributes(); };
    AddMaking<Tailed>(all, "CJOBXtailed");
    AddCopying<Tailed>(all, "CJOBXtailed", fill, same);
    AddUse<Tailed>(
        all, "CJOBXtailed", "pMakeTailAttributes", [](auto& record) { record.SetID(7); },
        [](auto& record) { record.pMakeTailAttributes(); });
    all.push_back({"CJOBXmessage", "Line",
                   [](MemoryRun& run)
                   {
                       CJOBXmessage message;
                       message.kind = pGetJOBXmessageKind(0);
                       message.file = kLong;
                       message.text = kOther;
                       run.Try([&] { message.Line(); });
                   }});
    all.push_back({"CJOBXmessage", "copies",
                   [](MemoryRun& run)
                   {
                       CJOBXmessage message;
                       message.text = kOther;
                       run.Try([&] { CJOBXmessage(message).text.Append(kOther); });
                   }});
}
} // namespace

MemoryOperations FoundationOperations()
{
    MemoryOperations all;
    AddGeometry(all);
    AddProperties(all);
    AddPropertyUses(all);
    AddLog(all);
    AddUtility(all);
    AddKeys(all);
    AddTails(all);
    return all;
}
