// The framework's texts, arrays of texts, files, archives and exceptions.
#include "JOBXCLSDLL.h"
#include "robustness/MemoryOperations.h"
#include "support/HostWindow.h"

#include <array>
#include <functional>

namespace
{
// A change of a text; a failure leaves it as it was.
template <class Change>
MemoryOperation Changing(const char* name, Change change, Memory memory = Memory::Needed)
{
    return {"CString", name,
            [change](MemoryRun& run)
            {
                const CString before(kLong);
                CString text(before); // shared, so that a change needs its own block
                const bool done = run.Try([&] { change(text); });
                EXPECT_TRUE(done || text == before);
                EXPECT_EQ(before, kLong);
            },
            memory};
}

void AddTextMaking(MemoryOperations& all)
{
    const auto make = [&all](const char* name, auto made) {
        all.push_back({"CString", name, [made](MemoryRun& run) { run.Try([&] { const CString text(made()); }); }});
    };
    make("constructor", [] { return CString(kLong); });
    make("constructor with length", [] { return CString(kLong, 10); });
    make("constructor of a view", [] { return CString(std::string_view(kLong)); });
    make("constructor of repeats", [] { return CString('x', 20); });
    make("constructor of wide text", [] { return CString(L"a text too long to lie inside"); });
    make("constructor of bytes", [] { return CString(reinterpret_cast<const unsigned char*>(kLong)); });
    make("MakeUpper", [] { return MakeUpper(kLong); });
    make("MakeLower", [] { return MakeLower(kOther); });
    make("operator+", [] { return "some" + CString(kLong) + 'c'; });
}

void AddTextParts(MemoryOperations& all)
{
    const auto part = [&all](const char* name, auto cut)
    {
        all.push_back({"CString", name,
                       [cut](MemoryRun& run)
                       {
                           const CString text(kLong);
                           run.Try([&] { const CString made(cut(text)); });
                           EXPECT_EQ(text, kLong);
                       }});
    };
    part("Left", [](const CString& text) { return text.Left(10); });
    part("Mid", [](const CString& text) { return text.Mid(2, 10); });
    part("Right", [](const CString& text) { return text.Right(10); });
    part("SpanIncluding", [](const CString& text) { return text.SpanIncluding("a textolng"); });
    part("SpanExcluding", [](const CString& text) { return text.SpanExcluding("i"); });
    part("Tokenize",
         [](const CString& text)
         {
             int at = 0;
             return text.Tokenize("z", at);
         });
}

void AddTextChanges(MemoryOperations& all)
{
    all.push_back(Changing("operator=", [](CString& text) { text = kOther; }));
    all.push_back(Changing("operator= of wide text", [](CString& text) { text = L"another text of some length"; }));
    all.push_back(Changing("SetString", [](CString& text) { text.SetString(kOther, 20); }));
    all.push_back(Changing("SetAt", [](CString& text) { text.SetAt(0, 'x'); }));
    all.push_back(Changing("GetBuffer", [](CString& text) { text.ReleaseBuffer(text.GetBuffer(100) != nullptr); }));
    all.push_back(Changing("GetBufferSetLength", [](CString& text) { text.GetBufferSetLength(100); }));
    all.push_back(Changing("Preallocate", [](CString& text) { text.Preallocate(100); }));
    all.push_back(Changing("Truncate", [](CString& text) { text.Truncate(20); }));
    all.push_back(Changing("operator+=", [](CString& text) { text += kOther; }));
    all.push_back(Changing("Append", [](CString& text) { text.Append(kOther, 20); }));
    all.push_back(Changing("AppendChar", [](CString& text) { text.AppendChar('x'); }));
    all.push_back(Changing("Trim", [](CString& text) { text.Trim('a'); }));
    all.push_back(Changing("TrimLeft", [](CString& text) { text.TrimLeft("a "); }));
    all.push_back(Changing("TrimRight", [](CString& text) { text.TrimRight('e'); }));
    all.push_back(Changing("MakeUpper in place", [](CString& text) { text.MakeUpper(); }));
    all.push_back(Changing("MakeReverse", [](CString& text) { text.MakeReverse(); }));
    all.push_back(Changing("Replace of characters", [](CString& text) { text.Replace('t', 'x'); }));
    all.push_back(Changing("Replace", [](CString& text) { text.Replace("too long", kOther); }));
    all.push_back(Changing("Remove", [](CString& text) { text.Remove('t'); }));
    all.push_back(Changing("Delete", [](CString& text) { text.Delete(2, 3); }));
    all.push_back(Changing("Insert", [](CString& text) { text.Insert(2, kOther); }));
    all.push_back(Changing("Format", [](CString& text) { text.Format("%s and %s", text, kOther); }));
    all.push_back(Changing("AppendFormat", [](CString& text) { text.AppendFormat("%s", kOther); }));
}

void FillTexts(CStringArray& texts, int first)
{
    for (int i = first; i < first + 3; ++i)
        texts.Add(CString(kLong) + std::to_string(i).c_str());
}

// A change of a list of three texts; a failure leaves the three.
template <class Change>
MemoryOperation ListChanging(const char* name, Change change)
{
    return {"CStringArray", name,
            [change](MemoryRun& run)
            {
                CStringArray texts;
                FillTexts(texts, 1);
                const CStringArray before(texts);
                const bool done = run.Try([&] { change(texts); });
                EXPECT_TRUE(done || texts == before);
            }};
}

void AddTextLists(MemoryOperations& all)
{
    AddMaking<CStringArray>(all, "CStringArray");
    AddCopying<CStringArray>(all, "CStringArray", FillTexts, std::equal_to<>());
    all.push_back(ListChanging("SetSize", [](CStringArray& texts) { texts.SetSize(30); }));
    all.push_back(ListChanging("SetAt", [](CStringArray& texts) { texts.SetAtGrow(10, kOther); }));
    all.push_back(ListChanging("InsertAt",
                               [](CStringArray& texts)
                               {
                                   const CString text(kOther);
                                   texts.InsertAt(1, text, 3);
                               }));
    all.push_back(ListChanging("Add", [](CStringArray& texts) { texts.Add(kOther); }));
    all.push_back({"CStringArray", "FreeExtra",
                   [](MemoryRun& run)
                   {
                       CStringArray texts;
                       FillTexts(texts, 1);
                       const CStringArray before(texts);
                       texts.SetSize(30);
                       texts.SetSize(3);
                       run.Try([&] { texts.FreeExtra(); });
                       EXPECT_EQ(texts, before);
                   }});
    all.push_back({"CStringArray", "XTokenString",
                   [](MemoryRun& run)
                   {
                       CStringArray texts;
                       run.Try([&] { XTokenString(kLong, " ", texts, 0, 0, 0, 1, 0); });
                   },
                   Memory::Needed});
}

void AddFiles(MemoryOperations& all)
{
    AddMaking<CFile>(all, "CFile");
    AddMaking<CStdioFile>(all, "CStdioFile");
    AddMaking<CMemFile>(all, "CMemFile");
    all.push_back({"CFile", "Open",
                   [path = ScratchDir().Write("a file with a long name", "text")](MemoryRun& run)
                   {
                       CFile file;
                       const bool done = run.Try([&] { file.Open(path.c_str(), CFile::modeReadWrite); });
                       EXPECT_EQ(file.IsOpen() != FALSE, done);
                   }});
    all.push_back({"CFile", "names",
                   [path = ScratchDir().Write("a file with a long name.txt", "text")](MemoryRun& run)
                   {
                       CFile file(path.c_str(), CFile::modeRead);
                       run.Try(
                           [&]
                           {
                               const CString name = file.GetFileName() + file.GetFileTitle();
                               file.SetFilePath(name + kLong);
                           });
                   }});
    all.push_back({"CFile", "SetLength and Rename",
                   [](MemoryRun& run)
                   {
                       const std::string path = ScratchDir().Write("renamed", "text");
                       const std::string renamed = ScratchDir().Path("renamed again");
                       std::remove(renamed.c_str()); // of a run that failed in between
                       CFile file(path.c_str(), CFile::modeReadWrite);
                       run.Try(
                           [&]
                           {
                               file.SetLength(2);
                               file.Close();
                               CFile::Rename(path.c_str(), renamed.c_str());
                               CFile::Remove(renamed.c_str());
                           });
                   }});
    all.push_back({"CStdioFile", "ReadString",
                   [path = ScratchDir().Write("lines", std::string(kLong) + "\n")](MemoryRun& run)
                   {
                       CStdioFile file(path.c_str(), CFile::modeRead);
                       run.Try(
                           [&]
                           {
                               CString line;
                               file.ReadString(line);
                           });
                   }});
    all.push_back({"CMemFile", "Write",
                   [](MemoryRun& run)
                   {
                       CMemFile file(4);
                       file.Write("four", 4);
                       const bool done = run.Try([&] { file.Write(kLong, sizeof kLong); });
                       EXPECT_EQ(file.GetLength(), done ? 4 + sizeof kLong : 4U);
                       EXPECT_EQ(std::string(reinterpret_cast<const char*>(file.GetBufferPtr()), 4), "four");
                   }});
    all.push_back({"CMemFile", "SetLength",
                   [](MemoryRun& run)
                   {
                       CMemFile file(4);
                       const bool done = run.Try([&] { file.SetLength(10'000); });
                       EXPECT_EQ(file.GetLength(), done ? 10'000U : 0U);
                   }});
}

void AddArchives(MemoryOperations& all)
{
    all.push_back({"CArchive", "storing",
                   [](MemoryRun& run)
                   {
                       CMemFile file;
                       run.Try(
                           [&]
                           {
                               CArchive archive(&file, CArchive::store);
                               archive << 1 << 2.0 << CString(kLong);
                               archive.Close();
                           });
                   }});
    all.push_back({"CArchive", "loading",
                   [](MemoryRun& run)
                   {
                       CMemFile file;
                       CArchive stored(&file, CArchive::store);
                       stored << CString(kLong);
                       stored.Close();
                       file.SeekToBegin();
                       run.Try(
                           [&]
                           {
                               CArchive archive(&file, CArchive::load);
                               CString text;
                               archive >> text;
                           });
                   }});
}

void AddExceptions(MemoryOperations& all)
{
    const auto message = [&all](const char* type, auto make) {
        all.push_back({type, "GetMessageText", [make](MemoryRun& run) { run.Try([&] { make()->GetMessageText(); }); }});
    };
    message("CMemoryException", [] { return std::make_unique<CMemoryException>(); });
    message("CInvalidArgException", [] { return std::make_unique<CInvalidArgException>(); });
    message("CFileException", [] { return std::make_unique<CFileException>(CFileException::diskFull, 28, kLong); });
    message("CArchiveException",
            [] { return std::make_unique<CArchiveException>(CArchiveException::badIndex, kLong); });
    all.push_back({"CException", "GetErrorMessage",
                   [](MemoryRun& run)
                   {
                       const CFileException error(CFileException::diskFull, 28, kLong);
                       std::array<char, 50> text{};
                       run.Try([&] { error.GetErrorMessage(text.data(), text.size()); });
                   }});
    const auto raising = [&all](const char* type, const char* name, auto raise)
    {
        all.push_back({type, name,
                       [raise](MemoryRun& run)
                       {
                           run.Try(
                               [&]
                               {
                                   try
                                   {
                                       raise();
                                   }
                                   catch (CFileException* error)
                                   {
                                       error->Delete();
                                   }
                                   catch (CArchiveException* error)
                                   {
                                       error->Delete();
                                   }
                               });
                       }});
    };
    raising("CFileException", "raising", [] { AfxThrowFileException(CFileException::diskFull, 28, kLong); });
    raising("CArchiveException", "raising", [] { AfxThrowArchiveException(CArchiveException::badIndex, kLong); });
}

// A class of the host's that can be made by name.
class HostObject : public CObject
{
public:
    static CObject* Make() { return new HostObject; }
};

void AddObjects(MemoryOperations& all)
{
    AddMaking<HostObject>(all, "CObject");
    all.push_back({"CRuntimeClass", "CreateObject",
                   [](MemoryRun& run)
                   {
                       const CRuntimeClass theClass{"HostObject", sizeof(HostObject), 0, HostObject::Make, nullptr};
                       std::unique_ptr<CObject> made;
                       const bool done = run.Try([&] { made.reset(theClass.CreateObject()); });
                       EXPECT_EQ(made != nullptr, done);
                   }});
    all.push_back({"CWnd", "constructor",
                   [](MemoryRun& run)
                   {
                       std::vector<std::string> calls;
                       run.Try([&] { const auto window = std::make_unique<HostWindow>("a window", calls); });
                   }});
    all.push_back({"CWnd", "MessageBoxA",
                   [](MemoryRun& run)
                   {
                       const auto before = SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; });
                       EXPECT_TRUE(run.Try([] { MessageBoxA(nullptr, kLong, kLong, 0); }));
                       SetMessageBoxHandler(before);
                   },
                   Memory::NotNeeded});
}
} // namespace

MemoryOperations FrameworkOperations()
{
    MemoryOperations all;
    AddTextMaking(all);
    AddTextParts(all);
    AddTextChanges(all);
    AddTextLists(all);
    AddFiles(all);
    AddArchives(all);
    AddExceptions(all);
    AddObjects(all);
    return all;
}
