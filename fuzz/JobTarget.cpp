// A whole job, from an archive of its files: read, scaled, reordered, written, read again and destroyed.
#include "CompleteReading.h"
#include "FuzzTargets.h"
#include "JOBXCLSDLL.h"
#include "JobArchive.h"
#include "Scratch.h"
#include "support/CurrentDir.h"

#include <filesystem>
#include <iterator>
#include <memory>

namespace fs = std::filesystem;

namespace
{
constexpr double kJobFactor = 25.4;
constexpr ULONGLONG kSymbolLimit = 1U << 20U;

class QuietWindow : public CWnd
{
public:
    BOOL UpdateData(BOOL /*saveAndValidate*/) override { return TRUE; }
    CWnd* SetFocus() override { return nullptr; }
    void SetWindowTextA(LPCSTR text) override { Require(text != nullptr, "a status text is a text"); }
    LRESULT SendMessageA(UINT /*message*/, WPARAM position, LPARAM /*lParam*/) override
    {
        Require(position <= 100, "progress ends at 100");
        return 0;
    }
    BOOL RedrawWindow(const RECT* /*rectangle*/, CRgn* /*region*/, UINT /*flags*/) override { return TRUE; }
};

// Makes the text of every diagnostic, as a host that shows them would.
class QuietSink : public CKDiagnosticSink
{
public:
    void OnDiagnostic(const CKDiagnostic& diagnostic) override
    {
        Require(diagnostic.Text().FindOneOf("\n\r") < 0, "a diagnostic is one line");
    }
};

// What the whole process is told, until the end of one run.
class ScopedHost
{
public:
    ScopedHost()
        : m_oldSink(Files().SetDiagnosticSink(&m_sink)),
          m_oldLimit(Files().GetDecompressionLimit()),
          m_oldBoxes(SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; }))
    {
        Files().SetDecompressionLimit(kSymbolLimit);
    }
    ~ScopedHost()
    {
        SetMessageBoxHandler(m_oldBoxes);
        Files().SetDecompressionLimit(m_oldLimit);
        Files().SetDiagnosticSink(m_oldSink);
    }
    ScopedHost(const ScopedHost&) = delete;
    ScopedHost& operator=(const ScopedHost&) = delete;

private:
    static CKUtility& Files() { return *CKUtility::GetInstance(); }

    QuietSink m_sink;
    CKDiagnosticSink* m_oldSink;
    ULONGLONG m_oldLimit;
    JobxMessageBoxHandler m_oldBoxes;
};

// Flattens what stays small: a table of step-and-repeat entries may ask for any number of copies.
void Flatten(const CODBstepRepeatArray& entries)
{
    constexpr __int64 kMostCopies = 1000;
    for (__int64 i = 0; i < entries.GetSize(); ++i)
    {
        const CODBstepRepeat& parent = *entries.GetAt(i);
        const __int64 columns = parent.m_ptCount.GetX();
        const __int64 rows = parent.m_ptCount.GetY();
        if (columns > kMostCopies || rows > kMostCopies || columns * rows * entries.GetSize() > kMostCopies)
            continue;
        const std::unique_ptr<CODBstepRepeatArray> flat(entries.Add_Parent(&parent));
        Require(columns < 1 || rows < 1 || (flat && flat->GetSize() == columns * rows * entries.GetSize()),
                "a flattened table has every copy");
    }
}

void FillCompactModel(const CJOBX& job, const CJOBXstepObj& step)
{
    const std::unique_ptr<CODB> model(pMakeCompactModel(job, &step));
    Require(model != nullptr, "there is a compact model of a step");
    Require(model->m_arrLayers.GetSize() == step.m_arrLayers.GetSize(), "a compact model has every layer");
    const std::unique_ptr<CODB> copy(model->clone());
    copy->vChangeUnit(0);
    for (__int64 i = 0; i < copy->m_arrStephdrs.GetSize(); ++i)
        Flatten(copy->m_arrStephdrs.GetAt(i)->m_arrStepRepeats);
}

void LookAt(CJOBX& job)
{
    for (__int64 i = 0; i < job.m_pSteps->m_arrSteps.GetSize(); ++i)
    {
        CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.GetAt(i);
        FillCompactModel(job, step);
        step.ScanLayerObjDataInLayer("TOP");
        delete step.ScaneODBComponents(0);
        delete step.ScanUsedODBcmpIDDataIndataNet(0, "T");
    }
    job.FindSpecialSymbolID("MARK");
}

// Nothing is made beside the one directory that the writer was to make, whatever names the job holds.
void RequireOnlyTheJobIn(const std::string& out)
{
    for (const fs::directory_entry& entry : fs::directory_iterator(out))
        Require(entry.path().filename() == "job", "the writer stays inside its directory");
}

void ReadAndWrite(const std::string& source, const std::string& out, QuietWindow& window)
{
    CJOBX job;
    job.m_pProgress = &window;
    job.m_pStatus = &window;
    job.ParseODBOfMFC(source.c_str());
    if (const std::string sysattr = source + "/misc/sysattr"; fs::exists(sysattr))
    {
        try
        {
            job.ParseODBsysAttrDataArray(sysattr.c_str());
        }
        catch (CInvalidArgException* exception) // a definition without a value
        {
            exception->Delete();
        }
    }
    job.UnitConvert(kJobFactor);
    job.RebuildStepObj();
    job.WriteODBData(out.c_str(), 1);
    LookAt(job);
}

void ReadChosenStepsAndWrite(const std::string& source, const std::string& out)
{
    CJOBX job;
    CStringArray steps;
    if (job.ParseMatrixInODBOfMFC(source.c_str(), steps) == 0)
        return;
    if (steps.GetSize() > 1)
        steps.RemoveAt(0);
    job.ParseODBOfMFC(source.c_str(), steps);
    job.RebuildStepObj();
    job.WriteODBData(out.c_str(), 0); // user symbols too, in place of what was there
}
} // namespace

void FuzzJob(std::string_view input)
{
    const TempDir& scratch = Scratch();
    const std::string whole = scratch.MakeDir("whole");
    const std::string source = scratch.MakeDir("whole/job");
    const std::string out = scratch.MakeDir("whole/out");
    UnpackFiles(input, source);
    {
        // A file named "standard" there is a font and lets the font be written.
        const CurrentDir current(source);
        const ScopedHost host;
        QuietWindow window;
        ReadJobCompletely(source.c_str()); // before the other way, which unpacks files
        ReadAndWrite(source, out, window);
        RequireOnlyTheJobIn(out);
        const std::string further = scratch.MakeDir("whole/further");
        ReadAndWrite(out + "/job", further, window);
        RequireOnlyTheJobIn(further);
        ReadChosenStepsAndWrite(source, out);
        RequireOnlyTheJobIn(out);
    }
    fs::remove_all(whole);
}
