// Reads a job, shows the progress, multiplies its lengths and writes it.
//
//   convert_units JOB DIRECTORY FACTOR      convert_units board out 25.4
//
// With CMake: see CMakeLists.txt. Without:
//   c++ -std=c++20 main.cpp $(pkg-config --cflags --libs jobxclsdll) -o convert_units
#include "JOBXCLSDLL.h"

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr UINT kSetPosition = 0x402; // the message with which the library moves a progress bar

// Used as both the progress bar and the status text; prints what they would show.
class ProgressPrinter : public CWnd
{
public:
    BOOL UpdateData(BOOL) override { return TRUE; }
    CWnd* SetFocus() override { return nullptr; }
    BOOL RedrawWindow(const RECT*, CRgn*, UINT) override { return TRUE; }
    void SetWindowTextA(LPCSTR text) override { std::printf("%s\n", text); }
    LRESULT SendMessageA(UINT message, WPARAM position, LPARAM) override
    {
        if (message == kSetPosition)
            std::printf("%d %%\n", static_cast<int>(position));
        return 0;
    }
};

// Prints and counts the failures to write.
class WriteFailures : public CKDiagnosticSink
{
public:
    WriteFailures() : m_pBefore(CKUtility::GetInstance()->SetDiagnosticSink(this)) {}
    WriteFailures(const WriteFailures&) = delete;
    WriteFailures& operator=(const WriteFailures&) = delete;
    ~WriteFailures() override { CKUtility::GetInstance()->SetDiagnosticSink(m_pBefore); }

    void OnDiagnostic(const CKDiagnostic& diagnostic) override
    {
        ++m_nCount;
        std::fprintf(stderr, "%s\n", diagnostic.Text().GetString());
    }
    int Count() const { return m_nCount; }

private:
    CKDiagnosticSink* m_pBefore;
    int m_nCount = 0;
};

void PrintStep(const CJOBXstepObj& step)
{
    int features = 0;
    int pads = 0;
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        for (const CJOBXlayObj& feature : layer.GetFeatures()->Records())
        {
            ++features;
            if (dynamic_cast<const CJOBXlayObjPad*>(&feature) != nullptr)
                ++pads;
        }
    std::printf("%s: %d layers, %d features, %d of them pads\n", step.m_sName.GetString(),
                static_cast<int>(step.m_arrLayers.GetSize()), features, pads);
}

int Convert(const char* path, const char* directory, double factor)
{
    ProgressPrinter progress;
    CJOBX job;
    job.m_pProgress = &progress; // borrowed: it must live while the job reads
    job.m_pStatus = &progress;
    CStringArray steps;
    if (job.ParseMatrixInODBOfMFC(path, steps) == 0)
        return 1;
    job.ParseODBOfMFC(path, steps); // with a list of steps, so that the user symbols are written too

    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        PrintStep(step);

    job.UnitConvert(factor);
    const WriteFailures failures;
    CKUtility::GetInstance()->MakeDirectory(directory);
    job.WriteODBData(directory, 1); // first deletes an existing directory of the job's name
    return failures.Count() == 0 ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
    const double factor = argc == 4 ? std::strtod(argv[3], nullptr) : 0.0;
    if (!(factor > 0.0))
    {
        std::fprintf(stderr, "usage: convert_units JOB DIRECTORY FACTOR\n");
        return 2;
    }
    try
    {
        return Convert(argv[1], argv[2], factor);
    }
    catch (CException* exception) // the library throws pointers; call Delete on the caught one
    {
        std::fprintf(stderr, "%s\n", exception->GetMessageText().GetString());
        exception->Delete();
        return 1;
    }
}
